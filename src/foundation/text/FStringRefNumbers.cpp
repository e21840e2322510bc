#include "foundation/text/FNumberScan.h"
#include "foundation/text/FStringRef.h"

#include <algorithm>

namespace tessera {
namespace {

// The first position behind at where another number can begin: a scan skips white space itself, so the positions inside
// it need no try of their own. Null at the end of the text.
template <class Character>
const Character* nextTry(const Character* at, const Character* end) {
    while (at != end && (*at == ' ' || (*at >= '\t' && *at <= '\r'))) {
        ++at;
    }
    return at == end || *at == 0 || at + 1 == end ? nullptr : at + 1;
}

template <class Character, class Scan>
bool scanStretch(std::basic_string_view<Character> text, std::int32_t index, FNumberSearch search, Scan scan) {
    if (index < 0 || static_cast<std::size_t>(index) >= text.size()) {
        return false;
    }
    const Character* const end = text.data() + text.size();
    for (const Character* at = text.data() + index; at != nullptr; at = nextTry(at, end)) {
        if (scan(at, end) != nullptr) {
            return true;
        }
        if (search == FNumberSearch::atIndex) {
            return false;
        }
    }
    return false;
}

template <class Scan>
bool scanText(const FStringRef& text, std::int32_t index, FNumberSearch search, Scan scan) {
    return text.isWide() ? scanStretch(text.view16(), index, search, scan)
                         : scanStretch(text.view8(), index, search, scan);
}

template <class Character>
std::size_t startOfTrailingDigits(std::basic_string_view<Character> text) {
    std::size_t start = text.size();
    while (start > 0 && FStringRef::isDigit(text[start - 1])) {
        --start;
    }
    return start;
}

} // namespace

bool FStringRef::getInt64(std::int64_t& out, std::int32_t index, FNumberSearch search) const {
    return scanText(*this, index, search, [&](auto at, auto end) { return FNumberScan::signedDecimal(at, end, out); });
}

bool FStringRef::getUInt64(std::uint64_t& out, std::int32_t index, FNumberSearch search) const {
    return scanText(*this, index, search,
                    [&](auto at, auto end) { return FNumberScan::unsignedDecimal(at, end, out); });
}

bool FStringRef::getInt32(std::int32_t& out, std::int32_t index, FNumberSearch search) const {
    std::int64_t value = 0;
    if (!getInt64(value, index, search)) {
        return false;
    }
    out = static_cast<std::int32_t>(value);
    return true;
}

bool FStringRef::getUInt32(std::uint32_t& out, std::int32_t index, FNumberSearch search) const {
    std::uint64_t value = 0;
    if (!getUInt64(value, index, search)) {
        return false;
    }
    out = static_cast<std::uint32_t>(value);
    return true;
}

bool FStringRef::getFloat(double& out, std::int32_t index, FNumberSearch search) const {
    return scanText(*this, index, search, [&](auto at, auto end) {
        return search == FNumberSearch::atIndex ? FNumberScan::anyFloat(at, end, out)
                                                : FNumberScan::decimalFloat(at, end, out);
    });
}

bool FStringRef::getHex(std::uint32_t& out, std::int32_t index, FNumberSearch search) const {
    return scanText(*this, index, search, [&](auto at, auto end) { return FNumberScan::hexadecimal(at, end, out); });
}

std::int32_t FStringRef::trailingDigitsStart(std::int32_t required) const {
    const auto start =
        static_cast<std::int32_t>(isWide() ? startOfTrailingDigits(view16()) : startOfTrailingDigits(view8()));
    const std::int32_t digits = characters() - start;
    return digits == 0 || (required != 0 && digits != required) ? -1 : start;
}

std::int64_t FStringRef::trailingNumber(std::int64_t defaultValue) const {
    std::int64_t value = defaultValue;
    const std::int32_t start = trailingDigitsStart();
    return start >= 0 && getInt64(value, start) ? value : defaultValue;
}

} // namespace tessera
