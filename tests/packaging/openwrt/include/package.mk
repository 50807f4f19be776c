# BuildPackage packs what is installed into $(WORK)/NAME.
all: options
define BuildPackage
$(if $(Package/$(1)),,$(error no Package/$(1)))
$(eval $(Package/$(1)))
$(if $(TITLE),,$(error no title of $(1)))
all: pack-$(1)
pack-$(1):
	$(call Package/$(1)/install,$(WORK)/$(1))
endef
.PHONY: all options staging
all: staging
staging:
	$(call Build/InstallDev,$(WORK)/staging)
