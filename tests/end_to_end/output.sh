#!/bin/sh
# The formats of the output: fields alone, lines for scripts, repeated readings, colour.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

# One field a line, in the order asked for; unknown values are empty lines.
exits 0 cmifctl sim status --field sim.state --field sim.state.code --field sim.imsi \
    --field daemons.qmi.state --field command
printf 'pin_required\n3\n\nresponding\nsim status\n' >"$work/expected"
cmp -s "$work/out" "$work/expected" || fail 'other fields'
exits 2 cmifctl sim status --field sim.status
complains "unknown field 'sim.status'"
complains 'sim.state.code'
writes_nothing
exits 2 cmifctl sim enter-pin - --field attempts.after
complains 'for commands that only read'
exits 2 cmifctl radio mode auto --watch
complains 'for commands that only read'

# A line for each known value.
exits 0 cmifctl -o keyvalue sim status
prints 'sim.state.name: pin_required'
prints 'version: 1'
hides imsi
exits 2 cmifctl --output=xml status
exits 2 cmifctl --output json nonsense
holds command=null error.code=2

# Readings repeat until a signal ends them: as JSON one document a line, elsewhere after an empty line.
watches() { # FORMAT COMMAND...
    format=$1
    shift
    cmifctl -o "$format" "$@" --watch=0.1 >"$work/watched" 2>"$work/errors" &
    watcher=$!
}
ended_by() {
    kill "-$1" "$watcher"
    status=0
    wait "$watcher" || status=$?
    [ "$status" -eq $((128 + $2)) ] || fail "the watch ended with $status"
    [ ! -s "$work/errors" ] || fail "an error: $(cat "$work/errors")"
}
three_lines() { [ "$(grep -c "$1" "$work/watched")" -ge 3 ]; }
watches json sim status
within 10 three_lines '^{.*}$'
ended_by TERM 15
[ "$(wc -l <"$work/watched")" -eq "$(jq -c .sim.state.code "$work/watched" | grep -cx 3)" ] ||
    fail 'not one document a line'
cat "$work/watched" >>"$documents"
for format in human keyvalue; do
    watches "$format" sim status
    within 10 three_lines '^sim.state.name: pin_required$\|state: PIN required'
    ended_by HUP 1
    grep -qx '' "$work/watched" || fail 'no empty line between readings'
done

# On a terminal each reading takes the place of the last one: cursor home, the rest cleared.
script -qfc 'exec cmifctl sim status --watch=0.1' "$work/watched" >/dev/null 2>&1 </dev/null &
watcher=$!
within 10 three_lines "^$(printf '\033')\[H$(printf '\033')\[J."
kill "$watcher"
wait "$watcher" || :
grep -q 'state: PIN required' "$work/watched" || fail 'no reading'

# What fails at once fails as it does without; later failures take the place of a reading.
touch /tmp/modify_profile_in_progress
exits 7 cmifctl data status --watch=0.1
rm /tmp/modify_profile_in_progress
watches json data status
within 10 three_lines '"state"'
touch /tmp/modify_profile_in_progress
within 10 three_lines '"profile_busy"'
rm /tmp/modify_profile_in_progress
: >"$work/watched"
within 10 three_lines '"state"'
ended_by INT 2

# A reader that goes away ends it silently.
cmifctl -o json sim status --watch=0.1 2>"$work/errors" | head -n 1 >"$work/out"
holds sim.state.code=3
[ ! -s "$work/errors" ] || fail "an error: $(cat "$work/errors")"

# Colour: only where it is asked for, since this is no terminal.
bold=$(printf '\033[1m')
exits 0 cmifctl sim status
hides "$bold"
exits 0 env NO_COLOR=1 cmifctl --color always sim status
grep -qF "$bold" "$work/out" || fail 'no colour'

# The time limit of the environment.
exits 2 env CMIF_TIMEOUT=soon cmifctl status
complains 'invalid CMIF_TIMEOUT'
unlock
exits 3 env CMIF_TIMEOUT=0.01 cmifctl network scan
complains 'within 0.01 s'
