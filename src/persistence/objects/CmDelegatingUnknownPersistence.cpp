// Both directions go through a tree of named values that the wrapped object fills or reads. As long as there is no such
// tree to offer it, the object can't be asked, and a wrapper is neither written nor read: the stream stays untouched
// and the caller learns that the object isn't in it.
#include "foundation/object/CmDelegatingUnknown.h"

namespace tessera {

bool CmDelegatingUnknown::read(FStream&) {
    return false;
}

bool CmDelegatingUnknown::write(FStream&) const {
    return false;
}

} // namespace tessera
