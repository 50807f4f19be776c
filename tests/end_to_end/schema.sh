#!/bin/sh
# Every command's document fits the schema, errors too, and the schema refuses what it doesn't know.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

# document COMMAND...: succeeds, with a document.
document() {
    exits 0 cmifctl --json "$@"
    holds version=1
}

document sim status
document sim retries
echo 1234 | document sim enter-pin -
printf '1234\n4321\n' | document sim change-pin -
document sim pin-mode
echo 4321 | document sim pin-mode off -
echo 4321 | document sim pin-mode on -
for force in '' '' --force; do
    # shellcheck disable=SC2086 # no word at all
    printf '0000\n4321\n' | exits 4 cmifctl --json sim change-pin - $force
    holds 'command="sim change-pin"' error.code=4
done
printf '12345678\n4321\n' | document sim enter-puk -
echo 11223344 | document sim lock-network -
echo 11223344 | document sim unlock-network -
within 20 network_is home

for words in status summary 'radio show' 'radio mode' 'radio band' 'radio roaming' 'radio domain' \
    'radio mode auto' 'radio band all' 'radio roaming auto' 'radio domain on' \
    'radio functionality full' 'radio timezone' 'network show' 'network scan' 'network list' \
    'network scan-state' 'network select 00101' 'network select 00101 --technology 4g --no-wait' \
    'network auto' 'network format long' 'sms list' 'sms show 1' 'sms delete 1' \
    'sms delete --all --yes' 'data status' 'data profile show' \
    'data profile set --apn internet.example' 'data at-profile 3 ipv4v6 other.example' \
    'data profile-sync' 'data auto-connect' 'data auto-connect off' 'data start' 'data uptime' \
    'data stop' 'data start --no-wait' 'data ota-dm' 'log enable' 'log mark text' 'log show' \
    'log rotate' 'log disable' 'config set a b' 'config get a' 'config get none' 'config list' \
    'config save' 'completion bash' 'complete -- sim' manual 'radio download-mode --yes' 'data download-mode --yes' \
    'radio reset --yes' --help --version; do
    # shellcheck disable=SC2086 # words
    document $words
done
for words in doctor nonsense 'radio mode 5g' 'sms show 99' 'network list --timeout x'; do
    # shellcheck disable=SC2086
    cmifctl --json $words >"$work/out" 2>"$work/err" || :
    holds version=1
done

validates "$documents" --every-command || fail 'a document is missing or wrong'

# refused CHANGE: a document changed by jq no longer fits.
refused() {
    jq -c "$1" "$documents" | sed -n 1p >"$work/changed"
    ! validates "$work/changed" 2>/dev/null || fail "accepted: $1"
}
refused '.more = 1'
refused '.sim.more = 1'
refused '.sim.state.name = "PIN required"'
refused '.sim.state.code = "3"'
refused 'del(.sim.imsi)'
refused '.version = 2'
refused '.command = "sim nonsense"'
