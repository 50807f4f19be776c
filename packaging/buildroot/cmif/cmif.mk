################################################################################
#
# cmif
#
################################################################################

CMIF_VERSION = 1.1.0
CMIF_SITE = $(BR2_EXTERNAL_CMIF_PATH)/../..
CMIF_SITE_METHOD = local
CMIF_OVERRIDE_SRCDIR_RSYNC_EXCLUSIONS = --exclude=/build # what was built here by hand
CMIF_LICENSE = MIT
CMIF_LICENSE_FILES = LICENSE
CMIF_INSTALL_STAGING = YES
CMIF_DEPENDENCIES = $(call qstrip,$(BR2_PACKAGE_CMIF_STORE_PACKAGE))

CMIF_CONF_OPTS = \
	-DCMAKE_BUILD_TYPE=MinSizeRel \
	-DBUILD_TESTING=OFF \
	-DCMIF_BENCH=OFF \
	-DCMIF_WERROR=OFF \
	-DCMAKE_SKIP_INSTALL_RPATH=ON \
	-DCMIF_STORE_LIBRARY=$(STAGING_DIR)/usr/lib/$(call qstrip,$(BR2_PACKAGE_CMIF_STORE)) \
	-DCMIF_HARDEN_LIBRARY=$(if $(BR2_PACKAGE_CMIF_HARDENED),ON,OFF)

ifeq ($(BR2_PACKAGE_CMIF_PROGRAMS),y)
CMIF_CONF_OPTS += -DCMIF_HOST=ON
CMIF_DEPENDENCIES += json-for-modern-cpp
else
CMIF_CONF_OPTS += -DCMIF_HOST=OFF
endif

ifeq ($(BR2_PACKAGE_CMIF_CMIFD),y)
CMIF_CONF_OPTS += -DCMIF_MODEMMANAGER=ON
CMIF_DEPENDENCIES += host-pkgconf libglib2

# The user of cmifd.service, for images without systemd-sysusers.
define CMIF_USERS
	cmif -1 cmif -1 * /var/lib/cmif - dialout Connection-manager daemons
endef
else
CMIF_CONF_OPTS += -DCMIF_MODEMMANAGER=OFF
endif

define CMIF_LINUX_CONFIG_FIXUPS
	$(call KCONFIG_ENABLE_OPT,CONFIG_SYSVIPC)
endef

$(eval $(cmake-package))
