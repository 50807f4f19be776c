#!/bin/sh
# However a command ends, it leaves no marker and no request; parallel attempts don't block the SIM.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

marker=/tmp/modify_profile_in_progress

# Three wrong PINs at a time: with one attempt left, the third is not sent.
attempt() {
    status=0
    echo 0000 | cmifctl sim enter-pin - >"$work/attempt.$1" 2>&1 || status=$?
    echo "$status" >"$work/status.$1"
}
for n in 1 2 3; do attempt $n & done
wait
[ "$(sort "$work"/status.? | tr '\n' ' ')" = '4 4 5 ' ] || fail "not two refusals and one that was not sent"
grep -q 'only one attempt left for the PIN' "$work"/attempt.? || fail 'the third was sent'
exits 0 cmifctl --json sim retries
holds retries.pin1=1
echo 1234 | exits 0 cmifctl sim enter-pin - --force

# The reader of the trace goes away after some lines.
for n in $(seq 60); do
    cmifctl --trace data profile set --apn "apn$n" 2>&1 >/dev/null | head -n $((n % 20 + 1)) >/dev/null
    [ ! -e "$marker" ] || fail "a marker is left after run $n"
done

# No core dump holds what a call was given.
cmifctl --timeout 5 network scan >/dev/null &
scan=$!
limited() { grep -q 'Max core file size *0 *0 ' "/proc/$scan/limits"; }
within 3 limited
kill "$scan"
wait "$scan" || [ $? -eq 143 ] || fail 'the search did not end by the signal'

# Signals at any moment of a change.
for signal in INT TERM HUP QUIT PIPE ALRM USR1 USR2 XCPU VTALRM RTMIN; do
    for delay in 0.02 0.05 0.1; do
        timeout --foreground -s $signal $delay cmifctl data profile set --apn "x$delay" \
            >/dev/null 2>&1 || :
        [ ! -e "$marker" ] || fail "a marker is left after SIG$signal"
    done
done
for key in 899 1158; do
    [ "$(queued $key)" = 0 ] || fail "a request is left in queue $key"
done

# An earlier marker that can't be removed is named as what it is.
echo 1 >"$marker"
if mount --bind "$marker" "$marker" 2>/dev/null; then
    exits 0 cmifctl data profile set --apn z
    complains "the earlier marker $marker could not be removed"
    hides 'sh:'
    hides 'rm:'
    umount "$marker"
fi
rm "$marker"

# What is in the marker's place hangs no command.
mkfifo "$marker"
exits 1 timeout 5 cmifctl data profile set --apn y
complains "$marker is not a regular file"
rm "$marker"
exits 0 cmifctl data profile set --apn y
