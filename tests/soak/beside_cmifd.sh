#!/bin/sh
# beside_cmifd.sh COMMAND...: in the box of `cmif-sim usb`, beside cmifd with a modem that is registered.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/../end_to_end/lib.sh"

cmifd --first &
daemon=$!
within 60 cmifctl sim retries
printf 1234 | exits 0 cmifctl sim enter-pin -
within 60 network_is home
"$@"
kill "$daemon"
wait "$daemon"
