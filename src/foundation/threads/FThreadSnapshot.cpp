#include "foundation/threads/FThreadSnapshot.h"

#include "platform/Threads.h"

#include <algorithm>

namespace tessera {

namespace {

bool contains(const std::uint32_t* ids, int count, std::uint32_t id) {
    return std::find(ids, ids + count, id) != ids + count;
}

} // namespace

int FThreadSnapshot::capture() {
    newCount_ = 0;
    const int count = platform::listThreads(threads_, kCapacity);
    count_ = std::max(count, 0);
    return count;
}

int FThreadSnapshot::findNew() {
    std::uint32_t now[kCapacity];
    const int count = platform::listThreads(now, kCapacity);
    if (count <= count_) {
        return newCount_;
    }
    for (int i = 0; i < count && newCount_ < kNewCapacity; ++i) {
        if (!contains(threads_, count_, now[i]) && !contains(newThreads_, newCount_, now[i])) {
            newThreads_[newCount_++] = now[i];
        }
    }
    return newCount_;
}

std::uintptr_t FThreadSnapshot::openNew(int index) const {
    return index >= 0 && index < newCount_ ? platform::openThread(newThreads_[index]) : 0;
}

} // namespace tessera
