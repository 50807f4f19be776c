#!/bin/sh
# The data connection comes up, shows its addresses and its uptime, and goes down.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

# The reason for a failure is given: no access point name, a locked SIM, no network.
exits 5 cmifctl data start
complains 'no access point name (APN) is set'
exits 0 cmifctl data profile set --apn internet.example --pdp ipv4v6
exits 4 cmifctl data start
complains "the SIM's state is: PIN required"
complains "'cmifctl sim enter-pin' unlocks it"
writes_nothing
register
echo 11223344 | exits 0 cmifctl sim lock-network --network 00102 -
exits 4 cmifctl data start
complains "the SIM's state is: network locked"
complains "'cmifctl sim unlock-network' removes the lock"
echo 11223344 | exits 0 cmifctl sim unlock-network -
within 20 network_is home
exits 0 cmifctl radio functionality offline
exits 4 cmifctl --json data start
holds error.code=4 'error.name="refused"'
case $(value error.message) in
*'the modem is not registered with a network"') ;;
*) fail 'no reason' ;;
esac
exits 4 cmifctl --timeout 1 data start
complains 'the modem is not registered with a network'
complains 'Either the radio is off'
complains 'Or no network is in reach'
exits 0 cmifctl radio functionality full
within 20 network_is home

exits 0 cmif-sim ctl coverage none
within 20 network_is searching
exits 4 cmifctl data start
complains 'the modem is searching for a network'
complains 'The radio is on'
exits 0 cmif-sim ctl coverage full
within 20 network_is home
exits 0 cmif-sim ctl deny 15
within 20 network_is denied
exits 4 cmifctl data start
complains 'the network denies the registration'
complains "'cmifctl network auto'"
exits 0 cmif-sim ctl allow
within 20 network_is home

exits 0 cmifctl data start
shows 'state: connected'
shows 'ipv4: 192.0.2.10'
shows 'context apn: internet.example'
exits 0 cmifctl --json data status
holds data.state.code=3 'data.state.name="connected"' 'data.ipv4="192.0.2.10"' \
    'data.ipv6="2001:db8:0:1::1"' 'data.packet_service.name="attached"'

# It stays up, and its uptime grows.
exits 0 cmifctl data start
exits 0 cmifctl --json data uptime
age=$(value data.uptime_s)
older() { [ "$(cmifctl data uptime | sed -n 's/.*uptime: 00:00:0*\([0-9]\)/\1/p')" -gt "$age" ]; }
within 5 older
exits 0 cmifctl --json data status
holds 'data.ipv4="192.0.2.10"'

exits 0 cmifctl data stop
shows 'state: disconnected'
exits 0 cmifctl --json data status
holds data.state.code=1 data.uptime_s=0 data.ipv4=null data.ipv6=null
exits 0 cmifctl data stop

# Losing the network ends it.
exits 0 cmifctl data start
exits 0 cmifctl radio functionality offline
within 10 data_is disconnected

# A marker that a change of the profile has left hides the state of a connection that comes up.
exits 0 cmifctl radio functionality full
within 20 network_is home
for key in before after; do
    exits 0 cmifctl config set "lte_qmi_wait_time_${key}_restart" 0
done
touch -d '1 hour ago' /tmp/modify_profile_in_progress
exits 7 cmifctl --timeout 2 data start
complains 'the daemon has accepted the request'
complains "can't be read while /tmp/modify_profile_in_progress exists"
complains "'cmifctl doctor --fix'"
rm /tmp/modify_profile_in_progress
within 10 data_is connected
