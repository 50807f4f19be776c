#!/bin/sh
# A PIN is asked for, wrong ones cost tries, the last one is kept back, and the PUK helps.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 cmifctl sim status
shows 'status: SIM PIN'
shows 'state: PIN required'
hides imsi
exits 0 cmifctl sim retries
shows 'pin1: 3'
shows 'puk1: 10'
shows 'pin2: 3'
shows 'puk2: 10'

# Three wrong PINs; the third has to be forced. Each costs a try, and its digits are never shown.
echo 0000 | exits 4 cmifctl sim enter-pin -
complains 'wrong PIN: incorrect password (16); tries left: 2, before: 3'
hides 0000
writes_nothing
echo 0000 | exits 4 cmifctl --json sim enter-pin -
holds error.code=4 'error.name="refused"' error.daemon.code=16 \
    'error.daemon.name="incorrect password"' error.tries.before=2 error.tries.after=1
hides 0000
echo 1234 | exits 5 cmifctl sim enter-pin -
complains 'one try is left for the PIN'
complains --force
exits 0 cmifctl --json sim retries
holds retries.pin1=1
echo 0000 | exits 4 cmifctl sim enter-pin - --force
complains 'wrong PIN: SIM PUK required (12); tries left: 0, before: 1'
exits 0 cmifctl --json sim status
holds 'sim.status="SIM PUK"' sim.state.code=4 'sim.state.name="PUK required"' sim.imsi=null

# Now no PIN helps, forced or not, and only the PUK opens the SIM again.
echo 1234 | exits 5 cmifctl --json sim enter-pin - --force
holds error.code=5 'error.name="invalid"' error.tries.before=0 error.tries.after=0
printf '11111111\n4321\n' | exits 4 cmifctl sim enter-puk -
complains 'wrong PUK: incorrect password (16); tries left: 9, before: 10'
hides 11111111
printf '12345678\n4321\n' | exits 0 cmifctl --json sim enter-puk -
holds sim.tries_before=9 sim.tries_after=10
exits 0 cmifctl --json sim retries
holds retries.pin1=3 retries.puk1=10 retries.pin2=3 retries.puk2=10

# The new PIN holds, the old one doesn't.
echo 1234 | exits 4 cmifctl sim enter-pin -
complains 'tries left: 2, before: 3'
echo 4321 | exits 0 cmifctl sim enter-pin -
shows 'tries before: 2'
shows 'tries after: 3'
exits 0 cmifctl sim status
shows 'status: READY'
shows 'imsi: 001010123456789'
