#include "host/text/PathText.h"

#include "persistence/paths/FNPath.h"
#include "platform/NativePath.h"

#include <optional>

namespace tessera::host {

std::string pathText(const FNPath& path) {
    FString text(path.getFullPath());
    text.toWide();
    return platform::toNativePath(text.view16()).value_or(std::string());
}

} // namespace tessera::host
