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
