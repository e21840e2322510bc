// FNumberScan: numbers read from the beginning of a stretch of text, the same in every locale.
//
// Each operation skips white space, takes the longest number that stands there, and answers where it ends; null, with
// out as it was, when none stands there. The stretch needs no NUL behind it. Values out of range become the nearest
// one. A sign before an unsigned number is allowed and turns it around, as the library's scans do.
#pragma once

#include <cstdint>

namespace tessera {

class FNumberScan {
public:
    static const char* signedDecimal(const char* begin, const char* end, std::int64_t& out);
    static const char16_t* signedDecimal(const char16_t* begin, const char16_t* end, std::int64_t& out);
    static const char* unsignedDecimal(const char* begin, const char* end, std::uint64_t& out);
    static const char16_t* unsignedDecimal(const char16_t* begin, const char16_t* end, std::uint64_t& out);
    // With or without "0x"; the low 32 bits of however many digits.
    static const char* hexadecimal(const char* begin, const char* end, std::uint32_t& out);
    static const char16_t* hexadecimal(const char16_t* begin, const char16_t* end, std::uint32_t& out);
    // Digits with a point and an exponent.
    static const char* decimalFloat(const char* begin, const char* end, double& out);
    static const char16_t* decimalFloat(const char16_t* begin, const char16_t* end, double& out);
    // These and "inf", "infinity", "nan" in either case, and hexadecimal floats such as "0x1.8p3".
    static const char* anyFloat(const char* begin, const char* end, double& out);
    static const char16_t* anyFloat(const char16_t* begin, const char16_t* end, double& out);
};

} // namespace tessera
