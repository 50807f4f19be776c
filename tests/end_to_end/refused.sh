#!/bin/sh
# Exit status 4 when the daemon refuses, 7 while a profile is being changed.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 4 cmifctl sms list
complains 'the AT daemon refused: SIM PIN required (11)'
complains "Enter it with 'cmifctl sim enter-pin'."
exits 4 cmifctl --json network select 00199
holds error.code=4 'error.name="refused"'
exits 4 cmifctl --json data ota-dm
holds error.daemon.code=11 'error.daemon.name="sim_pin_required"'

touch /tmp/modify_profile_in_progress
exits 7 cmifctl data status
complains 'a profile change is in progress'
exits 7 cmifctl --json data status
holds error.code=7 'error.name="profile_busy"'
exits 0 cmifctl --json status
holds data.state=null 'sim.state.name="pin_required"'
exits 0 cmifctl config set lte_qmi_apn internet.example
exits 7 cmifctl --json --timeout 1 data start
holds error.code=7
rm /tmp/modify_profile_in_progress
exits 0 cmifctl data status
