#!/bin/sh
# quick.sh SOURCES CMIF-BENCH: every benchmark prints its figures, counts are right, and the tables
# and plots can be made of them.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "$1" >&2
    tail -n 5 "$work"/* >&2
    exit 1
}
has() { # has COLUMN...: a figure of this table, row, column and point, whose median is as given
    printf '%s' "$1" | tr '/' '\t' >"$work/wanted"
    grep -qP "^$(cat "$work/wanted")\t" "$work/speed" || fail "no figure: $1"
}

"$2" --quick >"$work/speed" 2>"$work/skipped" || fail 'a benchmark fails'
grep -v '^skipped: ' "$work/skipped" && fail 'an error'
has 'bars/plain getter/ratio'
has 'bars/plain getter/system calls///0.0000'
has 'bars/AT request/ratio'
has 'bars/AT request/system calls///4.0000'
has 'bars/AT request, send only/system calls///2.0000'
has 'bars/QMI exchange, log on/ratio'
has 'bars/private memory/over the C library'
has 'callers/AT request/library/64'
has 'foreign replies/AT request/library/128'
has "keys/plain getter/host's store/10000"
has "messages/list of messages/host's store/1000"
for peer in 'CMIF, an AT request' 'CMIF, a QMI call' 'Unix socket' 'POSIX queues'; do
    has "peers/$peer/request"
    has "peers/$peer/start-up"
done

"$1/bench/report" "$work/speed" >"$work/tables" || [ $? -eq 1 ] || fail 'no report'
grep -q 'bars, [0-9]* missed$' "$work/tables" || fail 'the report is not complete'
"$1/bench/plot" "$work" "$work/speed"
for plot in speed growth; do
    grep -q '</svg>' "$work/$plot.svg" || fail "no plot of $plot"
done
