#!/bin/sh
# Prints values in gdb, which loads the printers on its own: those beside a built library, and those
# of an installed one.
# usage: printers_test.sh BUILD_DIR LIBRARY PROGRAM
set -eu
cd "$(dirname "$0")"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# expect SAFE-PATH PROGRAM GDB-OPTION...
expect() {
    safe_path=$1 program=$2
    shift 2
    gdb -batch -nx -iex "set auto-load safe-path $safe_path" "$@" -x values.gdb "$program" 2>&1 |
        grep '^\$' | sed 's/^\$[0-9]* = //; s/0x[0-9a-f]*/ADDRESS/g' | diff -u expected.txt -
}

expect "$(dirname "$2")" "$3"

installed=$scratch/installed
cmake --install "$1" --prefix "$installed" >/dev/null
PKG_CONFIG_PATH=$(dirname "$(find "$installed" -name basbd.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046 # a list of words
${CXX:-c++} -std=c++17 -g values.cpp -o "$scratch/values" \
    $(pkg-config --cflags --libs basbd) -Wl,-rpath,"$(pkg-config --variable=libdir basbd)"
# gdb knows the scripts of its own prefix; it must be told of another.
expect "$installed" "$scratch/values" \
    -iex "set auto-load scripts-directory $(find "$installed" -type d -name auto-load)"
