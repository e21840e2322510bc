// The text hash that decides the order of buckets, and with it the order in which tables are written.
//
// h = 0, then h = ((h << 6) + c) % tableSize for each character, in 32 bits: 8-bit characters are signed, 16-bit ones
// unsigned. No text and a table size of 0 give 0.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessera {

std::uint32_t hashText(std::string_view text, std::uint32_t tableSize);
std::uint32_t hashText(std::u16string_view text, std::uint32_t tableSize);

} // namespace tessera
