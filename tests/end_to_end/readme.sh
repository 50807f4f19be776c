#!/bin/sh
# What README.md shows of the demo is what the demo prints.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

exits 0 scripts/demo-session
# shellcheck disable=SC2016 # backquotes of Markdown
sed -n '/^## From the demo$/,/^```$/p' README.md | sed -n '/^```text$/,/^```$/p' | sed '/^```/d' >"$work/shown"
grep -q '^\$ cmifctl status$' "$work/shown" || fail 'README.md shows no demo'

# Lines are left out where "  ..." is; the time that passes may differ.
time='s/[0-9][0-9]:[0-9][0-9]:[0-9][0-9]/00:00:00/'
sed "$time" "$work/out" >"$work/printed"
sed "$time" "$work/shown" | diff - "$work/printed" | sed -n 's/^< //p' >"$work/differing"
grep -vxF '  ...' "$work/differing" >"$work/out" || exit 0
fail 'README.md shows lines that the demo does not print'
