// StoredClip: a sound file of the pool, as it stands in a project document.
#pragma once

#include "foundation/object/CmClass.h"

#include <string>

namespace tessera::host {

class StoredClip : public CmClass<StoredClip, CmObject> {
public:
    static FMetaClass metaClass;

    // From the project's folder, with "/", if the file lies inside it, so that the folder can be moved; else the full
    // path.
    std::string path;

    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
};

} // namespace tessera::host
