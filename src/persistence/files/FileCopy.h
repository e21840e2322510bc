// FileCopy: the bytes of one open file into another, in blocks, with progress.
#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <string_view>

namespace tessera {

class FStream;
struct IFileProgress;

// From both files' present positions to the end of the source. False on a failure, with the system's number in error,
// and when progress cancels, with 0. progress may be null; it is told the name.
bool copyBytes(platform::File& source, platform::File& target, std::u16string_view name, IFileProgress* progress,
               std::int32_t& error);

// So many bytes of a stream, from its present position. False as well when it ends before: it may have failed.
bool copyBytes(FStream& source, std::int64_t size, platform::File& target, std::u16string_view name,
               IFileProgress* progress, std::int32_t& error);

// What a file of this size is counted in, so that counts stay inside 31 bits: bytes below 2 GB.
std::int64_t progressUnit(std::int64_t size);

} // namespace tessera
