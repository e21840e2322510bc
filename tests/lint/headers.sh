#!/usr/bin/env bash
# Every header compiles on its own, so that no caller has to know what to include before it. Those of the other system's
# side are left to its compiler.
set -euo pipefail
cd "$1"
compiler=$2
alone() {
    for header in "$@"; do
        "$compiler" -std=c++20 -fno-rtti -fsyntax-only -Wall -Wextra -Werror -Isrc -I. -x c++ -include "$header" /dev/null ||
            { echo "$header doesn't compile alone"; exit 255; }
    done
}
export -f alone
export compiler
find src common host peer -name '*.h' -not -path 'src/platform/windows/*' -print0 | xargs -0 -n 8 -P 2 bash -c 'alone "$@"' alone
