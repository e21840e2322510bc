#include "appservices/translation/PseudoText.h"

#include "appservices/translation/FormatConversions.h"
#include "appservices/translation/KeyContext.h"

#include <algorithm>
#include <iterator>

namespace tessera {
namespace {

constexpr char16_t kMark = u'_';

struct Accent {
    char16_t plain;
    char16_t accented;
};

constexpr Accent kAccents[] = {{u'A', 0xC0}, {u'a', 0xE0}, {u'E', 0xC8}, {u'e', 0xE8}, {u'I', 0xCC},
                               {u'i', 0xEC}, {u'O', 0xD2}, {u'o', 0xF2}, {u'U', 0xD9}, {u'u', 0xF9}};

char16_t accented(char16_t c) {
    const auto* const found =
        std::find_if(std::begin(kAccents), std::end(kAccents), [c](const Accent& accent) { return accent.plain == c; });
    return found != std::end(kAccents) ? found->accented : c;
}

} // namespace

std::u16string pseudoText(std::u16string_view key) {
    const std::u16string_view text = withoutContext(key);
    std::u16string result(1, kMark);
    result.reserve(text.size() + 2);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t conversion = conversionLength(text.substr(at));
        if (conversion != 0) {
            result.append(text.substr(at, conversion));
            at += conversion;
        } else {
            result.push_back(accented(text[at++]));
        }
    }
    result.push_back(kMark);
    return result;
}

} // namespace tessera
