// StoredTrack: a track with its events, as it stands in a project document.
#pragma once

#include "host/stored/StoredEvent.h"

#include <string>
#include <vector>

namespace tessera::host {

class StoredTrack : public CmClass<StoredTrack, CmObject> {
public:
    static FMetaClass metaClass;

    std::string name;
    // By their start. Null for what the document has in place of an event.
    std::vector<FRefPtr<StoredEvent>> events;

    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
};

} // namespace tessera::host
