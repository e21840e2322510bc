#include "host/stored/StoredClip.h"

#include "host/stored/StoredText.h"

namespace tessera::host {

bool StoredClip::storeAttributes(FAttributes& attributes) const {
    return storeText(attributes, "path", path);
}

bool StoredClip::restoreAttributes(FAttributes& attributes) {
    path = restoreText(attributes, "path");
    return true;
}

} // namespace tessera::host
