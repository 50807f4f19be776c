#!/bin/sh
# The simulated modem plugged into a computer with ModemManager: from the PIN to a ping, and trouble.
# Without arguments the test starts the box, in which it runs itself again.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"
skipped=77

skip() {
    echo "usb: skipped: $*" >&2
    exit $skipped
}

if [ "${1-}" != inside ]; then
    for program in ModemManager mmcli dbus-daemon ip ping; do
        PATH=$PATH:/usr/sbin:/sbin command -v $program >/dev/null || skip "no $program"
    done
    unshare -mn true 2>/dev/null || unshare -Umn true 2>/dev/null || skip 'no namespaces; cmifd.sh tests what can be without'
    [ "${1-}" = can-run ] || cmif-sim usb --pace 0.1 -- sh "$0" inside
    exit
fi

PATH=$PATH:/usr/sbin:/sbin
export LC_ALL=C.UTF-8 # in which mmcli reads its arguments
modem() { mmcli -m any --output-keyvalue | sed -n "s/^modem\.$1 *: //p"; }
modem_has() { [ "$(modem "$1")" = "$2" ]; }
state_is() { modem_has generic.state "$1"; }
bearer() { mmcli -b "$1" --output-keyvalue | sed -n "s/^bearer\.$2 *: //p"; }
bearer_has() { [ "$(bearer "$1" "$2")" = "$3" ]; }
messages() { mmcli -m any --messaging-list-sms | grep -c '(received)'; }
no_modem() { mmcli -L | grep -q 'No modems'; }

# Locked; a wrong PIN costs one attempt.
within 30 state_is locked
modem_has generic.model TOBY-L210 || fail 'another model'
modem_has generic.equipment-identifier 001010012345672 || fail 'another IMEI'
exits 1 mmcli -i 0 --pin=9999
complains 'IncorrectPassword'
within 30 modem_has 'generic.unlock-retries.value\[1\]' 'sim-pin (2)'
exits 0 mmcli -i 0 --pin=1234
within 30 state_is disabled

# Registered.
exits 0 mmcli -m any --enable
within 30 state_is registered
modem_has 3gpp.operator-code 00101 || fail 'another operator'
modem_has 3gpp.registration-state home || fail 'not at home'
exits 0 mmcli -m any --3gpp-scan --timeout=60
grep -q '00103 - Closed Test Network (lte, forbidden)' "$work/out" || fail 'not all networks found'

# Connected: the network answers at the other end of the interface.
exits 0 mmcli -m any --simple-connect=apn=internet.example
state_is connected || fail 'not connected'
bearer_has 0 ipv4-config.method static || fail 'no static address'
address=$(bearer 0 ipv4-config.address)/$(bearer 0 ipv4-config.prefix)
exits 0 ip address add "$address" dev wwan0
exits 0 ip link set wwan0 up
exits 0 ping -c 1 -W 20 "$(bearer 0 ipv4-config.gateway)"
exits 0 cmif-sim ctl connection drop 27
within 30 bearer_has 0 status.connected no
exits 1 ping -c 1 -W 1 192.0.2.1

# Messages in both directions.
[ "$(messages)" -eq 6 ] || fail 'not all messages'
exits 0 cmif-sim ctl sms inject +12025550123 hello there
within 30 sh -c 'mmcli -s 6 --output-keyvalue | grep -q "text *: hello there"'
exits 0 mmcli -m any --messaging-create-sms="text='5 € to myself',number='+12025550100'"
exits 0 mmcli -s 7 --send
# mmcli escapes the currency sign.
within 30 sh -c 'mmcli -s 8 --output-keyvalue | grep -q "text *: 5 .* to myself"'
exits 0 mmcli -m any --messaging-delete-sms=4 # one of many parts
exits 1 mmcli -s 4

# Out of reach and back; another operator; LTE alone.
exits 0 cmif-sim ctl coverage none
within 30 modem_has 3gpp.registration-state searching
exits 0 cmif-sim ctl coverage full
within 30 state_is registered
exits 0 mmcli -m any --3gpp-register-in-operator=00102
within 30 modem_has 3gpp.operator-code 00102
exits 0 mmcli -m any --set-allowed-modes=4g
within 30 modem_has generic.current-modes 'allowed: 4g; preferred: none'

# The card's settings.
exits 0 mmcli -i 0 --change-pin=4321 --pin=1234
exits 0 mmcli -i 0 --disable-pin --pin=4321

# A port that ModemManager leaves alone.
exec 3<>/dev/ttyACM2
exits 0 asks AT+CGMM
prints TOBY-L210
exec 3<&-

# Pulled out and plugged in: a modem that starts, its SIM open without a PIN.
exits 0 cmif-sim ctl usb unplug
within 30 no_modem
[ ! -e /dev/ttyACM0 ] || fail 'a port is left'
exits 0 cmif-sim ctl usb plug
within 30 state_is disabled

# A ModemManager that was killed finds the modem again.
for process in /proc/[0-9]*; do
    [ "$(cat "$process/comm")" != ModemManager ] || kill -9 "${process#/proc/}"
done
ModemManager --test-no-udev --test-no-suspend-resume --test-no-qrtr 2>/dev/null &
within 30 state_is disabled
kill $!
