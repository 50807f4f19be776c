#!/bin/sh
# The status: a locked SIM leaves much unset, a registered modem shows everything.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 cmifctl --json status
holds 'modem.imei="001010012345672"' 'sim.state.name="pin_required"' sim.imsi=null sim.number=null \
    network.operator=null network.mcc=null radio.rsrp_dbm=null data.ipv4=null data.ipv6=null \
    'modem.device_revision="SIMFW_01.02.03"' \
    'daemons.qmi.state="responding"' daemons.qmi.reason=null
exits 0 cmifctl status
hides operator
hides null

register
exits 0 cmifctl status
for row in 'hardware: CMIF-SIM LTE R1' 'firmware: SIMFW_01.02.03' 'imei: 001010012345672' \
    'device revision: SIMFW_01.02.03' 'state: ready' 'imsi: 001010123456789' \
    'iccid: 8900101123456789016' 'number: +12025550100' 'registration: registered (home)' \
    'selection: automatic' 'operator: Test Network' 'operator short: Test' 'operator code: 00101' \
    'technology: E-UTRAN' 'mcc: 001' 'mnc: 01' 'lac: 1A2B' 'cell id: 01A2D003' \
    'search mode: auto' 'roaming: auto' 'access mode: FDD LTE' 'band: LTE BAND 3' 'channel: 1300' \
    'state: disconnected' 'packet service: attached' \
    'QMI daemon: responding'; do
    shows "$row"
done

exits 0 cmifctl --json status
holds 'sim.imsi="001010123456789"' network.registration.code=1 'network.registration.name="home"' \
    network.technology.code=7 'network.technology.name="eutran"' network.mnc_digits=2 'network.mcc="001"' 'last_known.cell_id="01A2D003"' \
    radio.channel=1300 radio.search_mode.code=0 data.state.code=1 'data.state.name="disconnected"' \
    data.uptime_s=0 data.packet_service.code=1 'data.packet_service.name="attached"'
for signal in radio.rssi_dbm radio.rsrp_dbm; do
    dbm=$(value "$signal")
    if [ "$dbm" -ge -40 ] || [ "$dbm" -le -120 ]; then fail "$signal is $dbm"; fi
done

# Whether the AT daemon serves, and since when the store has not changed.
holds 'daemons.at.state="running"' daemons.at.reason=null daemons.at.waiting=0
[ "$(value daemons.at.last_read_age_s)" -le 60 ] || fail 'the AT daemon has not read'
[ "$(value store.age_s)" -le 60 ] || fail 'the store has not changed'
daemon=$(value daemons.at.process)
exits 0 cmifctl status
grep -qE "AT daemon: running \(process $daemon \([^)]+\), last read 00:0[01]:[0-9]{2} ago\)\$" "$work/out" ||
    fail 'no AT daemon'

# The library's summary has its own words.
exits 0 cmifctl --json summary
holds 'summary.modem_identity="CMIF-SIM LTE R1"' 'summary.operator_name="Test Network"' \
    'summary.network_mode="Auto"' 'summary.modem_type="4G"'
dbm=$(value summary.rssi_dbm)
if [ "$dbm" -ge -40 ] || [ "$dbm" -le -120 ]; then fail "the summary's signal is $dbm"; fi
