#!/bin/sh
# The QMI daemon is not ready, killed in the middle of a request, and started again.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/store"

# Only the AT daemon runs: what needs the QMI daemon ends with 8, the rest works.
start_router --pace 0.1 --no-qmi
exits 8 cmifctl data profile set --apn internet.example
complains 'the QMI daemon is not ready'
exits 0 cmifctl config set lte_qmi_apn internet.example
exits 8 cmifctl --json data start
holds error.code=8 'error.name="not_ready"'
exits 0 cmifctl --json sim status
holds 'sim.state.name="pin_required"' 'daemons.qmi.state="not_running"'
kill_router 15

# An orderly end removes the readiness marker.
start_router --pace 0.1
within 10 qmi_answers
exits 0 cmifctl data profile set --apn internet.example
kill_router 15
exits 8 cmifctl data start

# A killed daemon leaves it: a request times out and is withdrawn.
start_router --pace 0.1
within 10 qmi_answers
exits 0 cmifctl data profile set --apn internet.example
kill_router 9
exits 3 cmifctl --timeout 1 data start
complains 'the QMI daemon did not answer shared_CMIF_start_network_interface (request 4) within 1 s'
complains 'it was withdrawn'
[ "$(queued 1158)" = 0 ] || fail 'the request is still queued'
exits 3 cmifctl --json --timeout 1 data profile set --apn never.example
holds error.code=3 error.withdrawn=true
[ "$(queued 1158)" = 0 ] || fail 'the request is still queued'
[ ! -e /tmp/modify_profile_in_progress ] || fail 'the marker of the abandoned change is left'
exits 0 cmifctl data status

# A marker of another process is not touched.
touch /tmp/modify_profile_in_progress
exits 3 cmifctl --timeout 1 data profile set --apn never.example
[ -e /tmp/modify_profile_in_progress ] || fail "another process's marker is gone"
rm /tmp/modify_profile_in_progress

# Killed while a connection comes up: its last values stay published, and a start is not answered.
start_router --pace 1
within 10 qmi_answers
exits 0 cmifctl data profile set --apn internet.example
register
aside exits 3 cmifctl --timeout 2 data start
start=$!
within 5 data_is connecting
kill_router 9
wait "$start"

start_router --pace 0.1
within 10 qmi_answers
exits 0 cmifctl data profile set --apn internet.example
register
exits 0 cmifctl data start
shows 'state: connected'
[ "$(queued 1159)" = 0 ] || fail 'an answer is left over'
kill_router 15
