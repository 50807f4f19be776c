#!/bin/sh
# platform_store_build.sh FOLDER: builds the library and the programs in FOLDER over a platform's
# store with another SONAME, from examples/file_store. Nothing of the development store is in them.
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
rm -rf "$1"
mkdir -p "$1"
folder=$(cd "$1" && pwd)
store=$folder/platform/libvendor_config.so soname=libvendor_config.so.7
failed=0

fail() {
    echo "platform_store_build: $1" >&2
    failed=1
}

# needs FILE WANTED: whether it needs the store by its SONAME.
needs() {
    needed=$(readelf -dW "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
    printf '%s\n' "$needed" | grep -qxF "$2" || fail "${1##*/} does not need $2 but:
$needed"
}

# The library over a store without a SONAME, which is needed by its name, not by its path here.
mkdir -p "${store%/*}"
cc -shared -fPIC -I"$source/platform" "$source/platform/link_stub.c" -o "$store"
cmake --fresh -S "$source" --preset release -B "$folder" -DBUILD_TESTING=OFF "-DCMIF_STORE_LIBRARY=$store" \
    >"$folder/configured.txt"
grep -q '^-- cmif-sim is left out' "$folder/configured.txt" || fail "it is not told that cmif-sim is left out"
cmake --build "$folder" --target cmif
needs "$folder/lib/libcmif.so" libvendor_config.so

cc -shared -fPIC -I"$source/platform" -Wl,-soname,$soname \
    -DFILE_STORE_RUNNING='"/tmp/file_store.running"' -DFILE_STORE_SAVED='"/data/file_store.saved"' \
    "$source/examples/file_store/file_store.c" -o "$store"
ln -sf libvendor_config.so "${store%/*}/$soname"
cmake --build "$folder"
needs "$folder/lib/libcmif.so" $soname
needs "$folder/bin/cmifctl" $soname
for file in "$folder"/lib/libcmif.so "$folder"/bin/*; do
    [ "${file##*/}" != isolate ] || continue # the launcher of tests
    if ldd "$file" | grep -E 'lmdb|tarn_nvram_config|not found'; then fail "${file##*/} loads these"; fi
    if nm -D --undefined-only "$file" | grep -E 'host_store|mdb_'; then fail "${file##*/} needs these"; fi
done
[ ! -e "$folder/bin/cmif-sim" ] || fail "cmif-sim was built"
if find "$folder" -name 'libtarn_nvram_config*' | grep .; then fail "the development store was built"; fi

# A program finds the installed library, and nothing that is not installed.
cmake --install "$folder" --prefix "$folder/installed" >"$folder/installed.txt"
if grep -r tarn_store "$folder/installed"; then fail "^ names a target that is not installed"; fi
mkdir -p "$folder/consumer"
cat >"$folder/consumer/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(consumer C)
find_package(cmif 1.0 REQUIRED)
add_executable(status $source/examples/status.c)
target_link_libraries(status cmif::cmif)
END
if ! { cmake --fresh -S "$folder/consumer" -B "$folder/consumer" "-DCMAKE_PREFIX_PATH=$folder/installed" \
    "-DCMAKE_EXE_LINKER_FLAGS=-Wl,-rpath-link,${store%/*}" && cmake --build "$folder/consumer"; } \
    >"$folder/consumer.txt" 2>&1; then
    fail "no program can be built with the installed library: $(cat "$folder/consumer.txt")"
fi
exit $failed
