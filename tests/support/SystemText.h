// SystemText: what text is in the code page of the system that the tests run on.
#pragma once

#include "platform/CodePages.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tessera::testing_support {

// Null where it is UTF-8, so that letters beyond ASCII take several bytes and not all bytes are text; the reason to
// skip a test of that where it isn't.
inline const char* whyNoUtf8() {
    return platform::resolveCodePage(CodePage::system) == CodePage::utf8 ? nullptr
                                                                         : "the system's code page isn't UTF-8 here";
}

// Null where every byte is a character of western Europe, or the reason to skip.
inline const char* whyNotWestern() {
    char16_t euro = 0;
    const bool isWestern = whyNoUtf8() != nullptr && platform::widen(CodePage::system, "\x80", 1, &euro, 1) == 1;
    return isWestern && euro == u'\u20ac' ? nullptr : "the system's code page is another one";
}

// The text's bytes in it. Characters of western Europe are in every page that these tests meet.
inline std::string systemBytes(std::u16string_view text) {
    if (whyNoUtf8() == nullptr) {
        const std::u8string utf8 = std::filesystem::path(text).u8string();
        return std::string(utf8.begin(), utf8.end());
    }
    std::string bytes(2 * text.size(), '\0');
    const auto length = platform::narrow(CodePage::system, text.data(), text.size(), bytes.data(), bytes.size());
    bytes.resize(static_cast<std::size_t>(length));
    return bytes;
}

} // namespace tessera::testing_support
