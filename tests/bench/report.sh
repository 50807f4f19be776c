#!/bin/sh
# report.sh SOURCES: a missed bar is marked, does not hide the next figure, and decides the status.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "$1" >&2
    cat "$work"/* >&2
    exit 1
}
figure() { # figure COLUMN MEDIAN BAR
    printf 'bars\tAT request\t%s\t\tns\t%s\t1\t9\t%s\n' "$1" "$2" "$3"
}
shows() { grep -q "$1" "$work/out" || fail "not shown: $1"; }

{
    figure first 2.01 '<=2.00'
    figure second 2.00 '<=2.00'
    figure third 4.99 '>=5'
    figure fourth 3 '=4'
    figure fifth 4 '=4'
} >"$work/figures"
"$1/bench/report" "$work/figures" >"$work/out" && fail 'the status is 0 though bars are missed'
shows '^  first .* ±199%  (at most 2.00)  MISSED$'
shows '^  second .* (at most 2.00)$'
shows '^  third .* (at least 5)  MISSED$'
shows '^  fourth .* (exactly 4)  MISSED$'
shows '^  fifth .* (exactly 4)$'
shows '^5 bars, 3 missed$'

sed -i '/MISSED/d; /first\|third\|fourth/d' "$work/figures"
"$1/bench/report" "$work/figures" >"$work/out" || fail 'the status is not 0 though no bar is missed'
: >"$work/figures"
"$1/bench/report" "$work/figures" >"$work/out" && fail 'no figure at all is no success'
exit 0
