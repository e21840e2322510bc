#!/usr/bin/env bash
# Installs the framework into a folder of this run, and builds and runs a program on it by find_package.
set -euo pipefail
build=$1 source=$2 compiler=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cmake --install "$build" --prefix "$folder/prefix" --component framework >"$folder/install.log" || { cat "$folder/install.log"; exit 1; }
cmake -S "$source/tests/package/consumer" -B "$folder/build" -G Ninja -DCMAKE_PREFIX_PATH="$folder/prefix" \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS=-fno-rtti
cmake --build "$folder/build"
"$folder/build/consumer"
