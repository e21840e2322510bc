#!/usr/bin/env bash
# The operating system is called in src/platform alone: no system header and no test for a system elsewhere.
set -euo pipefail
cd "$1"
headers='windows\.h|unistd\.h|sys/|pthread\.h|dlfcn\.h|fcntl\.h|spawn\.h|dirent\.h|poll\.h|pwd\.h|iconv\.h|langinfo\.h|linux/|signal\.h|sched\.h'
found=$(grep -rnE "#[[:space:]]*include[[:space:]]*<($headers)|#[[:space:]]*(el)?if(n?def)?.*(_WIN32|__linux__|_MSC_VER|__unix__)" \
    --include='*.h' --include='*.cpp' src common host peer | grep -v '^src/platform/' || true)
# A service's contract is the same on every side, so it names no side's headers either.
found+=$(grep -nE "#[[:space:]]*include[[:space:]]*<($headers)" src/platform/*.h || true)
[ -z "$found" ] || { echo "$found"; echo "these lines know the operating system; give the service a header in src/platform"; exit 1; }
