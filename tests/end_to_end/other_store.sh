#!/bin/sh
# What was not read is unknown: no number, no "no", no blocked SIM. Another store is named.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/empty"

# nothing_known: all values of the document but these are null.
nothing_known() {
    values | grep -vE '^(version|command|daemons\.|store\.)' | grep -v '=null$' >"$work/known" || :
    [ ! -s "$work/known" ] || fail "known: $(cat "$work/known")"
}

for words in status 'sim status' 'radio show' 'radio mode' 'network show' 'data status' \
    'data uptime' 'data auto-connect' summary; do
    # shellcheck disable=SC2086 # words
    exits 0 cmifctl --json $words
    holds version=1
    [ "$words" = summary ] || nothing_known
done
holds summary.rssi_dbm=null summary.imei=null
exits 0 cmifctl status
hides uptime
hides 'auto connect'
shows "AT daemon: not started: its queue is missing"
shows "directory: $work/empty"
exits 0 cmifctl data uptime
complains 'the value is not known'
writes_nothing

# The daemons use a store of their own.
CMIF_STORE="$work/theirs" start_router --pace 0.1
for words in 'sim status' 'network show' 'data status' status; do
    # shellcheck disable=SC2086
    exits 0 cmifctl --json $words
    complains "the daemons use the store $work/theirs, and this command $work/empty"
done
holds "store.directory=\"$work/empty\"" "store.daemons_directory=\"$work/theirs\"" \
    sim.iccid=null network.registration=null daemons.at.serves=true
exits 1 cmifctl --json sim retries

case $(value error.hint) in
*"$work/theirs"*"$work/empty"*) ;;
*) fail 'the stores are not named' ;;
esac
echo 1234 | exits 1 cmifctl sim enter-pin -
complains "$work/theirs"
hides blocked

# Their own store has it all, and there is nothing to say.
exits 0 env CMIF_STORE="$work/theirs" cmifctl --json status
holds 'sim.state.name="pin_required"' "store.daemons_directory=\"$work/theirs\""
[ ! -s "$work/err" ] || fail 'a note'
kill_router 9
exits 0 cmifctl --json status
holds store.daemons_directory=null daemons.at.serves=false
