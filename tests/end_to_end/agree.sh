#!/bin/sh
# The same session over the simulated modem, and over ModemManager that drives it as a USB modem, has the
# same results.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

if [ "${1-}" = inside ]; then
    cmifd --first --at-port /dev/ttyACM2 &
    daemon=$!
    within 60 cmifctl sim retries
    sh "$here/session.sh"
    kill "$daemon"
    wait "$daemon"
    exit
fi
command -v cmifd >/dev/null || {
    echo 'agree: skipped: no cmifd' >&2
    exit 77
}
sh "$here/usb.sh" can-run

# ModemManager tells neither short names of operators nor contexts before they are used, nor how an operator
# was selected before one was; it numbers messages itself and does not say which were read.
alike() {
    sed -e '/^ *---*$/d' -e '/operator short:/d' -e '/context /d' -e '/selection: automatic/d' \
        -e 's/^[0-9] *\(un\)\{0,1\}read *//' -e 's/  *: / /' "$1" | tr -s ' |'
}

cmif-sim run --pace 0.1 -- sh "$here/session.sh" >"$work/simulated"
cmif-sim usb --pace 0.1 -- sh "$0" inside >"$work/driven"
alike "$work/simulated" >"$work/expected"
alike "$work/driven" >"$work/found"
[ "$(wc -l <"$work/expected")" -gt 100 ] || fail 'the session is short'
diff "$work/expected" "$work/found" >&2 || {
    echo 'agree: the results differ' >&2
    exit 1
}
