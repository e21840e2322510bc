#include "platform/CharacterMapping.h"

#include <algorithm>
#include <vector>

#include <utf8proc.h>

namespace tessera::platform {
namespace {

utf8proc_category_t category(char16_t c) {
    return utf8proc_category(static_cast<utf8proc_int32_t>(c));
}

bool isLetterCategory(utf8proc_category_t category) {
    return category == UTF8PROC_CATEGORY_LU || category == UTF8PROC_CATEGORY_LL || category == UTF8PROC_CATEGORY_LT ||
           category == UTF8PROC_CATEGORY_LM || category == UTF8PROC_CATEGORY_LO;
}

bool isHighHalf(char32_t c) {
    return c >= 0xd800 && c < 0xdc00;
}

bool isLowHalf(char32_t c) {
    return c >= 0xdc00 && c < 0xe000;
}

// The mapped character if it is still one code unit.
char16_t oneUnit(utf8proc_int32_t mapped, char16_t original) {
    return mapped > 0 && mapped <= 0xffff ? static_cast<char16_t>(mapped) : original;
}

// Canonical decomposition of every character, halves of pairs without their partner kept as they are.
bool decompose(const char16_t* text, std::size_t length, std::vector<utf8proc_int32_t>& points) {
    for (std::size_t i = 0; i < length; ++i) {
        char32_t point = text[i];
        if (isHighHalf(point) && i + 1 < length && isLowHalf(text[i + 1])) {
            point = 0x10000 + ((point - 0xd800) << 10) + (text[++i] - 0xdc00u);
        }
        utf8proc_int32_t parts[32];
        int lastBoundary = UTF8PROC_BOUNDCLASS_START;
        const utf8proc_ssize_t count =
            utf8proc_decompose_char(static_cast<utf8proc_int32_t>(point), parts, std::size(parts),
                                    static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE), &lastBoundary);
        if (count < 0 || count > static_cast<utf8proc_ssize_t>(std::size(parts))) {
            return false;
        }
        points.insert(points.end(), parts, parts + count);
    }
    return true;
}

// Marks on one base character stand in the order of their combining classes.
void orderMarks(std::vector<utf8proc_int32_t>& points) {
    const auto combiningClass = [](utf8proc_int32_t point) { return utf8proc_get_property(point)->combining_class; };
    for (auto run = points.begin(); run != points.end();) {
        run = std::find_if(run, points.end(), [&](utf8proc_int32_t point) { return combiningClass(point) != 0; });
        const auto end =
            std::find_if(run, points.end(), [&](utf8proc_int32_t point) { return combiningClass(point) == 0; });
        std::stable_sort(run, end,
                         [&](utf8proc_int32_t a, utf8proc_int32_t b) { return combiningClass(a) < combiningClass(b); });
        run = end;
    }
}

} // namespace

char16_t lowerCase(char16_t c) {
    return oneUnit(utf8proc_tolower(static_cast<utf8proc_int32_t>(c)), c);
}

char16_t upperCase(char16_t c) {
    // The library's capital sharp s is no mapping between single characters: its small form is a letter of its own.
    if (c == u'\u00df') {
        return c;
    }
    return oneUnit(utf8proc_toupper(static_cast<utf8proc_int32_t>(c)), c);
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

char16_t comparisonCase(char16_t c) {
    return lowerCase(c);
}

bool comparesByLowerCase() {
    return true;
}

bool isLetter(char16_t c) {
    return isLetterCategory(category(c));
}

bool isLetterOrDigit(char16_t c) {
    const utf8proc_category_t kind = category(c);
    return isLetterCategory(kind) || kind == UTF8PROC_CATEGORY_ND;
}

bool isLowerLetter(char16_t c) {
    return category(c) == UTF8PROC_CATEGORY_LL;
}

bool isUpperLetter(char16_t c) {
    return category(c) == UTF8PROC_CATEGORY_LU;
}

bool isWhiteSpace(char16_t c) {
    if (c < 0x1680) {
        return (c >= 9 && c <= 13) || c == 32 || c == 0x85 || c == 0xa0;
    }
    return c == 0x1680 || (c >= 0x2000 && c <= 0x200a) || c == 0x2028 || c == 0x2029 || c == 0x202f || c == 0x205f ||
           c == 0x3000;
}

std::ptrdiff_t compose(const char16_t* text, std::size_t length, char16_t* target, std::size_t capacity) {
    std::vector<utf8proc_int32_t> points;
    points.reserve(length + length / 4);
    if (!decompose(text, length, points)) {
        return -1;
    }
    orderMarks(points);
    const utf8proc_ssize_t count =
        utf8proc_normalize_utf32(points.data(), static_cast<utf8proc_ssize_t>(points.size()),
                                 static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    if (count < 0) {
        return -1;
    }
    points.resize(static_cast<std::size_t>(count));
    const auto beyond = std::count_if(points.begin(), points.end(), [](utf8proc_int32_t p) { return p > 0xffff; });
    const std::ptrdiff_t units = count + beyond;
    if (units > static_cast<std::ptrdiff_t>(capacity)) {
        return units;
    }
    for (const utf8proc_int32_t point : points) {
        if (point > 0xffff) {
            *target++ = static_cast<char16_t>(0xd800 + ((point - 0x10000) >> 10));
            *target++ = static_cast<char16_t>(0xdc00 + ((point - 0x10000) & 0x3ff));
        } else {
            *target++ = static_cast<char16_t>(point);
        }
    }
    return units;
}

} // namespace tessera::platform
