#!/bin/sh
# modem_losses.sh unplug|manager CYCLES: cmifd over the real ModemManager, whose emulated modem is unplugged and
# plugged in again, or which is killed and started again. After each cycle the modem must register on request.
# cmifd must not grow after the tenth cycle, and must end without a leak, which its sanitizers look for.
# Starts the box in which it runs itself again.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/../end_to_end/lib.sh"
what=$1 cycles=$2
growth_kb=1024

if [ "${3-}" != inside ]; then
    unshare -mn true 2>/dev/null || unshare -Umn true 2>/dev/null || fail 'needs namespaces'
    cmif-sim usb --pace 0.1 -- sh "$0" "$what" "$cycles" inside
    exit
fi
PATH=$PATH:/usr/sbin:/sbin

has_modem() { mmcli -L | grep -q /Modem/; }
no_modem() { mmcli -L | grep -q 'No modems'; }
registers() { cmifctl network auto; } # nothing that is remembered can answer this

unplug() {
    exits 0 cmif-sim ctl usb unplug
    within 30 no_modem
    exits 0 cmif-sim ctl usb plug
}

manager_pid() {
    dbus-send --system --print-reply=literal --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetConnectionUnixProcessID string:org.freedesktop.ModemManager1 |
        awk '{ print $2; found = 1 } END { exit !found }'
}
no_manager() { ! manager_pid; }

manager() {
    exits 0 kill -9 "$(manager_pid)"
    within 30 no_manager
    ModemManager --test-no-udev --test-no-suspend-resume --test-no-qrtr 2>/dev/null &
    within 30 has_modem
}

memory() { awk '$1 == "VmRSS:" { print $2 }' "/proc/$daemon/status"; }

# A D-Bus call in progress has one of its own: the lowest of some readings.
descriptors() {
    seq 10 | while read -r _; do
        find "/proc/$daemon/fd" -type l | wc -l
        sleep 0.1
    done | sort -n | head -n 1
}

ASAN_OPTIONS=quarantine_size_mb=0:thread_local_quarantine_size_kb=0 cmifd --first 2>"$work/cmifd.err" &
daemon=$!
within 60 cmifctl sim retries
printf 1234 | exits 0 cmifctl sim enter-pin -
printf 1234 | exits 0 cmifctl sim pin-mode off -
within 60 registers

early=$((cycles < 20 ? cycles / 2 : 10))
cycle=0
while [ "$cycle" -lt "$cycles" ]; do
    if [ "$cycle" -eq "$early" ]; then
        memory_then=$(memory)
        descriptors_then=$(descriptors)
    fi
    "$what"
    within 60 registers
    cycle=$((cycle + 1))
done
memory_now=$(memory)
descriptors_now=$(descriptors)

kill "$daemon"
wait "$daemon" || fail "cmifd ended with $?: $(cat "$work/cmifd.err")"
echo "  $cycles cycles; cmifd after $early of them and at the end:"
echo "  memory, kB   $memory_then $memory_now  (at most $growth_kb more)"
echo "  descriptors  $descriptors_then $descriptors_now  (equal)"
[ "$memory_now" -le $((memory_then + growth_kb)) ] || fail 'cmifd grows'
[ "$descriptors_now" -eq "$descriptors_then" ] || fail 'cmifd opens more and more descriptors'
