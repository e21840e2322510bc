#include "host/stored/StoredTrack.h"

#include "host/stored/StoredList.h"
#include "host/stored/StoredText.h"

namespace tessera::host {

bool StoredTrack::storeAttributes(FAttributes& attributes) const {
    return storeText(attributes, "name", name) && storeList(attributes, "events", events);
}

bool StoredTrack::restoreAttributes(FAttributes& attributes) {
    name = restoreText(attributes, "name");
    events = restoreList<StoredEvent>(attributes, "events");
    return true;
}

} // namespace tessera::host
