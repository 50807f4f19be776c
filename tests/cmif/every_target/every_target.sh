#!/bin/sh
# every_target.sh EXPECTED COMMAND...: the command prints what EXPECTED has, but for what differs from
# run to run, and for the caller's name, which is the command's.
set -eu
expected=$1
shift
found=$(mktemp)
trap 'rm -f "$found"' EXIT

"$@" >"$found"
sed -E -e 's/called by pid\([0-9]+\) - process name\[[^]]+\]/called by pid(PID) - process name[NAME]/' \
    -e 's/((msqid|msqID|msg_recv_id|msg_recv_ID) ?= ?\(?)[0-9]+/\1QUEUE/' \
    -e 's/0x0x[0-9a-f]+/ADDRESS/' \
    -e 's/[01][0-9]-[0-3][0-9]_[0-2][0-9]:[0-5][0-9]:[0-5][0-9]:[0-9]{3}/TIME/' "$found" |
    diff "$expected" -
