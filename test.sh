#!/bin/sh
# Installs what the tests need, builds everything and runs the whole test suite.
set -eu
cd "$(dirname "$0")"
. scripts/setup.sh
no_arguments "$@"

# shellcheck disable=SC2086 # one word a package
need $host_packages libgtest-dev googletest g++-i686-linux-gnu \
    clang clang-format dbus iproute2 iputils-ping jq libclang-rt-14-dev libglib2.0-dev lld mandoc modemmanager \
    pkgconf python3-jsonschema shellcheck zsh

rm -rf build/log
tests() {
    preset=$1
    shift
    ctest --preset "$preset" --no-tests=error -j "$(($(nproc) * 2))" "$@" # many spend their time waiting
}

launcher=-DCMIF_LAUNCHER=$PWD/build/dev/bin/isolate

build_by_gcc() {
    nice='nice -n 10'
    build release -DBUILD_TESTING=OFF "$launcher" &
    build i686 "$launcher"
    wait "$!"
}

# Only the tests that share something between threads.
build_threads() {
    configure tsan -DCMIF_HOST=OFF "$launcher"
    cmake --build --preset tsan --target threads_test debug_log_writers_test
}

step "check format, dialect and layers" scripts/check
step "build, address and undefined sanitizers" build dev
# Beside the tests, which spend half of their time waiting.
(step "build, as installed and 32-bit" build_by_gcc) &
building=$!
trap wait EXIT
step "test, address and undefined sanitizers" tests dev
wait "$building"
step "hardening, as installed" scripts/hardening build/release
step "install and use" tests/install/run build/release
step "test, 32-bit" tests i686
step "build, thread sanitizer" build_threads
step "test, thread sanitizer" tests tsan -R '^(Threads|DebugLogWriters)'
step "build fuzz targets" build fuzz "$launcher"
step "fuzz, 10 seconds a target" tests/fuzz/run build/fuzz 10

cat build/log/test*.txt | awk '
    /tests passed, .* tests failed out of/ { failed += $4; all += $9 }
    END { printf "%d passed, %d failed\n", all - failed, failed }'
