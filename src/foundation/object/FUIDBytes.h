// FUIDBytes: the sixteen bytes of an identifier as they cross a binary interface, in the byte order of a Windows GUID:
// a little-endian 32-bit word, two little-endian 16-bit words, eight plain bytes. A plain record without a table; FUID
// is the framework's value class around it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace tessera {

struct FUIDBytes {
    std::uint8_t bytes[16] = {};

    friend bool operator==(const FUIDBytes& a, const FUIDBytes& b) {
        std::uint64_t left[2];
        std::uint64_t right[2];
        std::memcpy(left, a.bytes, sizeof left);
        std::memcpy(right, b.bytes, sizeof right);
        return left[0] == right[0] && left[1] == right[1];
    }
};

static_assert(sizeof(FUIDBytes) == 16 && alignof(FUIDBytes) == 1);
static_assert(std::is_standard_layout_v<FUIDBytes> && std::is_trivially_copyable_v<FUIDBytes>);

namespace detail {

consteval std::uint8_t hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<std::uint8_t>(c - '0');
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<std::uint8_t>(c - 'A' + 10);
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<std::uint8_t>(c - 'a' + 10);
    }
    throw "not a hexadecimal digit";
}

} // namespace detail

// "{20D444BC-9924-4483-A7B6-35199221D1AC}"_uid, checked by the compiler.
consteval FUIDBytes operator""_uid(const char* text, std::size_t length) {
    if (length != 38 || text[0] != '{' || text[9] != '-' || text[14] != '-' || text[19] != '-' || text[24] != '-' ||
        text[37] != '}') {
        throw "an identifier is written {xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
    }
    // Where in the text each byte in memory comes from: the three words stand with their lowest byte first.
    constexpr std::size_t source[16] = {7, 5, 3, 1, 12, 10, 17, 15, 20, 22, 25, 27, 29, 31, 33, 35};
    FUIDBytes result;
    for (std::size_t i = 0; i < 16; ++i) {
        result.bytes[i] =
            static_cast<std::uint8_t>(detail::hexDigit(text[source[i]]) * 16 + detail::hexDigit(text[source[i] + 1]));
    }
    return result;
}

} // namespace tessera
