#include "foundation/containers/CmBuffer.h"

#include <cstring>

namespace tessera {

bool CmBuffer::isEqual(const CmObject* other) const {
    const auto* partner = cmCast<CmBuffer>(other);
    if (partner == nullptr || partner->getFill() != getFill()) {
        return false;
    }
    return getFill() == 0 || std::memcmp(getData(), partner->getData(), static_cast<std::size_t>(getFill())) == 0;
}

CmBuffer* CmBuffer::clone() const {
    return new CmBuffer(*this);
}

} // namespace tessera
