#!/bin/sh
# A PIN is entered; wrong ones use up attempts, the last one is refused, and the PUK unblocks.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 cmifctl sim status
shows 'state: PIN required'
hides imsi
exits 0 cmifctl sim retries
shows 'pin1: 3'
shows 'puk1: 10'
shows 'pin2: 3'
shows 'puk2: 10'

# Three wrong PINs; the third has to be forced. Each uses up an attempt, and is never shown.
echo 0000 | exits 4 cmifctl sim enter-pin -
complains 'wrong PIN: incorrect password (16); attempts left: 2, before: 3'
hides 0000
writes_nothing
echo 0000 | exits 4 cmifctl --json sim enter-pin -
holds error.code=4 'error.name="refused"' error.daemon.code=16 \
    'error.daemon.name="incorrect_password"' error.attempts.before=2 error.attempts.after=1
hides 0000
echo 1234 | exits 5 cmifctl sim enter-pin -
complains 'only one attempt left for the PIN'
complains --force
exits 0 cmifctl --json sim retries
holds retries.pin1=1
echo 0000 | exits 4 cmifctl sim enter-pin - --force
complains 'wrong PIN: SIM PUK required (12); attempts left: 0, before: 1'
exits 0 cmifctl --json sim status
holds sim.state.code=4 'sim.state.name="puk_required"' sim.imsi=null

# Now no PIN is accepted, forced or not, and only the PUK unblocks the SIM.
echo 1234 | exits 5 cmifctl --json sim enter-pin - --force
holds error.code=5 'error.name="invalid"' error.attempts.before=0 error.attempts.after=0
printf '11111111\n4321\n' | exits 4 cmifctl sim enter-puk -
complains 'wrong PUK: incorrect password (16); attempts left: 9, before: 10'
hides 11111111
printf '12345678\n4321\n' | exits 0 cmifctl --json sim enter-puk -
holds attempts.before=9 attempts.after=10
exits 0 cmifctl --json sim retries
holds retries.pin1=3 retries.puk1=10 retries.pin2=3 retries.puk2=10

# The SIM is ready now and asks for no PIN: one is sent only when forced. The new PIN is valid, the
# old one is not.
echo 4321 | exits 5 cmifctl sim enter-pin -
complains 'the SIM does not ask for its PIN (READY)'
echo 1234 | exits 4 cmifctl sim enter-pin - --force
complains 'attempts left: 2, before: 3'
echo 4321 | exits 0 cmifctl sim enter-pin - --force
shows 'before: 2'
shows 'after: 3'
exits 0 cmifctl sim status
shows 'state: ready'
shows 'imsi: 001010123456789'
