#!/bin/sh
# Saved settings of the data connection survive a restart, and it can connect at start.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

export CMIF_STORE="$work/store"
start_router --pace 0.1
exits 0 cmifctl data profile set --apn internet.example --user anna --auth pap
echo secret | exits 0 cmifctl data profile set --password -
exits 0 cmifctl --json data auto-connect
holds data.auto_connect=null
exits 0 cmifctl --json data auto-connect on
holds data.auto_connect=true
exits 0 cmifctl config save
exits 0 cmifctl data profile set --apn forgotten.example
kill_router 15

start_router --pace 0.1
exits 0 cmifctl --json data profile show --show-secrets
holds 'profile.apn="internet.example"' 'profile.user="anna"' 'profile.password="secret"' \
    'profile.authentication.name="pap"'
exits 0 cmifctl data auto-connect
shows 'auto connect: yes'
exits 0 cmifctl --json data status
holds 'data.state.name="disconnected"'
register
within 10 data_is connected

exits 0 cmifctl data auto-connect off
exits 0 cmifctl data stop
exits 0 cmifctl --json data status
holds 'data.state.name="disconnected"' data.auto_connect=false
kill_router 15
