#!/bin/sh
# Completion, as users of bash and zsh meet it at a terminal.
# shellcheck source=tests/end_to_end/lib.sh
. "$(dirname "$0")/lib.sh"

terminal=$work/terminal # what it has shown

shown() { tr -d '\r' <"$terminal" | grep -q -e "$1"; }
await() {
    for _ in $(seq 200); do
        if shown "$1"; then return; fi
        sleep 0.05
    done
    fail "the terminal never showed '$1': $(cat "$terminal")"
}

# Starts $1, bash or zsh, with its input from descriptor 3.
start_shell() {
    case $1 in
    bash) command='bash --norc --noprofile -i' before=: ;;
    zsh) command='zsh -f -i' before='autoload -U compinit; compinit -u -D' ;;
    esac
    [ -p "$work/keys" ] || mkfifo "$work/keys"
    : >"$terminal"
    TERM=dumb script -qefc "$command" "$terminal" <"$work/keys" >/dev/null 2>&1 &
    exec 3>"$work/keys"
    printf '%s\n' "$before; source <(cmifctl completion $1); source <(cmif-sim completion $1); echo is ready" >&3
    await '^is ready$'
}
end_shell() {
    printf '\nexit\n' >&3
    exec 3>&-
    wait "$!" || :
}

# completes TYPED LINE: TYPED and a tab become LINE, which the shell then prints in brackets.
completes() {
    printf '%s\t\001echo "<\005>"\n' "$1" >&3
    await "^<$2 \{0,1\}>\$"
}
# lists TYPED TEXT: TYPED and several tabs list the candidates, one of them with TEXT.
lists() {
    printf '%s\t\t\t' "$1" >&3
    await "$2"
    printf '\025' >&3 # deletes the line
}

start_router --pace 0
register
exits 0 cmifctl network scan
exits 0 cmifctl sms list
exits 0 cmifctl config set example.completed 1

exits 0 cmifctl complete -- sms show 2
prints "$(printf '2\tfrom +12025550142, 2024-03-01 09:12')"

for shell in bash zsh; do
    if ! command -v "$shell" >/dev/null; then
        echo "no $shell here" >&2
        continue
    fi
    start_shell "$shell"
    completes 'cmifctl netw' 'cmifctl network'
    completes 'cmifctl --json sim enter-pi' 'cmifctl --json sim enter-pin'
    completes 'cmifctl data profile set --aut' 'cmifctl data profile set --aut' # auth, auto-apn
    completes 'cmifctl data profile set --auth ch' 'cmifctl data profile set --auth chap'
    completes 'cmifctl data profile set --auth=ch' 'cmifctl data profile set --auth=chap'
    completes 'cmifctl radio functionality min' 'cmifctl radio functionality minimum'
    completes 'cmifctl network select 99970' 'cmifctl network select 99970'
    completes 'cmifctl network select 00103' 'cmifctl network select 00103'
    completes 'cmifctl config get example.com' 'cmifctl config get example.completed'
    completes 'cmif-sim run --verb' 'cmif-sim run --verbose'
    completes 'cmif-sim ctl fault at rem' 'cmif-sim ctl fault at remove-queue'
    lists 'cmif-sim ctl fault qmi 3 ' 'do what is asked and never answer'
    lists 'cmifctl s' 'the stored short messages'
    lists 'cmifctl network select 9997' 'Harbour Test'
    lists 'cmifctl sms show ' '+12025550142'
    end_shell
done

# A daemon that doesn't answer delays no completion, and no error disturbs the line that is typed.
kill -STOP "$router"
exits 0 timeout 5 cmifctl complete -- config get example.com
prints "$(printf 'example.completed\t')"
CMIF_STORE=/dev/null/nowhere exits 0 timeout 5 cmifctl complete -- config get example.com
writes_nothing
