// FResult: the answer of an operation that crosses a binary interface. 32 bits, signed, zero for success.
#pragma once

#include <cstdint>

namespace tessera {

using FResult = std::int32_t;

inline constexpr FResult kResultOk = 0;
// The plain "no": nothing went wrong, the answer is negative.
inline constexpr FResult kResultFalse = 1;
inline constexpr FResult kNoInterface = static_cast<FResult>(0x80004002u);
inline constexpr FResult kResultFailure = static_cast<FResult>(0x80004005u);
inline constexpr FResult kInvalidArgument = static_cast<FResult>(0x80070057u);

} // namespace tessera
