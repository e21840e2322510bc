#!/usr/bin/env bash
# Includes run along the arrows between the layers, and never against them.
set -euo pipefail
cd "$1"

# folder: what it may include, by the first parts of the path; its own folder is always allowed.
rules='
src/platform: platform
src/foundation/text: platform foundation/text foundation/object/IBaseUnknown.h foundation/object/FResult.h foundation/object/FUIDBytes.h foundation/object/FRefPtr.h
src/foundation/threads: platform foundation/text foundation/object/IBaseUnknown.h foundation/object/FResult.h foundation/object/FUIDBytes.h foundation/object/FRefPtr.h
src/foundation: platform foundation
src/foundation/object: platform foundation/text foundation/threads
src/foundation/containers: platform foundation/text foundation/threads foundation/object
src/foundation/messages: platform foundation
src/persistence: platform foundation
src/appservices: platform foundation persistence
src/components: platform foundation persistence appservices shell/hostapi
src/discovery: platform foundation persistence
src/exportscripts: platform foundation persistence discovery
src/workflow: platform foundation persistence discovery shell/hostapi
src/link: platform foundation persistence discovery exportscripts workflow shell/hostapi
src/shell/hostapi: foundation/object/IBaseUnknown.h foundation/object/FResult.h foundation/object/FUIDBytes.h
src/shell: platform foundation persistence discovery exportscripts workflow link
common:
host: common platform foundation persistence appservices components discovery/identity shell/hostapi link/LinkSocket.h link/WireMessage.h host
peer: common platform foundation persistence discovery link/LinkSocket.h link/WireMessage.h peer
'

failed=0
while IFS= read -r file; do
    rule=
    length=0
    while IFS=: read -r folder allowed; do
        [ -n "$folder" ] || continue
        if [[ $file == "$folder"/* && ${#folder} -gt $length ]]; then
            rule="$allowed ${folder#src/}"
            length=${#folder}
        fi
    done <<<"$rules"
    while IFS= read -r included; do
        ok=no
        for prefix in $rule; do
            [[ $included == "$prefix" || $included == "$prefix"/* ]] && ok=yes
        done
        if [ $ok = no ]; then
            echo "$file includes $included, which it may not see"
            failed=1
        fi
    done < <(grep -hoP '^\s*#\s*include\s*"\K[^"]+' "$file")
done < <(find src common host peer -name '*.h' -o -name '*.cpp')
exit $failed
