#include "appservices/translation/LanguageTable.h"

#include "platform/Languages.h"

#include <algorithm>
#include <iterator>

namespace tessera {
namespace {

struct Language {
    const char* code;
    const char* name;
    std::uint16_t id;
};

// The index is the place; files and settings hold codes alone.
constexpr Language kLanguages[] = {
    {"us", "English", 0x09},    {"de", "German", 0x07},
    {"fr", "French", 0x0C},     {"jp", "Japanese", 0x11},
    {"es", "Spanish", 0x0A},    {"it", "Italian", 0x10},
    {"ar", "Arabic", 0x01},     {"bg", "Bulgarian", 0x02},
    {"ca", "Catalan", 0x03},    {"zh", "Chinese", 0x04},
    {"cs", "Czech", 0x05},      {"da", "Danish", 0x06},
    {"el", "Greek", 0x08},      {"fi", "Finnish", 0x0B},
    {"he", "Hebrew", 0x0D},     {"hu", "Hungarian", 0x0E},
    {"is", "Icelandic", 0x0F},  {"ko", "Korean", 0x12},
    {"nl", "Dutch", 0x13},      {"no", "Norwegian", 0x14},
    {"pl", "Polish", 0x15},     {"pt", "Portuguese", 0x16},
    {"ro", "Romanian", 0x18},   {"ru", "Russian", 0x19},
    {"hr", "Croatian", 0x1A},   {"sr", "Serbian", 0x1A},
    {"sk", "Slovak", 0x1B},     {"sq", "Albanian", 0x1C},
    {"sv", "Swedish", 0x1D},    {"th", "Thai", 0x1E},
    {"tr", "Turkish", 0x1F},    {"ur", "Urdu", 0x20},
    {"id", "Indonesian", 0x21}, {"uk", "Ukrainian", 0x22},
    {"be", "Belarusian", 0x23}, {"sl", "Slovenian", 0x24},
    {"et", "Estonian", 0x25},   {"lv", "Latvian", 0x26},
    {"lt", "Lithuanian", 0x27}, {"fa", "Farsi", 0x29},
    {"vi", "Vietnamese", 0x2A}, {"hy", "Armenian", 0x2B},
    {"az", "Azeri", 0x2C},      {"eu", "Basque", 0x2D},
    {"mk", "Macedonian", 0x2F}, {"af", "Afrikaans", 0x36},
    {"fo", "Faeroese", 0x38},   {"hi", "Hindi", 0x39},
    {"ms", "Malay", 0x3E},      {"bp", "Brazilian Portuguese", 0x16},
};
static_assert(std::size(kLanguages) == LanguageTable::kCount);

// One bit for each language whose 8-bit texts have characters of two bytes.
constexpr std::uint32_t kMultiByteLanguages =
    1u << LanguageTable::kJapanese | 1u << LanguageTable::kChinese | 1u << LanguageTable::kKorean;
static_assert(kMultiByteLanguages == 131'592);

const Language& languageAt(std::int32_t index) {
    return kLanguages[index >= 0 && index < LanguageTable::kCount ? index : LanguageTable::kEnglish];
}

// The first row for which the question is answered with yes, or English.
template <class Question>
std::int32_t findLanguage(Question question) {
    const auto* const found = std::find_if(std::begin(kLanguages), std::end(kLanguages), question);
    return found != std::end(kLanguages) ? static_cast<std::int32_t>(found - kLanguages) : LanguageTable::kEnglish;
}

bool isWithin(std::uint8_t byte, std::uint8_t first, std::uint8_t last) {
    return byte >= first && byte <= last;
}

} // namespace

LanguageTable& LanguageTable::getInstance() {
    static constinit LanguageTable table;
    return table;
}

std::int32_t LanguageTable::systemLanguage() {
    if (system_ == kUnknown) {
        system_ = indexOfId(platform::systemLanguage());
    }
    return system_;
}

std::int32_t LanguageTable::userLanguage() {
    if (override_ != kUnknown) {
        return override_;
    }
    if (user_ == kUnknown) {
        user_ = indexOfId(platform::userLanguage());
    }
    return user_;
}

void LanguageTable::setUserLanguage(std::int32_t index) {
    override_ = index < 0 ? kUnknown : index < kCount ? index : kEnglish;
}

const char* LanguageTable::nameOf(std::int32_t index) {
    return languageAt(index).name;
}

std::int32_t LanguageTable::indexOfName(const FStringRef& name) {
    return findLanguage([&](const Language& language) { return name == FStringRef(language.name); });
}

const char* LanguageTable::codeOf(std::int32_t index) {
    return languageAt(index).code;
}

std::int32_t LanguageTable::indexOfCode(const FStringRef& code) {
    return findLanguage([&](const Language& language) { return code == FStringRef(language.code); });
}

std::uint16_t LanguageTable::idOf(std::int32_t index) {
    return languageAt(index).id;
}

std::int32_t LanguageTable::indexOfId(std::uint16_t id) {
    return findLanguage([&](const Language& language) { return id == language.id; });
}

bool LanguageTable::isMultiByte(std::int32_t index) {
    return index >= 0 && index < 32 && (kMultiByteLanguages >> index & 1) != 0;
}

bool LanguageTable::isLeadByte(std::int32_t index, std::uint8_t byte) {
    switch (index) {
    case kJapanese:
        return isWithin(byte, 0x81, 0x9F) || isWithin(byte, 0xE0, 0xFC);
    case kChinese:
        return isWithin(byte, 0x81, 0xFC);
    case kKorean:
        return isWithin(byte, 0x81, 0xBF);
    default:
        return false;
    }
}

std::int32_t LanguageTable::timeFormat() {
    switch (platform::usualMeasures()) {
    case platform::Measures::metric:
        return 1;
    case platform::Measures::american:
        return 0;
    default:
        return -1;
    }
}

} // namespace tessera
