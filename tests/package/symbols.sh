#!/bin/sh
# Prints what a shared library exports, demangled and sorted.
# usage: symbols.sh LIBRARY
set -eu
nm -DC --defined-only "$1" | sed 's/^[0-9a-f]* [A-Za-z] //' | LC_ALL=C sort -u
