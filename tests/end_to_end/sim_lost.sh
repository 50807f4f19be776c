#!/bin/sh
# Ten wrong PUKs block the SIM permanently; the tool refuses the last attempt.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

for left in 9 8 7 6 5 4 3 2 1; do
    printf '00000000\n4321\n' | exits 4 cmifctl --json sim enter-puk -
    holds "error.attempts.after=$left"
done
printf '00000000\n4321\n' | exits 5 cmifctl sim enter-puk -
complains 'only one attempt left for the PUK'
exits 0 cmifctl --json sim retries
holds retries.puk1=1

printf '00000000\n4321\n' | exits 4 cmifctl --json sim enter-puk - --force
holds error.attempts.before=1 error.attempts.after=0
exits 0 cmifctl --json sim status
holds sim.state.code=6 'sim.state.name="permanently_blocked"'
printf '12345678\n4321\n' | exits 5 cmifctl sim enter-puk - --force
complains 'no attempts left for the PUK'

echo 1234 | exits 5 cmifctl sim enter-pin -
complains 'the SIM does not ask for its PIN (SIM FAILURE)'
complains 'ask the operator for another'

# With the PIN blocked too, the hint doesn't lead to the PUK.
exits 0 cmif-sim ctl pin-tries 0
for words in 'enter-pin -' 'pin-mode off -'; do
    # shellcheck disable=SC2086 # words
    echo 1234 | exits 5 cmifctl sim $words
    complains 'no attempts left for the PIN'
    complains 'The SIM is permanently blocked; ask the operator for another.'
done
