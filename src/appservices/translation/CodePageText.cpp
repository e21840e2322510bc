#include "appservices/translation/CodePageText.h"

#include "appservices/translation/LanguageTable.h"

#include <algorithm>

namespace tessera {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool isAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool widenWhole(CodePage page, std::string_view bytes, std::u16string& out) {
    const std::ptrdiff_t length = platform::widenedLength(page, bytes.data(), bytes.size());
    if (length < 0) {
        return false;
    }
    out.resize(static_cast<std::size_t>(length));
    return platform::widen(page, bytes.data(), bytes.size(), out.data(), out.size()) == length;
}

std::u16string widenOneByOne(CodePage page, std::string_view bytes) {
    std::u16string result;
    std::u16string character;
    while (!bytes.empty()) {
        const auto first = static_cast<unsigned char>(bytes.front());
        const bool isPair = page == CodePage::shiftJis && bytes.size() > 1 &&
                            LanguageTable::isLeadByte(LanguageTable::kJapanese, first);
        const std::string_view source = bytes.substr(0, isPair ? 2 : 1);
        bytes.remove_prefix(source.size());
        if (widenWhole(page, source, character)) {
            result.append(character);
        } else {
            result.push_back(isPair ? kReplacement : first);
        }
    }
    return result;
}

} // namespace

std::u16string widenText(CodePage page, std::string_view bytes) {
    // Most keys: no need to ask the system.
    if (isAscii(bytes)) {
        return {bytes.begin(), bytes.end()};
    }
    std::u16string result;
    return widenWhole(page, bytes, result) ? result : widenOneByOne(page, bytes);
}

} // namespace tessera
