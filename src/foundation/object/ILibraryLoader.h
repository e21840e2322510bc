// ILibraryLoader: loads one shared library and gives access to its symbols; the library goes with the loader.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct ILibraryLoader : IBaseUnknown {
    static constexpr FUIDBytes iid = "{77A13DE6-5D2A-4653-9C0E-58C1E1102A6A}"_uid;

    // path: an object that answers IStringResult with the library's path in the framework's form. kResultFailure when a
    // library is loaded already or the path gives none.
    virtual FResult load(IBaseUnknown* path) = 0;
    // The platform's handle, null while nothing is loaded.
    virtual void* getHandle() = 0;
    // Null while nothing is loaded, and for a name that the library doesn't have.
    virtual void* getSymbol(const char* name) = 0;

protected:
    ~ILibraryLoader() = default;
};

} // namespace tessera
