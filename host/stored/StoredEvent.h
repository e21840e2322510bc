// StoredEvent: an event of a track, as it stands in a project document. An event without a clip holds notes.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "host/stored/StoredClip.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace tessera::host {

class StoredEvent : public CmClass<StoredEvent, CmObject> {
public:
    static FMetaClass metaClass;

    std::string name;
    // Seconds; NaN for what the document doesn't tell.
    double start = NAN;
    double length = NAN;
    double offset = 0;
    std::int64_t restrictions = 0;
    // One of the project's pool.
    FRefPtr<StoredClip> clip;
    // The document names a clip, be it one that isn't there.
    bool hasClip = false;

    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
};

} // namespace tessera::host
