// Looking upward in the tree of a host's project.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IProjectObject.h"

namespace tessera {

// The first object above the given one that offers T, or null.
template <class T>
FRefPtr<T> findAbove(IProjectObject* object) {
    FRefPtr<T> found;
    for (IProjectObject* above = object->parent(); above != nullptr && !found; above = above->parent()) {
        found = queryFor<T>(above);
    }
    return found;
}

} // namespace tessera
