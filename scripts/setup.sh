# shellcheck shell=sh
# What demo.sh and test.sh share: packages, quiet steps, clear failures. Sourced from the root.

fail() {
    printf '%s: %s\n' "${0##*/}" "$1" >&2
    exit 1
}

no_arguments() { [ $# -eq 0 ] || fail "'$1': takes no arguments"; }

# need PACKAGE...: installs the Debian packages that are missing. apt runs only if some are.
need() {
    command -v dpkg-query >/dev/null || fail "not a Debian system; install these by hand: $*"
    missing=
    for package; do
        case $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) in
        *' ok installed') ;;
        *) missing="$missing $package" ;;
        esac
    done
    [ -n "$missing" ] || return 0

    as_root=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "run as root, or install these first:$missing"
        as_root=sudo
    fi
    step "install$missing" install_packages
}

install_packages() {
    $as_root apt-get update
    # shellcheck disable=SC2086 # one word a package
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        -o Dpkg::Options::=--force-unsafe-io -o Dpkg::Use-Pty=0 $missing
}

# step WHAT COMMAND...: runs quietly; on failure shows the end of the command's output.
step() {
    what=$1
    shift
    printf '== %s\n' "$what"
    mkdir -p build/log
    log=build/log/$(printf '%s' "$what" | cut -c -40 | tr -c 'A-Za-z0-9' '-').txt
    set +e # inside a condition the shell would not stop at the first command that fails
    (set -e; "$@") >"$log" 2>&1 </dev/null
    status=$?
    set -e
    [ "$status" -eq 0 ] || {
        tail -n 60 "$log" >&2
        fail "'$what' failed; the whole output is in $log"
    }
}

# configure PRESET [CMAKE OPTION...]: from scratch, since CMake drops a preset's settings when the
# compiler of an existing build folder changes.
configure() {
    preset=$1
    shift
    cmake --fresh --preset "$preset" "$@"
}

# build PRESET [CMAKE OPTION...]: with $nice, a command, in front.
nice=
build() {
    configure "$@"
    $nice cmake --build --preset "$1"
}

# shellcheck disable=SC2034 # for the scripts that source this
host_packages='g++ cmake ninja-build liblmdb-dev nlohmann-json3-dev'
