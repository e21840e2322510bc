// FFileIterator: walks the entries of one folder, in the order in which the file system gives them.
#pragma once

#include "foundation/object/CmClass.h"

namespace tessera {

class FPath;

class FFileIterator : public CmClass<FFileIterator, CmObject> {
public:
    static FMetaClass metaClass;

    // The next entry, or null behind the last one. Borrowed: the next call changes it, so what is to be kept is cloned.
    virtual FPath* next();
    // Begins again with what is there now.
    virtual void reset();
};

} // namespace tessera
