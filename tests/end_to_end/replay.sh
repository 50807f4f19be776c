#!/bin/sh
# A recorded session, replayed, looks the same to the same commands; a recorder in front of the
# simulator sees what the simulator records itself.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

echo "the recorded session" >"$work/command"
cd "$work" # which is visible in the sandbox
session=$work/session
recording=$work/recording.jsonl

# All but what belongs to the daemons' process and the box: `status` shows these too.
cat >"$session" <<'SESSION'
show() { echo "$ $*"; "$@" 2>&1; echo "= $?"; }
show cmifctl sim status
show cmifctl sim retries
echo 0000 | show cmifctl sim enter-pin -
echo 1234 | show cmifctl sim enter-pin -
i=0
until cmifctl network show | grep -q ': registered' || [ "$i" -eq 100 ]; do
    sleep 0.1
    i=$((i + 1))
done
show cmifctl network show
show cmifctl network scan
show cmifctl network list
show cmifctl network select 00102
show cmifctl network show
show cmifctl sms list
show cmifctl sms show 5
show cmifctl sms delete 5
printf 'my-password\n' | show cmifctl data profile set --apn internet.example --user me --password -
show cmifctl data start
show cmifctl data profile show
show cmifctl sim status
SESSION

# same FILE FILE
same() { diff "$1" "$2" >"$work/out" || fail "the replayed session differs"; }

cmif-sim run --pace 0.1 --record "$recording" --with-secrets -- sh "$session" >"$work/recorded"
grep -q 'connected' "$work/recorded" || fail "the session did not get far"
exits 0 cmif-sim replay "$recording" -- sh "$session"
cp "$work/out" "$work/replayed"
same "$work/recorded" "$work/replayed"

cp "$recording" "$work/kept.jsonl"

# Without secrets, all but these is the same, and the right PIN is still the second one.
cmif-sim run --pace 0.1 --record "$recording" -- sh "$session" >"$work/recorded"
for secret in 1234 0000 my-password 001010123456789 8900101123456789016 12025550100 Kaffee; do
    ! sed 's/"time":[0-9.]*//' "$recording" | grep -F -e "\"$secret" || fail "$secret is in the recording"
done
exits 0 cmif-sim replay "$recording" -- sh "$session"
cp "$work/out" "$work/replayed"
grep '^= ' "$work/recorded" >"$work/statuses"
grep '^= ' "$work/replayed" | same - "$work/statuses"
grep -q 'The PIN is accepted' "$work/replayed" || fail 'the PIN is not accepted'

# What was not recorded is refused, and named.
exits 4 cmif-sim replay "$recording" -- cmifctl radio reset --yes
complains 'cmif-sim: AT request 21 (shared_CMIF_set_FactoryReset) was not recorded, or less often; the reply is not_supported'

# A replayed recording tells of itself, and takes no commands.
cp "$recording" recording
exits 0 cmif-sim replay recording -- sh -c 'cmifctl sim retries; cmif-sim status; cmifctl radio reset --yes
    cmif-sim status --json >replay.json; cmif-sim enter -- cmifctl sim status'
requests=$(grep -c '"type":"request","channel":"[a-z]*","action":"received"' recording)
prints "replay   1 of $requests recorded requests came, and 0 that were not recorded"
shows 'state: PIN required'
grep -q "\"replay\":{\"recorded\":$requests,\"taken\":1,\"refused\":1}" replay.json || fail "$(cat replay.json)"
exits 2 cmif-sim replay recording -- cmif-sim ctl sim remove
complains 'cmif-sim: command line:1:1: a replayed recording takes no commands'
exits 0 cmif-sim run --clock manual --no-qmi -- sh -c 'cmif-sim ctl fault at 12 delay 5s; cmif-sim status --json >>replay.json'
grep -q '"clock":"manual","pace":null,"time":0,"at":{"state":"serving","process":[0-9]*,"faults":\["12 delay 5000ms next 1"\]},"qmi":{"state":"left_out","process":null,"faults":\[\]},"steps":\[\],"ports":\[\]' replay.json ||
    fail "$(cat replay.json)"
"$here/validate_status.py" "$here/../../docs/status.schema.json" replay.json >&2 || fail 'a status that does not fit the schema'

# A file that is not a recording.
echo '{"format":"cmif-record"' >"$work/broken"
exits 2 cmif-sim replay "$work/broken" -- true
complains "cmif-sim: $work/broken:1: not valid JSON"
exits 2 cmif-sim replay
exits 2 cmif-sim run --with-secrets -- true
complains '--with-secrets needs --record'
exits 1 cmif-sim run --record /no/such/file -- true
complains '/no/such/file: No such file or directory'

# The recorder before any daemon: the same lines as the simulator's own.
exits 0 cmif-record "$work/outside" -- cmif-sim run --record "$work/inside" -- true
inside=$(grep -c '"type":"set"' "$work/inside")
outside=$(grep -c '"type":"set"' "$work/outside")
[ "$inside" -gt 20 ] || fail "only $inside settings"
[ "$inside" -eq "$outside" ] || fail "$inside settings inside, $outside outside"

# Every line fits the schema.
"$here/validate_recording.py" "$here/../../docs/recording.schema.json" "$work/kept.jsonl" \
    "$recording" "$work/outside" >&2 || fail 'lines that do not fit the schema'
