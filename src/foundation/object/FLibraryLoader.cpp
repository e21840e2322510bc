#include "foundation/object/FLibraryLoader.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "foundation/text/IStringResult.h"
#include "platform/NativePath.h"

#include <optional>

namespace tessera {

FResult FLibraryLoader::load(IBaseUnknown* path) {
    const auto source = queryFor<IStringResult>(path);
    if (library_ || !source) {
        return kResultFailure;
    }
    const FString text(*source);
    const char16_t* units = text.text16();
    // Bytes that mean nothing stay 8-bit, and no library has such a path.
    const auto native =
        text.isWide() ? platform::toNativePath({units, static_cast<std::size_t>(text.length())}) : std::nullopt;
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
