// FLibraryLoader: the library-loader service: one object per library, which goes with it.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/ILibraryLoader.h"
#include "platform/DynamicLibrary.h"

namespace tessera {

class FLibraryLoader : public FImplements<FObject, ILibraryLoader> {
public:
    FResult load(IBaseUnknown* path) override;
    void* getHandle() override;
    void* getSymbol(const char* name) override;

private:
    std::optional<platform::DynamicLibrary> library_;
};

} // namespace tessera
