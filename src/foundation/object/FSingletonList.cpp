#include "foundation/object/FSingletonList.h"

#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockGuard.h"

#include <cstdlib>
#include <vector>

namespace tessera {
namespace {

struct List {
    FLock lock{"FLock"};
    std::vector<FSingletonSlot*> slots;
};

// Plain words, so that they stand before the first initialiser runs and behind the last destructor.
constinit List* list = nullptr;
constinit std::atomic<bool> destroyed{false};

} // namespace

void FSingletonList::touch() {
    static const bool made = [] {
        list = new List;
        return std::atexit(&FSingletonList::goDown) == 0;
    }();
    static_cast<void>(made);
}

bool FSingletonList::isDestroyed() {
    return destroyed.load(std::memory_order_acquire);
}

void* FSingletonList::create(FSingletonSlot& slot) {
    touch();
    const FLockGuard guard(list->lock);
    void* object = slot.object_.load(std::memory_order_acquire);
    if (object == nullptr && !isDestroyed()) {
        object = slot.make_();
        slot.object_.store(object, std::memory_order_release);
        list->slots.push_back(&slot);
    }
    return object;
}

void FSingletonList::goDown() {
    destroyed.store(true, std::memory_order_release);
    // A slot is empty before its object goes: a destructor that asks for itself, or for one that went earlier, gets
    // null.
    for (FSingletonSlot* slot : list->slots) {
        if (void* object = slot->object_.exchange(nullptr)) {
            slot->release_(object);
        }
    }
    delete list;
    list = nullptr;
}

void* FSingletonSlot::obtainSlowly() {
    return FSingletonList::isDestroyed() ? nullptr : FSingletonList::create(*this);
}

} // namespace tessera
