#include "platform/Languages.h"

#include <windows.h>

namespace tessera::platform {

namespace {

constexpr std::uint16_t kPrimaryLanguage = 0x3FF;
// The value that says which measures are usual: "0" for metric, "1" for American ones.
constexpr LCTYPE kMeasuresValue = 13;

} // namespace

std::uint16_t systemLanguage() {
    return ::GetSystemDefaultLangID() & kPrimaryLanguage;
}

std::uint16_t userLanguage() {
    return ::GetUserDefaultUILanguage() & kPrimaryLanguage;
}

Measures usualMeasures() {
    wchar_t value[4] = {};
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, kMeasuresValue, value, 4);
    switch (value[0]) {
    case L'0':
        return Measures::metric;
    case L'1':
        return Measures::american;
    default:
        return Measures::unknown;
    }
}

} // namespace tessera::platform
