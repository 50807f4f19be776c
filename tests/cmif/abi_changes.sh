#!/bin/sh
# abi_changes.sh FOLDER: the comparison of scripts/abi finds each kind of change of the interface, in
# a copy of the library's sources that is built in FOLDER.
set -eu
cd "$(dirname "$0")/../.."
mkdir -p "$1"
folder=$(cd "$1" && pwd)
reference=$PWD/abi/libcmif-64.abi
failed=0

# with_changes WHAT PATTERN FILE EXPRESSION...: sed's expressions, each in its file, then the report
# that abidiff gives, one line of which must match.
with_changes() {
    what=$1 pattern=$2
    shift 2
    rm -rf "$folder/cmif"
    cp -R cmif "$folder/"
    while [ $# -gt 0 ]; do
        sed -i "$2" "$folder/cmif/$1"
        ! cmp -s "cmif/$1" "$folder/cmif/$1" || {
            echo "abi_changes: $what: '$2' changes nothing" >&2
            failed=1
        }
        shift 2
    done
    cmake --build "$folder/build" --target cmif >"$folder/built.txt" || {
        cat "$folder/built.txt" >&2
        exit 1
    }
    status=0
    abidiff --no-show-locs "$reference" "$folder/build/lib/libcmif.so" >"$folder/report.txt" || status=$?
    if [ -z "$pattern" ]; then
        [ "$status" -eq 0 ] && return
    elif [ "$status" -ne 0 ] && grep -q "$pattern" "$folder/report.txt"; then
        printf '== %s\n' "$what"
        cat "$folder/report.txt"
        return
    fi
    echo "abi_changes: $what: status $status" >&2
    cat "$folder/report.txt" >&2
    failed=1
}

tar -c --exclude=./build --exclude=./.git . | tar -x -C "$folder"
cmake --fresh -S "$folder" --preset release -B "$folder/build" -DCMIF_HOST=OFF -DBUILD_TESTING=OFF \
    -DCMAKE_CXX_FLAGS=-g >"$folder/configured.txt"
# shellcheck disable=SC2016 # sed's last line
with_changes "nothing" '' at_misc.cpp '$a // a comment'
with_changes "a field resized, another moved" "'char NewIMSI\[20\]'" \
    cmif.h 's/char NewIMSI\[20\]/char NewIMSI[24]/; s/char NewIMEI\[20\]/char NewIMEI[16]/'
with_changes "a parameter changed" "parameter 1 of type 'int' changed" \
    cmif.h 's/shared_CMIF_SetBandRegion(int /shared_CMIF_SetBandRegion(short /' \
    at_misc.cpp 's/shared_CMIF_SetBandRegion(int /shared_CMIF_SetBandRegion(short /'
with_changes "an export dropped" "\[D\] 'function int symbol_filter(" cmif.map '/symbol_filter;/d'
# shellcheck disable=SC2016
with_changes "an export added" "\[A\] 'function int shared_CMIF_get_added(" \
    cmif.map 's/^local:/shared_CMIF_get_added;&/' \
    cmif.h 's/^int symbol_filter(/int shared_CMIF_get_added(void);\n&/' \
    provider_list.cpp '$a int shared_CMIF_get_added(void) { return 0; }'
with_changes "another symbol version" 'symbol_filter@@CMIF_1' cmif.map 's/^CMIF_1/CMIF_2/'
with_changes "another SONAME" "SONAME changed from 'libcmif.so.1'" \
    CMakeLists.txt 's/SOVERSION [^ ]*/SOVERSION 2/'
exit $failed
