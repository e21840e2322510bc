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
        const void* lock;
        std::int32_t count;
        std::int32_t mode;
    };
    static constexpr int kCapacity = 16;

    FHeldLocks(const FHeldLocks&) = delete;
    FHeldLocks& operator=(const FHeldLocks&) = delete;

    // Makes the process-wide slot if it isn't there. Whoever makes a fast lock calls it; a failure shows at the first
    // push.
    static void createSlot();
    // This thread's record, or null.
    static FHeldLocks* ofThisThread() { return record_; }

    // Books one more hold: its count, 1 when it's the first; or -2, -3, -4, reported.
    static int push(const void* lock, Mode mode);
    // Takes one hold off: the count that is left, 0 when the lock itself is to be released now; or -1, -2, reported.
    static int pop(const void* lock, Mode mode);
    // Whether this thread holds the lock, and has it in that mode.
    static bool holds(const void* lock, Mode mode);

    // push(lock, kShared) and pop(lock, ...) for the case that they are made for: the lock that was used last is held
    // and stays held. False, with nothing done, in every other case.
    static bool nest(const void* lock) {
        Entry* entry = cached_;
        if (entry->lock != lock) {
            return false;
        }
        ++entry->count;
        return true;
    }
    static bool unnest(const void* lock) {
        Entry* entry = cached_;
        if (entry->lock != lock || entry->count <= 1) {
            return false;
        }
        --entry->count;
        return true;
    }

    // push(lock, mode) and pop(lock, mode) for a thread that holds no other lock. False, with nothing done, in every
    // other case.
    static bool enterOnly(const void* lock, Mode mode) {
        FHeldLocks* record = record_;
        if (record == nullptr || record->used_ != 0) {
            return false;
        }
        record->used_ = 1;
        record->entries_[0] = {lock, 1, mode};
        cached_ = record->entries_;
        return true;
    }
    static bool leaveOnly(const void* lock, Mode mode) {
        FHeldLocks* record = record_;
        if (record == nullptr || record->used_ != 1) {
            return false;
        }
        Entry& entry = record->entries_[0];
        if (entry.lock != lock || entry.count != 1 || entry.mode != mode) {
            return false;
        }
        entry.lock = nullptr;
        record->used_ = 0;
        return true;
    }

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override;
    std::uint32_t release() override;

private:
    FHeldLocks();
    ~FHeldLocks();

    static FHeldLocks* makeForThisThread();
    Entry* find(const void* lock);
    int add(const void* lock, Mode mode);
    int remove(const void* lock, Mode mode);
    // What `cached_` points to in a thread without a record: no lock has a null address.
    static inline Entry nothing_{};
    // The record that the slot holds for this thread, and the entry in it that was hit last, where the compiler reaches
    // them without a call.
    static inline constinit thread_local FHeldLocks* record_ = nullptr;
    static inline constinit thread_local Entry* cached_ = &nothing_;

    Entry entries_[kCapacity] = {};
    int used_ = 0; // entries up to here are in use, cleared ones among them
    std::uint32_t references_ = 1;
};

} // namespace tessera
