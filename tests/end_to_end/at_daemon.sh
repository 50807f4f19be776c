#!/bin/sh
# The AT daemon is missing, killed in the middle of a request, and started again.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/store"

# The request is not picked up: it is withdrawn, so that no later daemon carries it out.
start_router --pace 0.1
kill_router 9
exits 3 cmifctl --timeout 1 sim retries
complains 'the AT daemon did not answer shared_CMIF_get_mobilePINPUKC (request 4) within 1 s'
complains 'it was withdrawn'
writes_nothing
[ "$(queued 899)" = 0 ] || fail 'the request is still queued'
exits 3 cmifctl --json --timeout 1 network scan
holds error.code=3 'error.name="no_answer"' error.withdrawn=true
[ "$(queued 899)" = 0 ] || fail 'the request is still queued'

# The daemon picks up a long search, and is killed during it.
start_router --pace 1
unlock
unanswered_search() {
    exits 3 cmifctl --json --timeout 4 network scan
    holds error.code=3 error.withdrawn=false
}
aside unanswered_search
scan=$!
searching() { cmifctl network scan-state | grep -q 'state: search running'; }
within 3 searching
kill_router 9
wait "$scan"

# A new daemon serves again: a search gets its own answer, and nothing is left of the old one.
start_router --pace 0.1
unlock
exits 0 cmifctl network scan
[ "$(queued 900)" = 0 ] || fail 'an answer is left over'

# A caller that took its own request back is not the daemon.
daemon=$(cmifctl status --field daemons.at.process)
kill -STOP "$daemon"
exits 3 cmifctl --timeout 0.5 radio domain # which the kernel hands to the receiver that sleeps
exits 3 cmifctl --timeout 0.5 sim pin-mode
complains 'it was withdrawn'
kill -CONT "$daemon"
exits 0 cmifctl --json status
holds 'daemons.at.state="running"' "daemons.at.process=$daemon" daemons.at.last_read_age_s=null

# The last reader has ended, and a new daemon has taken nothing yet.
kill_router 9
exits 0 cmifctl --json status
holds 'daemons.at.state="ended"'
cmif-sim serve --pace 0.1 &
router=$!
within 20 qmi_answers
exits 0 cmifctl --json status
holds daemons.at.state=null 'daemons.at.reason="the process that last read its queue has ended"'
exits 0 cmifctl sim retries
exits 0 cmifctl --json status
holds 'daemons.at.state="running"'

# A second one over the same queues is refused, and the first serves on.
exits 1 cmif-sim serve
exits 0 cmifctl sim retries
kill_router 15
