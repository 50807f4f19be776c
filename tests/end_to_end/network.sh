#!/bin/sh
# Operators: a search, a manual selection, and automatic selection again.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 6 cmifctl --json network list
holds error.code=6 'error.name="file_missing"'
register
exits 0 cmifctl --json network scan-state
holds search.state.code=0

exits 0 cmifctl network scan
prints 'CODE   STATUS     TECHNOLOGY  SHORT    NAME'
prints '00101  current    E-UTRAN     Test     Test Network'
prints '00103  forbidden  E-UTRAN     Closed   Closed Test Network'
prints '99971  available  GSM         Harbour  Harbour Test'
exits 0 cmifctl network list
prints '00102  available  E-UTRAN     Second   Second Test Network'
exits 0 cmifctl --json network list
holds 'providers.0.code="00101"' 'providers.0.name="Test Network"' 'providers.0.short_name="Test"' \
    providers.0.status.code=2 'providers.0.status.name="current"' providers.0.technology.code=7 \
    'providers.5.code="00103"' 'providers.5.status.name="forbidden"'
[ "$(grep -c '^providers\..*\.code="' "$work/values")" -eq 6 ] || fail 'not six operators'

exits 0 cmifctl network select 00102
shows 'selection: manual'
shows 'operator code: 00102'
prints 'The modem is registered.'
exits 0 cmifctl --json network show
holds network.selection.code=2 'network.selection.name="manual"' \
    'network.operator="Second Test Network"' 'network.operator_code="00102"' 'network.lac="2B01"'

# A forbidden, unavailable or invalid operator is refused, and nothing changes.
exits 4 cmifctl network select 00103
complains 'network not allowed, emergency calls only (32)'
exits 4 cmifctl --json network select 31026
holds error.daemon.code=30 'error.daemon.name="no_network_service"'
exits 2 cmifctl network select Test
exits 0 cmifctl --json network show
holds 'network.operator_code="00102"' 'network.registration.name="roaming"'

exits 0 cmifctl network select 00101 --technology 3g
exits 0 cmifctl --json network show
holds 'network.operator_code="00101"' 'network.technology.name="utran"'
exits 0 cmifctl network select 99971 --no-wait
prints 'The modem has accepted the request.'
within 20 network_is roaming
exits 0 cmifctl --json network show
holds 'network.technology.name="gsm"'

# An operator abroad denies the service once roaming is off.
exits 0 cmifctl radio roaming off
within 20 network_is denied
exits 0 cmifctl network show
shows 'registration: denied'
exits 0 cmifctl status
shows 'registration: denied'
exits 0 cmifctl radio roaming auto

exits 0 cmifctl network auto
shows 'selection: automatic'
within 20 network_is home
exits 0 cmifctl --json network show
holds network.selection.code=1 'network.operator="Test Network"' 'network.technology.name="eutran"'

for format in 'short:Test' 'numeric:00101' 'long:Test Network'; do
    exits 0 cmifctl network format "${format%%:*}"
    exits 0 cmifctl network show
    shows "operator: ${format#*:}"
done
