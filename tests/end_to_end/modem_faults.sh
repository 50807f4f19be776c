#!/bin/sh
# What a caller sees of what happens to the modem, and what the doctor finds: the table of
# docs/faults.md.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

# found NAME: the doctor finds this.
found() {
    exits 1 cmifctl --json doctor
    grep -qF "\"name\": \"$1\"" "$work/out" || fail "no finding $1"
}
exits 0 cmif-sim ctl state registered

exits 0 cmif-sim ctl coverage none
exits 0 cmifctl network show
shows 'registration: searching'
exits 0 cmif-sim ctl coverage full
exits 0 cmif-sim ctl deny 15
exits 0 cmifctl network show
shows 'registration: denied'
exits 0 cmif-sim ctl allow
exits 0 cmif-sim ctl sim remove
exits 4 cmifctl sim retries
complains 'SIM not inserted (10)'
exits 0 cmif-sim ctl sim insert
exits 0 cmif-sim ctl state connected
exits 0 cmif-sim ctl connection drop
exits 0 cmifctl data status
shows 'last error: no_network_service'
exits 0 cmif-sim ctl state locked
exits 0 cmif-sim ctl pin-tries 1
echo 0000 >"$work/pin"
# shellcheck disable=SC2016 # for the inner shell
exits 5 sh -c 'cmifctl sim enter-pin - <"$1"' sh "$work/pin"
complains 'only one attempt left for the PIN'
found sim_pin_last
exits 0 cmif-sim ctl puk-tries 0
exits 0 cmifctl sim status
shows 'state: permanently blocked'

# sim_is STATE FINDING: what the SIM status shows, and the doctor finds; at once or a little later.
sim_shows() { cmifctl sim status | grep -qF "state: $1"; }
sim_is() {
    within 10 sim_shows "$1"
    found "$2"
}
exits 0 cmif-sim ctl state registered
exits 0 cmif-sim ctl sim fail
sim_is 'not ready' sim_not_ready
exits 0 cmif-sim ctl sim insert
sim_is 'PIN required' sim_pin_required
exits 0 cmif-sim ctl state registered
exits 0 cmif-sim ctl sim lock-network 00102
sim_is 'network locked' sim_network_locked
echo 1234 | exits 5 cmifctl sim enter-pin -
complains "'cmifctl sim unlock-network'"
exits 0 cmif-sim ctl sim insert other
sim_is 'PIN required' sim_pin_required
exits 0 cmifctl sim status
shows 'iccid: 8900102987654321015'

# The network.
network_has() { cmifctl network show | grep -qF "$1"; }
exits 0 cmif-sim ctl sim insert other
exits 0 cmif-sim ctl state registered
exits 0 cmifctl network show
shows 'cell id: 01A2D003'
exits 0 cmif-sim ctl signal rsrp=-118
exits 0 cmifctl status --field radio.rsrp_dbm
prints -118
exits 0 cmif-sim ctl handover
exits 0 cmifctl network show
shows 'cell id: 01A2E107'
exits 0 cmif-sim ctl roam 00102
within 10 network_has 'registration: registered (roaming)'
within 10 network_has 'operator code: 00102'
exits 0 cmif-sim ctl home
within 10 network_has 'operator code: 00101'
exits 0 cmif-sim ctl coverage utran
within 10 network_has 'technology: UTRAN'
exits 0 cmif-sim ctl coverage full
within 10 network_has 'technology: E-UTRAN'
within 10 network_has 'registration: registered (home)'
exits 0 cmif-sim ctl sms inject +12025550177 'Where are you?'
exits 0 cmifctl sms list
grep -q 'Where are you?' "$work/out" || fail 'the message did not arrive'
exits 0 cmif-sim ctl sms storm 3
exits 0 cmifctl sms list
grep -q 'Message 3 of 3' "$work/out" || fail 'the messages did not arrive'

exits 0 cmif-sim ctl modem silent 30s # of the simulation: 3 s
exits 3 cmifctl --timeout 1 sim retries
complains 'had picked up the request'
exits 0 cmifctl --timeout 20 sim retries
exits 0 cmif-sim ctl modem reset 20s
exits 4 cmifctl sim retries
complains 'no modem (201)'
