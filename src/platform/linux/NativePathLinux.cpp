#include "platform/NativePath.h"

#include <algorithm>
#include <cstdint>

namespace tessera::platform {

namespace {

constexpr char16_t kSeparator = u'\\';

bool isDrivePath(std::u16string_view path) {
    const bool letter = (path[0] >= u'a' && path[0] <= u'z') || (path[0] >= u'A' && path[0] <= u'Z');
    return letter && path.size() >= 2 && path[1] == u':' && (path.size() == 2 || path[2] == kSeparator);
}

bool isHighSurrogate(char16_t unit) {
    return (unit & 0xfc00) == 0xd800;
}

bool isLowSurrogate(char16_t unit) {
    return (unit & 0xfc00) == 0xdc00;
}

void appendUtf8(std::string& text, char32_t c) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto putRest = [&put, c](int shift) { put(0x80 | ((c >> shift) & 0x3f)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xc0 | (c >> 6));
        putRest(0);
    } else if (c < 0x10000) {
        put(0xe0 | (c >> 12));
        putRest(6);
        putRest(0);
    } else {
        put(0xf0 | (c >> 18));
        putRest(12);
        putRest(6);
        putRest(0);
    }
}

void appendUtf16(std::u16string& text, char32_t c) {
    if (c < 0x10000) {
        text.push_back(static_cast<char16_t>(c));
        return;
    }
    text.push_back(static_cast<char16_t>(0xd7c0 + (c >> 10)));
    text.push_back(static_cast<char16_t>(0xdc00 + (c & 0x3ff)));
}

struct Utf8Lead {
    std::uint8_t mask;
    std::uint8_t value;
    std::uint8_t following;
    // Anything below would be an overlong spelling.
    char32_t smallest;
};

constexpr Utf8Lead kLeads[] = {
    {0x80, 0x00, 0, 0},
    {0xe0, 0xc0, 1, 0x80},
    {0xf0, 0xe0, 2, 0x800},
    {0xf8, 0xf0, 3, 0x10000},
};

// One character off the front of the text; nothing where that is no valid UTF-8.
std::optional<char32_t> takeUtf8(std::string_view& text) {
    const auto first = static_cast<std::uint8_t>(text[0]);
    const auto lead = std::find_if(std::begin(kLeads), std::end(kLeads),
                                   [first](const Utf8Lead& entry) { return (first & entry.mask) == entry.value; });
    if (lead == std::end(kLeads) || text.size() <= lead->following) {
        return std::nullopt;
    }
    char32_t c = first & static_cast<std::uint8_t>(~lead->mask);
    for (std::size_t i = 1; i <= lead->following; ++i) {
        const auto byte = static_cast<std::uint8_t>(text[i]);
        if ((byte & 0xc0) != 0x80) {
            return std::nullopt;
        }
        c = (c << 6) | (byte & 0x3f);
    }
    if (c < lead->smallest || c > 0x10ffff || (c >= 0xd800 && c < 0xe000)) {
        return std::nullopt;
    }
    text.remove_prefix(lead->following + 1u);
    return c;
}

} // namespace

bool hasSingleRoot() {
    return true;
}

char16_t nativeSeparator() {
    return u'/';
}

std::optional<std::string> toNativePath(std::u16string_view path) {
    while (path.size() > 1 && path.back() == kSeparator) {
        path.remove_suffix(1);
    }
    if (path.empty() || isDrivePath(path)) {
        return std::nullopt;
    }
    std::string native;
    native.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i];
        if (isHighSurrogate(unit) && i + 1 < path.size() && isLowSurrogate(path[i + 1])) {
            ++i;
            appendUtf8(native, (char32_t(unit) << 10) + path[i] - ((0xd800u << 10) + 0xdc00u - 0x10000u));
        } else if (unit == 0 || isHighSurrogate(unit) || isLowSurrogate(unit)) {
            return std::nullopt;
        } else {
            appendUtf8(native, unit == kSeparator ? U'/' : char32_t(unit));
        }
    }
    return native;
}

std::optional<std::u16string> fromNativePath(std::string_view native) {
    std::u16string path;
    path.reserve(native.size());
    while (!native.empty()) {
        const std::optional<char32_t> c = takeUtf8(native);
        if (!c || *c == kSeparator || *c == 0) {
            return std::nullopt;
        }
        appendUtf16(path, *c == U'/' ? char32_t(kSeparator) : *c);
    }
    return path;
}

} // namespace tessera::platform
