#!/bin/sh
# The debug log: switched on, shown, marked and rotated.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 6 cmifctl log show
complains 'there is no log /data/debug_lte.txt'
exits 5 cmifctl log mark early

# A follower that starts before the log exists shows it from its start.
cmifctl log follow >"$work/followed" 2>"$work/waits" &
follower=$!
waits() { grep -qF 'there is no log /data/debug_lte.txt yet' "$work/waits"; }
within 5 waits
exits 0 cmifctl --json log enable
holds 'result="enabled"'

exits 0 cmifctl data profile set --apn internet.example
register
exits 0 cmifctl data start
exits 0 cmifctl log mark 'a line of our own'
exits 0 cmifctl log show
called='\[shared_CMIF_start_network_interface\] called by pid([0-9]*) - process name\[cmifctl\]'
grep -q "^\[CMIF-QMI\]\[[0-9-]*_[0-9:]*\]$called\$" "$work/out" || fail 'the caller is not named'
grep -q ' a line of our own -*$' "$work/out" || fail 'no mark'
exits 0 cmifctl log show --lines 1
[ "$(wc -l <"$work/out")" -eq 1 ] || fail 'not one line'
exits 0 cmifctl --json log show --lines 2
holds 'file="/data/debug_lte.txt"'
[ "$(grep -c '^lines\.' "$work/values")" -eq 2 ] || fail 'not two lines'

followed() { grep -q ' a line of our own -*$' "$work/followed"; }
within 5 followed
kill "$follower"
wait "$follower" || [ $? -eq 143 ] || fail 'the follower did not end by the signal'
full() { "$@" >/dev/full; }
exits 1 full cmifctl log follow
complains "standard output can't be written"

# A rotation makes each log one generation older; the third one drops it.
exits 0 cmifctl log rotate
exits 0 cmifctl log show
hides 'a line of our own'
exits 0 cmifctl log show --generation 1
grep -q ' a line of our own -*$' "$work/out" || fail 'the older generation lacks the mark'
exits 0 cmifctl log rotate
exits 0 cmifctl log show --generation 2
grep -q ' a line of our own -*$' "$work/out" || fail 'the oldest generation lacks the mark'
exits 0 cmifctl log rotate
exits 0 cmifctl log show --generation 2
hides 'a line of our own'

# Switched off, nothing is added. No password is ever in it.
echo 'pass word' | exits 0 cmifctl data profile set --password -
exits 0 cmifctl data stop
! grep -rqF 'pass word' /data || fail 'a password is in the log'
exits 0 cmifctl log disable
lines=$(wc -l </data/debug_lte.txt)
exits 0 cmifctl data start
[ "$(wc -l </data/debug_lte.txt)" -eq "$lines" ] || fail 'the log grew'
exits 2 cmifctl --json log follow
holds 'error.message="'"'log follow' cannot produce JSON: its output has no end\""

# A large log is read from its end.
exits 0 cmifctl log rotate
truncate -s 1G /data/debug_lte.txt
printf '\nlast but one\nlast\n' >>/data/debug_lte.txt
started=$(date +%s)
exits 0 cmifctl log show --lines 2
[ "$(cat "$work/out")" = "last but one
last" ] || fail 'not the last two lines'
timeout 3 cmifctl log follow >"$work/followed" &
follower=$!
last_followed() { [ "$(tail -n 1 "$work/followed")" = last ]; }
within 3 last_followed
kill "$follower" 2>/dev/null || :
[ $(($(date +%s) - started)) -le 5 ] || fail 'too slow'
printf 'without its end' >>/data/debug_lte.txt
exits 0 cmifctl log show --lines 1
prints 'without its end'

# A mark that was not written is told, with the reason.
exits 0 cmifctl log enable
exits 0 cmifctl log mark there
rm -r /data/debug_lte.txt
mkdir /data/debug_lte.txt
exits 1 cmifctl log mark elsewhere
complains '/data/debug_lte.txt is not a regular file'
rmdir /data/debug_lte.txt
ln -s /dev/full /data/debug_lte.txt
exits 1 cmifctl log mark elsewhere
complains 'Remove it: rm -r /data/debug_lte.txt'
rm /data/debug_lte.txt

# What is no regular file hangs no command.
mkfifo /data/debug_lte.txt
for command in show follow 'mark x'; do
    # shellcheck disable=SC2086 # words
    exits 1 timeout 5 cmifctl log $command
    complains '/data/debug_lte.txt is not a regular file'
done
