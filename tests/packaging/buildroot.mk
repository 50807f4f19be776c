# Stands in for Buildroot: reads the external tree and prints the options that CMake would get.
all: options
qstrip = $(strip $(subst ",,$(1)))
KCONFIG_ENABLE_OPT = $(if $(1),enable $(1),$(error no option))
define cmake-package
options: dependencies
	@printf '%s\n' $$(CMIF_CONF_OPTS)
dependencies:
	@test "$$(CMIF_DEPENDENCIES)" = " json-for-modern-cpp host-pkgconf libglib2"
	@test "$$(strip $$(CMIF_USERS))" = "cmif -1 cmif -1 * /var/lib/cmif - dialout Connection-manager daemons"
	@test "$$(strip $$(CMIF_LINUX_CONFIG_FIXUPS))" = "enable CONFIG_SYSVIPC"
	@test -e "$$(CMIF_SITE)/$$(CMIF_LICENSE_FILES)"
	@test $$(CMIF_OVERRIDE_SRCDIR_RSYNC_EXCLUSIONS) = --exclude=/build
endef
.PHONY: all options dependencies
include $(BR2_EXTERNAL_CMIF_PATH)/external.mk
