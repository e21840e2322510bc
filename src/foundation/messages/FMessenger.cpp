#include "foundation/messages/FMessenger.h"

#include "foundation/containers/CmString.h"
#include "foundation/messages/FPostedMessage.h"
#include "foundation/messages/IMessageHook.h"
#include "foundation/messages/MessageReceiver.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/object/FSingletonList.h"
#include "foundation/threads/FLockGuard.h"

#include <algorithm>
#include <utility>

namespace tessera {
namespace {

constinit std::atomic<FMessenger*> installed{nullptr};

// The process's post office stands from the start of the module to its end.
FMessenger processMessenger;

bool holds(const CmQueue& queue, const IBaseUnknown* identity, const FStringRef& name) {
    return queue.findFirst(
               [&](CmObject* entry) { return static_cast<FPostedMessage*>(entry)->fits(identity, name); }) != nullptr;
}

// For that target and of that name, where a message without one is like no other but its kind.
bool holdsLike(const CmQueue& queue, const IBaseUnknown* identity, const FMessage& message) {
    return queue.findFirst([&](CmObject* entry) {
        const auto* posted = static_cast<FPostedMessage*>(entry);
        return posted->getReceiver().identity == identity &&
               posted->getMessage()->getNameText() == message.getNameText();
    }) != nullptr;
}

// Hands every fitting entry over to the other queue; the rest keeps its order.
void moveFitting(CmQueue& queue, const IBaseUnknown* identity, const FStringRef& name, CmQueue& removed) {
    for (std::int32_t left = queue.getCount(); left > 0; --left) {
        const bool fits = static_cast<FPostedMessage*>(queue.at(0))->fits(identity, name);
        queue.moveFirstTo(fits ? removed : queue);
    }
}

} // namespace

FMessenger* FMessenger::getInstance() {
    return installed.load(std::memory_order_acquire);
}

FMessenger::FMessenger() {
    // The singletons go down behind the post office, whichever of them came first.
    FSingletonList::touch();
    pending_.setOwnership(CmOwnership::owner);
    ready_.setOwnership(CmOwnership::owner);
    targets_.setOwnership(CmOwnership::owner);
    FMessenger* none = nullptr;
    installed.compare_exchange_strong(none, this);
}

FMessenger::~FMessenger() {
    FMessenger* self = this;
    installed.compare_exchange_strong(self, nullptr);
    const FLockGuard guard(targetLock_);
    targets_.removeAll();
}

void FMessenger::post(IBaseUnknown* target, IBaseUnknown* message) {
    auto* ours = cmCast<FMessage>(asCmObject(message));
    if (ours == nullptr) {
        return;
    }
    ours->addRef();
    postMessage(target, ours);
}

void FMessenger::postMessage(IBaseUnknown* target, FMessage* message, Coalesce coalesce, std::int32_t delay) {
    auto keep = FRefPtr<FMessage>::adopt(message);
    if (target == nullptr || !keep) {
        return;
    }
    const MessageReceiver receiver = MessageReceiver::of(target);
    const FLockGuard guard(queueLock_);
    if (coalesce == Coalesce::sameTargetAndName && holdsLike(pending_, receiver.identity, *message)) {
        return;
    }
    auto* entry = new FPostedMessage(keep.detach(), receiver, delay);
    if (!pending_.enqueue(entry)) {
        entry->release();
    }
}

void FMessenger::deliverMessages() {
    if (suspended_ || !hasMessages(nullptr, nullptr)) {
        return;
    }
    const FLockGuard delivery(deliveryLock_);
    {
        const FLockGuard queue(queueLock_);
        for (std::int32_t left = pending_.getCount(); left > 0; --left) {
            const bool isDue = static_cast<FPostedMessage*>(pending_.at(0))->isDue();
            pending_.moveFirstTo(isDue ? ready_ : pending_);
        }
    }
    // Each entry is off the queue before its target is called: the target may remove what is left, or start a round of
    // its own.
    while (auto* next = static_cast<FPostedMessage*>(ready_.dequeue())) {
        const auto entry = FRefPtr<FPostedMessage>::adopt(next);
        entry->getReceiver().handOver(entry->getMessage());
    }
}

void FMessenger::removeMessages(IBaseUnknown* target, const char* name) {
    if (target == nullptr) {
        return;
    }
    const IBaseUnknown* identity = MessageReceiver::of(target).identity;
    // Released when the locks are free again: a message may own the last reference of an object that is a target too,
    // and removes its own messages as it goes.
    CmQueue removed;
    removed.setOwnership(CmOwnership::owner);
    const FLockGuard delivery(deliveryLock_);
    const FLockGuard queue(queueLock_);
    moveFitting(pending_, identity, name, removed);
    moveFitting(ready_, identity, name, removed);
}

bool FMessenger::hasMessages(IBaseUnknown* target, const char* name) {
    const IBaseUnknown* identity = MessageReceiver::of(target).identity;
    const FLockGuard guard(queueLock_);
    if (target == nullptr && name == nullptr) {
        return !pending_.isEmpty();
    }
    return holds(pending_, identity, name);
}

bool FMessenger::setSuspended(bool suspended) {
    return suspended_.exchange(suspended);
}

void FMessenger::setHook(IMessageHook* hook) {
    hook_ = hook;
}

bool FMessenger::addTarget(const char* name, IBaseUnknown* target) {
    if (name == nullptr || target == nullptr) {
        return false;
    }
    auto key = FRefPtr<CmString>::adopt(new CmString(FStringRef(name)));
    auto holder = FRefPtr<CmDelegatingUnknown>::adopt(new CmDelegatingUnknown(target));
    const FLockGuard guard(targetLock_);
    if (!targets_.set(key.get(), holder.get())) {
        return false;
    }
    // The dictionary owns both now.
    static_cast<void>(key.detach());
    static_cast<void>(holder.detach());
    return true;
}

bool FMessenger::removeTarget(const char* name) {
    const FRefPtr<IBaseUnknown> target = findTarget(name);
    if (!target) {
        return false;
    }
    {
        const FLockGuard guard(targetLock_);
        const CmString key{FStringRef(name)};
        targets_.removeKey(&key);
    }
    // Without the lock: a round of delivery that has to end first may be asking for a target.
    removeMessages(target.get(), nullptr);
    return true;
}

// With a reference, since the target is called when the lock is free again.
FRefPtr<IBaseUnknown> FMessenger::findTarget(const char* name) {
    const FLockGuard guard(targetLock_);
    const CmString key{FStringRef(name)};
    const auto* holder = static_cast<const CmDelegatingUnknown*>(targets_.get(&key));
    return holder != nullptr ? FRefPtr<IBaseUnknown>(holder->getObject()) : nullptr;
}

std::int32_t FMessenger::sendTo(const char* name, FMessage* message, HookUse hook) {
    const FRefPtr<IBaseUnknown> target = findTarget(name);
    if (!target) {
        return 0;
    }
    callHook(name, target.get(), message, hook);
    return MessageReceiver::of(target.get()).handOver(message);
}

bool FMessenger::postTo(const char* name, FMessage* message, HookUse hook) {
    const FRefPtr<IBaseUnknown> target = findTarget(name);
    if (!target) {
        return false;
    }
    callHook(name, target.get(), message, hook);
    message->addRef();
    postMessage(target.get(), message);
    return true;
}

void FMessenger::callHook(const char* name, IBaseUnknown* target, FMessage* message, HookUse use) {
    IMessageHook* hook = use == HookUse::call ? hook_.load() : nullptr;
    if (hook != nullptr) {
        hook->beforeDelivery(name, target, message);
    }
}

std::int32_t FMessenger::createGroup() {
    const FLockGuard guard(targetLock_);
    if (!groups_) {
        groups_ = std::make_unique<std::vector<std::optional<Targets>>>();
    }
    groups_->emplace_back(Targets());
    return static_cast<std::int32_t>(groups_->size());
}

// Call with targetLock_ held.
std::optional<FMessenger::Targets>* FMessenger::findGroup(std::int32_t id) {
    if (!groups_ || id < 1 || static_cast<std::size_t>(id) > groups_->size()) {
        return nullptr;
    }
    auto& group = (*groups_)[static_cast<std::size_t>(id) - 1];
    return group ? &group : nullptr;
}

bool FMessenger::removeGroup(std::int32_t id) {
    const FLockGuard guard(targetLock_);
    auto* group = findGroup(id);
    if (group == nullptr) {
        return false;
    }
    group->reset();
    return true;
}

bool FMessenger::addToGroup(std::int32_t id, IBaseUnknown* target) {
    const FLockGuard guard(targetLock_);
    auto* group = findGroup(id);
    if (group == nullptr || target == nullptr) {
        return false;
    }
    (*group)->push_back(target);
    return true;
}

bool FMessenger::removeFromGroup(std::int32_t id, IBaseUnknown* target) {
    const FLockGuard guard(targetLock_);
    auto* group = findGroup(id);
    return group != nullptr && std::erase(**group, target) > 0;
}

// With a reference of each; nothing for an unknown group.
std::optional<std::vector<FRefPtr<IBaseUnknown>>> FMessenger::membersOf(std::int32_t id) {
    const FLockGuard guard(targetLock_);
    const auto* group = findGroup(id);
    if (group == nullptr) {
        return std::nullopt;
    }
    std::vector<FRefPtr<IBaseUnknown>> members;
    for (IBaseUnknown* target : **group) {
        members.emplace_back(target);
    }
    return members;
}

bool FMessenger::sendToGroup(std::int32_t id, FMessage* message) {
    const auto members = membersOf(id);
    if (!members) {
        return false;
    }
    for (const auto& target : *members) {
        MessageReceiver::of(target.get()).handOver(message);
    }
    return true;
}

bool FMessenger::postToGroup(std::int32_t id, FMessage* message) {
    const auto members = membersOf(id);
    if (!members) {
        return false;
    }
    for (const auto& target : *members) {
        message->addRef();
        postMessage(target.get(), message);
    }
    return true;
}

} // namespace tessera
