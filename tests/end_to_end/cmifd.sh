#!/bin/sh
# The daemons over a modem that the real ModemManager drives, here an emulated one: from the PIN to
# a ping through the connection, then what happens to a modem in use. Where namespaces are refused the
# modem has no network interface and no USB port.
# Without arguments the test starts the box, in which it runs itself again.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"
skipped=77

skip() {
    echo "cmifd: skipped: $*" >&2
    exit $skipped
}

if [ $# -eq 0 ]; then
    for program in ModemManager mmcli dbus-daemon ping; do
        PATH=$PATH:/usr/sbin:/sbin command -v $program >/dev/null || skip "no $program"
    done
    cmif-sim usb --pace 0.1 -- sh "$0" inside
    exit
fi

PATH=$PATH:/usr/sbin:/sbin
key_is() { [ "$(cmifctl config get "$1")" = "$2" ]; }
sim_is() { key_is lte_sim_status "$1"; }
pin() { printf %s "$1" | cmifctl sim enter-pin -; }
last_pin() { printf %s "$1" | cmifctl sim enter-pin --force -; }
puk() { printf '%s\n' "$@" | cmifctl sim enter-puk -; }

# More than once: it looks at the modem while the modem is looked after.
for _ in 1 2 3 4 5; do exits 0 timeout 30 cmifd --first --probe; done
grep -q '^model  *TOBY-L210$' "$work/out" || fail 'another model'

port=$(free_port)
start_cmifd() {
    TZ=UTC-2:45 cmifd --first --apply-address --at-port "$port" --verbose 2>>"$work/log" &
    daemon=$!
}
end_cmifd() {
    kill "$daemon"
    wait "$daemon" || fail "cmifd ended with $?"
}
start_cmifd
within 30 sim_is 'SIM PIN'
exits 1 grep -q SendPin "$work/log" # a PIN is never sent by itself

# A wrong PIN costs one attempt; the right one leads into the network.
exits 4 pin 9999
within 30 key_is lte_mobile_pin1c 2
exits 0 pin 1234
sim_is READY || fail 'the SIM is not open'
key_is lte_mobile_imsi 001010123456789 || fail 'another IMSI'
within 60 key_is lte_network_reg_status_state 1
within 30 key_is lte_operator_select_operator_plmnname 00101
within 30 key_is lte_query_network_cellid 01A2D003
within 30 key_is lte_query_network_rsrp "$(cmifctl config get lte_query_network_rsrp)"
key_is lte_network_search_mode 0 || fail 'another search mode'

# The network.
exits 0 cmifctl network scan
grep -q '^00103 *forbidden' "$work/out" || fail 'not all networks found'
exits 0 cmifctl network select 00102
key_is lte_operator_select_operator_plmnname 00102 || fail 'another operator'
exits 0 cmifctl network auto
within 60 key_is lte_network_reg_status_state 1

# Messages.
exits 0 cmifctl sms list
grep -q 'Welcome to Test Network' "$work/out" || fail 'no message'

# The time zone: by the port that ModemManager leaves alone.
exits 0 cmifctl radio timezone
exec 3<>"$port"
exits 0 asks 'AT+CCLK?'
grep -q '^+CCLK: ".*+11"' "$work/out" || fail 'another time zone'
exits 0 asks 'AT+CTZU?'
prints '+CTZU: 0'
exec 3<&-

# The radio off and on.
exits 0 cmifctl radio functionality radio_off
within 30 key_is lte_query_network_rsrp ''
exits 0 cmifctl radio functionality full
within 60 key_is lte_network_reg_status_state 1

if has_usb; then
    # A connection, with its address on the interface; the network ends it.
    exits 0 cmifctl data profile set --apn internet.example
    exits 0 cmifctl data start
    key_is lte_ipv4_address 192.0.2.10 || fail 'another address'
    exits 0 ping -c 1 -W 20 192.0.2.1

    # cmifd starts again: the connection stays, its address goes and comes.
    end_cmifd
    exits 2 ping -c 1 -W 1 192.0.2.1
    start_cmifd
    within 30 key_is lte_qmi_connection_status 3
    within 30 ping -c 1 -W 1 192.0.2.1
    exits 0 cmif-sim ctl connection drop 27
    within 30 key_is lte_qmi_connection_status 1
    exits 2 ping -c 1 -W 1 192.0.2.1 # there is no way there any more

    # A crash: the modem starts again, and its SIM asks for its PIN.
    exits 0 cmif-sim ctl modem reset
    within 60 sim_is 'SIM PIN'

    # Unplugged: no modem after the grace. Plugged in: it is there again, and asks for its PIN.
    exits 0 cmif-sim ctl usb unplug
    within 60 sim_is ''
    exits 4 cmifctl sim retries
    exits 0 cmif-sim ctl usb plug
    within 60 sim_is 'SIM PIN'
else
    exits 1 cmif-sim ctl usb unplug
    complains 'USB is not available: the system refuses namespaces'
    exits 0 cmif-sim ctl sim remove
    within 60 sim_is 'NOT INSERTED'
    exits 0 cmif-sim ctl sim insert
    within 60 sim_is 'SIM PIN'
fi

# The PIN blocked: ModemManager makes another modem of it, which is the same one here.
for wrong in 1111 2222 3333; do exits 4 last_pin $wrong; done
within 60 sim_is 'SIM PUK'
exits 0 puk 12345678 1234
within 30 sim_is READY
within 60 key_is lte_network_reg_status_state 1

[ "$(grep -c 'Sim.SendPin (\*)' "$work/log")" -eq 5 ] || fail 'a PIN was sent by itself'
exits 1 grep -qE '9999|1234[^5]' "$work/log"

end_cmifd
