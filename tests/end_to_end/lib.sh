# shellcheck shell=sh
# Shared by the end-to-end tests, each of which sources it first. A test ends with status 1 at the
# first check that fails, and shows the last command and its output.
set -eu

here=$(dirname "$0")
work=$(mktemp -d)
documents=$work/documents # all that the checks have seen, one on each line
router=

# A test that has passed so far fails here when a document doesn't fit the schema.
at_end() {
    status=$?
    trap - EXIT
    [ -z "$router" ] || kill -9 "$router" 2>/dev/null || :
    if [ "$status" -eq 0 ] && [ -e "$documents" ]; then
        validates "$documents" || status=1
    fi
    rm -rf "$work"
    exit "$status"
}
trap at_end EXIT

# validates FILE [--every-command]
validates() {
    file=$1
    shift
    "$here/validate_documents.py" "$here/../../docs/cmifctl.schema.json" "$file" "$@" >&2
}

fail() {
    {
        echo "$0: $*"
        echo "after: $(cat "$work/command")"
        sed 's/^/  output: /' "$work/out"
        sed 's/^/  errors: /' "$work/err"
    } >&2
    exit 1
}

# exits STATUS COMMAND...: the command ends with this status. The checks below look at its output.
exits() {
    wanted=$1
    shift
    echo "$*" >"$work/command"
    status=0
    "$@" >"$work/out" 2>"$work/err" || status=$?
    [ "$status" -eq "$wanted" ] || fail "exit status $status instead of $wanted"
}

# aside COMMAND...: in the background, with its own output files; `wait "$!"` gives its status.
aside() { with_own_outputs "$@" & }
with_own_outputs() {
    work=$(mktemp -d "$work/aside.XXXXXX")
    "$@"
}

# Checks of human-readable output: a whole line, a row of a section, any text.
prints() { grep -qFx -e "$1" "$work/out" || fail "no line '$1'"; }
shows() { sed 's/^[^|]*| *//' "$work/out" | grep -qFx -e "$1" || fail "no row '$1'"; }
hides() { ! grep -qF -e "$1" "$work/out" "$work/err" || fail "'$1' can be seen"; }
complains() { grep -qF -e "$1" "$work/err" || fail "no error with '$1'"; }
writes_nothing() { [ ! -s "$work/out" ] || fail "something on standard output"; }

# holds PATH=VALUE...: the output is one JSON document with these values, spelled as JSON.
holds() {
    values >"$work/values" 2>&1 || fail "not one JSON document: $(cat "$work/values")"
    for value in "$@"; do
        grep -qFx -e "$value" "$work/values" || fail "no $value among
$(cat "$work/values")"
    done
}

# value PATH: that value of the document.
value() { values | sed -n "s/^$1=//p"; }

# Each value of the document as "path=value", strings in quotes. Fails unless there is exactly one
# document, valid as UTF-8 too, which jq would repair.
values() {
    iconv -f UTF-8 -t UTF-8 "$work/out" >/dev/null || return
    jq -c . "$work/out" >>"$documents" || return
    jq -rs 'if length == 1 then .[0] else error("\(length) documents") end
        | . as $document
        | paths(type != "object" and type != "array" or length == 0)
        | . as $path
        | "\(map(tostring) | join("."))=\($document | getpath($path) | tojson)"' "$work/out"
}

# within SECONDS COMMAND...: the command succeeds before the time is up.
within() {
    deadline=$(($(date +%s) + $1))
    shift
    until "$@" >"$work/out" 2>"$work/err"; do
        echo "$*" >"$work/command"
        [ "$(date +%s)" -lt "$deadline" ] || fail "never succeeded"
        sleep 0.1
    done
}

network_is() { [ "$(cmifctl network show --field network.registration)" = "$1" ]; }
data_is() { [ "$(cmifctl data status --field data.state)" = "$1" ]; }

unlock() { echo 1234 | exits 0 cmifctl sim enter-pin -; }

register() {
    unlock
    within 20 network_is home
}

# queued KEY: how many messages wait in the queue.
queued() {
    ipcs -q | awk -v key="$(printf '0x%08x' "$1")" '$1 == key { print $6 }'
}

# asks LINE: gives an AT port, open as descriptor 3, the line; prints what it sends until the answer ends.
asks() {
    printf '%s\r' "$1" >&3
    line=
    while [ "$line" != OK ] && [ "$line" != ERROR ]; do
        read -r line <&3
        line=$(printf '%s' "$line" | tr -d '\r')
        echo "$line"
    done
}

# In a box of `cmif-sim usb`: the port that ModemManager leaves alone.
has_usb() { [ -z "${CMIF_SANDBOX:-}" ]; } # not without namespaces
free_port() {
    if has_usb; then
        echo /dev/ttyACM2
    else
        cmif-sim status | sed -n 's/^port *//p' | tail -n 1
    fi
}

# For tests that start and stop the router themselves.
at_answers() { cmifctl sim retries; }
qmi_answers() { cmifctl sim status | grep -q 'QMI daemon: responding$'; }

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
