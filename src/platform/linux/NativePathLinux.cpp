#include "platform/NativePath.h"

#include "platform/PathText.h"

namespace tessera::platform {

namespace {

bool isDrivePath(std::u16string_view path) {
    const bool letter = (path[0] >= u'a' && path[0] <= u'z') || (path[0] >= u'A' && path[0] <= u'Z');
    return letter && path.size() >= 2 && path[1] == u':' && (path.size() == 2 || path[2] == kPathSeparator);
}

} // namespace

bool hasSingleRoot() {
    return true;
}

char16_t nativeSeparator() {
    return u'/';
}

std::optional<std::string> toNativePath(std::u16string_view path) {
    while (path.size() > 1 && path.back() == kPathSeparator) {
        path.remove_suffix(1);
    }
    if (path.empty() || isDrivePath(path)) {
        return std::nullopt;
    }
    return pathToUtf8(path, '/');
}

std::optional<std::u16string> fromNativePath(std::string_view native) {
    // A backslash in a name can't be told from a separator.
    return native.find('\\') == native.npos ? pathFromUtf8(native) : std::nullopt;
}

} // namespace tessera::platform
