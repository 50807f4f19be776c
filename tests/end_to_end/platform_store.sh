#!/bin/sh
# Over a platform's store, examples/file_store, everything works that needs the four functions alone;
# what else a store can tell is unknown. ./test-all.sh store runs it with programs that were built so.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

mkdir "$work/lib"
cc -std=gnu99 -Wall -Wextra -pedantic -Werror -shared -fPIC -I"$here/../../platform" -Wl,-soname,libtarn_nvram_config.so.1 \
    -DFILE_STORE_RUNNING='"/tmp/file_store.running"' -DFILE_STORE_SAVED='"/data/file_store.saved"' \
    "$here/../../examples/file_store/file_store.c" "$here/../../platform/other_store.c" \
    -o "$work/lib/libtarn_nvram_config.so.1"
export LD_LIBRARY_PATH="$work/lib"
export CMIF_STORE=/dev/null/x # which concerns no platform's store
trap 'status=$?; set +e; rm -f /tmp/file_store.* /data/file_store.*; (exit "$status"); at_end' EXIT

is() {
    exits 0 cmifctl config get "$1"
    printf '%s' "${2:+$2
}" | cmp -s - "$work/out" || fail "$1 is not '$2'"
}

# The store itself: any text, unset as empty, kept once saved.
is example.key ''
exits 0 cmifctl config set example.key 1
exits 0 cmifctl config set example.k 'a=b c\n%s'
exits 0 cmifctl config set example.key 22
is example.key 22
is example.k 'a=b c\n%s'
exits 0 cmifctl config save
exits 0 cmifctl config set example.key ''
exits 0 cmifctl config set example.k 3
is example.key ''
[ "$(stat -c %a /tmp/file_store.running /data/file_store.saved)" = '600
600' ] || fail 'other users may read the files'
rm /tmp/file_store.running
is example.key 22
is example.k 'a=b c\n%s'
# What platform/tarn_nvram_config.h asks for: the longest key and value.
key=$(grep -rhoE '"(lte|debug)_[a-z0-9_]*"' "$here/../../cmif" "$here/../../daemons" |
    tr -d '"' | awk 'length($0) > length(longest) { longest = $0 } END { print longest }')
grep -q "Keys of up to ${#key} bytes" "$here/../../platform/tarn_nvram_config.h" ||
    fail "${#key} bytes has $key"
value=$(printf '%02046d' 7)
exits 0 cmifctl config set "$key" "$value"
is "$key" "$value"
exits 1 cmifctl config set "$key$key" 1
complains "the setting $key$key was not stored"
hides CMIF_STORE
exits 1 cmifctl config set a=b 1
exits 1 cmifctl config set example.key "$(printf '%04096d' 7)"
is example.key 22

# Many writers at once lose nothing, and readers never see a part.
writers=
for writer in 1 2 3 4 5 6; do
    (for i in 1 2 3 4 5; do cmifctl config set "w$writer.$i" "$writer$i"; done) &
    writers="$writers $!"
done
for _ in 1 2 3 4 5; do is "$key" "$value"; done
# shellcheck disable=SC2086 # one word a process
wait $writers
for writer in 1 2 3 4 5 6; do is "w$writer.5" "${writer}5"; done

# What it can't tell is not known, and not wrong.
exits 1 cmifctl config list
complains "the platform's store can't list its settings"
exits 0 cmifctl --json status
holds store.directory=null store.daemons_directory=null store.age_s=null sim.iccid=null
exits 1 cmifctl doctor
hides 'the store'
hides 'a restart loses'
exits 0 cmifctl config set debug_at_cmif 1
exits 1 cmifctl doctor
prints 'warning: debug_at_cmif is on: programs print PINs, PUKs and keys on their standard output'
exits 0 cmifctl config set debug_at_cmif ''

# The daemons publish there.
start_router --pace 0.1
register
exits 0 cmifctl --json status
holds 'sim.state.name="ready"' store.directory=null 'daemons.qmi.state="responding"'
[ ! -s "$work/err" ] || fail 'a note'
exits 0 cmifctl data auto-connect on
is lte_qmi_auto_connect_when_start_up on
exits 0 cmifctl --json sim retries
holds retries.pin1=3
exits 0 cmifctl doctor
prints 'nothing wrong'
exits 0 cmifctl sms list

# A daemon that no platform announces may have been replaced: nothing is said to have ended.
kill_router 9
exits 0 cmifctl --json status
holds daemons.at.state=null network.registration.name='"home"'
