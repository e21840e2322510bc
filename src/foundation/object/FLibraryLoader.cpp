#include "foundation/object/FLibraryLoader.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "foundation/text/IStringResult.h"
#include "platform/NativePath.h"

#include <string_view>

namespace tessera {

FResult FLibraryLoader::load(IBaseUnknown* path) {
    const auto source = queryFor<IStringResult>(path);
    if (library_ || !source) {
        return kResultFailure;
    }
    const FString text(*source);
    const auto native =
        platform::toNativePath(std::u16string_view(text.text16(), static_cast<std::size_t>(text.length())));
    if (!native) {
        return kResultFailure;
    }
    library_ = platform::DynamicLibrary::load(native->c_str());
    return library_ ? kResultOk : kResultFailure;
}

void* FLibraryLoader::getHandle() {
    return library_ ? library_->handle() : nullptr;
}

void* FLibraryLoader::getSymbol(const char* name) {
    return library_ && name != nullptr ? library_->symbol(name) : nullptr;
}

} // namespace tessera
