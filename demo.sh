#!/bin/sh
# Installs what the demo needs, builds, and shows the library at work: store, simulated modem, both
# daemons and the command-line tool, in namespaces of their own where the kernel allows that.
set -eu
cd "$(dirname "$0")"
. scripts/setup.sh
no_arguments "$@"

# shellcheck disable=SC2086 # one word a package
need $host_packages

build_programs() {
    configure release -DBUILD_TESTING=OFF
    cmake --build --preset release --target cmif-sim cmifctl
}
step "build" build_programs
exec build/release/bin/cmif-sim run --pace 0.1 -- scripts/demo-session
