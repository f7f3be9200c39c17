#!/bin/sh
# Installs the library and builds a small user of it in three ways.
# usage: CXX=COMPILER consumers.sh SOURCE_DIR BUILD_DIR
set -eu
source=$1
build=$2
consumer=$source/tests/package/consumer
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# expect PROGRAM: it runs and prints what inverting input 2 of the majority function gives.
expect() {
    found=$("$1")
    if [ "$found" != 8E ]; then
        echo "$1 printed '$found' instead of '8E'" >&2
        exit 1
    fi
}

cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/installed" # an installed tree can be moved

PKG_CONFIG_PATH=$(dirname "$(find "$scratch/installed" -name basbd.pc)")
export PKG_CONFIG_PATH
libdir=$(pkg-config --variable=libdir basbd)

# Nothing in the program names a service, and the linkers that are at hand must keep libbasbdhost.
for linker in bfd gold lld; do
    command -v "ld.$linker" >/dev/null || continue
    flags="-fuse-ld=$linker -Wl,--as-needed"
    cmake -S "$consumer/cmake" -B "$scratch/$linker" -DCMAKE_PREFIX_PATH="$scratch/installed" \
        -DCMAKE_EXE_LINKER_FLAGS="$flags" >/dev/null
    cmake --build "$scratch/$linker" >/dev/null
    expect "$scratch/$linker/consumer"
    expect "$scratch/$linker/cells"

    # shellcheck disable=SC2046,SC2086 # lists of words
    "$CXX" -std=c++17 $flags "$consumer/main.cpp" -o "$scratch/plain" \
        $(pkg-config --cflags --libs basbd) -Wl,-rpath,"$libdir"
    expect "$scratch/plain"
done
# shellcheck disable=SC2046 # a list of words
${CXX:-c++} -std=c++17 "$consumer/cells.cpp" -o "$scratch/plain" \
    $(pkg-config --cflags --libs basbdcells) -Wl,-rpath,"$libdir"
expect "$scratch/plain"
"$scratch/installed/bin/cellfn" list "$source/examples/libraries/small.lib" >/dev/null 2>&1

cmake -G Ninja -S "$consumer/subdirectory" -B "$scratch/subdirectory" \
    -DBASBD_SOURCE_DIR="$source" >/dev/null
cmake --build "$scratch/subdirectory" >/dev/null
expect "$scratch/subdirectory/consumer"
