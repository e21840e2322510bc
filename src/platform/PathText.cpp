#include "platform/PathText.h"

#include "platform/Utf8Text.h"

namespace tessera::platform {

std::optional<std::string> pathToUtf8(std::u16string_view path, char separator) {
    std::string native;
    native.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i];
        if (isHighSurrogate(unit) && i + 1 < path.size() && isLowSurrogate(path[i + 1])) {
            ++i;
            appendUtf8(native, joined(unit, path[i]));
        } else if (unit == 0 || isHighSurrogate(unit) || isLowSurrogate(unit)) {
            return std::nullopt;
        } else if (unit == kPathSeparator) {
            native += separator;
        } else {
            appendUtf8(native, unit);
        }
    }
    return native;
}

std::optional<std::u16string> pathFromUtf8(std::string_view native) {
    std::u16string path;
    path.reserve(native.size());
    while (!native.empty()) {
        const std::optional<char32_t> c = takeUtf8(native);
        if (!c || *c == 0) {
            return std::nullopt;
        }
        appendUtf16(path, *c == U'/' ? char32_t(kPathSeparator) : *c);
    }
    return path;
}

} // namespace tessera::platform
