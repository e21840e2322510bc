#!/usr/bin/env bash
# The module exports its three functions and no more, can't be unmapped, and binds its own symbols.
set -euo pipefail
module=$1
expected=$'ExitDll\nGetPluginFactory\nInitDll'
found=$(nm --dynamic --defined-only "$module" | awk '{ print $NF }' | LC_ALL=C sort)
[ "$found" = "$expected" ] || { printf 'expected these exports:\n%s\nfound:\n%s\n' "$expected" "$found"; exit 1; }
flags=$(readelf --dynamic "$module")
grep -q 'FLAGS_1.*NODELETE' <<<"$flags" || { echo "$module may be unmapped while its singletons live"; exit 1; }
grep -q 'SYMBOLIC' <<<"$flags" || { echo "$module takes its own symbols from other libraries"; exit 1; }
