#!/bin/sh
# A second terminal: status, ctl and enter from inside and outside a running box.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 1 cmif-sim status
complains 'no simulated router of this user is running here'

# A router that runs until it is ended.
box() { cmif-sim run --pace 0.1 --state registered -- sleep 50 & }
end_box() {
    kill "$1"
    wait "$1" || [ $? -eq 143 ] || fail 'the run did not end by the signal'
}
running() {
    cmif-sim status --box "$1" >"$work/status" && cat "$work/status" &&
        grep -q '^AT       serving, process' "$work/status" # once it waits for requests
}

box
first=$!
within 10 running $first
prints "box      $first"
exits 0 cmif-sim ctl fault at 12 ret 13
writes_nothing
exits 0 cmif-sim status
prints 'fault    at 12 ret 13 next 1'

# What may follow is known: routers, and the commands of modems too.
exits 0 cmif-sim complete -- ctl --box ''
prints "$(printf '%s\ta running router' $first)"
exits 0 cmif-sim complete -- ctl usb ''
prints "$(printf 'unplug\t')"
exits 0 cmif-sim complete -- ctl answer l
prints "$(printf 'lose\t')"

# Inside: its queues, its store, its only router.
exits 7 cmif-sim enter -- sh -c 'cmif-sim status; exit 7'
prints 'fault    at 12 ret 13 next 1'
exits 0 cmif-sim enter -- cmifctl sim status
shows 'state: ready'
exits 127 cmif-sim enter -- no-such-program
pwd >"$work/here"
exits 0 cmif-sim enter -- pwd
cmp -s "$work/here" "$work/out" || fail 'another directory'
exits 0 cmif-sim enter -- sh -c 'kill -0 1 && ps -o args= 1'
exits 5 sh -c 'echo "exit 5" | SHELL=/bin/sh cmif-sim enter'

# What is wrong is told with its place; then nothing is done.
exits 2 cmif-sim ctl fault at 12 frob
complains 'cmif-sim: command line:1:13: a kind of fault is one of: delay'
printf 'state locked\nfault at frob\ncoverage some\n' >"$work/lines"
# shellcheck disable=SC2016 # for the inner shell
exits 2 sh -c 'cmif-sim ctl <"$1"' sh "$work/lines"
complains 'cmif-sim: standard input:2:10: a kind of fault'
complains 'cmif-sim: standard input:3:10: '
exits 0 cmif-sim enter -- cmifctl sim status
shows 'state: ready'
printf 'state locked\nconnection drop\n' >"$work/lines"
# shellcheck disable=SC2016 # for the inner shell
exits 1 sh -c 'cmif-sim ctl <"$1"' sh "$work/lines"
complains 'cmif-sim: standard input:2: no connection to drop'
exits 0 cmif-sim enter -- cmifctl sim status
shows 'state: PIN required'

# Several need a choice. Without namespaces there is one run at a time.
if [ -z "${CMIF_SANDBOX:-}" ]; then
    box
    second=$!
    within 10 running $second
    exits 1 cmif-sim status
    complains "several routers are running: choose one with --box, of: $first, $second"
    exits 1 cmif-sim status --box 1
    complains 'no router with the number 1; there are: '
    exits 0 cmif-sim status --box $first
    prints 'fault    at 12 ret 13 next 1'
    exits 0 cmif-sim status --box $second
    hides fault
    end_box $second
    only_first() { cmif-sim status | grep -qx "box      $first"; }
    within 5 only_first
fi
exits 2 cmif-sim status --box me
end_box $first
no_router() { cmif-sim status 2>&1 | grep -q 'no simulated router'; }
within 5 no_router # its processes take a moment to end

# A scenario that is wrong starts nothing.
printf 'state connected\nat 5 sim remove\nfrob\n' >"$work/bad"
exits 2 cmif-sim run --scenario "$work/bad" -- echo reached
writes_nothing
grep -q "^$work/bad:2:4: the time is a number with its unit" "$work/err" || fail 'the place is not at the start'
complains "$work/bad:3:1: unknown command 'frob'; it is one of: "
exits 2 cmif-sim serve --scenario "$work/missing"
complains "$work/missing: cannot be read: No such file or directory"
printf 'fault at drop\n' >"$work/at"
exits 2 cmif-sim run --no-at --scenario "$work/at" -- true

# A good one is read outside the box, whose /tmp is another.
printf 'state connected\nat 1s sim remove # 0.1 s\n' >"$work/good"
exits 0 cmif-sim run --pace 0.1 --scenario "$work/good" -- sh -c 'sleep 0.5; cmifctl sim status'
shows 'state: absent'
exits 0 cmif-sim run --state connected --clock manual -- \
    sh -c 'cmif-sim ctl advance 30s && cmifctl data status'
shows 'uptime: 00:00:30'
exits 8 cmif-sim run --no-daemons -- cmifctl sim retries
complains 'has not created its queue'
