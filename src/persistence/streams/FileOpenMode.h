// FileOpenMode: the bits of the 16-bit word that says how a file is opened.
#pragma once

#include <cstdint>

namespace tessera {

namespace FileOpenMode {

inline constexpr std::uint32_t read = 1;
inline constexpr std::uint32_t write = 2;
inline constexpr std::uint32_t shareRead = 4;
inline constexpr std::uint32_t shareWrite = 8;
// Folders that are missing on the way are made.
inline constexpr std::uint32_t createFolders = 16;
inline constexpr std::uint32_t unbuffered = 32;
// The file goes when it is closed.
inline constexpr std::uint32_t temporary = 64;

// Streams with any of these flush, and are reported as changed when they close. That sharing for writing counts as
// writing is meant.
inline constexpr std::uint32_t changes = write | shareWrite;

} // namespace FileOpenMode

} // namespace tessera
