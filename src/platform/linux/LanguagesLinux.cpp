#include "platform/Languages.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace tessera::platform {

namespace {

struct LanguageNumber {
    std::string_view name;
    std::uint16_t number;
};

// Names of ISO 639-1 as locales begin with, sorted. Languages that Windows tells apart by their country alone share a
// number.
constexpr LanguageNumber kNumbers[] = {
    {"af", 0x36}, {"ar", 0x01}, {"az", 0x2C}, {"be", 0x23}, {"bg", 0x02}, {"ca", 0x03}, {"cs", 0x05}, {"da", 0x06},
    {"de", 0x07}, {"el", 0x08}, {"en", 0x09}, {"es", 0x0A}, {"et", 0x25}, {"eu", 0x2D}, {"fa", 0x29}, {"fi", 0x0B},
    {"fo", 0x38}, {"fr", 0x0C}, {"he", 0x0D}, {"hi", 0x39}, {"hr", 0x1A}, {"hu", 0x0E}, {"hy", 0x2B}, {"id", 0x21},
    {"is", 0x0F}, {"it", 0x10}, {"ja", 0x11}, {"ko", 0x12}, {"lt", 0x27}, {"lv", 0x26}, {"mk", 0x2F}, {"ms", 0x3E},
    {"nb", 0x14}, {"nl", 0x13}, {"nn", 0x14}, {"no", 0x14}, {"pl", 0x15}, {"pt", 0x16}, {"ro", 0x18}, {"ru", 0x19},
    {"sk", 0x1B}, {"sl", 0x24}, {"sq", 0x1C}, {"sr", 0x1A}, {"sv", 0x1D}, {"th", 0x1E}, {"tr", 0x1F}, {"uk", 0x22},
    {"ur", 0x20}, {"vi", 0x2A}, {"zh", 0x04},
};

bool isSmallLetter(char c) {
    return c >= 'a' && c <= 'z';
}

// Of the first variable that says something. A locale is a name of two letters, then, if anything, "_" and the country,
// "." and the codeset, "@" and a variant.
std::uint16_t languageOf(std::initializer_list<const char*> variables) {
    for (const char* variable : variables) {
        const char* value = std::getenv(variable);
        const std::string_view locale = value != nullptr ? value : "";
        if (locale.empty()) {
            continue;
        }
        const std::string_view name = locale.substr(0, 2);
        const auto* const found =
            std::find_if(std::begin(kNumbers), std::end(kNumbers), [&](const auto& row) { return row.name == name; });
        // The three letters of "arn" are no Arabic.
        const bool isName = locale.size() == 2 || (locale.size() > 2 && !isSmallLetter(locale[2]));
        return isName && found != std::end(kNumbers) ? found->number : 0;
    }
    return 0;
}

} // namespace

std::uint16_t systemLanguage() {
    return languageOf({"LANG"});
}

std::uint16_t userLanguage() {
    return languageOf({"LC_ALL", "LC_MESSAGES", "LANG"});
}

Measures usualMeasures() {
    // The program's own locale is "C" unless somebody has set it: the user's is asked for by name.
    const locale_t locale = newlocale(LC_MEASUREMENT_MASK, "", nullptr);
    if (locale == nullptr) {
        return Measures::unknown;
    }
    const char answer = *nl_langinfo_l(_NL_MEASUREMENT_MEASUREMENT, locale);
    freelocale(locale);
    switch (answer) {
    case 1:
        return Measures::metric;
    case 2:
        return Measures::american;
    default:
        return Measures::unknown;
    }
}

} // namespace tessera::platform
