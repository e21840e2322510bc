#include "host/stored/StoredEvent.h"

#include "host/stored/StoredText.h"
#include "persistence/attributes/FAttributes.h"

namespace tessera::host {

bool StoredEvent::storeAttributes(FAttributes& attributes) const {
    return storeText(attributes, "name", name) && attributes.setFloat("start", start) &&
           attributes.setFloat("length", length) &&
           (!clip || (attributes.setFloat("offset", offset) && attributes.setInt("restrictions", restrictions) &&
                      attributes.setObject("clip", clip.get())));
}

bool StoredEvent::restoreAttributes(FAttributes& attributes) {
    name = restoreText(attributes, "name");
    attributes.getFloat("start", start);
    attributes.getFloat("length", length);
    attributes.getFloat("offset", offset);
    attributes.getInt("restrictions", restrictions);
    hasClip = attributes.find("clip") != nullptr;
    clip = cmCast<StoredClip>(attributes.getObject("clip"));
    return true;
}

} // namespace tessera::host
