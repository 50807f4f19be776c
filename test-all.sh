#!/bin/sh
# What takes too long for ./test.sh. Installs what a word needs, builds, and runs the words, each of
# which ends on its own; a summary at the end.
#
#     ./test-all.sh [WORD...]    all words without one, which takes hours
#
#     tidy       clang-tidy's rules and clang's static analyzer
#     unplug     200 times the modem beneath cmifd is unplugged and plugged in again
#     manager    200 times ModemManager beneath cmifd is killed and started again
#     figures    every figure of the documents, beside its bar
#     mutation   small changes to the library and its store, all of which a test must notice
#     armhf      the library's tests on 32-bit ARM, under qemu
#     mipsel     the same on 32-bit MIPS
set -eu
cd "$(dirname "$0")"
. scripts/setup.sh
words='tidy unplug manager figures mutation armhf mipsel'
sanitized='clang libclang-rt-14-dev lld libgtest-dev googletest'
managed='dbus iproute2 libglib2.0-dev modemmanager pkgconf'

# shellcheck disable=SC2086 # one word a package
install() { need $host_packages "$@"; }

build_cmifd() {
    configure dev
    cmake --build --preset dev --target cmif-sim cmifctl cmifd
}

check_sources() {
    build dev # the checks read its precompiled headers
    scripts/tidy build/dev
}

modem_losses() {
    step "build cmifd, address and undefined sanitizers" build_cmifd
    step "$1, 200 times" env PATH="$PWD/build/dev/bin:$PATH" sh tests/soak/modem_losses.sh "$1" 200
}

# Mutants that no test can tell from the original are left out.
all_killed() {
    found=$(scripts/mutate "$1" --workers "$(nproc)")
    printf '%s\n' "$found"
    case $found in
    *' 0 survived') ;;
    *) return 1 ;;
    esac
}

cross() { # cross PRESET
    step "build, $1" build "$1"
    step "test, $1" ctest --preset "$1" -j "$(nproc)"
}

# shellcheck disable=SC2086 # one word a package
run() {
    case $1 in
    tidy)
        install $sanitized $managed clangd jq
        step "clang-tidy" check_sources
        ;;
    unplug | manager)
        install $sanitized $managed
        modem_losses "$1"
        ;;
    figures)
        install $sanitized $managed python3
        step "figures" scripts/figures
        ;;
    mutation)
        install $sanitized $managed python3
        step "mutation, cmif" all_killed cmif
        step "mutation, platform" all_killed platform
        ;;
    armhf)
        install g++-arm-linux-gnueabihf googletest qemu-user-static
        cross armhf
        ;;
    mipsel)
        install g++-mipsel-linux-gnu googletest qemu-user-static
        cross mipsel
        ;;
    esac
}

for word; do
    case " $words " in
    *" $word "*) ;;
    *)
        echo "test-all.sh: no '$word'; the words are: $words" >&2
        exit 2
        ;;
    esac
done
# shellcheck disable=SC2086 # one word a word
[ $# -gt 0 ] || set -- $words

summary='' status=0
for word; do
    begin=$(date +%s) result=passed
    (run "$word") || result=failed status=1
    summary="$summary$(printf '%-10s %s %6d s' "$word" "$result" $(($(date +%s) - begin)))
"
done
printf '== summary; the whole output is in build/log\n%s' "$summary"
[ "$status" -eq 0 ]
