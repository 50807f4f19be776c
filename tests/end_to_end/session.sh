#!/bin/sh
# A session with cmifctl as a transcript: each command, what it printed, its status. agree.sh runs it over
# both modems.
set -u

does() {
    printf '> %s\n' "$*"
    "$@" 2>&1
    printf 'status %s\n' "$?"
}
sorted() { "$@" | sort; }
until_is() { # VALUE KEY COMMAND...
    value=$1 key=$2
    shift 2
    deadline=$(($(date +%s) + 30))
    until [ "$(cmifctl "$@" --field "$key" 2>/dev/null)" = "$value" ]; do
        [ "$(date +%s)" -lt "$deadline" ] || break
        sleep 0.1
    done
    printf '%s is %s\n' "$key" "$(cmifctl "$@" --field "$key" 2>&1)"
}

until_is pin_required sim.state sim status
does cmifctl sim retries
echo 9999 | does cmifctl sim enter-pin -
echo 12 | does cmifctl sim enter-pin -
echo 1234 | does cmifctl sim enter-pin -
until_is home network.registration network show
does cmifctl sim status
does cmifctl network show
does sorted cmifctl network scan
does cmifctl sms list
does cmifctl data start
does cmifctl data profile set --apn internet.example
does cmifctl data start
until_is connected data.state data status
does cmif-sim ctl coverage none
until_is disconnected data.state data status
until_is searching network.registration network show
does cmif-sim ctl coverage full
until_is home network.registration network show
does cmifctl data start
until_is connected data.state data status
does cmifctl data stop
until_is disconnected data.state data status
does cmifctl network select 00103
does cmifctl network select 00102
until_is 00102 network.operator_code network show
does cmifctl network auto
until_is 00101 network.operator_code network show
does cmifctl radio mode eutran
until_is home network.registration network show
until_is eutran radio.search_mode radio mode
does cmifctl radio mode auto
until_is home network.registration network show
printf '1234\n4321\n' | does cmifctl sim change-pin -
does cmifctl sim retries
does cmifctl radio functionality radio_off
does cmifctl radio functionality full
until_is home network.registration network show
does cmif-sim ctl sim remove
until_is absent sim.state sim status
does cmif-sim ctl sim insert
until_is pin_required sim.state sim status
for pin in 9999 9998 9997; do
    echo $pin | does cmifctl sim enter-pin - --force
done
until_is puk_required sim.state sim status
printf '12345678\n1234\n' | does cmifctl sim enter-puk -
until_is ready sim.state sim status
