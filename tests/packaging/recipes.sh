#!/bin/sh
# recipes.sh BUILD-FOLDER: what can be tried of the recipes without the build systems that they are
# for. CMake takes the options that they name, and what OpenWrt's and Yocto's pack is there when that
# build, over a platform's store, is installed. Stand-ins for the build systems read OpenWrt's and
# Buildroot's, this script reads the lines that it knows of Yocto's.
set -eu
build=$(cd "$1" && pwd)
cd "$(dirname "$0")/../.."
source=$PWD
stand_ins=$source/tests/packaging
work=$build/recipes
failed=0

fail() {
    echo "recipes: $1" >&2
    failed=1
}

# takes_options WHAT OPTION...: none of which may be unknown.
takes_options() {
    what=$1
    shift
    cmake --fresh -G Ninja -S "$source" -B "$work/configured" "$@" >"$work/configured.txt" 2>&1 ||
        fail "$what: its options don't configure: $(cat "$work/configured.txt")"
    if grep -A9 'not used by the project' "$work/configured.txt"; then fail "$what: unknown options"; fi
}

# has FOLDER FILE...
has() {
    folder=$1
    shift
    for file; do
        [ -e "$work/$folder/$file" ] || fail "$folder has no $file"
    done
}

version=$(sed -n 's/^#define CMIF_VERSION_[A-Z]* \([0-9]*\)$/\1/p' cmif/cmif.h | paste -sd .)
rm -rf "$work"
mkdir -p "$work/staging/usr/lib"
cp "$build/platform/libvendor_config.so" "$work/staging/usr/lib/libtarn_nvram_config.so"
DESTDIR="$work/installed" cmake --install "$build" --prefix /usr >/dev/null
selected='CONFIG_PACKAGE_cmifctl=y CONFIG_PACKAGE_cmif-record=y CONFIG_PACKAGE_cmifd=y'

# shellcheck disable=SC2086 # one word a setting
options=$(make -s -f packaging/openwrt/Makefile "TOPDIR=$stand_ins/openwrt" "STAGING_DIR=$work/staging" \
    "PKG_INSTALL_DIR=$work/installed" "PKG_BUILD_DIR=$source" "WORK=$work/openwrt" $selected all)
# shellcheck disable=SC2086
takes_options openwrt $options
has openwrt libcmif/usr/lib/libcmif.so.1 cmifctl/usr/bin/cmifctl cmif-record/usr/bin/cmif-record \
    cmif-record/usr/lib/cmif/libcmif-record.so cmifd/usr/bin/cmifd cmifd/etc/init.d/cmifd \
    staging/usr/include/cmif.h staging/usr/lib/libcmif.so

options=$(make -s -f "$stand_ins/buildroot.mk" "BR2_EXTERNAL_CMIF_PATH=$source/packaging/buildroot" \
    "STAGING_DIR=$work/staging" BR2_PACKAGE_CMIF_PROGRAMS=y BR2_PACKAGE_CMIF_CMIFD=y \
    'BR2_PACKAGE_CMIF_STORE="libtarn_nvram_config.so"' BR2_PACKAGE_CMIF_HARDENED=y all)
# shellcheck disable=SC2086
takes_options buildroot $options
PYTHONDONTWRITEBYTECODE=1 "$stand_ins/kconfig.py" packaging/buildroot/Config.in ||
    fail "buildroot: Config.in can't be read"

# shellcheck disable=SC2016 # bitbake's variables
options=$(sed -n 's/^PACKAGECONFIG\[.*\] = "\([^",]*\).*/\1/p; s/^    \(-D.*[^ ]\) *\\$/\1/p' \
    packaging/yocto/cmif_"$version".bb | sed "s,\${STAGING_LIBDIR}/\${CMIF_STORE},$work/staging/usr/lib/libtarn_nvram_config.so,")
# shellcheck disable=SC2086
takes_options yocto $options
# shellcheck disable=SC2016
patterns=$(sed -n '/^FILES:/,/"$/p' packaging/yocto/cmif_"$version".bb | grep -o '\${[a-z_]*}/[^ "]*' |
    sed 's,${bindir},usr/bin,; s,${datadir},usr/share,; s,${libdir},usr/lib,; s,${nonarch_libdir},usr/lib,')
[ "$(printf '%s\n' "$patterns" | wc -l)" -ge 9 ] || fail "yocto: too few patterns: $patterns"
for pattern in $patterns; do
    # shellcheck disable=SC2086 # one argument a file
    (cd "$work" && set -- installed/$pattern && [ -e "$1" ]) || fail "yocto: no $pattern is installed"
done
grep -q "md5=$(md5sum <LICENSE | cut -d ' ' -f 1)" packaging/yocto/cmif_"$version".bb ||
    fail "yocto: LICENSE has another sum"

for recipe in openwrt/Makefile buildroot/cmif/cmif.mk yocto/cmif_"$version".bb; do
    grep -q "$version" "packaging/$recipe" || fail "$recipe is not for $version"
done
exit $failed
