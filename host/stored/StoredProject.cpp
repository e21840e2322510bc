#include "host/stored/StoredProject.h"

#include "host/stored/StoredList.h"

namespace tessera::host {

bool StoredProject::storeAttributes(FAttributes& attributes) const {
    return attributes.setInt("version", version) && attributes.setFloat("cycleLeft", cycleLeft) &&
           attributes.setFloat("cycleRight", cycleRight) && storeList(attributes, "pool", pool) &&
           storeList(attributes, "tracks", tracks);
}

bool StoredProject::restoreAttributes(FAttributes& attributes) {
    attributes.getInt("version", version);
    attributes.getFloat("cycleLeft", cycleLeft);
    attributes.getFloat("cycleRight", cycleRight);
    // First the pool: a clip is made where it is met first.
    pool = restoreList<StoredClip>(attributes, "pool");
    tracks = restoreList<StoredTrack>(attributes, "tracks");
    return true;
}

} // namespace tessera::host
