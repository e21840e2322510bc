#include "foundation/containers/CmQueue.h"

namespace tessera {

CmQueue* CmQueue::clone() const {
    auto* copy = new CmQueue;
    copy->copyFrom(*this);
    return copy;
}

} // namespace tessera
