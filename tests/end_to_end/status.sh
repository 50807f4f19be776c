#!/bin/sh
# The status: a locked SIM leaves much unset, a registered modem shows everything.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 cmifctl --json status
holds 'modem.imei="001010012345672"' 'sim.status="SIM PIN"' sim.imsi=null sim.number=null \
    network.operator=null network.mcc=null radio.rsrp_dbm=null data.ipv4=null data.ipv6=null \
    summary.operator=null summary.number=null 'modem.device_revision="SIMFW_01.02.03"' \
    daemons.qmi_answers=true daemons.qmi_reason=null
exits 0 cmifctl status
hides operator
hides null

register
exits 0 cmifctl status
for row in 'hardware: CMIF-SIM LTE R1' 'firmware: SIMFW_01.02.03' 'imei: 001010012345672' \
    'device revision: SIMFW_01.02.03' 'status: READY' 'state: ready' 'imsi: 001010123456789' \
    'iccid: 8900101123456789016' 'number: +12025550100' 'registration: registered' \
    'selection: automatic' 'operator: Test Network' 'operator short: Test' 'operator code: 00101' \
    'technology: E-UTRAN' 'mcc: 001' 'mnc: 01' 'lac: 1A2B' 'cell id: 01A2D003' \
    'search mode: auto' 'roaming: auto' 'mode: FDD LTE' 'band: LTE BAND 3' 'channel: 1300' \
    'state: disconnected' 'auto connect: no' 'packet service: attached' 'generation: 4G' \
    'QMI daemon: responding'; do
    shows "$row"
done

exits 0 cmifctl --json status
holds 'sim.imsi="001010123456789"' network.registration.code=0 'network.registration.name="registered"' \
    network.technology.code=6 network.mnc_digits=2 'network.mcc="001"' 'last_known.cell_id="01A2D003"' \
    radio.channel=1300 radio.search_mode.code=0 data.state.code=1 'data.state.name="disconnected"' \
    data.uptime_s=0 data.auto_connect=false 'data.packet_service="attached"' \
    'summary.identity="CMIF-SIM LTE R1"' 'summary.operator="Test Network"' 'summary.generation="4G"'
for signal in radio.rssi_dbm radio.rsrp_dbm summary.rssi_dbm; do
    dbm=$(value "$signal")
    if [ "$dbm" -ge -40 ] || [ "$dbm" -le -120 ]; then fail "$signal is $dbm"; fi
done
