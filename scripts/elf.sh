# shellcheck shell=sh
# What the scripts that measure the library's size read from an ELF file. Sourced.

sum() { # of the hexadecimal numbers on standard input
    total=0
    while read -r number; do total=$((total + 0x${number#0x})); done
    echo "$total"
}

loaded_bytes() { # loaded_bytes FILE: the file sizes of all segments that are loaded
    readelf -lW "$1" | awk '$1 == "LOAD" { print $5 }' | sum
}
