// Helpers of the stream tests: a memory stream's bytes to compare with, and a stream made from bytes written by hand.
#pragma once

#include "persistence/streams/FMemoryStream.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace tessera {

inline std::string bytesOf(const FMemoryStream& stream) {
    return stream.getSize() == 0 ? std::string()
                                 : std::string(reinterpret_cast<const char*>(stream.getData()),
                                               static_cast<std::size_t>(stream.getSize()));
}

// The bytes, also those behind a NUL, of a literal.
template <std::size_t size>
std::string bytes(const char (&literal)[size]) {
    return std::string(literal, size - 1);
}

inline void fill(FMemoryStream& stream, std::string_view content) {
    stream.setSize(0);
    stream.write(content.data(), static_cast<std::int32_t>(content.size()));
    stream.rewind();
}

} // namespace tessera
