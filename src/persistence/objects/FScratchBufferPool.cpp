#include "persistence/objects/FScratchBufferPool.h"

#include "foundation/object/FSingletonList.h"
#include "foundation/threads/FLockGuard.h"

namespace tessera {

namespace {

std::unique_ptr<FByteBuffer> newBuffer() {
    auto buffer = std::make_unique<FByteBuffer>(FScratchBufferPool::kBufferSize);
    buffer->setSize(FScratchBufferPool::kBufferSize);
    return buffer;
}

} // namespace

FScratchBufferPool* FScratchBufferPool::getInstance() {
    static constinit FSingleton<FScratchBufferPool> instance([] { return new FScratchBufferPool; });
    return instance.get(true);
}

FScratchBufferPool::FScratchBufferPool() {
    // Giving back never allocates.
    waiting_.reserve(kMostKept);
}

std::unique_ptr<FByteBuffer> FScratchBufferPool::take() {
    {
        const FLockGuard guard(lock_);
        if (!waiting_.empty()) {
            std::unique_ptr<FByteBuffer> buffer = std::move(waiting_.back());
            waiting_.pop_back();
            return buffer;
        }
    }
    return newBuffer();
}

void FScratchBufferPool::giveBack(std::unique_ptr<FByteBuffer> buffer) {
    if (buffer == nullptr || buffer->getSize() < kBufferSize || buffer->getSize() > kLargestKept) {
        return;
    }
    buffer->setFill(0);
    const FLockGuard guard(lock_);
    if (waiting_.size() < kMostKept) {
        waiting_.push_back(std::move(buffer));
    }
}

std::size_t FScratchBufferPool::getWaiting() {
    const FLockGuard guard(lock_);
    return waiting_.size();
}

FScratchBuffer::FScratchBuffer() {
    FScratchBufferPool* pool = FScratchBufferPool::getInstance();
    buffer_ = pool != nullptr ? pool->take() : newBuffer();
}

FScratchBuffer::~FScratchBuffer() {
    if (FScratchBufferPool* pool = FScratchBufferPool::getInstance()) {
        pool->giveBack(std::move(buffer_));
    }
}

} // namespace tessera
