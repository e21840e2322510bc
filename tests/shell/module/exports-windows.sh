#!/usr/bin/env bash
# exports-windows.sh OBJDUMP MODULE: the module exports its three functions and no more, needs no library that Windows
# doesn't have, and looks up while it runs what it takes for a call that may be missing.
set -euo pipefail
objdump=$1
module=$2
tables=$(LC_ALL=C "$objdump" -p "$module")
expected=$'ExitDll\nGetPluginFactory\nInitDll'
found=$(awk '/^\[Ordinal\/Name Pointer\] Table/ { inTable = 1; next }
             inTable && /^[[:space:]]*\[/ { print $NF; next }
             inTable && NF == 0 { exit }' <<<"$tables" | LC_ALL=C sort)
[ "$found" = "$expected" ] || { printf 'expected these exports:\n%s\nfound:\n%s\n' "$expected" "$found"; exit 1; }
libraries=$(awk '/DLL Name:/ { print tolower($NF) }' <<<"$tables" | LC_ALL=C sort -u)
[ -n "$libraries" ] || { echo "$module needs nothing at all, which can't be"; exit 1; }
# Each is part of every Windows since 7; msvcrt.dll is the system's own copy of the C library.
known=$'advapi32.dll\nkernel32.dll\nmsvcrt.dll\nmswsock.dll\nntdll.dll\nole32.dll\nshell32.dll\nuser32.dll\nws2_32.dll'
# What would keep the module from being loaded where it is missing.
late='OpenThread|SetProcessPriorityBoost|(Try)?(Initialize|Acquire|Release)SRWLock(Shared|Exclusive)?'
early=$(awk '/DLL Name:/ { inTable = 1; next } inTable && NF == 0 { inTable = 0 } inTable { print $NF }' <<<"$tables")
grep -qx CreateFileW <<<"$early" || { echo "the calls that $module needs aren't where they are looked for"; exit 1; }
bound=$(grep -xE "$late" <<<"$early" || true)
[ -z "$bound" ] || { printf 'the module needs these before it runs:\n%s\n' "$bound"; exit 1; }
strange=$(comm -23 <(echo "$libraries") <(LC_ALL=C sort <<<"$known"))
[ -z "$strange" ] || { printf 'the module needs libraries that may be missing:\n%s\n' "$strange"; exit 1; }
