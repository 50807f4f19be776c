#!/bin/sh
# An invalid command line ends with status 2 and sends nothing.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

for words in '' 'nonsense' 'sim' 'sim nonsense' 'status more' '--nonsense status' '--timeout x status' \
    '--timeout -1 status' 'radio mode 5g' 'radio functionality' 'network select 12' 'sms delete' \
    'sms delete 1 --all' 'sms show many' 'status --timeout --trace' 'data profile set' 'data profile set --auth secret' \
    'sim lock-network --network 1 -'; do
    # shellcheck disable=SC2086 # words
    exits 2 cmifctl $words </dev/null
    writes_nothing
    # shellcheck disable=SC2086
    exits 2 cmifctl --json $words </dev/null
    holds error.code=2 'error.name="usage"'
done

# A flag with a value and an empty value are invalid too, and the error has the format asked for.
exits 2 cmifctl --json=true status
holds error.code=2 'error.message="--json takes no value"'
exits 2 cmifctl --timeout '' status
complains "invalid --timeout ''"
exits 2 cmifctl --timeout= status
complains '--timeout= has no value'
exits 2 cmifctl --json status --timeout=
holds error.code=2

# Secrets in the wrong place are never repeated.
for words in 'sim enter-pin 987654' 'sim change-pin 987654 987655' 'sim enter-pin --987654' \
    'sim enter-pin --force=987654' 'sim pin-mode 987654' 'data profile set --password=987654' \
    'data profile set --password 987654' 'data profile set --passwd=987654' \
    'config set example.password a 987654' 'config set example.password 987654'; do
    # shellcheck disable=SC2086
    exits 2 cmifctl $words </dev/null
    hides 98765
    # shellcheck disable=SC2086
    exits 2 cmifctl --json $words </dev/null
    hides 98765
    holds error.code=2
done
exits 2 cmifctl sim enter-pin 1234
complains 'secrets are not taken from the command line'
exits 2 cmifctl status more
hides ecret

# The message names what is expected.
exits 2 cmifctl log show --lines -3
complains "invalid --lines '-3'"
complains '  A whole number from 1 to 1000000.'
exits 2 cmifctl log show --generation 7
complains "invalid --generation '7'"
complains '  A whole number from 0 to 2.'
exits 2 cmifctl sms show abc
complains "invalid ID 'abc'"
complains '  A whole number from 0 to 2147483647.'
exits 2 cmifctl sms delete 1 --all
complains 'an ID and --all exclude each other'

# Output that can't be written is a failure.
full() { "$@" >/dev/full; }
closed() { "$@" >&-; }
for words in 'status' '--json status' 'manual' '--help' '--version' '--json nonsense'; do
    # shellcheck disable=SC2086
    exits 1 full cmifctl $words
    complains "standard output can't be written: No space left on device"
    # shellcheck disable=SC2086
    exits 1 closed cmifctl $words
    complains "standard output can't be written: Bad file descriptor"
done

exits 0 cmifctl --help
exits 0 cmifctl --json sim enter-pin --help
holds
exits 0 cmifctl --version
exits 0 cmifctl --json --version
holds
exits 0 cmifctl --json manual
holds 'command="manual"'

# --help counts wherever it stands, even on a line that is wrong otherwise; after -- it is a word.
for words in '--help sim enter-pin' 'sim --help enter-pin' 'sim enter-pin --help 987654' 'sim enter-pin --bogus -h' \
    'data profile set --apn --help'; do
    # shellcheck disable=SC2086
    exits 0 cmifctl $words </dev/null
    hides 98765
    grep -q '^Usage: cmifctl ' "$work/out" || fail 'no help'
done
exits 2 cmifctl sim enter-pin -- --help
complains 'secrets are not taken from the command line'
prints_example() { grep -qFx -e "  $1" "$work/out" || fail "no example '$1'"; }
exits 0 cmifctl network select --help
prints_example 'cmifctl network select 00101 --technology eutran'

# The manual pages are in order as mandoc sees it.
programs='cmifctl cmif-sim cmif-record'
! command -v cmifd >/dev/null || programs="$programs cmifd" # built only where GLib is
for program in $programs; do
    exits 0 "$program" manual
    for section in NAME SYNOPSIS OPTIONS COMMANDS EXAMPLES 'EXIT STATUS' ENVIRONMENT FILES 'SEE ALSO'; do
        prints ".SH $section"
    done
    ! command -v mandoc >/dev/null || mandoc -T lint -W warning <"$work/out" >&2 || fail "$program: see above"
done
