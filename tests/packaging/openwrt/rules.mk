# Stands in for OpenWrt's: what the recipe takes from it.
INCLUDE_DIR := $(TOPDIR)/include
INSTALL_DIR := install -d -m 0755
INSTALL_BIN := install -m 0755
CP := cp -fpR
