// The file system that serves the process: what FNFileSystem's constructor sets and its destructor clears. Callers ask
// FFileSystem::getInstance() instead, which makes one.
#pragma once

#include <atomic>

namespace tessera {

class FFileSystem;

extern std::atomic<FFileSystem*> fileSystemPointer;

} // namespace tessera
