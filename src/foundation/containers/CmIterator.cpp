#include "foundation/containers/CmIterator.h"

#include <limits>

namespace tessera {

CmObject* CmIterator::advance(std::int32_t count) {
    if (count < 0) {
        return retreat(count == std::numeric_limits<std::int32_t>::min() ? std::numeric_limits<std::int32_t>::max()
                                                                         : -count);
    }
    for (; count > 0 && !isDone(); --count) {
        next();
    }
    return current();
}

CmObject* CmIterator::retreat(std::int32_t count) {
    if (count < 0) {
        return advance(count == std::numeric_limits<std::int32_t>::min() ? std::numeric_limits<std::int32_t>::max()
                                                                         : -count);
    }
    for (; count > 0 && !isDone(); --count) {
        previous();
    }
    return current();
}

bool CmIterator::seek(const CmObject* element) {
    for (first(); !isDone() && current() != element;) {
        next();
    }
    return !isDone();
}

} // namespace tessera
