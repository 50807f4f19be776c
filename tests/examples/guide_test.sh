#!/bin/sh
# guide_test.sh SOURCE_DIR BUILD_DIR CC [OPTION...]
#
# The C of the guide and of README.md is that of the examples, which compile strictly, and the commands
# print what is shown.
set -eu
source=$1 build=$2 cc=$3
shift 3
documents="$source/README.md $source/docs/guide.md"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

fail()
{
    echo "guide_test: $1" >&2
    failed=1
}

# shellcheck disable=SC2086 # two names
# blocks LANGUAGE: the lines of these blocks; a line of three dots after each.
blocks()
{
    awk -v start="\`\`\`$1" '$0 == start { inside = 1; next }
        /^```$/ && inside { inside = 0; print "..." }
        inside' $documents
}

blocks c >"$work/c"
[ "$(grep -cx '\.\.\.' "$work/c")" -gt 5 ] || fail "few blocks of C"
awk 'FNR == 1 { ++files }
     FILENAME != ARGV[ARGC - 1] { text[files] = text[files] $0 "\n"; next }
     $0 != "..." { block = block $0 "\n"; next }
     {
         found = 0
         for (i in text) found = found || index("\n" text[i], "\n" block)
         if (!found) { printf "in no example:\n%s", block; missing = 1 }
         block = ""
     }
     END { exit missing }' "$source"/examples/*.[ch] "$work/c" >&2 || fail "see above"

# A tree like that of the sources, with this build in place of the release, and its compiler.
mkdir -p "$work/tree/build" "$work/bin"
ln -s "$source/cmif" "$source/examples" "$source/platform" "$work/tree"
ln -s "$build" "$work/tree/build/release"
printf '#!/bin/sh\nexec %s "$@" -Wall -Wextra -pedantic -Werror %s\n' "$cc" "$*" >"$work/bin/cc"
chmod +x "$work/bin/cc"

# One session for both; the signal's strength changes with time.
blocks console | grep -vx '\.\.\.' >"$work/wanted"
{
    echo 'set -u'
    sed -n "s/^\\\$ //p" "$work/wanted" | while IFS= read -r command; do
        printf 'cat <<"END"\n$ %s\nEND\n%s\n' "$command" "$command"
    done
} >"$work/session.sh"
(cd "$work/tree" && PATH=$work/bin:$PATH sh "$work/session.sh") >"$work/printed" 2>&1 </dev/null
signal='s/-[0-9][0-9]* dBm/-N dBm/;s/\("rssi_dbm": \)-[0-9]*/\1-N/'
sed -i "$signal" "$work/wanted" "$work/printed"
grep -qx '\$ .*build/page' "$work/wanted" || fail "no commands"
diff "$work/wanted" "$work/printed" >&2 || fail "< in the document, > printed"
exit "$failed"
