// FMessenger: the process-wide post office. Messages are posted from any thread and handed over later, in order, by the
// thread that calls deliverMessages, which the idle timer does.
//
// A post holds a reference of the message and none of the target: a target calls removeMessages as the first statement
// of its most derived destructor, and can't be called once that has returned. Named targets are referenced; members of
// groups aren't. Any thread may call any operation. Lock order: delivery before queue, targets before queue. Targets
// and the hook are called without the queue's and the targets' lock; a target may post, and remove messages, from
// inside its receiveMessage, and what it posts waits for the next round.
#pragma once

#include "foundation/containers/CmBTreeDictionary.h"
#include "foundation/containers/CmQueue.h"
#include "foundation/messages/FMessage.h"
#include "foundation/messages/IMessagePost.h"
#include "foundation/threads/FLock.h"

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace tessera {

class IMessageHook;

class FMessenger : public CmClass<FMessenger, CmObject, IMessagePost> {
public:
    static FMetaClass metaClass;

    enum class Coalesce { never, sameTargetAndName };
    enum class HookUse { skip, call };

    // The one post office; null once it has gone, at the end of the process.
    static FMessenger* getInstance();

    FMessenger();
    FMessenger(const FMessenger&) = delete;
    FMessenger& operator=(const FMessenger&) = delete;
    ~FMessenger() override;

    void post(IBaseUnknown* target, IBaseUnknown* message) override;
    void removeMessages(IBaseUnknown* target, const char* name) override;
    bool hasMessages(IBaseUnknown* target, const char* name) override;

    // Takes the caller's reference of the message over. Coalescing drops the message when one of that name waits for
    // that target already. A message with a delay of n is delivered in the round after n others.
    void postMessage(IBaseUnknown* target, FMessage* message, Coalesce coalesce = Coalesce::never,
                     std::int32_t delay = 0);
    // One round: hands over what is due. A target that answers neither IMessageTarget nor the private cast gets
    // nothing.
    void deliverMessages();
    // While suspended everything waits. Gives the old value.
    bool setSuspended(bool suspended);
    // Not referenced; null for none.
    void setHook(IMessageHook* hook);

    // A name that exists already is given to nobody else: false.
    bool addTarget(const char* name, IBaseUnknown* target);
    // Gives the target's reference back and drops the messages on their way to it.
    bool removeTarget(const char* name);
    // Calls the target now, on this thread; what it returns, or 0 for an unknown name.
    std::int32_t sendTo(const char* name, FMessage* message, HookUse hook);
    // Posts to the target, with a reference of its own; false for an unknown name. A hook is called at once.
    bool postTo(const char* name, FMessage* message, HookUse hook);

    // Ids count from 1 and aren't used again.
    std::int32_t createGroup();
    bool removeGroup(std::int32_t id);
    // A target added twice is told twice.
    bool addToGroup(std::int32_t id, IBaseUnknown* target);
    bool removeFromGroup(std::int32_t id, IBaseUnknown* target);
    bool sendToGroup(std::int32_t id, FMessage* message);
    bool postToGroup(std::int32_t id, FMessage* message);

private:
    using Targets = std::vector<IBaseUnknown*>;

    FRefPtr<IBaseUnknown> findTarget(const char* name);
    void callHook(const char* name, IBaseUnknown* target, FMessage* message, HookUse use);
    std::optional<Targets>* findGroup(std::int32_t id);
    std::optional<std::vector<FRefPtr<IBaseUnknown>>> membersOf(std::int32_t id);

    FLock queueLock_;
    // Guarded by queueLock_.
    CmQueue pending_;
    FLock deliveryLock_;
    // What this round still has to hand over. Guarded by deliveryLock_.
    CmQueue ready_;
    FLock targetLock_;
    std::atomic<IMessageHook*> hook_{nullptr};
    std::atomic<bool> suspended_{false};
    // Both guarded by targetLock_. A group's place is empty once it was removed.
    CmBTreeDictionary targets_;
    std::unique_ptr<std::vector<std::optional<Targets>>> groups_;
};

} // namespace tessera
