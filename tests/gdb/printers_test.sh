#!/bin/sh
# Prints values in gdb, which loads the printers on its own: those beside a built library, and those
# of an installed one.
# usage: printers_test.sh BUILD_DIR LIBRARY PROGRAM COMPILER DESCRIBE LEAVE_OUT
#   compiler options that describe the library's classes in a program, or leave them out
set -eu
cd "$(dirname "$0")"
build=$1 library=$2 program=$3 compiler=$4 describe=$5 leave_out=$6
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# in_gdb SAFE-PATH PROGRAM GDB-OPTION...: what the commands print
in_gdb() {
    safe_path=$1 debugged=$2
    shift 2
    gdb -batch -nx -iex "set auto-load safe-path $safe_path" "$@" -x values.gdb "$debugged" 2>&1 |
        sed -n 's/0x[0-9a-f]*/ADDRESS/g; s/^\$[0-9]* = //p'
}

in_gdb "$(dirname "$library")" "$program" | diff -u expected.txt -

installed=$scratch/installed
cmake --install "$build" --prefix "$installed" >/dev/null
PKG_CONFIG_PATH=$(dirname "$(find "$installed" -name basbd.pc)")
export PKG_CONFIG_PATH
# Only the program describes the classes, whatever the library was built with.
strip --strip-debug "$(readlink -f "$(pkg-config --variable=libdir basbd)/libbasbd.so")"

# in_gdb_installed OPTION: gdb knows the scripts of its own prefix, but not of another
in_gdb_installed() {
    # shellcheck disable=SC2046 # a list of words
    "$compiler" -std=c++17 -g "$1" values.cpp -o "$scratch/values" \
        $(pkg-config --cflags --libs basbd) -Wl,-rpath,"$(pkg-config --variable=libdir basbd)"
    in_gdb "$installed" "$scratch/values" \
        -iex "set auto-load scripts-directory $(find "$installed" -type d -name auto-load)"
}

in_gdb_installed "$describe" | diff -u expected.txt -
in_gdb_installed "$leave_out" | grep -q 'no debug information on BOOL_'
