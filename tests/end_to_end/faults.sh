#!/bin/sh
# What a caller sees of each fault of a daemon, and what the doctor finds: the tables of docs/faults.md.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

quick='cmifctl --timeout 1'

# fault WORD...: armed beside daemons that have served a request each.
fault() {
    exits 0 cmif-sim ctl fault "$@"
}
# found NAME: the doctor finds this.
found() {
    exits 1 cmifctl --json doctor
    grep -qF "\"name\": \"$1\"" "$work/out" || fail "no finding $1"
}
# As after a restart of both daemons.
heal() {
    exits 0 cmif-sim ctl fault clear
    exits 0 cmif-sim ctl fault at restart
    exits 0 cmif-sim ctl fault qmi restart
    cmifctl doctor --fix >/dev/null 2>&1 || :
    exits 0 cmifctl doctor
}
exits 0 cmif-sim ctl state registered
heal

# Replies of the AT daemon. The unquoted $quick is a command with its options.
# shellcheck disable=SC2086
{
    for kind in drop ignore wrong-type long; do
        fault at 4 $kind
        exits 3 $quick sim retries
        complains 'had picked up the request'
        found requests_unanswered
        heal
    done

    fault at 4 delay 20s # of the simulation: 2 s
    exits 3 $quick sim retries
    exits 0 cmifctl sim retries # after the late reply, its own
    exits 0 cmifctl doctor

    fault at 4 twice
    exits 0 $quick sim retries
    found replies_stale
    exits 0 $quick sim retries
    exits 0 cmifctl doctor

    for kind in short unterminated; do
        fault at 4 $kind
        exits 0 $quick sim retries
    done
    fault at 4 noise
    exits 4 $quick sim retries
    complains 'the AT daemon refused: code -1726046228'
    fault at 4 ret 13
    exits 4 $quick sim retries
    complains 'SIM failure (13)'
    for number in -1 2 3; do # as the library's own results
        fault at 4 ret $number
        exits 4 $quick sim retries
        complains 'the AT daemon refused: '
    done

    # The AT daemon and its queues.
    fault at freeze
    exits 3 $quick sim retries
    complains 'had not picked up the request; it was withdrawn'
    found daemon_frozen
    exits 0 cmif-sim ctl fault at thaw
    exits 0 $quick sim retries
    fault at die
    exits 3 $quick sim retries
    complains 'it was withdrawn'
    found daemon_ended
    heal
    for code in 4 24; do
        fault at $code die
        if [ $code = 4 ]; then exits 3 $quick sim retries; else exits 3 $quick network scan; fi
        complains 'had picked up the request'
        found daemon_ended
        heal
    done
    for queue in request reply; do
        fault at remove-queue $queue
        exits 0 cmifctl sim retries
    done
    fault at foreign 140
    exits 0 $quick sim retries
    found replies_foreign
    heal
    fault at foreign 100000
    exits 3 $quick sim retries
    complains 'its reply queue is full'
    found queue_full
    heal
    fault at 4 stale 2
    found replies_stale
    exits 0 $quick sim retries
    exits 0 cmifctl doctor

    # The QMI daemon. Reading goes on without it.
    for kind in drop wrong-type; do
        fault qmi 6 $kind
        exits 0 $quick --json sim status
        holds 'daemons.qmi.state="silent"'
        found requests_unanswered
        heal
    done
    fault qmi 6 short 312
    exits 0 $quick sim status
    shows 'state: absent'
    fault qmi 6 long 4
    exits 0 $quick sim status
    shows 'state: ready'
    fault qmi 6 long
    exits 0 $quick --json sim status
    holds 'daemons.qmi.state="running"'
    heal
    fault qmi 1 unterminated
    exits 0 $quick --json status
    holds "modem.device_revision=\"$(printf '%0100d' 0 | tr 0 x)\""
    fault qmi 6 ret 5
    exits 0 $quick sim status
    shows 'state: network locked'
    for kind in freeze die; do
        exits 0 $quick sim status
        fault qmi $kind
        exits 0 $quick --json sim status
        if [ $kind = die ]; then state=ended; else state=stopped; fi
        holds "daemons.qmi.state=\"$state\""
        if [ $kind = die ]; then found ready_marker_left; else found daemon_frozen; fi
        heal
    done
    exits 0 $quick sim status
    fault qmi not-ready
    exits 0 $quick sim status
    shows 'shared_CMIF_get_sim_status: the QMI daemon is not ready'
    exits 0 $quick --json sim status
    holds 'daemons.qmi.state="not_ready"'
    found daemon_not_ready
    exits 0 cmif-sim ctl fault qmi ready
    exits 0 cmifctl doctor
}
