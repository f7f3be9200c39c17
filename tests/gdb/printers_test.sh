#!/bin/sh
# Prints values in gdb, which loads the printers that lie beside the library.
# usage: printers_test.sh LIBRARY PROGRAM
set -eu
cd "$(dirname "$0")"
gdb -batch -nx -iex "add-auto-load-safe-path $(dirname "$1")" -x values.gdb "$2" 2>&1 |
    grep '^\$' | sed 's/0x[0-9a-f]*/ADDRESS/g' | diff -u expected.txt -
