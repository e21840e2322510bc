#include "platform/CharacterMapping.h"

#include "platform/windows/WideText.h"

#include <climits>
#include <cwctype>
#include <type_traits>
#include <windows.h>

namespace tessera::platform {
namespace {

// The calls take a single character in the place of a pointer, and give it back so.
template <class Text, class Character>
Character mapped(Text (*WINAPI map)(Text), Character c) {
    const auto unit = ULONG_PTR{std::make_unsigned_t<Character>(c)};
    return static_cast<Character>(reinterpret_cast<ULONG_PTR>(map(reinterpret_cast<Text>(unit))));
}

} // namespace

char16_t lowerCase(char16_t c) {
    return mapped(::CharLowerW, c);
}

char16_t upperCase(char16_t c) {
    return mapped(::CharUpperW, c);
}

char lowerCase(char c) {
    return mapped(::CharLowerA, c);
}

char upperCase(char c) {
    return mapped(::CharUpperA, c);
}

// As _wcsicmp does: by the locale of the runtime, in which nobody but ASCII has a case as long as no one sets another.
char16_t comparisonCase(char16_t c) {
    return static_cast<char16_t>(std::towlower(c));
}

bool comparesByLowerCase() {
    return false;
}

bool isLetter(char16_t c) {
    return std::iswalpha(c) != 0;
}

bool isLetterOrDigit(char16_t c) {
    return std::iswalnum(c) != 0;
}

bool isLowerLetter(char16_t c) {
    return std::iswlower(c) != 0;
}

bool isUpperLetter(char16_t c) {
    return std::iswupper(c) != 0;
}

bool isWhiteSpace(char16_t c) {
    return std::iswspace(c) != 0;
}

std::ptrdiff_t compose(const char16_t* text, std::size_t length, char16_t* target, std::size_t capacity) {
    // The call takes a length of nothing for a mistake.
    if (length == 0) {
        return 0;
    }
    if (length > INT_MAX) {
        return -1;
    }
    const int count = static_cast<int>(length);
    const int units = ::FoldStringW(MAP_PRECOMPOSED, wide(text), count, nullptr, 0);
    if (units <= 0) {
        return -1;
    }
    if (static_cast<std::size_t>(units) > capacity) {
        return units;
    }
    return ::FoldStringW(MAP_PRECOMPOSED, wide(text), count, wide(target), units) == units ? units : -1;
}

} // namespace tessera::platform
