#!/bin/sh
# The doctor beside real daemons: a healthy router, daemons frozen and ended, markers left over.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/store"

# found NAME: the doctor finds this and ends with status 1.
found() {
    exits 1 cmifctl --json doctor
    grep -qF "\"name\": \"$1\"" "$work/out" || fail "no finding $1"
}
not_found() { ! grep -qF "\"name\": \"$1\"" "$work/out" || fail "a finding $1"; }

# Without a router, and without its store.
found queue_missing
[ -z "$(queued 899)" ] || fail 'the doctor made a queue'

start_router --pace 0.1
found sim_pin_required
holds 'findings.0.severity="warning"' 'findings.0.fixed=false' 'sim.state.name="pin_required"' 'daemons.at.state="responding"' \
    'findings.0.name="sim_pin_required"' "findings.0.hint=\"Enter it with 'cmifctl sim enter-pin'.\""
register
exits 0 cmifctl config save
exits 0 cmifctl doctor
prints 'nothing wrong'
shows 'state: ready'
shows 'AT daemon: responding'
shows 'registration: registered (home)'
exits 0 cmifctl --json doctor
holds 'findings=[]' "store.directory=\"$CMIF_STORE\""

exits 0 cmif-sim ctl modem reset
found modem_missing
not_found store_empty
pin_is_asked() { [ "$(cmifctl sim status --field sim.state)" = pin_required ]; }
within 20 pin_is_asked
register

exits 0 cmifctl config set debug_at_cmif 1
found secrets_traced
exits 0 cmifctl config set debug_at_cmif 0

touch -d '1 minute ago' /tmp/modify_profile_in_progress
found profile_marker_left
exits 0 cmifctl doctor --fix
prints 'nothing wrong'
[ ! -e /tmp/modify_profile_in_progress ] || fail 'the marker is still there'

exits 1 env CMIF_STORE="$work/other" cmifctl --json doctor
grep -qF "the daemons use the store $CMIF_STORE, and this command $work/other" "$work/out" ||
    fail 'the two stores are not named'

exits 0 cmif-sim ctl fault all freeze
found daemon_frozen
not_found daemon_ended
exits 0 cmif-sim ctl fault all thaw
exits 0 cmifctl doctor

# A daemon that was restarted does not answer what the one before it took.
exits 0 cmif-sim ctl fault at 24 ignore
exits 3 cmifctl --timeout 1 network scan
found requests_unanswered
exits 0 cmif-sim ctl fault at restart
exits 0 cmifctl doctor
hides 'request 24'
exits 0 cmifctl network scan

kill_router 9
found daemon_ended
found ready_marker_left
exits 1 cmifctl doctor --fix
grep -q '^fixed: /tmp/lte_qmi_msg_handler_thread_ready' "$work/out" || fail 'the marker is not fixed'
[ ! -e /tmp/lte_qmi_msg_handler_thread_ready ] || fail 'the marker is still there'
not_found sim_pin_required # the store keeps old values
