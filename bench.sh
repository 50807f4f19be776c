#!/bin/sh
# Measures the library's speed, size and memory, and compares it with what a program could use instead:
# prints the tables, each figure with its bar, and draws them. A missed bar is marked, and the
# exit status is then 1. docs/speed.md says what is measured and how.
#
# One core is busy for about a minute. build/bench has the figures (*.tsv), the tables and the plots;
# bench/publish puts these into the documents.
set -eu
cd "$(dirname "$0")"
. scripts/setup.sh
no_arguments "$@"

# shellcheck disable=SC2086 # one word a package
need $host_packages binutils dbus g++-arm-linux-gnueabihf libdbus-1-dev libglib2.0-dev libmbim-glib-dev libmm-glib-dev \
    libqmi-glib-dev libqrtr-glib-dev libsystemd-dev pkgconf python3

out=build/bench
bin=build/release/bin
status=0
rm -rf "$out"
mkdir -p "$out"

build_bench() {
    configure release -DBUILD_TESTING=OFF
    cmake --build --preset release --target bench isolate
    sync "$bin"/* build/release/lib/*.so* # a page that is still to be written counts as dirty memory
}

# Real-time priority where the system grants it, so that no other program gets in between.
alone() {
    set -- taskset -c "$(taskset -cp $$ | sed 's/.*[^0-9]//')" "$@"
    if [ "$(nproc)" -gt 1 ] && chrt -f 1 true 2>/dev/null; then set -- chrt -f 1 "$@"; fi
    "$@"
}

load() { cut -d ' ' -f 1 /proc/loadavg; }
machine() {
    sed -n 's/^model name.*: //p' /proc/cpuinfo | head -n 1
    printf '%s %s, %s cores, %s\n' "$(uname -s)" "$(uname -r)" "$(nproc)" "$(c++ --version | head -n 1)"
}

step "build" build_bench
echo '== sizes'
bench/footprint >"$out/size.tsv" || status=1
echo '== speed and memory, on one core'
before=$(load)
alone "$bin/isolate" dbus-run-session -- "$bin/cmif-bench" >"$out/speed.tsv" 2>"$out/errors.txt" || status=1
grep -v 'Failed to set fd limit' "$out/errors.txt" >&2 || : # which the bus does not need

{
    machine
    printf 'load %s before, %s after\n\n' "$before" "$(load)"
    bench/report "$out/speed.tsv" "$out/size.tsv" || echo missed >"$out/missed"
} >"$out/tables.txt"
cat "$out/tables.txt"
bench/plot "$out" "$out/speed.tsv" "$out/size.tsv"
[ ! -e "$out/missed" ] && [ "$status" -eq 0 ]
