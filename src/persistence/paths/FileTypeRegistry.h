// The process-wide tables of known file types and of functions that tell a type from a file's first bytes.
//
// Filled during start-up on the main thread, read afterwards; no lock. The tables own nothing: what is registered has
// to live as long as the process.
#pragma once

#include <cstdint>

namespace tessera {

class FFileType;
class FStream;
class FStringRef;

// Gives the type of a file that starts with these bytes, or null.
using FileTypeDetector = const FFileType* (*)(const std::uint8_t* buffer, std::int32_t length);

void registerFileType(const FFileType& type);
// The first registered type that has the extension as its extension, second extension or MIME type, in order of
// registration; or null.
const FFileType* findFileType(const FStringRef& extension);

void registerFileTypeDetector(FileTypeDetector detector);
// Asks the detectors in order of registration about the first 1024 bytes; the stream's position stays. Null when
// nothing can be read or nobody knows.
const FFileType* detectFileType(FStream& stream);

// "Text File", "txt"; shared, not to be changed.
const FFileType& textFileType();

} // namespace tessera
