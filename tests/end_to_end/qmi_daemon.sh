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

# A write-protected marker of an earlier change: the user's own is removed, without a question on a
# terminal; another user's stays, and is named.
marker=/tmp/modify_profile_in_progress
as_other_user() { setpriv --reuid 65534 --regid 65534 --clear-groups "$@"; }
if as_other_user true 2>/dev/null; then
    export CMIF_STORE="$work/theirs"
    chmod 755 "$work"
    mkdir "$CMIF_STORE"
    chown 65534 "$CMIF_STORE"
    setpriv --reuid 65534 --regid 65534 --clear-groups cmif-sim serve --pace 0.1 &
    router=$!
    within 20 as_other_user cmifctl sim retries
    for owner in 65534 0; do
        install -m 444 -o $owner /dev/null "$marker"
        exits 0 as_other_user timeout 10 script -qec "cmifctl data profile set --apn set.by.$owner" /dev/null
        shows "apn: set.by.$owner$(printf '\r')"
        ! grep -q 'sh:\|rm:' "$work/out" || fail "the words of a shell"
        if [ $owner = 0 ]; then
            grep -q "the earlier marker $marker could not be removed" "$work/out" || fail 'no note'
            [ -e "$marker" ] || fail 'the marker is gone'
        else
            [ ! -e "$marker" ] || fail 'the marker is left'
        fi
    done
fi
