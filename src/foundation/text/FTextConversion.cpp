#include "foundation/text/FTextConversion.h"

#include "foundation/text/FUtf8.h"

namespace tessera {
namespace {

// What a single character can become in any code page that is asked for here; more means "not representable".
constexpr std::size_t kCharacterBytes = 2;

} // namespace

std::ptrdiff_t FTextConversion::widenedLength(CodePage page, std::string_view text) {
    const CodePage resolved = platform::resolveCodePage(page);
    if (resolved == CodePage::utf8) {
        return static_cast<std::ptrdiff_t>(FUtf8::widenedLength(text.data(), text.size()));
    }
    return platform::widenedLength(resolved, text.data(), text.size());
}

std::ptrdiff_t FTextConversion::widen(CodePage page, std::string_view text, char16_t* target, std::size_t capacity) {
    const CodePage resolved = platform::resolveCodePage(page);
    if (resolved != CodePage::utf8) {
        return platform::widen(resolved, text.data(), text.size(), target, capacity);
    }
    return FUtf8::widen(text.data(), text.size(), target, capacity) ? static_cast<std::ptrdiff_t>(capacity) : -1;
}

std::ptrdiff_t FTextConversion::narrowedLength(CodePage page, std::u16string_view text) {
    const CodePage resolved = platform::resolveCodePage(page);
    if (resolved == CodePage::utf8) {
        return static_cast<std::ptrdiff_t>(FUtf8::narrowedLength(text.data(), text.size()));
    }
    return platform::narrowedLength(resolved, text.data(), text.size());
}

std::ptrdiff_t FTextConversion::narrow(CodePage page, std::u16string_view text, char* target, std::size_t capacity) {
    const CodePage resolved = platform::resolveCodePage(page);
    if (resolved != CodePage::utf8) {
        return platform::narrow(resolved, text.data(), text.size(), target, capacity);
    }
    FUtf8::narrow(text.data(), text.size(), target, capacity);
    return static_cast<std::ptrdiff_t>(capacity);
}

bool FTextConversion::widenCharacter(char c, char16_t& out) {
    if (static_cast<unsigned char>(c) < 0x80) {
        out = static_cast<char16_t>(c);
        return true;
    }
    const std::string_view text(&c, 1);
    return widenedLength(CodePage::system, text) == 1 && widen(CodePage::system, text, &out, 1) == 1;
}

bool FTextConversion::narrowCharacter(char16_t c, char& out) {
    if (c < 0x80) {
        out = static_cast<char>(c);
        return true;
    }
    const std::u16string_view text(&c, 1);
    const std::ptrdiff_t length = narrowedLength(CodePage::system, text);
    char bytes[kCharacterBytes];
    if (length != 1 || narrow(CodePage::system, text, bytes, 1) != 1) {
        return false;
    }
    out = bytes[0];
    return true;
}

} // namespace tessera
