#!/bin/sh
# exports_test.sh LIBRARY HEADER STORE PROGRAM CC NM READELF SANITIZED
#
# The library's dynamic symbols are exactly the functions that the header declares, and it needs only
# the platform's store and the C library, the one of a PROGRAM in C (with sanitizers, their run-time
# libraries too).
set -eu
library=$1 header=$2 store=$3 program=$4 cc=$5 nm=$6 readelf=$7 sanitized=$8
failed=0

fail()
{
    echo "exports_test: $1" >&2
    failed=1
}

# Everything of a dynamic section's kind, one per line: needed libraries, or the own name.
entries()
{
    "$readelf" -dW "$2" | sed -n "s/.*($1).*\[\(.*\)\]/\1/p" | sort
}

declared=$("$cc" -E -P -x c "$header" | grep -v '^#' | tr '\n' ' ' | sed 's/{[^{}]*}//g' | tr ';' '\n' |
    sed -n 's/^[^(]*[ *]\([A-Za-z_][A-Za-z_0-9]*\) *(.*/\1/p' | sort)
# The version's own name (type A) is not part of the interface; anything else must be a function.
exported=$("$nm" -D --defined-only "$library" | awk '$2 != "A" {sub("@.*", "", $3); print $3}' | sort)
not_functions=$("$nm" -D --defined-only "$library" | awk '$2 != "A" && $2 != "T" {print $3}')

[ "$(echo "$declared" | wc -l)" -eq 88 ] || fail "the header doesn't declare 88 functions"
[ -z "$not_functions" ] || fail "exported, but no function: $not_functions"
for name in $declared; do
    echo "$exported" | grep -qxF "$name" || fail "declared, but not exported: $name"
done
for name in $exported; do
    echo "$declared" | grep -qxF "$name" || fail "exported, but not declared: $name"
done

wanted=$(printf '%s\n' get match save set | sed 's/^/tarnNvramConfig_/')
used=$("$nm" -D --undefined-only "$library" | awk '{print $NF}' | sed 's/@.*//' | grep Nvram | sort)
[ "$used" = "$wanted" ] || fail "of the platform it uses: $used"

if [ -z "$sanitized" ]; then
    store_name=$(entries SONAME "$store")
    c_library=$(entries NEEDED "$program" | grep '^libc\.')
    wanted=$(printf '%s\n' "$c_library" "${store_name:-$(basename "$store")}" | sort)
    needed=$(entries NEEDED "$library")
    [ "$needed" = "$wanted" ] || fail "needs $needed instead of $wanted"
fi

"$readelf" -dW "$library" | grep -q TEXTREL && fail "has text relocations"
exit "$failed"
