#!/usr/bin/python3
"""kconfig.py CONFIG-IN: reads the menu, and switches everything on as Buildroot's user would."""
import os
import sys
import tempfile

import kconfiglib

OURS = ["CMIF", "CMIF_HARDENED", "CMIF_PROGRAMS", "CMIF_CMIFD"]
BUILDROOT = ["INSTALL_LIBSTDCPP", "TOOLCHAIN_GCC_AT_LEAST_12", "USE_MMU", "PACKAGE_MODEM_MANAGER",
             "PACKAGE_JSON_FOR_MODERN_CPP", "STATIC_LIBS"]

with tempfile.NamedTemporaryFile("w") as menu:
    for name in BUILDROOT:
        menu.write(f"config BR2_{name}\n\tbool \"{name}\"\n")
    menu.write(f"source \"{os.path.abspath(sys.argv[1])}\"\n")
    menu.flush()
    kconfig = kconfiglib.Kconfig(menu.name, warn_to_stderr=False)

kconfig.warn_assign_undef = True
for name in ["BR2_" + name for name in BUILDROOT if name not in ("STATIC_LIBS", "PACKAGE_JSON_FOR_MODERN_CPP")]:
    kconfig.syms[name].set_value("y")
for name in OURS:
    kconfig.syms["BR2_PACKAGE_" + name].set_value("y")
off = [name for name in OURS if kconfig.syms["BR2_PACKAGE_" + name].str_value != "y"]
json = kconfig.syms["BR2_PACKAGE_JSON_FOR_MODERN_CPP"].str_value
if kconfig.warnings or off or json != "y":
    sys.exit(f"warnings {kconfig.warnings}, off {off}, the JSON header {json}")
