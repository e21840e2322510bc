#!/usr/bin/env bash
# install_and_use.sh BUILD SOURCE CMAKE-ARGUMENTS [EMULATOR...]: installs the framework into a folder of this run, builds a
# program on it by find_package, and runs that.
set -euo pipefail
build=$1 source=$2
IFS=';' read -r -a arguments <<<"$3"
emulator=("${@:4}")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cmake --install "$build" --prefix "$folder/prefix" --component framework >"$folder/install.log" || { cat "$folder/install.log"; exit 1; }
# Said outright, since a toolchain file looks for packages in its own places only.
package=$(dirname "$(find "$folder/prefix" -name TesseraExchangeConfig.cmake)")
cmake -S "$source/tests/package/consumer" -B "$folder/build" -G Ninja -DTesseraExchange_DIR="$package" -DCMAKE_CXX_FLAGS=-fno-rtti "${arguments[@]}"
cmake --build "$folder/build"
program=$folder/build/consumer
[ -e "$program" ] || program=$program.exe
"${emulator[@]}" "$program"
