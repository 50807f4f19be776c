# shellcheck shell=sh
# What the end-to-end tests share; each reads it first. A test ends with status 1 at the first thing
# that isn't as it says, and shows the last command with what it wrote.
set -eu

work=$(mktemp -d)
router=
here=$(dirname "$0")

at_end() {
    [ -z "$router" ] || kill -9 "$router" 2>/dev/null || :
    rm -rf "$work"
}
trap at_end EXIT

fail() {
    {
        echo "$0: $*"
        echo "after: $(cat "$work/command")"
        sed 's/^/  output: /' "$work/out"
        sed 's/^/  errors: /' "$work/err"
    } >&2
    exit 1
}

# exits STATUS COMMAND...: the command ends so. The checks below look at what it wrote.
exits() {
    wanted=$1
    shift
    echo "$*" >"$work/command"
    status=0
    "$@" >"$work/out" 2>"$work/err" || status=$?
    [ "$status" -eq "$wanted" ] || fail "exit status $status instead of $wanted"
}

# aside COMMAND...: meanwhile, with outputs of its own; `wait "$!"` gives its status.
aside() { with_own_outputs "$@" & }
with_own_outputs() {
    work=$(mktemp -d "$work/aside.XXXXXX")
    "$@"
}

# Checks on what is for people: a whole line, a row of a section, anything in an output.
prints() { grep -qFx -e "$1" "$work/out" || fail "no line '$1'"; }
shows() { sed 's/^[^|]*| *//' "$work/out" | grep -qFx -e "$1" || fail "no row '$1'"; }
hides() { ! grep -qF -e "$1" "$work/out" "$work/err" || fail "'$1' can be seen"; }
complains() { grep -qF -e "$1" "$work/err" || fail "no error with '$1'"; }
writes_nothing() { [ ! -s "$work/out" ] || fail "something on standard output"; }

# holds PATH=VALUE...: the output is one JSON document with these values, spelled as JSON.
holds() {
    awk -f "$here/json.awk" "$work/out" >"$work/values" || fail "no JSON document"
    for value in "$@"; do
        grep -qFx -e "$value" "$work/values" || fail "no $value among
$(cat "$work/values")"
    done
}

# value PATH: that value of the document.
value() { awk -f "$here/json.awk" "$work/out" | sed -n "s/^$1=//p"; }

# within SECONDS COMMAND...: the command succeeds in the end.
within() {
    deadline=$(($(date +%s) + $1))
    shift
    until "$@" >"$work/out" 2>"$work/err"; do
        echo "$*" >"$work/command"
        [ "$(date +%s)" -lt "$deadline" ] || fail "never succeeded"
        sleep 0.1
    done
}

network_is() { cmifctl network show | grep -q "registration: $1\$"; }
data_is() { cmifctl data status | grep -q " state: $1\$"; }

unlock() { echo 1234 | exits 0 cmifctl sim enter-pin -; }

register() {
    unlock
    within 20 network_is registered
}

# queued KEY: how many messages wait in the queue.
queued() {
    ipcs -q | awk -v key="$(printf '0x%08x' "$1")" '$1 == key { print $6 }'
}

# Tests without `cmif-sim run` around them start and end the router themselves.
at_answers() { cmifctl sim retries; }
qmi_answers() { cmifctl sim status | grep -q 'qmi answers: yes'; }

start_router() {
    cmif-sim serve "$@" &
    router=$!
    within 20 at_answers
}

kill_router() {
    kill "-$1" "$router"
    wait "$router" || [ $? -eq $((128 + $1)) ] || fail "the router ended with $?"
    router=
}
