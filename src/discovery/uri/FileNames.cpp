#include "discovery/uri/FileNames.h"

#include "platform/RandomBytes.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace tessera {

namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::string_view kMildlyForbidden = "/:*?\t\n\r";
constexpr std::string_view kTrailingBlanks = " \n\r\t";
constexpr std::string_view kPortableCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return lower(a) == b; });
}

// Without the extension, which is the last "." and what follows; a "." in front begins no extension.
std::string_view stemOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

// The names by which the other platform reaches devices, whatever the extension.
bool isDeviceName(std::string_view stem) {
    for (const std::string_view device : {"con", "nul", "prn", "aux"}) {
        if (equalsIgnoringCase(stem, device)) {
            return true;
        }
    }
    if (stem.size() != 4 || stem[3] < '1' || stem[3] > '9') {
        return false;
    }
    return equalsIgnoringCase(stem.substr(0, 3), "com") || equalsIgnoringCase(stem.substr(0, 3), "lpt");
}

bool isDots(std::string_view name) {
    return name == "." || name == "..";
}

bool holdsOneOf(std::string_view name, std::string_view characters) {
    return name.find_first_of(characters) != std::string_view::npos;
}

bool hasPlainLength(std::string_view name) {
    return !name.empty() && name.size() <= kLongestName;
}

std::string sanitize(std::string name, char replacement, std::string_view forbidden) {
    if (name.size() > kLongestName) {
        name.resize(kLongestName);
    }
    if (name.empty() || isDots(name)) {
        name.assign(std::max<std::size_t>(name.size(), 1), replacement);
    } else if (name.back() == '.' || name.back() == ' ') {
        name.back() = replacement;
    } else if (isDeviceName(stemOf(name))) {
        name += replacement;
    }
    for (char& c : name) {
        if (forbidden.find(c) != std::string_view::npos) {
            c = replacement;
        }
    }
    return name;
}

} // namespace

bool isValidFileName(std::string_view name) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 32; };
    return hasPlainLength(name) && kTrailingBlanks.find(name.back()) == std::string_view::npos && !isDots(name) &&
           !holdsOneOf(name, kForbiddenNameCharacters) && name.back() != '.' &&
           std::none_of(name.begin(), name.end(), isControl) && !isDeviceName(stemOf(name));
}

bool isPortableFileName(std::string_view name) {
    return hasPlainLength(name) && name[0] != '-' && name[0] != '.' && !isDots(name) &&
           !holdsOneOf(name, kMildlyForbidden) && isValidFileName(name) &&
           name.find_first_not_of(kPortableCharacters) == std::string_view::npos;
}

std::string sanitizeFileName(std::string name, char replacement) {
    return sanitize(std::move(name), replacement, kForbiddenNameCharacters);
}

std::string sanitizeFileNameMildly(std::string name, char replacement) {
    return sanitize(std::move(name), replacement, kMildlyForbidden);
}

std::string sanitizeFileName(std::string name) {
    return sanitizeFileName(sanitizeFileNameMildly(std::move(name), '_'), '_');
}

std::string uniqueFileName() {
    std::uint8_t b[16];
    if (!platform::fillRandomBytes(b, sizeof b)) {
        return {};
    }
    char text[37];
    std::snprintf(text, sizeof text, "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x", b[0], b[1],
                  b[2], b[3], b[4], b[5], b[6], b[7], b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
    return text;
}

// Goes back to the last star alone, which is enough: an earlier one couldn't take any other run to advantage. A regular
// expression library would recurse once per character of a long name.
bool matchesPattern(std::string_view name, std::string_view pattern, NameCase letterCase) {
    const auto same = [letterCase](char a, char b) {
        return a == b || (letterCase == NameCase::ignored && lower(a) == lower(b));
    };
    std::size_t at = 0;
    std::size_t inPattern = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (at < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            resume = at;
        } else if (inPattern < pattern.size() && (pattern[inPattern] == '?' || same(pattern[inPattern], name[at]))) {
            ++inPattern;
            ++at;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

} // namespace tessera
