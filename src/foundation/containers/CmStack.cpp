#include "foundation/containers/CmStack.h"

namespace tessera {

CmStack* CmStack::clone() const {
    auto* copy = new CmStack;
    copy->copyFrom(*this);
    return copy;
}

} // namespace tessera
