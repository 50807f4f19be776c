#!/bin/sh
# documents_test.sh HEADER FORMS FUNCTIONS CHANNELS
#
# The documents give the header's request codes, queue keys, fields, offsets and files: the table of
# all functions (FUNCTIONS) and the description of what travels (CHANNELS). FORMS is the daemon's
# table of the fields that each request fills.
#
# Columns are found by their names, in any order: "function", "code", "channel", "key", "fields...".
# shellcheck disable=SC2016 # the back quotes are the documents'
set -eu
header=$1 forms=$2 functions=$3 channels=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# compare WHAT: $work/document against $work/header, each a list.
compare()
{
    if [ ! -s "$work/header" ]; then
        echo "documents_test: nothing to compare with: $1" >&2
        failed=1
    fi
    diff "$work/document" "$work/header" >"$work/differences" && return
    echo "documents_test: $1: < in the document, > as it should be" >&2
    cat "$work/differences" >&2
    failed=1
}

# columns FILE NAME...: a line for each row of the tables that have all these columns, cells divided
# by tabs. A name may be the start of a column's name.
columns()
{
    file=$1
    shift
    awk -F '|' -v names="$*" '
        function trim(text) { gsub(/^ +| +$/, "", text); return text }
        !/^\|/ { rows = 0; next }
        ++rows == 1 {
            wanted = split(names, name, " ")
            found = 0
            for (n = 1; n <= wanted; ++n)
                for (i = NF; i > 0; --i)
                    if (index(trim($i), name[n]) == 1) { column[n] = i; ++found; break }
            next
        }
        rows > 2 && found == wanted {
            for (n = 1; n <= wanted; ++n)
                printf "%s%s", trim($column[n]), n < wanted ? "\t" : "\n"
        }' "$file"
}

# Name and number of each code of an enum.
enum()
{
    sed -n "/^enum $1 /,/};/s/^ *\([A-Z_]*\) = \([0-9]*\).*/\1 \2/p" "$header"
}

# Name and size of each member of a record; a long and an int have none here.
members()
{
    sed -n "/^struct $1 /,/};/s/^ *[a-z]* \([A-Za-z_0-9]*\)\(\[\([0-9]*\)\]\)\{0,1\};.*/\1 \3/p" "$header"
}

# offsets RECORD: those of its payload's fields, and its end.
offsets()
{
    members "$1" | awk -v record="$1" '
        $1 == "mod_id" { next }
        { printf "%d ", at; at += $2 ? $2 : record == "cmif_msg" ? 4 : 1 }
        END { print at }'
}

for channel in AT QMI; do
    columns "$functions" channel code | awk -F '\t' -v channel="$channel" \
        '$2 ~ /^[0-9]+$/ && index($1, channel) == 1 { print $2 }' | sort -un >"$work/document"
    enum "cmif_$(echo "$channel" | tr '[:upper:]' '[:lower:]')_code" | awk '{ print $2 }' | sort -n \
        >"$work/header"
    compare "codes of the $channel channel in $functions"
done

# A function's code is the same in both documents.
columns "$functions" function code | awk -F '\t' '$2 ~ /^[0-9]+$/ { split($1, part, "`"); print part[2], $2 }' |
    sort >"$work/header"
columns "$channels" function code | awk -F '\t' '$2 ~ /^[0-9]+$/ { split($1, part, "`"); print part[2], $2 }' |
    sort >"$work/document"
compare "codes in $channels"

# Where a column of names is next to the codes, it has all names of the enums.
columns "$channels" code name | awk -F '\t' '{ split($2, part, "`"); print part[2], $1 }' | sort -u >"$work/document"
if [ -s "$work/document" ]; then
    { enum cmif_at_code; enum cmif_qmi_code; } | sort >"$work/header"
    compare "names of codes in $channels"
fi

# And the header names a function that sends the code.
columns "$channels" code function name | awk -F '\t' '{
    split($2, function_, "`"); split($3, name, "`"); if (!seen[name[2]]++) print name[2], function_[2] }' |
    sort >"$work/document"
sed -n 's/^ *\(CMIF_[A-Z]*_[A-Z_]*\) = [0-9]*,* *\/\* \(sh[A-Za-z_0-9]*\).*/\1 \2/p' "$header" | sort >"$work/header"
compare "functions of the codes in the header"

columns "$channels" key | grep -x '[0-9]*' | sort >"$work/document"
sed -n 's/^#define CMIF_[A-Z]*_[A-Z]*_KEY *\([0-9]*\).*/\1/p' "$header" | sort >"$work/header"
compare "queue keys in $channels"

# A line for each field that a request fills: its code, its place in the order, its name.
columns "$channels" code fields | sed 's/the byte at offset 0/`first_byte`/' | awk '{
    code = $1; place = 0
    while (match($0, /`(set_[a-z0-9]+|first_byte)`/)) {
        print code, ++place, substr($0, RSTART + 1, RLENGTH - 2)
        $0 = substr($0, RSTART + RLENGTH)
    } }' | sort -u >"$work/document"
{ enum cmif_at_code; cat "$forms"; } | awk '
    NF == 2 && $1 ~ /^CMIF_AT_/ { number[$1] = $2; next }
    /^ *[{]CMIF_AT_/ { code = $1; gsub(/[{,]/, "", code); place = 0 }
    { while (match($0, /[{](value|string[123]|first_byte), "/)) {
        print number[code], ++place, substr($0, RSTART + 1, RLENGTH - 4)
        $0 = substr($0, RSTART + RLENGTH)
    } }' | sed 's/ string1$/ string/; s/ \(string[23]*\|value\)$/ set_\1/' | sort >"$work/header"
compare "codes and fields in $channels"

# Code and function of each row of the daemon's table.
sed -n 's/^ *{\(CMIF_AT_[A-Z_]*\), *"\([A-Za-z_0-9]*\)".*/\1 \2/p' "$forms" | sort >"$work/document"
sed -n 's/^ *\(CMIF_AT_[A-Z_]*\) = [0-9]*,* *\/\* \(sh[A-Za-z_0-9]*\).*/\1 \2/p' "$header" | sort >"$work/header"
compare "functions of the codes in $forms"

# In the drawings of records, the line below the names has the sizes.
for record in cmif_msg qmi_profile_payload; do
    members "$record" | awk '$2' >"$work/header"
    awk -F '│' -v first="$(head -n 1 "$work/header" | cut -d ' ' -f 1)" '
        { gsub(/ /, "") }
        names { for (i = 1; i <= columns; ++i) if (name[i] != 0 && $i ~ /^[0-9]+(bytes)?$/) print name[i], $i + 0; names = 0 }
        index($0, "│" first "│") { columns = split($0, name, "│"); names = 1 }' "$channels" >"$work/document"
    compare "sizes of $record in $channels"
done

for record in cmif_msg qmi_profile_payload; do
    offsets "$record" >"$work/header"
    sed -n 's/^ *\([0-9][0-9 ]*[0-9]\)$/\1/p' "$channels" | tr -s ' ' |
        grep -xF "$(cat "$work/header")" >"$work/document" || true
    compare "a line of the offsets of $record in $channels"
done

sed -n 's/^#define CMIF_[A-Z_0-9]*FILE[_0-9]* *\("[^"]*"\).*/\1/p' "$header" | sort >"$work/header"
grep -oF -f "$work/header" "$channels" | sort -u >"$work/document"
compare "files in $channels"
exit "$failed"
