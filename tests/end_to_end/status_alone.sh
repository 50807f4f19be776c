#!/bin/sh
# Without any daemon the status is still shown, at once; published values stay.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/store"

started=$(date +%s)
exits 0 cmifctl --json status
holds modem.imei=null sim.state=null network.operator=null radio.channel=null \
    data.ipv4=null 'daemons.qmi.state="not_running"' 'daemons.at.reason="its queue is missing"' \
    store.age_s=null # though the command has made the store
exits 0 cmifctl status
shows 'QMI daemon: not running'
shows 'AT daemon: not running'
hides 'age:'
exits 0 cmifctl radio show
exits 0 cmifctl network show
exits 0 cmifctl data status
exits 6 cmifctl network list
complains 'there is no provider list'

# A list that can't be read is not a missing or an empty one.
list=/tmp/lte_provider_list
mkfifo "$list"
exits 1 timeout 5 cmifctl network list
complains 'not a regular file'
writes_nothing
rm "$list"
: >"$list"
chmod 600 "$list"
if setpriv --reuid 65534 --clear-groups true 2>/dev/null; then
    exits 1 setpriv --reuid 65534 --clear-groups cmifctl --json network list
    holds 'error.name="other"' 'error.message="the provider list /tmp/lte_provider_list can'"'"'t be read: Permission denied"'
fi
rm "$list"

# A request without a daemon fails at once, and creates no queue.
exits 8 cmifctl --json sim retries
holds error.code=8 'error.name="not_ready"'
[ -z "$(queued 899)" ] || fail 'the tool made a queue'
[ $(($(date +%s) - started)) -le 10 ] || fail 'too slow'

start_router --pace 0.1
kill_router 15
exits 0 cmifctl --json status
holds 'sim.state.name="pin_required"' 'modem.imei="001010012345672"' 'daemons.qmi.state="not_ready"' 'daemons.at.state="ended"'
