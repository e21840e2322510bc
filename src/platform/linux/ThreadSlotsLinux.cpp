#include "platform/ThreadSlots.h"

#include <pthread.h>

namespace tessera::platform {

namespace {

// The first key of a process is 0, which means "no slot" to us.
pthread_key_t keyOf(ThreadSlot slot) {
    return slot - 1;
}

} // namespace

ThreadSlot allocateThreadSlot() {
    pthread_key_t key = 0;
    return pthread_key_create(&key, nullptr) == 0 ? key + 1 : kNoThreadSlot;
}

void freeThreadSlot(ThreadSlot slot) {
    if (slot != kNoThreadSlot) {
        pthread_key_delete(keyOf(slot));
    }
}

bool setThreadSlotValue(ThreadSlot slot, void* value) {
    return slot != kNoThreadSlot && pthread_setspecific(keyOf(slot), value) == 0;
}

void* threadSlotValue(ThreadSlot slot) {
    // Key -1, out of "no slot", is one that the library refuses: null.
    return pthread_getspecific(keyOf(slot));
}

} // namespace tessera::platform
