// FScratchBufferPool: the buffers in which writers assemble their lines, shared by the whole process.
//
// A buffer that was given back serves the next one who asks; so a program that saves now and then allocates nothing for
// it. From any thread. FScratchBuffer is how to use it: it takes a buffer and gives it back at the end of its scope.
#pragma once

#include "foundation/containers/FByteBuffer.h"
#include "foundation/threads/FLock.h"

#include <memory>
#include <vector>

namespace tessera {

class FScratchBufferPool {
public:
    // In bytes, of a fresh buffer.
    static constexpr std::int32_t kBufferSize = 1024;
    // What a long line has made larger than this is freed, and so is whatever comes back to so many that wait.
    static constexpr std::int32_t kLargestKept = 64 * 1024;
    static constexpr std::size_t kMostKept = 16;

    // Null once the singletons have gone down: buffers are made and freed by who needs them then.
    static FScratchBufferPool* getInstance();

    FScratchBufferPool();
    FScratchBufferPool(const FScratchBufferPool&) = delete;
    FScratchBufferPool& operator=(const FScratchBufferPool&) = delete;

    // With a fill of 0 and at least kBufferSize bytes; less only without memory.
    std::unique_ptr<FByteBuffer> take();
    void giveBack(std::unique_ptr<FByteBuffer> buffer);
    // How many wait to be taken.
    std::size_t getWaiting();

    void release() { delete this; }

private:
    FLock lock_{"FScratchBufferPool"};
    // Under lock_.
    std::vector<std::unique_ptr<FByteBuffer>> waiting_;
};

class FScratchBuffer {
public:
    FScratchBuffer();
    FScratchBuffer(const FScratchBuffer&) = delete;
    FScratchBuffer& operator=(const FScratchBuffer&) = delete;
    ~FScratchBuffer();

    FByteBuffer& operator*() { return *buffer_; }
    FByteBuffer* operator->() { return buffer_.get(); }

private:
    std::unique_ptr<FByteBuffer> buffer_;
};

} // namespace tessera
