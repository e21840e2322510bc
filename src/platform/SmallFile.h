// SmallFile: a file of some lines, read or written in one go.
//
// Paths are UTF-8 with "/" as the separator. From any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

// What ends a line of a text file here.
extern const std::string_view kLineEnding;

// The first bytes of a file, at most so many; nothing when it can't be opened or read, or is no plain file.
std::optional<std::string> readSmallFile(const std::string& path, std::size_t limit);

// Makes the bytes the file's whole content. A file that is there is written over and then cut to the new length; a new
// one appears with its content, where the file system can do that. So a reader never finds an empty file, and nothing
// waits for the disk, as emptying the file first would make the close do. False when the file can't be opened or not
// all was written.
bool writeSmallFile(const std::string& path, std::string_view bytes);

} // namespace tessera::platform
