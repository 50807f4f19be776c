#!/bin/sh
# Settings: read, changed, listed, and kept over a restart once they are saved.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/store"
start_router --pace 0.1

exits 0 cmifctl config get example.key
writes_nothing
exits 0 cmifctl --json config get example.key
holds 'setting.key="example.key"' setting.value=null setting.hidden=false
exits 0 cmifctl config set example.key 'a value, with "quotes" and 100%'
exits 0 cmifctl config get example.key
prints 'a value, with "quotes" and 100%'
exits 0 cmifctl --json config get example.key
holds 'setting.value="a value, with \"quotes\" and 100%"'
echo 'from input' | exits 0 cmifctl config set example.second -
exits 0 cmifctl config list example.
prints 'example.key=a value, with "quotes" and 100%'
prints 'example.second=from input'
[ "$(wc -l <"$work/out")" -eq 2 ] || fail 'more than asked for'
exits 0 cmifctl config list
prints 'lte_sim_status=SIM PIN'

exits 2 setsid -w cmifctl config set example.key
complains 'there is no terminal to ask for the value'
complains 'Give - and write it to standard input.'

# No password on the command line, where every user could read it, and none in the output.
exits 2 cmifctl config set example.password secret
echo secret | exits 0 cmifctl config set example.password -
exits 0 cmifctl config list
prints 'example.password=****'
hides secret
exits 0 cmifctl --json config list example.p
holds 'settings.0.key="example.password"' settings.0.value=null settings.0.hidden=true
exits 0 cmifctl --json config set error harmless
holds 'command="config set"' 'setting.key="error"'
exits 0 cmifctl config get example.password --show-secrets
prints secret

exits 0 cmifctl --json config save
holds 'result="saved"'
exits 0 cmifctl config set example.key 'not saved'
kill_router 15
start_router --pace 0.1
exits 0 cmifctl config get example.key
prints 'a value, with "quotes" and 100%'

# A kill loses no more than an orderly end.
kill_router 9
start_router --pace 0.1
exits 0 cmifctl config get example.second
prints 'from input'

# A store that can't be opened is reported with its name.
: >"$work/file"
exits 1 env CMIF_STORE="$work/file" cmifctl config save
complains "$work/file"
for words in 'config get a' 'config list' 'status' 'sim status'; do
    # shellcheck disable=SC2086 # words
    exits 1 env CMIF_STORE="$work/file" cmifctl $words
    complains "$work/file"
    # shellcheck disable=SC2086
    exits 1 env CMIF_STORE=/nonexistent/x cmifctl --json $words
    holds error.code=1
done
