#!/bin/sh
# Messages: listed, shown in full, deleted one by one and all at once.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

unlock
exits 0 cmifctl --json sms list
holds messages.0.id=1 messages.0.unread=false 'messages.0.from="Test Network"' \
    'messages.0.time="2024-03-01T08:00:05+01:00"' messages.2.id=3 messages.2.unread=true \
    messages.3.unread=true unread=3
[ "$(value messages.1.text | wc -m)" -eq 163 ] || fail 'not 160 characters, two quotes and a line end'
[ "$(value messages.4.text | wc -c)" -ge 1000 ] || fail 'the long message is short'

# Once listed, they count as read.
exits 0 cmifctl sms list
prints 'ID  STATE  FROM          TIME              TEXT'
prints '1   read   Test Network  2024-03-01 08:00  Welcome to Test Network. Your number is +12025550100.'
exits 0 cmifctl --json sms list
holds unread=0 messages.2.unread=false
exits 0 env COLUMNS=60 cmifctl sms list
[ "$(LC_ALL=C.UTF-8 wc -L <"$work/out")" -le 60 ] || fail 'too wide for the terminal'

exits 0 env COLUMNS=40 cmifctl sms list
[ "$(LC_ALL=C.UTF-8 wc -L <"$work/out")" -le 40 ] || fail 'too wide for a narrow terminal'
grep -q '  Welco\.\.\.$' "$work/out" || fail 'no text on a narrow terminal'

# Text from outside is shown unchanged: percent signs, UTF-8, printf formats.
exits 0 cmifctl sms show 3
shows 'text: Battery is 100% full, signal at 5%%.'
exits 0 cmifctl sms show 5
shows 'text: Grüße aus Zürich: 20 € für Kaffee und Kuchen ☕'
exits 0 cmifctl sms show 8
shows 'text: Meet at the harbour? %n %s %d %'
exits 0 cmifctl --json sms show 5
holds message.id=5 'message.text="Grüße aus Zürich: 20 € für Kaffee und Kuchen ☕"'
exits 0 cmifctl sms show 6
[ "$(wc -c <"$work/out")" -gt 1000 ] || fail 'the long message is cut'
exits 5 cmifctl sms show 99
complains 'there is no message 99'

exits 0 cmifctl sms delete 3
exits 5 cmifctl sms show 3
exits 5 cmifctl sms delete 3
complains 'there is no message 3'
exits 5 cmifctl --json sms delete 3
holds error.code=5 error.daemon.code=21
exits 0 cmifctl --json sms list
[ "$(grep -c '"id":' "$work/out")" -eq 5 ] || fail 'not five messages'

exits 2 cmifctl sms delete --all </dev/null
complains 'Give --yes'
exits 0 cmifctl --json sms list
holds messages.0.id=1
exits 0 cmifctl --json sms delete --all --yes
holds 'result="deleted"'
exits 0 cmifctl --json sms list
holds 'messages=[]' unread=0
