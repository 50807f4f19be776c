#!/bin/sh
# The profile changes while the connection comes up, and while a start waits.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 cmifctl data profile set --apn first.example
register

aside exits 0 cmifctl data start
start=$!
within 10 data_is connecting
exits 0 cmifctl data profile set --apn second.example
wait "$start"
within 10 data_is connected # again, if the first profile had been connected before the change
exits 0 cmifctl --json data status
holds 'data.state.name="connected"' 'data.context.apn="second.example"'

# A change while connected reconnects.
before=$(value data.ipv4)
exits 0 cmifctl data profile set --apn third.example
within 10 data_is connected
exits 0 cmifctl --json data status
holds 'data.context.apn="third.example"'
[ "$(value data.ipv4)" != "$before" ] || fail 'still the old connection'
exits 0 cmifctl data stop

# A start waits for the end of a change that another process makes.
touch /tmp/modify_profile_in_progress
(sleep 1; rm /tmp/modify_profile_in_progress) &
exits 0 cmifctl data start
wait
exits 0 cmifctl --json data status
holds 'data.state.name="connected"'
