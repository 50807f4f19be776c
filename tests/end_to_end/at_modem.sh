#!/bin/sh
# AT ports for any program.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

cmif-sim at-modem --pace 0.1 --state registered >"$work/ports" &
modem=$!
ports_are_printed() { [ "$(wc -l <"$work/ports")" -eq 2 ]; }
within 20 ports_are_printed
port=$(head -n 1 "$work/ports")
exits 0 cmif-sim status
prints "port     $port"
hides 'left out'

exec 3<>"$port"
exits 0 asks ATE0
exits 0 asks 'AT+COPS?'
prints '+COPS: 0,0,"Test Network",7'
exits 0 cmif-sim ctl coverage none
exits 0 asks 'AT+COPS?'
prints '+COPS: 0'
exits 0 asks AT+CMGS
prints ERROR
exec 3<&-

kill "$modem"
wait "$modem" || fail "ended with $?"
exits 2 cmif-sim at-modem --no-daemons
