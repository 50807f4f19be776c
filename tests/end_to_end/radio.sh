#!/bin/sh
# The settings of the radio and their effect.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

register
exits 0 cmifctl radio show
shows 'search mode: auto'
shows 'band region: all'
shows 'roaming: auto'
shows 'access: LTE'

# Without LTE the home network is found on UMTS; mode and band are two views of one setting.
technology_is() { cmifctl network show | grep -q "technology: $1\$"; }
exits 0 cmifctl radio mode 3g
shows 'search mode: UTRAN'
within 20 technology_is UTRAN
exits 0 cmifctl --json radio show
holds radio.search_mode.code=2 'radio.search_mode.name="utran"' radio.band_region.code=2 \
    'radio.access="UMTS"' radio.rsrp_dbm=null radio.channel=10700
exits 0 cmifctl radio band 4g
within 20 technology_is E-UTRAN
exits 0 cmifctl radio mode
shows 'search mode: E-UTRAN'
shows 'band region: E-UTRAN'
exits 0 cmifctl radio band all
exits 0 cmifctl radio mode
shows 'search mode: auto'

for roaming in off on auto; do
    exits 0 cmifctl radio roaming "$roaming"
    exits 0 cmifctl radio roaming
    shows "roaming: $roaming"
done

exits 0 cmifctl radio domain
shows 'packet service: attached'
exits 0 cmifctl radio domain off
exits 0 cmifctl --json radio domain
holds radio.packet_service.code=0 'radio.packet_service.name="detached"'
exits 0 cmifctl --json data status
holds data.packet_service.code=0 'data.packet_service.name="detached"'
exits 0 cmifctl --json radio domain attached
holds requested.packet_service.code=1
exits 0 cmifctl --json radio domain
holds radio.packet_service.code=1

# Offline there is no network; the last known one is kept.
exits 0 cmifctl radio functionality offline
within 20 network_is not_registered
exits 0 cmifctl --json network show
holds network.operator=null network.cell_id=null 'last_known.cell_id="01A2D003"'
exits 4 cmifctl network scan
complains 'operation not allowed (203)'
complains 'cmifctl radio functionality full'
exits 0 cmifctl radio functionality full
within 20 network_is home
exits 4 cmifctl network select 00199
complains 'No operator with this code can be reached'
exits 4 cmifctl network select 00101 --technology gsm
complains 'or not with this technology'
exits 0 cmifctl network auto
exits 0 cmifctl radio timezone

# A reset needs confirmation. Afterwards the defaults apply, and the SIM asks for its PIN.
exits 0 cmifctl radio mode 3g
exits 2 cmifctl radio reset </dev/null
complains 'deletes all messages and locks the SIM'
complains 'Give --yes'
exits 0 cmifctl radio mode
shows 'search mode: UTRAN'
exits 0 cmifctl radio reset --yes
exits 0 cmifctl --json status
holds 'sim.state.name="pin_required"' radio.search_mode.code=0 network.operator=null
exits 6 cmifctl network list

# A request for download mode is never answered.
exits 2 cmifctl radio download-mode </dev/null
exits 0 cmifctl --timeout 5 radio download-mode --yes
exits 0 cmifctl sim retries
