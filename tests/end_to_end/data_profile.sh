#!/bin/sh
# The profile: only what is given changes, passwords stay hidden, lengths are checked.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 cmifctl --json data profile show
holds profile.user=null profile.password=null profile.password_set=false
exits 0 cmifctl data profile set --apn internet.example --user anna
echo 'pass word' | exits 0 cmifctl data profile set --password - --auth chap
hides 'pass word'
exits 0 cmifctl data profile show
shows 'apn: internet.example'
shows 'user: anna'
shows 'password: ****'
shows 'authentication: CHAP'
hides 'pass word'
exits 0 cmifctl data profile set --pdp ipv6 --family ipv6
exits 0 cmifctl --json data profile show
holds 'profile.apn="internet.example"' 'profile.user="anna"' profile.password=null profile.password_set=true \
    profile.authentication.code=2 'profile.pdp_type.name="ipv6"' \
    'profile.ip_family.name="ipv6"'
exits 0 cmifctl --json data profile show --show-secrets
holds 'profile.password="pass word"'
exits 0 cmifctl --json --trace data profile show
hides 'pass word'

# 40 and 128 bytes fit; one more is not sent.
forty=1234567890123456789012345678901234567890
exits 0 cmifctl data profile set --apn "$forty" --user "$forty$forty${forty}12345678"
exits 5 cmifctl data profile set --apn "${forty}x"
complains 'the apn has 41 bytes; nothing was sent'
exits 5 cmifctl --json data profile set --user "$forty$forty${forty}123456789"
holds error.code=5 'error.name="invalid"'
exits 0 cmifctl --json data profile show
holds "profile.apn=\"$forty\"" "profile.user=\"$forty$forty${forty}12345678\""

# The modem's third profile is a different one, set through the AT daemon.
exits 0 cmifctl data at-profile 3 IPV4V6 other.example
exits 0 cmifctl data profile-sync
exits 0 cmifctl data status
shows 'context apn: other.example'
shows 'context pdp type: IPv4v6'
exits 2 cmifctl data at-profile 17 IP other.example
register
exits 0 cmifctl data ota-dm
managed() { cmifctl data profile-sync && cmifctl data status | grep -q ' context apn: managed.example$'; }
within 10 managed
