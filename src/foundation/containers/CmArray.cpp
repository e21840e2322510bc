#include "foundation/containers/CmArray.h"

namespace tessera {

CmArray* CmArray::clone() const {
    auto* copy = new CmArray(capacityOfCopy(), growth_);
    copy->copyFrom(*this);
    return copy;
}

bool CmArray::add(CmObject* element) {
    if (element == nullptr || !makeRoom()) {
        return false;
    }
    data_[count_++] = element;
    retain(element);
    return true;
}

} // namespace tessera
