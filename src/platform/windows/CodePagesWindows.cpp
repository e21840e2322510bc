#include "platform/CodePages.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <climits>
#include <windows.h>

namespace tessera::platform {
namespace {

UINT numberOf(CodePage page) {
    return static_cast<UINT>(page);
}

// The calls take a length of nothing for a mistake, and a room of nothing for the wish to measure.
std::ptrdiff_t ofNothing(CodePage page) {
    return page == CodePage::system || ::IsValidCodePage(numberOf(page)) ? 0 : -1;
}

int asRoom(std::size_t capacity) {
    return static_cast<int>(std::min<std::size_t>(capacity, INT_MAX));
}

// A count, or -1 for the calls' 0.
std::ptrdiff_t counted(int result) {
    return result > 0 ? result : -1;
}

int widenInto(CodePage page, const char* text, std::size_t length, char16_t* target, int room) {
    return ::MultiByteToWideChar(numberOf(page), MB_ERR_INVALID_CHARS, text, static_cast<int>(length), wide(target),
                                 room);
}

int narrowInto(CodePage page, const char16_t* text, std::size_t length, char* target, int room) {
    return ::WideCharToMultiByte(numberOf(page), 0, wide(text), static_cast<int>(length), target, room, nullptr,
                                 nullptr);
}

} // namespace

CodePage resolveCodePage(CodePage page) {
    static const bool systemIsUtf8 = ::GetACP() == numberOf(CodePage::utf8);
    return page == CodePage::system && systemIsUtf8 ? CodePage::utf8 : page;
}

std::ptrdiff_t widenedLength(CodePage page, const char* text, std::size_t length) {
    if (length == 0) {
        return ofNothing(page);
    }
    return length > INT_MAX ? -1 : counted(widenInto(page, text, length, nullptr, 0));
}

std::ptrdiff_t widen(CodePage page, const char* text, std::size_t length, char16_t* target, std::size_t capacity) {
    if (length == 0) {
        return ofNothing(page);
    }
    return length > INT_MAX || capacity == 0 ? -1 : counted(widenInto(page, text, length, target, asRoom(capacity)));
}

std::ptrdiff_t narrowedLength(CodePage page, const char16_t* text, std::size_t length) {
    if (length == 0) {
        return ofNothing(page);
    }
    return length > INT_MAX ? -1 : counted(narrowInto(page, text, length, nullptr, 0));
}

std::ptrdiff_t narrow(CodePage page, const char16_t* text, std::size_t length, char* target, std::size_t capacity) {
    if (length == 0) {
        return ofNothing(page);
    }
    return length > INT_MAX || capacity == 0 ? -1 : counted(narrowInto(page, text, length, target, asRoom(capacity)));
}

} // namespace tessera::platform
