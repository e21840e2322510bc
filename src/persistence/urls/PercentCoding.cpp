#include "persistence/urls/PercentCoding.h"

#include "foundation/text/FString.h"

#include <string>
#include <string_view>

namespace tessera {

namespace {

constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
constexpr char kDigits[] = "0123456789ABCDEF";

int digitOf(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string decoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? digitOf(text[i + 1]) : -1;
        const int low = high >= 0 ? digitOf(text[i + 2]) : -1;
        if (low >= 0) {
            bytes.push_back(static_cast<char>(high * 16 + low));
            i += 2;
        } else {
            bytes.push_back(text[i]);
        }
    }
    return bytes;
}

std::string encoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (kPlain.find(c) != kPlain.npos) {
            result.push_back(c);
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
        }
    }
    return result;
}

// The text with its bytes replaced by what `change` makes of them, in the width that it had.
template <class Change>
bool changeBytes(FString& text, Change change) {
    const bool wide = text.isWide();
    if (wide && !text.toMultiByte(CodePage::utf8)) {
        return false;
    }
    const std::string bytes = change(text.view8());
    const auto length = static_cast<std::int32_t>(bytes.size());
    return wide ? text.assignUtf8(bytes.data(), length) : text.assign8(bytes.data(), length);
}

} // namespace

bool decodePercent(FString& text) {
    return text.isEmpty() || changeBytes(text, decoded);
}

void encodePercent(FString& text) {
    if (!text.isEmpty()) {
        changeBytes(text, encoded);
    }
}

} // namespace tessera
