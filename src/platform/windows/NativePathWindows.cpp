#include "platform/NativePath.h"

#include "platform/Utf8Text.h"

namespace tessera::platform {

namespace {

constexpr char16_t kSeparator = u'\\';

bool isDriveRoot(std::u16string_view path) {
    const bool letter = !path.empty() && ((path[0] >= u'a' && path[0] <= u'z') || (path[0] >= u'A' && path[0] <= u'Z'));
    return letter && path.size() >= 2 && path[1] == u':' &&
           (path.size() == 2 || path.find_first_not_of(kSeparator, 2) == path.npos);
}

} // namespace

bool hasSingleRoot() {
    return false;
}

char16_t nativeSeparator() {
    return kSeparator;
}

std::optional<std::string> toNativePath(std::u16string_view path) {
    // A bare drive would mean the drive's present folder.
    const bool isRoot = isDriveRoot(path);
    while (path.size() > 1 && path.back() == kSeparator) {
        path.remove_suffix(1);
    }
    if (path.empty()) {
        return std::nullopt;
    }
    std::string native;
    native.reserve(path.size() + 1);
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i];
        if (isHighSurrogate(unit) && i + 1 < path.size() && isLowSurrogate(path[i + 1])) {
            ++i;
            appendUtf8(native, joined(unit, path[i]));
        } else if (unit == 0 || isHighSurrogate(unit) || isLowSurrogate(unit)) {
            return std::nullopt;
        } else {
            appendUtf8(native, unit);
        }
    }
    if (isRoot) {
        native.push_back('\\');
    }
    return native;
}

std::optional<std::u16string> fromNativePath(std::string_view native) {
    std::u16string path;
    path.reserve(native.size());
    while (!native.empty()) {
        const std::optional<char32_t> c = takeUtf8(native);
        if (!c || *c == 0) {
            return std::nullopt;
        }
        appendUtf16(path, *c == U'/' ? char32_t(kSeparator) : *c);
    }
    return path;
}

} // namespace tessera::platform
