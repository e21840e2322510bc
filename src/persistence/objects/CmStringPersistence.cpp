#include "foundation/containers/CmString.h"

namespace tessera {

bool CmString::read(FStream& stream) {
    return text_.readString(stream);
}

bool CmString::write(FStream& stream) const {
    return text_.writeString(stream);
}

} // namespace tessera
