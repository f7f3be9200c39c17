#!/bin/sh
# The library exports what the committed list says, and none of the host's services but the load
# identifier, binds them all at load and stays; the stand-in exports services and nothing else.
# usage: symbols_test.sh LIBRARY STAND_IN
set -eu
cd "$(dirname "$0")"
service='^((vtable|typeinfo|typeinfo name) for )?(UT_|ut_|neoform|cae_appname)'

if ! ./symbols.sh "$1" | diff -u exported_symbols.txt -; then
    echo "the exported symbols differ from tests/package/exported_symbols.txt" >&2
    echo "where that is intended: ./dev symbols" >&2
    exit 1
fi
if ./symbols.sh "$1" | grep -E "$service"; then
    echo "the library defines host services" >&2
    exit 1
fi
if ! readelf -dW "$1" | grep -q 'Flags: NOW NODELETE'; then
    echo "the library binds its services late, or can be unloaded" >&2
    exit 1
fi
if ./symbols.sh "$2" | grep -vE "$service"; then
    echo "the stand-in exports more than host services" >&2
    exit 1
fi
