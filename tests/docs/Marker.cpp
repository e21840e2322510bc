#include "docs/Marker.h"

#include "persistence/attributes/FAttributes.h"

namespace tessera::test {

// [a class record]
FMetaClass Marker::metaClass("Marker", &CmObject::metaClass, &createCmObject<Marker>);
// [a class record]

int Marker::compare(const CmObject* other) const {
    const auto* marker = cmCast<Marker>(other);
    return marker == nullptr ? -1 : (seconds_ > marker->seconds_) - (seconds_ < marker->seconds_);
}

// [storing]
bool Marker::storeAttributes(FAttributes& attributes) const {
    return attributes.setString("name", name_) && attributes.setFloat("seconds", seconds_);
}

bool Marker::restoreAttributes(FAttributes& attributes) {
    attributes.getString("name", name_); // what isn't there stays as it is
    return attributes.getFloat("seconds", seconds_);
}
// [storing]

// [changing]
void Marker::setSeconds(double seconds) {
    seconds_ = seconds;
    deferChanged(0);
}
// [changing]

} // namespace tessera::test
