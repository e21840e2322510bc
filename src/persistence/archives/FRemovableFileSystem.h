// FRemovableFileSystem: a file system that can be taken away, and how much of it is in use.
#pragma once

#include "persistence/files/FFileSystem.h"

#include <atomic>
#include <cstdint>

namespace tessera {

class FRemovableFileSystem : public CmClass<FRemovableFileSystem, FFileSystem> {
public:
    static FMetaClass metaClass;

    // Lets go of all that it holds open. Afterwards every operation answers with nothing.
    virtual void close() {}

    // The streams that it has handed out and that are still there. Whoever has one may release it on any thread.
    std::int32_t getOpenCount() const { return openCount_; }

protected:
    std::atomic<std::int32_t> openCount_{0};
};

} // namespace tessera
