#include "platform/ThreadSlots.h"

#include <windows.h>

namespace tessera::platform {

ThreadSlot allocateThreadSlot() {
    const DWORD index = TlsAlloc();
    if (index == TLS_OUT_OF_INDEXES) {
        return kNoThreadSlot;
    }
    if (index == kNoThreadSlot) {
        // Index 0 means "no slot" to us; it stays taken until another one is.
        const ThreadSlot other = allocateThreadSlot();
        TlsFree(index);
        return other;
    }
    return index;
}

void freeThreadSlot(ThreadSlot slot) {
    if (slot != kNoThreadSlot) {
        TlsFree(slot);
    }
}

bool setThreadSlotValue(ThreadSlot slot, void* value) {
    return slot != kNoThreadSlot && TlsSetValue(slot, value) != FALSE;
}

void* threadSlotValue(ThreadSlot slot) {
    return slot != kNoThreadSlot ? TlsGetValue(slot) : nullptr;
}

} // namespace tessera::platform
