// SmallFile: a file of some lines, read or written in one go.
//
// Paths are UTF-8 with "/" as the separator. From any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

// The first bytes of a file, at most so many; nothing when it can't be opened or read, or is no plain file.
std::optional<std::string> readSmallFile(const std::string& path, std::size_t limit);

// Makes the bytes the file's whole content: one write over what stands there, then a cut to the new length. So a reader
// finds the old or the new beginning, never an empty file, and nothing waits for the disk, as emptying the file first
// would make the close do. False when the file can't be opened or not all was written.
bool writeSmallFile(const std::string& path, std::string_view bytes);

} // namespace tessera::platform
