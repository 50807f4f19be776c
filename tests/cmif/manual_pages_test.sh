#!/bin/sh
# manual_pages_test.sh SOURCE_DIR PAGES_DIR
#
# The manual pages have each function of the header once and are in order as mandoc sees it; a header
# that leaves something undescribed gives none.
# shellcheck disable=SC2016 # back quotes of the header
set -eu
source=$1 pages=$2
header=$source/cmif/cmif.h
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

fail()
{
    echo "manual_pages_test: $1" >&2
    failed=1
}

sed -n 's/^[a-z].*[ *]\([A-Za-z_0-9]*\)(.*/\1/p' "$header" | sort >"$work/declared"
cat "$pages"/*.3 | sed -n 's/^\.Nm \([A-Za-z_0-9]*\).*/\1/p' | grep -vx 'libcmif\|cmif_daemons' | sort >"$work/named"
[ "$(wc -l <"$work/declared")" -gt 80 ] || fail "few functions in the header"
diff "$work/declared" "$work/named" >&2 || fail "< in the header, > in the pages"
for heading in 'The modem' 'The SIM' 'The radio'; do
    [ "$(grep -cx "\.Ss $heading" "$pages/cmif_getters.3")" = 1 ] || fail "cmif_getters(3): no heading '$heading'"
done
if command -v mandoc >/dev/null; then
    mandoc -T lint -W warning "$pages"/*.3 >&2 || fail "mandoc: see above"
fi

# refused WHAT SED_COMMAND: the header, changed, is refused with a message about WHAT.
refused()
{
    sed "$2" "$header" >"$work/cmif.h"
    ! cmp -s "$header" "$work/cmif.h" || fail "$1: nothing was changed"
    ! awk -v out="$work" -f "$source/docs/reference/header.awk" -f "$source/docs/reference/manual.awk" \
        "$work/cmif.h" 2>"$work/message" || fail "$1: accepted"
    grep -qF "$1" "$work/message" || fail "$1: $(cat "$work/message")"
}
refused 'set_EntermobilePIN: its comment does not name `pin`' 's/Enters the PIN, `pin`:/Enters the PIN:/'
refused "mutex_init: no 'Result:'" 's|^ \* Result: 0, or -1 when the semaphore.*| */|'
refused "mobileIMEI: no 'Blocks:'" '/cmif_getters(3)/,/mobileIMEI/s/^ \* Blocks:.*/ */'
refused 'set_timezone: no description' '/^\/\* Sets the modem.s time zone/d'
refused 'CMIF_QMI_STOP = 5' 's|CMIF_QMI_STOP = 5,.*|CMIF_QMI_STOP = 5,|'
exit "$failed"
