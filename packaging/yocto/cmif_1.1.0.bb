# CMIF for Yocto: the library, and cmifctl, cmif-record and cmifd over the platform's store.
#
# Put this file into a layer's recipes-connectivity/cmif/, and the sources into its files/:
#     git archive --prefix=cmif-1.1.0/ -o files/cmif-1.1.0.tar.gz HEAD
# In a configuration file of the layer, name the recipe that provides the platform's store and its
# library; a platform without one may begin with examples/file_store.
#     CMIF_STORE_RECIPE = "tarn-nvram-config"
#     CMIF_STORE = "libtarn_nvram_config.so"
#
# The kernel needs System V queues, CONFIG_SYSVIPC, which no recipe but the kernel's can switch on.
#
# cmifd.service runs as the user cmif, which systemd-sysusers makes at boot: systemd needs its
# PACKAGECONFIG "sysusers". The image has to enable the service.
#
# Not tried: bitbake, which Debian does not have; nothing has read this file but a test of its CMake
# options (tests/packaging). With these the library, cmifctl and cmif-record were built for ARM by
# Debian's compiler; cmifd only natively.
SUMMARY = "Connection-manager interface of an LTE router"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=9acae40cf32d3c8447759a2a5bc7b0e0"
SRC_URI = "file://${BP}.tar.gz"

CMIF_STORE_RECIPE ?= "tarn-nvram-config"
CMIF_STORE ?= "libtarn_nvram_config.so"
DEPENDS = "${CMIF_STORE_RECIPE}"

inherit cmake pkgconfig

PACKAGECONFIG ??= "programs"
PACKAGECONFIG[programs] = "-DCMIF_HOST=ON,-DCMIF_HOST=OFF,nlohmann-json"
# With programs.
PACKAGECONFIG[cmifd] = "-DCMIF_MODEMMANAGER=ON,-DCMIF_MODEMMANAGER=OFF,glib-2.0"
PACKAGECONFIG[hardened] = "-DCMIF_HARDEN_LIBRARY=ON,-DCMIF_HARDEN_LIBRARY=OFF"

EXTRA_OECMAKE = " \
    -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DBUILD_TESTING=OFF \
    -DCMIF_BENCH=OFF \
    -DCMIF_WERROR=OFF \
    -DCMAKE_SKIP_INSTALL_RPATH=ON \
    -DCMIF_STORE_LIBRARY=${STAGING_LIBDIR}/${CMIF_STORE} \
"

PACKAGE_BEFORE_PN = "cmifctl cmif-record cmifd"
RDEPENDS:cmifd = "${@bb.utils.contains('PACKAGECONFIG', 'cmifd', 'modemmanager', '', d)}"
FILES:cmifctl = "${bindir}/cmifctl ${datadir}/cmif/cmifctl.schema.json"
FILES:cmif-record = "${bindir}/cmif-record ${libdir}/cmif ${datadir}/cmif/*.schema.json"
FILES:cmifd = " \
    ${bindir}/cmifd ${datadir}/cmif/cmifd ${nonarch_libdir}/sysusers.d ${nonarch_libdir}/systemd \
    ${datadir}/dbus-1 ${datadir}/polkit-1 \
"
