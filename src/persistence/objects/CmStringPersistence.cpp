#include "foundation/containers/CmString.h"
#include "persistence/attributes/FAttributes.h"

namespace tessera {

namespace {

constexpr char kTextKey[] = "s";

} // namespace

bool CmString::read(FStream& stream) {
    return text_.readString(stream);
}

bool CmString::write(FStream& stream) const {
    return text_.writeString(stream);
}

bool CmString::storeAttributes(FAttributes& attributes) const {
    return text_.setAttribute(attributes, kTextKey);
}

bool CmString::restoreAttributes(FAttributes& attributes) {
    return text_.getAttribute(attributes, kTextKey);
}

} // namespace tessera
