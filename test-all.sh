#!/bin/sh
# What takes too long for ./test.sh. Installs what a word needs, builds, and runs the words, each of
# which ends on its own; a summary at the end.
#
#     ./test-all.sh [WORD...]    all words without one, which takes hours
#
#     reference  the reference of cmif.h, with warnings as errors
#     tidy       clang-tidy's rules and clang's static analyzer
#     aarch64    the library's tests on 64-bit ARM, under qemu
#     armhf      the same on 32-bit ARM
#     mipsel     the same on 32-bit MIPS, little-endian
#     mips       the same on 32-bit MIPS, big-endian
#     riscv64    the same on 64-bit RISC-V
#     musl       the library over musl on 64-bit x86 and on 32-bit ARM: its tests in plain C
#     packages   the Debian packages, with lintian, used in an empty root; builds in other folders
#     store      library and programs over a platform's store, without the development store; recipes
#     abi        the library's binary interface against its reference, and changes that this must find
#     threads    cmifd under the thread sanitizer, over a service in ModemManager's place
#     unplug     200 times the modem beneath cmifd is unplugged and plugged in again
#     manager    200 times ModemManager beneath cmifd is killed and started again
#     mutation   small changes to the library and its store, all of which a test must notice
#     soak       the endurance figures: restarts of the router, hostile records, kills of store users
#     figures    the other figures of the documents, each with its bar
set -eu
cd "$(dirname "$0")"
. scripts/setup.sh
usage=$(sed -n '2,/^set/s/^# \{0,1\}//p' "$0")
words=$(printf '%s\n' "$usage" | sed -n 's/^    \([a-z0-9]*\)  .*/\1/p')
sanitized='clang libclang-rt-14-dev lld libgtest-dev googletest'
managed='dbus iproute2 libglib2.0-dev modemmanager pkgconf'

# shellcheck disable=SC2086 # one word a package
install() { need $host_packages "$@"; }

build_and_test() { # build_and_test PRESET
    step "build, $1" build "$1"
    step "test, $1" ctest --preset "$1" -j "$(nproc)"
}

cross() { # cross PRESET TRIPLET
    install "g++-$2" googletest qemu-user-static
    build_and_test "$1"
}

musl() { # musl ARCHITECTURE
    step "unpack musl, $1" scripts/musl "$1"
    build_and_test "musl-$1"
}

check_sources() {
    build dev # the checks read its precompiled headers
    scripts/tidy build/dev
}

build_simulator() {
    configure release -DBUILD_TESTING=OFF
    cmake --build --preset release --target cmif-sim isolate
}

# The commands of docs/embedding.md. What they have built is installed, and finds the store by its name.
build_as_documented() {
    commands=$(sed -n "/^### The platform's store/,/^### /{/^\`\`\`sh/,/^\`\`\`/{/^\`\`\`/!p}}" docs/embedding.md)
    rm -rf build/platform build/libfile_store.so
    sh -eux -c "$commands"
    cmake --install build/platform --prefix build/platform/installed
    LD_LIBRARY_PATH=build build/platform/installed/bin/cmifctl --version
}

build_cmifd() {
    configure dev
    cmake --build --preset dev --target cmif-sim cmifctl cmifd
}

# GLib is built without the sanitizer: its own locks are not seen, nor is what it does with memory looked at.
build_threads() {
    configure dev
    cmake --build --preset dev --target isolate
    configure tsan -DCMIF_HOST=ON "-DCMIF_LAUNCHER=$PWD/build/dev/bin/isolate"
    cmake --build --preset tsan --target cmifd modem_threads_test at_ports_test cmifd_test \
        addresses_test at_port_test mm_connection_test mm_events_test mm_sim_test mm_verbs_test
}
test_threads() {
    TSAN_OPTIONS=ignore_noninstrumented_modules=1 ctest --preset tsan -j "$(nproc)" --no-tests=error \
        -R '^(ModemThreads|AtPort|AtSocket|CmifdTest|AddressesTest|Mm(Connection|Events|Sim|Verbs)Test)'
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

# shellcheck disable=SC2086 # one word a package
run() {
    case $1 in
    reference)
        install doxygen
        step "reference of cmif.h" scripts/reference
        ;;
    tidy)
        install $sanitized $managed clangd jq
        step "clang-tidy" check_sources
        ;;
    aarch64) cross "$1" aarch64-linux-gnu ;;
    armhf) cross "$1" arm-linux-gnueabihf ;;
    mipsel) cross "$1" mipsel-linux-gnu ;;
    mips) cross "$1" mips-linux-gnu ;;
    riscv64) cross "$1" riscv64-linux-gnu ;;
    musl)
        install g++-arm-linux-gnueabihf qemu-user-static
        musl amd64
        musl armhf
        ;;
    packages)
        install debhelper dpkg-dev libglib2.0-dev lintian mmdebstrap pkgconf
        step "build in two folders, and as part of a project" tests/install/folders
        step "Debian packages" tests/packaging/debian_packages
        ;;
    store)
        install $managed jq make python3-jsonschema python3-kconfiglib
        step "build as docs/embedding.md says" build_as_documented
        step "build the simulator" build_simulator
        step "build over a platform's store" tests/platform/platform_store_build.sh build/store
        step "run over it" env PATH="$PWD/build/store/bin:$PWD/build/release/bin:$PATH" \
            build/release/bin/isolate sh tests/end_to_end/platform_store.sh
        step "recipes" tests/packaging/recipes.sh build/store
        ;;
    abi)
        scripts/abi
        step "changes of the binary interface" tests/cmif/abi_changes.sh build/abi-changes
        ;;
    threads)
        install $sanitized $managed
        step "build, thread sanitizer" build_threads
        step "test, thread sanitizer" test_threads
        ;;
    unplug | manager)
        install $sanitized $managed
        modem_losses "$1"
        ;;
    mutation)
        install $sanitized $managed python3
        step "mutation, cmif" all_killed cmif
        step "mutation, platform" all_killed platform
        ;;
    soak)
        install $sanitized python3
        step "soak" scripts/figures restarts hostile kills
        ;;
    figures)
        install $sanitized $managed python3
        step "figures" scripts/figures pairs withdrawals endings lines status recording repeats cmifd
        ;;
    *) fail "nothing runs '$1'" ;;
    esac
}

# shellcheck disable=SC2086 # one word a word
[ $# -gt 0 ] || set -- $words
for word; do
    case $word in
    -h | --help)
        printf '%s\n' "$usage"
        exit
        ;;
    esac
    printf '%s\n' "$words" | grep -qxF -e "$word" || fail "no word '$word'; --help lists them"
done

summary='' status=0
for word; do
    begin=$(date +%s) result=passed
    set +e # inside a condition the shell would not stop at the first command that fails
    (set -e; run "$word")
    ended=$?
    set -e
    [ "$ended" -eq 0 ] || result=failed status=1
    summary="$summary$(printf '%-10s %s %6d s' "$word" "$result" $(($(date +%s) - begin)))
"
done
printf '== summary; the whole output is in build/log\n%s' "$summary"
[ "$status" -eq 0 ]
