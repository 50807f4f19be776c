#!/bin/sh
# example_test.sh SOURCE_DIR LIB_DIR CC [LINK_OPTION...]
#
# examples/status.c compiles strictly, shows what a platform's store holds, and is what the README
# quotes.
set -eu
source=$1 libraries=$2 cc=$3
shift 3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CMIF_STORE="$work/store"
failed=0

# expect WHAT: what the example prints is standard input.
expect()
{
    cat >"$work/wanted"
    "$work/status" >"$work/printed"
    diff "$work/wanted" "$work/printed" >&2 && return
    echo "example_test: $1: < wanted, > printed" >&2
    failed=1
}

cat >"$work/set.c" <<'END'
#include "tarn_nvram_config.h"
int main(int count, char **arguments)
{
    return count != 3 || tarnNvramConfig_set(arguments[1], arguments[2]) != 0;
}
END
"$cc" -I "$source/platform" -o "$work/set" "$work/set.c" \
    "$@" -L "$libraries" -ltarn_nvram_config -Wl,-rpath,"$libraries"
"$cc" -std=c99 -Wall -Wextra -pedantic -Werror -I "$source/cmif" -o "$work/status" \
    "$source/examples/status.c" "$@" -L "$libraries" -lcmif -Wl,-rpath,"$libraries"

expect "an empty store" <<'END'
operator      none
registration  not registered
END

"$work/set" lte_operator_select_operator "Operator One"
"$work/set" lte_query_network_rssi -67
"$work/set" lte_network_reg_status_state 5
expect "a registered modem" <<'END'
operator      Operator One
signal        -67 dBm
registration  registered
END

"$work/set" lte_network_reg_status_state 2
expect "a searching modem" <<'END'
operator      Operator One
signal        -67 dBm
registration  searching
END

# A block of C in the README that is the whole file.
# shellcheck disable=SC2016 # awk's fields
if [ -f "$source/README.md" ]; then
    awk 'FNR == NR { wanted = wanted $0 "\n"; next }
         /^```c$/ { inside = 1; block = ""; next }
         /^```$/ { found = found || (inside && block == wanted); inside = 0 }
         inside { block = block $0 "\n" }
         END { exit !found }' "$source/examples/status.c" "$source/README.md" || {
        echo "example_test: README.md doesn't quote examples/status.c" >&2
        failed=1
    }
fi
exit "$failed"
