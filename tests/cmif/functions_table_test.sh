#!/bin/sh
# functions_table_test.sh LIBRARY TABLE NM OBJCOPY
#
# The table has a row for each function that the library exports and for no other, and it names the
# configuration keys that the library's text names, and no other.
# shellcheck disable=SC2016 # the back quotes are the table's
set -eu
library=$1 table=$2 nm=$3 objcopy=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# compare WHAT: $work/table against $work/library, each a sorted list.
failed=0
compare()
{
    if [ ! -s "$work/library" ]; then
        echo "functions_table_test: the library shows no $1" >&2
        failed=1
    fi
    diff "$work/table" "$work/library" >"$work/differences" && return
    echo "functions_table_test: $1: < only in the table, > only in the library" >&2
    cat "$work/differences" >&2
    failed=1
}

# Not unique: a second row for a function is a difference as well.
sed -n 's/^| `\([A-Za-z_0-9]*\)`[ (L)]* |.*/\1/p' "$table" | sort >"$work/table"
"$nm" -D --defined-only "$library" | awk '$2 != "A" {sub("@.*", "", $3); print $3}' | sort \
    >"$work/library"
compare "functions"

# Texts of the library that end in a key. Other bytes may lie right before a text, printable ones too,
# so only the end of a text counts; paths and names of functions end like keys, too. The library
# builds the keys of messages from a format.
grep -o '`\(lte\|debug\)_[a-z0-9_]*`' "$table" | tr -d '`' | sort -u >"$work/table"
"$objcopy" --strip-all "$library" "$work/stripped"
LC_ALL=C tr -c '[:print:]' '\n' <"$work/stripped" | LC_ALL=C awk '
    match($0, /(lte|debug)_[a-z0-9_]*$/) {
        before = substr($0, 1, RSTART - 1)
        if (before !~ /(\/tmp\/|shared_)$/)
            print substr($0, RSTART)
    }' | sort -u >"$work/library"
compare "keys"
exit "$failed"
