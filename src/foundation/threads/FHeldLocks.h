// FHeldLocks: the calling thread's record of the fast read-write locks that it holds, so that nested use of a lock
// costs one comparison and one increment, and misuse is noticed.
//
// One object per thread, in a thread-local slot; only that thread touches it. Locks are entered in the order in which
// they are taken and must go in the reverse order. Misuse goes to the lock error handler.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

class FHeldLocks final : public IBaseUnknown {
public:
    enum Mode : std::int32_t { kShared = 1, kExclusive = 2 };

    struct Entry {
        const void* lock = nullptr;
        std::int32_t count = 0;
        std::int32_t mode = 0;
    };
    static constexpr int kCapacity = 16;

    FHeldLocks() = default;
    FHeldLocks(const FHeldLocks&) = delete;
    FHeldLocks& operator=(const FHeldLocks&) = delete;

    // This thread's record, or null. createSlot() must have been called, by whoever makes a fast lock.
    static FHeldLocks* ofThisThread();
    // Makes the process-wide slot if it isn't there. A failure shows at the first push.
    static void createSlot();

    // Books one more hold: its count, 1 when it's the first; or -2, -3, -4, reported.
    static int push(const void* lock, Mode mode);
    // Takes one hold off: the count that is left, 0 when the lock itself is to be released now; or -1, -2, reported.
    static int pop(const void* lock, Mode mode);
    // Whether this thread holds the lock, and has it in that mode.
    static bool holds(const void* lock, Mode mode);

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override;
    std::uint32_t release() override;

private:
    ~FHeldLocks();

    static FHeldLocks* makeForThisThread();
    Entry* find(const void* lock);
    int add(const void* lock, Mode mode);
    int remove(const void* lock, Mode mode);

    Entry entries_[kCapacity];
    int used_ = 0;             // entries up to here are in use, cleared ones among them
    Entry* cached_ = entries_; // the one that was hit last
    std::uint32_t references_ = 1;
};

} // namespace tessera
