// FUtf8: UTF-8 to 16-bit text and back.
//
// Widening is strict: overlong forms, encoded halves of pairs, values above U+10FFFF and cut sequences fail. Narrowing
// always succeeds: half of a pair without its partner becomes U+FFFD, the bytes EF BF BD. A NUL is a character like any
// other. Measure first, then convert into exactly that much room; nothing here allocates or throws.
#pragma once

#include <cstddef>

namespace tessera {

class FUtf8 {
public:
    // The code units that valid text makes. For other text some number that is never less than what widen writes
    // before it fails.
    static std::size_t widenedLength(const char* text, std::size_t length);
    // False for bytes that are no UTF-8. capacity is what widenedLength gave.
    static bool widen(const char* text, std::size_t length, char16_t* target, std::size_t capacity);

    static std::size_t narrowedLength(const char16_t* text, std::size_t length);
    // capacity is what narrowedLength gave.
    static void narrow(const char16_t* text, std::size_t length, char* target, std::size_t capacity);
};

} // namespace tessera
