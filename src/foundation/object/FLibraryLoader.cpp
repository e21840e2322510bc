#include "foundation/object/FLibraryLoader.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "foundation/text/IStringResult.h"

namespace tessera {

FResult FLibraryLoader::load(IBaseUnknown* path) {
    const auto source = queryFor<IStringResult>(path);
    if (library_ || !source) {
        return kResultFailure;
    }
    FString text(*source);
    if (text.isWide()) {
        text.toMultiByte(CodePage::utf8);
    }
    library_ = platform::DynamicLibrary::load(text.text8());
    return library_ ? kResultOk : kResultFailure;
}

void* FLibraryLoader::getHandle() {
    return library_ ? library_->handle() : nullptr;
}

void* FLibraryLoader::getSymbol(const char* name) {
    return library_ && name != nullptr ? library_->symbol(name) : nullptr;
}

} // namespace tessera
