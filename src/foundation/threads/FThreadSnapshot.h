// FThreadSnapshot: tells which threads of this process have come since a moment that the caller chose, to find those
// that a foreign library starts.
#pragma once

#include <cstdint>

namespace tessera {

class FThreadSnapshot {
public:
    static constexpr int kCapacity = 256;
    static constexpr int kNewCapacity = 32;

    // Notes the threads that there are, at most 256: their number, or -1 when they can't be listed.
    int capture();
    // Notes the threads that weren't there at capture, at most 32, if there are now more than then. Gives how many are
    // noted in all.
    int findNew();
    int newCount() const { return newCount_; }
    // The platform's means to reach a noted thread: on Linux its number, on Windows a handle that the caller closes.
    // 0 for a bad index.
    std::uintptr_t openNew(int index) const;

private:
    std::uint32_t threads_[kCapacity] = {};
    int count_ = 0;
    std::uint32_t newThreads_[kNewCapacity] = {};
    int newCount_ = 0;
};

} // namespace tessera
