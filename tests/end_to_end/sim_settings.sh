#!/bin/sh
# The PIN is changed, switched off and on, and the modem locked to a network.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

# Malformed secrets are not sent, so they use up no attempt. Nor do unanswered questions.
echo 12a4 | exits 5 cmifctl sim enter-pin -
complains 'not a valid PIN; nothing was sent'
printf '1234\n' | exits 2 cmifctl sim change-pin -
complains 'standard input ends before the new PIN'
exits 2 setsid cmifctl sim enter-pin
complains 'there is no terminal to ask for the PIN'
exits 2 setsid -w cmifctl sim change-pin
complains 'write them to standard input, one line for each'
exits 2 cmifctl sim enter-pin 1234
exits 0 cmifctl --json sim retries
holds retries.pin1=3

printf '1234\n98765\n' | exits 4 cmifctl sim change-pin -
complains 'the PIN was not checked: SIM PIN required (11); attempts left: 3, before: 3'
unlock
printf '0000\n98765\n' | exits 4 cmifctl sim change-pin -
complains 'wrong PIN: incorrect password (16); attempts left: 2, before: 3'
printf '1234\n98765\n' | exits 0 cmifctl --json sim change-pin -
holds 'result="changed"' attempts.before=2 attempts.after=3

exits 0 cmifctl sim pin-mode
shows 'pin mode: on'
echo 1234 | exits 4 cmifctl sim pin-mode off -
complains 'wrong PIN'
echo 98765 | exits 0 cmifctl sim pin-mode off -
prints 'The SIM does not ask for its PIN.'
exits 0 cmifctl --json sim pin-mode
holds sim.pin_mode.code=0 'sim.pin_mode.name="off"'
echo 98765 | exits 4 cmifctl sim pin-mode off -
complains 'the PIN was not checked: operation not allowed (203)'
echo 98765 | exits 0 cmifctl sim pin-mode on -
exits 0 cmifctl sim pin-mode
shows 'pin mode: on'

# Locked to its own network the SIM still works; locked to another one it doesn't.
within 20 network_is home
echo 11223344 | exits 0 cmifctl sim lock-network -
exits 0 cmifctl sim status
shows 'state: ready'
echo 11223344 | exits 0 cmifctl sim unlock-network -
echo 11223344 | exits 0 cmifctl sim lock-network --network 00102 -
prints 'The modem is locked to 00102.'
exits 0 cmifctl --json sim status
holds sim.state.code=5 'sim.state.name="network_locked"'
within 20 network_is not_registered
echo 99999999 | exits 4 cmifctl sim unlock-network -
complains 'incorrect password (16)'
complains 'does not tell how many are left'
hides 99999999
exits 4 cmifctl network scan
complains 'insert one of those, or give the control key'
echo 11223344 | exits 0 cmifctl sim unlock-network -
exits 0 cmifctl sim status
shows 'state: ready'
within 20 network_is home
