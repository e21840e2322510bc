// FNumberText: a number as 8-bit text that any program reads back to the same number, in a buffer of its own.
//
// This is the form for files, streams, documents, versions and attributes: the point is ".", whatever the locale of the
// process says. The text ends with a NUL, and copies carry it along. No heap, no failure.
#pragma once

#include "foundation/text/FStringRef.h"

#include <cstdint>
#include <string_view>

namespace tessera {

class FNumberText {
public:
    // "%I64d" and "%I64u".
    static FNumberText integer(std::int64_t value);
    static FNumberText unsignedInteger(std::uint64_t value);
    // "%.50g": all decimals of the binary value, up to fifty of them.
    static FNumberText exact(double value);
    // The shortest text that reads back as the same value.
    static FNumberText shortest(double value);

    const char* text() const { return text_; }
    std::int32_t length() const { return length_; }
    std::string_view view() const { return {text_, static_cast<std::size_t>(length_)}; }
    FStringRef ref() const { return {text_, length_}; }

private:
    // A sign, "0.000", fifty digits, and the NUL; exponents stand in for longer stretches of zeros.
    static constexpr std::int32_t kRoom = 64;

    std::int32_t length_ = 0;
    char text_[kRoom] = {};
};

} // namespace tessera
