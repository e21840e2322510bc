// StoredProject: a project, as it stands in a project document.
#pragma once

#include "host/stored/StoredTrack.h"

#include <cstdint>
#include <vector>

namespace tessera::host {

class StoredProject : public CmClass<StoredProject, CmObject> {
public:
    static FMetaClass metaClass;
    static constexpr std::int64_t kVersion = 2;

    std::int64_t version = 0;
    // Seconds.
    double cycleLeft = 0;
    double cycleRight = 0;
    // Null for what the document has in place of a clip or a track.
    std::vector<FRefPtr<StoredClip>> pool;
    std::vector<FRefPtr<StoredTrack>> tracks;

    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
};

} // namespace tessera::host
