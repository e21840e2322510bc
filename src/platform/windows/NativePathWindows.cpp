#include "platform/NativePath.h"

#include "platform/PathText.h"

namespace tessera::platform {

namespace {

bool isDriveRoot(std::u16string_view path) {
    const bool letter = !path.empty() && ((path[0] >= u'a' && path[0] <= u'z') || (path[0] >= u'A' && path[0] <= u'Z'));
    return letter && path.size() >= 2 && path[1] == u':' &&
           (path.size() == 2 || path.find_first_not_of(kPathSeparator, 2) == path.npos);
}

} // namespace

bool hasSingleRoot() {
    return false;
}

char16_t nativeSeparator() {
    return kPathSeparator;
}

std::optional<std::string> toNativePath(std::u16string_view path) {
    // A bare drive would mean the drive's present folder.
    const bool isRoot = isDriveRoot(path);
    while (path.size() > 1 && path.back() == kPathSeparator) {
        path.remove_suffix(1);
    }
    if (path.empty()) {
        return std::nullopt;
    }
    std::optional<std::string> native = pathToUtf8(path, '\\');
    if (native && isRoot) {
        native->push_back('\\');
    }
    return native;
}

std::optional<std::u16string> fromNativePath(std::string_view native) {
    return pathFromUtf8(native);
}

} // namespace tessera::platform
