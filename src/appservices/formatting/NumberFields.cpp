#include "appservices/formatting/NumberFields.h"

#include <string_view>

namespace tessera {
namespace {

constexpr int kMostDigits = 4;

// Takes the digits at the front of the text.
template <class Character>
bool takeNumber(std::basic_string_view<Character>& text, std::uint32_t& out) {
    int digits = 0;
    out = 0;
    while (!text.empty() && FStringRef::isDigit(text.front())) {
        if (++digits > kMostDigits) {
            return false;
        }
        out = out * 10 + static_cast<std::uint32_t>(text.front() - '0');
        text.remove_prefix(1);
    }
    return digits != 0;
}

template <class Character>
std::optional<std::array<std::uint32_t, 3>> readFields(std::basic_string_view<Character> text, char separator) {
    std::array<std::uint32_t, 3> fields = {};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i != 0) {
            if (text.empty() || text.front() != static_cast<Character>(separator)) {
                return std::nullopt;
            }
            text.remove_prefix(1);
        }
        if (!takeNumber(text, fields[i])) {
            return std::nullopt;
        }
    }
    return text.empty() ? std::optional(fields) : std::nullopt;
}

} // namespace

std::optional<std::array<std::uint32_t, 3>> readNumberFields(const FStringRef& text, char separator) {
    return text.isWide() ? readFields(text.view16(), separator) : readFields(text.view8(), separator);
}

} // namespace tessera
