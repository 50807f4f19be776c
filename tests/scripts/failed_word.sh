#!/bin/sh
# failed_word.sh SOURCES: a word of test-all.sh whose first command fails has failed, whatever follows.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/scripts"
cp "$1/scripts/setup.sh" "$work/scripts"
# shellcheck disable=SC2016 # the script's own
sed 's/^#     tidy .*/&\n#     broken     fails\n#     sound      passes/
     s/^    case $1 in$/&\n    broken) false; true ;;\n    sound) true ;;/' "$1/test-all.sh" >"$work/test-all.sh"

if sh "$work/test-all.sh" broken sound >"$work/output"; then
    echo 'failed_word: exit status 0' >&2
    exit 1
fi
for line in 'broken  *failed' 'sound  *passed'; do
    grep -q "^$line" "$work/output" || {
        cat "$work/output" >&2
        exit 1
    }
done
