#!/usr/bin/env bash
# Every source stands as .clang-format lays it out. The version is fixed, as layouts differ between versions.
set -euo pipefail
cd "$1"
tool=$(command -v clang-format-14 || true)
[ -n "$tool" ] || { echo "clang-format-14 is missing; ./run-tests installs it"; exit 1; }
find src common host peer tests benchmarks \( -name '*.h' -o -name '*.cpp' -o -name '*.c' \) -print0 |
    xargs -0 -n 40 -P 2 "$tool" --dry-run --Werror
