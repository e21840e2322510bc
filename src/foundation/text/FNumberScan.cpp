#include "foundation/text/FNumberScan.h"

#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace tessera {
namespace {

template <class Character>
bool isSpaceCharacter(Character c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

template <class Character>
bool isDecimalDigit(Character c) {
    return c >= '0' && c <= '9';
}

// The value of a digit in either case, or 16.
template <class Character>
std::uint32_t hexValue(Character c) {
    if (isDecimalDigit(c)) {
        return static_cast<std::uint32_t>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<std::uint32_t>(c - 'a' + 10);
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<std::uint32_t>(c - 'A' + 10);
    }
    return 16;
}

template <class Character>
const Character* skipSpace(const Character* at, const Character* end) {
    while (at != end && isSpaceCharacter(*at)) {
        ++at;
    }
    return at;
}

template <class Character>
const Character* skipSign(const Character* at, const Character* end, bool& negative) {
    negative = at != end && *at == '-';
    return at != end && (*at == '-' || *at == '+') ? at + 1 : at;
}

// Digits up to the first other character; false when there is none. A value beyond 64 bits sets tooLarge.
template <class Character>
bool readDigits(const Character*& at, const Character* end, std::uint64_t& value, bool& tooLarge) {
    constexpr std::uint64_t kMaximum = std::numeric_limits<std::uint64_t>::max();
    const Character* const begin = at;
    value = 0;
    tooLarge = false;
    for (; at != end && isDecimalDigit(*at); ++at) {
        const auto digit = static_cast<std::uint64_t>(*at - '0');
        if (value > (kMaximum - digit) / 10) {
            tooLarge = true;
        }
        value = value * 10 + digit;
    }
    return at != begin;
}

template <class Character>
const Character* scanSigned(const Character* begin, const Character* end, std::int64_t& out) {
    constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    bool negative = false;
    bool tooLarge = false;
    std::uint64_t value = 0;
    const Character* at = skipSign(skipSpace(begin, end), end, negative);
    if (!readDigits(at, end, value, tooLarge)) {
        return nullptr;
    }
    if (tooLarge || value > kLargest) {
        out = negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    } else {
        out = negative ? -static_cast<std::int64_t>(value) : static_cast<std::int64_t>(value);
    }
    return at;
}

template <class Character>
const Character* scanUnsigned(const Character* begin, const Character* end, std::uint64_t& out) {
    bool negative = false;
    bool tooLarge = false;
    std::uint64_t value = 0;
    const Character* at = skipSign(skipSpace(begin, end), end, negative);
    if (!readDigits(at, end, value, tooLarge)) {
        return nullptr;
    }
    if (tooLarge) {
        out = std::numeric_limits<std::uint64_t>::max();
    } else {
        out = negative ? 0 - value : value;
    }
    return at;
}

template <class Character>
bool startsHexadecimal(const Character* at, const Character* end) {
    return end - at >= 2 && at[0] == '0' && (at[1] == 'x' || at[1] == 'X');
}

template <class Character>
const Character* scanHexadecimal(const Character* begin, const Character* end, std::uint32_t& out) {
    bool negative = false;
    const Character* at = skipSign(skipSpace(begin, end), end, negative);
    // A lone "0x" is the digit 0 with something behind it.
    if (startsHexadecimal(at, end) && end - at >= 3 && hexValue(at[2]) < 16) {
        at += 2;
    }
    const Character* const digits = at;
    std::uint32_t value = 0;
    for (; at != end && hexValue(*at) < 16; ++at) {
        value = (value << 4) | hexValue(*at);
    }
    if (at == digits) {
        return nullptr;
    }
    out = negative ? 0 - value : value;
    return at;
}

// from_chars leaves the value alone when it is out of range and doesn't say in which direction. What decides is the
// place of the first digit that isn't 0, counted from the point.
bool isHugeNumber(const char* at, const char* end) {
    long long place = 0;
    bool beyondPoint = false;
    bool found = false;
    for (; at != end && (isDecimalDigit(*at) || *at == '.'); ++at) {
        if (*at == '.') {
            beyondPoint = true;
            continue;
        }
        found = found || *at != '0';
        place += found && !beyondPoint ? 1 : 0;
        place -= !found && beyondPoint ? 1 : 0;
    }
    std::int64_t exponent = 0;
    if (at != end) {
        scanSigned(at + 1, end, exponent);
    }
    constexpr std::int64_t kCeiling = std::int64_t{1} << 40;
    exponent = exponent > kCeiling ? kCeiling : exponent < -kCeiling ? -kCeiling : exponent;
    return place + exponent > 0;
}

bool isHugeHexadecimal(const char* at, const char* end) {
    while (at != end && *at != 'p' && *at != 'P') {
        ++at;
    }
    std::int64_t exponent = 0;
    return at == end || scanSigned(at + 1, end, exponent) == nullptr || exponent > 0;
}

const char* convertFloat(const char* at, const char* end, bool negative, std::chars_format format, double& out) {
    double value = 0.0;
    const auto result = std::from_chars(at, end, value, format);
    if (result.ec == std::errc::invalid_argument) {
        return nullptr;
    }
    if (result.ec == std::errc::result_out_of_range) {
        const bool huge =
            format == std::chars_format::hex ? isHugeHexadecimal(at, result.ptr) : isHugeNumber(at, result.ptr);
        value = huge ? std::numeric_limits<double>::infinity() : 0.0;
    }
    out = negative ? -value : value;
    return result.ptr;
}

enum class Forms { decimal, all };

const char* scanFloat(const char* begin, const char* end, Forms forms, double& out) {
    bool negative = false;
    const char* const at = skipSign(skipSpace(begin, end), end, negative);
    // A second sign would be taken by from_chars.
    if (at == end || *at == '-') {
        return nullptr;
    }
    if (forms == Forms::decimal && !isDecimalDigit(*at) && *at != '.') {
        return nullptr;
    }
    // So would one behind the prefix, and a word.
    if (forms == Forms::all && startsHexadecimal(at, end) && end - at >= 3 && (hexValue(at[2]) < 16 || at[2] == '.')) {
        if (const char* const behind = convertFloat(at + 2, end, negative, std::chars_format::hex, out)) {
            return behind;
        }
    }
    return convertFloat(at, end, negative, std::chars_format::general, out);
}

// What can stand in a number of any form.
bool mayStandInFloat(char16_t c) {
    return isDecimalDigit(c) || c == u'.' || c == u'+' || c == u'-' || c == u'(' || c == u')' || c == u'_' ||
           (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

const char16_t* skipDigits(const char16_t* at, const char16_t* end) {
    while (at != end && isDecimalDigit(*at)) {
        ++at;
    }
    return at;
}

// The stretch that is worth copying to bytes. For decimal floats no longer than the number itself: a search tries every
// position, and must not copy the rest of the text at each.
const char16_t* endOfFloat(const char16_t* at, const char16_t* end, Forms forms) {
    if (forms == Forms::all) {
        while (at != end && mayStandInFloat(*at)) {
            ++at;
        }
        return at;
    }
    bool negative = false;
    at = skipDigits(skipSign(at, end, negative), end);
    if (at != end && *at == u'.') {
        at = skipDigits(at + 1, end);
    }
    if (at != end && (*at == u'e' || *at == u'E')) {
        at = skipDigits(skipSign(at + 1, end, negative), end);
    }
    return at;
}

const char16_t* scanWideFloat(const char16_t* begin, const char16_t* end, Forms forms, double& out) {
    const char16_t* const first = skipSpace(begin, end);
    const char16_t* const last = endOfFloat(first, end, forms);
    constexpr std::ptrdiff_t kShort = 128;
    char local[kShort];
    std::string longer;
    char* bytes = local;
    if (last - first > kShort) {
        longer.resize(static_cast<std::size_t>(last - first));
        bytes = longer.data();
    }
    for (const char16_t* at = first; at != last; ++at) {
        bytes[at - first] = static_cast<char>(*at);
    }
    const char* const behind = scanFloat(bytes, bytes + (last - first), forms, out);
    return behind == nullptr ? nullptr : first + (behind - bytes);
}

} // namespace

const char* FNumberScan::signedDecimal(const char* begin, const char* end, std::int64_t& out) {
    return scanSigned(begin, end, out);
}

const char16_t* FNumberScan::signedDecimal(const char16_t* begin, const char16_t* end, std::int64_t& out) {
    return scanSigned(begin, end, out);
}

const char* FNumberScan::unsignedDecimal(const char* begin, const char* end, std::uint64_t& out) {
    return scanUnsigned(begin, end, out);
}

const char16_t* FNumberScan::unsignedDecimal(const char16_t* begin, const char16_t* end, std::uint64_t& out) {
    return scanUnsigned(begin, end, out);
}

const char* FNumberScan::hexadecimal(const char* begin, const char* end, std::uint32_t& out) {
    return scanHexadecimal(begin, end, out);
}

const char16_t* FNumberScan::hexadecimal(const char16_t* begin, const char16_t* end, std::uint32_t& out) {
    return scanHexadecimal(begin, end, out);
}

const char* FNumberScan::decimalFloat(const char* begin, const char* end, double& out) {
    return scanFloat(begin, end, Forms::decimal, out);
}

const char16_t* FNumberScan::decimalFloat(const char16_t* begin, const char16_t* end, double& out) {
    return scanWideFloat(begin, end, Forms::decimal, out);
}

const char* FNumberScan::anyFloat(const char* begin, const char* end, double& out) {
    return scanFloat(begin, end, Forms::all, out);
}

const char16_t* FNumberScan::anyFloat(const char16_t* begin, const char16_t* end, double& out) {
    return scanWideFloat(begin, end, Forms::all, out);
}

} // namespace tessera
