// mendAiffLength: sets the number of frames and the size of the sound data in the header of a finished AIFF file.
//
// libsndfile (1.2.0) counts the byte that pads an odd number of data bytes as data, so an 8-bit mono file of 5 frames
// says that it has 6, and whoever joins such files gets a click. Chunks are walked by their sizes; a file that isn't
// laid out as expected stays as it is.
#pragma once

#include <cstdint>
#include <string>

namespace tessera::programs {

void mendAiffLength(const std::string& path, std::int64_t frames, std::int64_t dataBytes);

} // namespace tessera::programs
