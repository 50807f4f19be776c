#!/bin/sh
# What was not read is unknown: no number, no "no", no blocked SIM. Another store is named.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/empty"

answered= # values that the QMI daemon itself has given

# nothing_known: all values of the document but these are null.
nothing_known() {
    values | grep -vE "^(version|command|daemons\.|store\.$answered)" | grep -v '=null$' >"$work/known" || :
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
exits 0 cmifctl --json data profile show
holds profile.apn=null profile.authentication=null profile.pdp_type=null profile.ip_family=null
exits 0 cmifctl status
hides uptime
hides 'auto connect'
shows "AT daemon: not running"
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
    sim.iccid=null network.registration=null 'daemons.at.state="running"'
exits 1 cmifctl --json sim retries

case $(value error.message) in
*"$work/theirs"*"$work/empty"*) ;;
*) fail 'the stores are not named' ;;
esac
echo 1234 | exits 1 cmifctl sim enter-pin -
complains "$work/theirs"
hides blocked

# refused_here COMMAND...: with this store, nothing is sent or changed, and both stores are named.
refused_here() {
    exits 1 timeout 10 cmifctl "$@"
    complains "the daemons use the store $work/theirs, and this command $CMIF_STORE"
    writes_nothing
}

# reads_nothing_here: no reading comes from this store, and no request that needs the other is sent.
reads_nothing_here() {
    for words in 'sim status' 'radio show' 'network show' 'data status' status summary \
        'data auto-connect' 'data profile show'; do
        # shellcheck disable=SC2086
        exits 0 cmifctl --json $words
        nothing_known
        complains "the daemons use the store $work/theirs, and this command $CMIF_STORE"
    done
    for words in 'config list' 'config get lte_sim_status'; do
        # shellcheck disable=SC2086
        exits 0 cmifctl $words
        complains "the daemons use the store $work/theirs, and this command $CMIF_STORE"
    done
    for words in 'sim retries' 'sim pin-mode' 'radio domain' 'sms list' 'sms show 1' 'data start' \
        'data stop' 'data start --no-wait' 'network select 00102' 'config save' 'log enable' \
        'log disable' 'config set example.key 1' 'data auto-connect on' \
        'data profile set --user x'; do
        # shellcheck disable=SC2086
        refused_here $words
    done
    for words in enter-pin change-pin 'pin-mode off' enter-puk; do
        # shellcheck disable=SC2086
        printf '12345678\n12345678\n' | refused_here sim $words -
    done
}
answered='|sim\.state\.|modem\.device_revision|data\.packet_service\.'
theirs() { env CMIF_STORE="$work/theirs" cmifctl "$@"; }
exits 0 theirs data profile set --apn real.example --user anna
reads_nothing_here

# Nor from a store with old values: the last attempt is not spent on what it holds.
cp -R "$work/theirs" "$work/old"
for _ in 1 2; do echo 0000 | exits 4 theirs sim enter-pin -; done
export CMIF_STORE="$work/old"
exits 0 cmifctl config get lte_mobile_pin1c
prints 3
reads_nothing_here
exits 0 theirs --json sim retries
holds retries.pin1=1
exits 0 theirs --json data profile show
holds 'profile.apn="real.example"' 'profile.user="anna"'
CMIF_STORE="$work/empty"

# Nor from one that can't be read, whichever the daemons use.
for words in 'sim retries' 'sim pin-mode' 'radio domain' 'sms list' 'sms show 1' 'data start' \
    'data stop' 'network select 00102' 'config save' 'log enable' 'config set example.key 1' \
    'data auto-connect on' 'data profile set --user x' 'data profile show' summary; do
    # shellcheck disable=SC2086
    exits 1 env CMIF_STORE=/dev/null/x timeout 10 cmifctl $words
    complains /dev/null/x
    writes_nothing
done
for words in enter-pin change-pin 'pin-mode off' enter-puk; do
    # shellcheck disable=SC2086
    printf '12345678\n12345678\n' | exits 1 env CMIF_STORE=/dev/null/x cmifctl sim $words -
    complains /dev/null/x
    hides blocked
done

# With --force the counters are not needed; the answer alone is the verdict.
echo 1234 | exits 0 cmifctl --json sim enter-pin - --force
holds 'result="accepted"' attempts.before=null attempts.after=null

# Their own store has it all, and there is nothing to say.
exits 0 env CMIF_STORE="$work/theirs" cmifctl --json status
holds 'sim.state.name="ready"' "store.daemons_directory=\"$work/theirs\""
[ ! -s "$work/err" ] || fail 'a note'
kill_router 9
exits 0 cmifctl --json status
holds store.daemons_directory=null 'daemons.at.state="ended"'
