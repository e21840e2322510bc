// ReservedName: a name is nobody else's once an empty file of that name was made.
//
// Paths are UTF-8. The file stays where it is: whoever reserves a name writes to it, or removes it. From any thread.
#pragma once

#include <cstdint>
#include <string>

namespace tessera::host {

// False, with the system's reason in error, when something of that name exists or no file can be made there.
bool reserveName(const std::string& path, std::int32_t& error);

// The path of a file beside that one, under a name that nothing had: "mix.wav.part", "mix.wav.2.part", and so on.
// Empty, with the system's reason in error, when there is none.
std::string reserveNameBeside(const std::string& path, std::int32_t& error);

} // namespace tessera::host
