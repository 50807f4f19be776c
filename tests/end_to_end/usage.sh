#!/bin/sh
# A command line that is wrong ends with status 2 and sends nothing.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

for words in '' 'nonsense' 'sim' 'sim nonsense' 'status more' '--nonsense status' '--timeout x status' \
    '--timeout -1 status' 'radio mode 5g' 'radio functionality' 'network select 12' 'sms delete' \
    'sms delete 1 --all' 'sms show many' 'data profile set' 'data profile set --auth secret' \
    'sim lock-network --network 1 -'; do
    # shellcheck disable=SC2086 # words
    exits 2 cmifctl $words </dev/null
    writes_nothing
    # shellcheck disable=SC2086
    exits 2 cmifctl --json $words </dev/null
    holds error.code=2 'error.name="usage"'
done

exits 0 cmifctl --help
exits 0 cmifctl --json sim enter-pin --help
holds
exits 0 cmifctl --version
exits 0 cmifctl --json --version
holds
exits 0 cmifctl manual
exits 0 cmifctl completion bash
