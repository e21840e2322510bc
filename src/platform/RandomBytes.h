// RandomBytes: bytes from the system's random source, fit for names that nobody can guess. From any thread.
#pragma once

#include <cstddef>

namespace tessera::platform {

// False when the source can't be read; the bytes are of no use then.
bool fillRandomBytes(void* bytes, std::size_t count);

} // namespace tessera::platform
