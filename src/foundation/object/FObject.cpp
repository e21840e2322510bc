#include "foundation/object/FObject.h"

#include "foundation/object/FUID.h"
#include "foundation/object/IUpdateRegistry.h"

#include <cstring>

namespace tessera {
namespace {

constexpr char kClassName[] = "FObject";

// What an object counts while it is being destroyed: references taken and given back by its destructor never bring it
// to 0 a second time.
constexpr std::int32_t kBeingDestroyed = -1000;

constinit std::atomic<IUpdateRegistry*> updateHandler{nullptr};

FUIDBytes generatePrivateUID() {
    FUID uid;
    uid.generate();
    return uid.bytes();
}

} // namespace

const FUIDBytes& FObject::privateUID() {
    static const FUIDBytes uid = generatePrivateUID();
    return uid;
}

void FObject::setUpdateHandler(IUpdateRegistry* handler) {
    updateHandler.store(handler, std::memory_order_release);
}

IUpdateRegistry* FObject::getUpdateHandler() {
    return updateHandler.load(std::memory_order_acquire);
}

FResult FObject::queryInterface(const FUIDBytes& uid, void** out) {
    if (uid == privateUID()) {
        *out = this;
    } else if (uid == IUpdateTarget::iid || uid == IBaseUnknown::iid) {
        *out = static_cast<IUpdateTarget*>(this);
    } else {
        *out = nullptr;
        return kNoInterface;
    }
    addRef();
    return kResultOk;
}

std::uint32_t FObject::destroy() {
    count_.store(kBeingDestroyed, std::memory_order_relaxed);
    delete this;
    return 0;
}

void FObject::update(IBaseUnknown*, std::int32_t) {}

const char* FObject::getClassName() const {
    return kClassName;
}

bool FObject::isTypeOf(const char* className, bool) const {
    return className != nullptr && std::strcmp(className, kClassName) == 0;
}

void FObject::addDependent(IUpdateTarget* dependent) {
    if (IUpdateRegistry* handler = getUpdateHandler()) {
        handler->addDependent(this, dependent);
    }
}

void FObject::removeDependent(IUpdateTarget* dependent) {
    if (IUpdateRegistry* handler = getUpdateHandler()) {
        handler->removeDependent(this, dependent);
    }
}

void FObject::changed(std::int32_t message) {
    if (IUpdateRegistry* handler = getUpdateHandler()) {
        handler->triggerUpdates(this, message, false);
    } else {
        updateDone(message);
    }
}

void FObject::deferChanged(std::int32_t message) {
    if (IUpdateRegistry* handler = getUpdateHandler()) {
        handler->deferUpdates(this, message);
    } else {
        updateDone(message);
    }
}

void FObject::updateDone(std::int32_t) {}

} // namespace tessera
