#include "foundation/messages/UpdateHandler.h"

#include "foundation/messages/DeferredChanges.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/FSingletonList.h"
#include "foundation/threads/FLockGuard.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tessera {
namespace {

constexpr char kClassName[] = "UpdateHandler";
constexpr std::size_t kBuckets = 256;
constexpr std::size_t kStackDependents = 1024;
constexpr std::size_t kMostDependents = 10240;
constexpr int kMostChangesPerCall = 65536;

// The dependents of one object, in the order in which they came. Most objects have one, which takes no block of memory.
class Dependents {
public:
    bool isEmpty() const { return only_ == nullptr && all_.empty(); }
    std::size_t count() const { return only_ != nullptr ? 1 : all_.size(); }
    IUpdateTarget* const* begin() const { return only_ != nullptr ? &only_ : all_.data(); }

    void add(IUpdateTarget* dependent) {
        if (isEmpty()) {
            only_ = dependent;
            return;
        }
        if (only_ != nullptr) {
            // Room for both first: without memory nothing has changed.
            all_.reserve(2);
            all_.push_back(std::exchange(only_, nullptr));
        }
        all_.push_back(dependent);
    }
    // However often it was added.
    void remove(const IUpdateTarget* dependent) {
        if (only_ == dependent) {
            only_ = nullptr;
        }
        std::erase(all_, dependent);
    }

private:
    // Null as well when there are several.
    IUpdateTarget* only_ = nullptr;
    std::vector<IUpdateTarget*> all_;
};

// The dependents of one running notification. It lives on the notifier's stack and is linked into the tables, so that
// removeDependent can blank out who must not be called any more. That happens under the lock, while the notifier reads
// without it: entries are only touched atomically once the record is linked.
class Notification {
public:
    Notification() = default;
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;

    void copy(IBaseUnknown* object, const Dependents& dependents) {
        object_ = object;
        count_ = std::min(dependents.count(), kMostDependents);
        if (count_ > kStackDependents) {
            large_.reset(new (std::nothrow) IUpdateTarget*[kMostDependents]);
            entries_ = large_.get();
        }
        if (entries_ == nullptr) {
            entries_ = small_;
            count_ = kStackDependents;
        }
        std::copy_n(dependents.begin(), count_, entries_);
    }

    IBaseUnknown* object() const { return object_; }
    std::size_t count() const { return count_; }
    IUpdateTarget* at(std::size_t index) { return std::atomic_ref(entries_[index]).load(std::memory_order_acquire); }
    void remove(const IUpdateTarget* dependent) {
        for (std::size_t i = 0; i < count_; ++i) {
            if (at(i) == dependent) {
                std::atomic_ref(entries_[i]).store(nullptr, std::memory_order_release);
            }
        }
    }

    Notification* previous = nullptr;
    Notification* next = nullptr;

private:
    IBaseUnknown* object_ = nullptr;
    std::size_t count_ = 0;
    IUpdateTarget** entries_ = small_;
    std::unique_ptr<IUpdateTarget*[]> large_;
    // Not initialised: a notification of one dependent touches one entry.
    IUpdateTarget* small_[kStackDependents];
};

FRefPtr<IBaseUnknown> identityOf(IBaseUnknown* object) {
    return queryFor<IBaseUnknown>(object);
}

void tellDone(IBaseUnknown* object, std::int32_t message) {
    void* found = nullptr;
    if (object->queryInterface(FObject::privateUID(), &found) == kResultOk && found != nullptr) {
        const auto changed = FRefPtr<FObject>::adopt(static_cast<FObject*>(found));
        changed->updateDone(message);
    }
}

} // namespace

class UpdateHandler::Tables {
public:
    using Map = std::unordered_map<IBaseUnknown*, Dependents>;

    // Bits 12 to 19 spread heap objects without hashing, and keep each map small.
    Map& mapOf(IBaseUnknown* object) { return maps[(reinterpret_cast<std::uintptr_t>(object) >> 12) & (kBuckets - 1)]; }
    const Dependents* find(IBaseUnknown* object) {
        const Map& map = mapOf(object);
        const auto found = map.find(object);
        return found != map.end() ? &found->second : nullptr;
    }

    void link(Notification& notification) {
        notification.next = running;
        if (running != nullptr) {
            running->previous = &notification;
        }
        running = &notification;
    }
    // The own record, wherever it stands: several threads may notify at once.
    void unlink(Notification& notification) {
        (notification.previous != nullptr ? notification.previous->next : running) = notification.next;
        if (notification.next != nullptr) {
            notification.next->previous = notification.previous;
        }
    }
    bool isRunning(IBaseUnknown* object) const {
        for (const Notification* notification = running; notification != nullptr; notification = notification->next) {
            if (notification->object() == object) {
                return true;
            }
        }
        return false;
    }

    // Whether the object has dependents left.
    bool remove(IBaseUnknown* object, const IUpdateTarget* dependent) {
        Map& map = mapOf(object);
        const auto found = map.find(object);
        if (found == map.end()) {
            return false;
        }
        if (dependent != nullptr) {
            found->second.remove(dependent);
        }
        if (dependent != nullptr && !found->second.isEmpty()) {
            return true;
        }
        map.erase(found);
        return false;
    }

    void cancel(IBaseUnknown* object) {
        deferred.cancel(object);
        for (DeferredChanges* changes : setAside) {
            changes->cancel(object);
        }
    }

    std::array<Map, kBuckets> maps;
    DeferredChanges deferred;
    // Changes that a running triggerDeferred holds back for the next round.
    std::vector<DeferredChanges*> setAside;
    Notification* running = nullptr;
};

UpdateHandler* UpdateHandler::getInstance(bool create) {
    static constinit FSingleton<UpdateHandler> instance([] { return new UpdateHandler; });
    return instance.get(create);
}

UpdateHandler::UpdateHandler() : tables_(new Tables) {
    if (FObject::getUpdateHandler() == nullptr) {
        FObject::setUpdateHandler(this);
    }
}

UpdateHandler::~UpdateHandler() {
    if (FObject::getUpdateHandler() == this) {
        FObject::setUpdateHandler(nullptr);
    }
}

const char* UpdateHandler::getClassName() const {
    return kClassName;
}

bool UpdateHandler::isTypeOf(const char* className, bool askBase) const {
    if (className != nullptr && std::strcmp(className, kClassName) == 0) {
        return true;
    }
    return askBase && FObject::isTypeOf(className, true);
}

FResult UpdateHandler::addDependent(IBaseUnknown* object, IUpdateTarget* dependent) {
    const auto identity = identityOf(object);
    if (!identity || dependent == nullptr) {
        return kResultFalse;
    }
    const FLockGuard guard(lock_);
    tables_->mapOf(identity.get())[identity.get()].add(dependent);
    return kResultOk;
}

FResult UpdateHandler::removeDependent(IBaseUnknown* object, IUpdateTarget* dependent) {
    const auto identity = identityOf(object);
    if ((object != nullptr && !identity) || (object == nullptr && dependent == nullptr)) {
        return kResultFalse;
    }
    const FLockGuard guard(lock_);
    if (dependent != nullptr) {
        for (Notification* running = tables_->running; running != nullptr; running = running->next) {
            if (object == nullptr || running->object() == identity.get()) {
                running->remove(dependent);
            }
        }
    }
    if (object == nullptr) {
        for (Tables::Map& map : tables_->maps) {
            for (auto& entry : map) {
                entry.second.remove(dependent);
            }
        }
        return kResultOk;
    }
    // An object without dependents has no changes to tell.
    if (!tables_->remove(identity.get(), dependent)) {
        tables_->cancel(identity.get());
    }
    return kResultOk;
}

FResult UpdateHandler::triggerUpdates(IBaseUnknown* object, std::int32_t message, bool keepDone) {
    // Kept until behind updateDone: a dependent may release the object. An object that is being destroyed is beyond
    // keeping.
    auto identity = identityOf(object);
    if (!identity) {
        return kResultFalse;
    }
    IBaseUnknown* const key = identity.get();
    if (message == kObjectDestroyed) {
        identity.reset();
    }
    const bool told = notify(key, object, message);
    if (!keepDone && message != kObjectDestroyed) {
        tellDone(object, message);
    }
    return told ? kResultOk : kResultFalse;
}

// Whether there was a dependent.
bool UpdateHandler::notify(IBaseUnknown* key, IBaseUnknown* object, std::int32_t message) {
    Notification notification;
    {
        const FLockGuard guard(lock_);
        const Dependents* dependents = tables_->find(key);
        if (dependents == nullptr || dependents->isEmpty()) {
            return false;
        }
        notification.copy(key, *dependents);
        tables_->link(notification);
    }
    for (std::size_t i = 0; i < notification.count(); ++i) {
        if (IUpdateTarget* dependent = notification.at(i)) {
            dependent->update(object, message);
        }
    }
    const FLockGuard guard(lock_);
    tables_->unlink(notification);
    return true;
}

FResult UpdateHandler::deferUpdates(IBaseUnknown* object, std::int32_t message) {
    const auto identity = identityOf(object);
    if (!identity) {
        return kResultFalse;
    }
    const FLockGuard guard(lock_);
    if (tables_->find(identity.get()) == nullptr) {
        tellDone(object, message);
    } else {
        tables_->deferred.append({identity.get(), message});
    }
    return kResultOk;
}

FResult UpdateHandler::cancelUpdates(IBaseUnknown* object) {
    const auto identity = identityOf(object);
    if (!identity) {
        return kResultFalse;
    }
    const FLockGuard guard(lock_);
    tables_->cancel(identity.get());
    return kResultOk;
}

FResult UpdateHandler::triggerDeferred(IBaseUnknown* object) {
    const auto identity = identityOf(object);
    if (object != nullptr && !identity) {
        return kResultFalse;
    }
    DeferredChanges later;
    {
        const FLockGuard guard(lock_);
        tables_->setAside.push_back(&later);
    }
    for (int told = 0; told < kMostChangesPerCall; ++told) {
        if (!tellNextDeferred(identity.get(), later)) {
            break;
        }
    }
    const FLockGuard guard(lock_);
    std::erase(tables_->setAside, &later);
    tables_->deferred.appendAll(later);
    return kResultOk;
}

// Whether there was one. What belongs to an object that is being notified right now isn't told but put into later.
bool UpdateHandler::tellNextDeferred(IBaseUnknown* object, DeferredChanges& later) {
    FRefPtr<IBaseUnknown> changed;
    std::int32_t message = 0;
    {
        const FLockGuard guard(lock_);
        const auto change = tables_->deferred.takeFirst(object);
        if (!change) {
            return false;
        }
        if (tables_->isRunning(change->object)) {
            later.append(*change);
            return true;
        }
        // Off the queue, nothing tells us any more when the object goes, so it must not go.
        changed = change->object;
        message = change->message;
    }
    triggerUpdates(changed.get(), message, false);
    return true;
}

std::int32_t UpdateHandler::countDependents(IBaseUnknown* object) {
    const auto identity = identityOf(object);
    const FLockGuard guard(lock_);
    if (object != nullptr) {
        const Dependents* dependents = identity ? tables_->find(identity.get()) : nullptr;
        return dependents != nullptr ? static_cast<std::int32_t>(dependents->count()) : 0;
    }
    std::size_t count = 0;
    for (const Tables::Map& map : tables_->maps) {
        for (const auto& entry : map) {
            count += entry.second.count();
        }
    }
    return static_cast<std::int32_t>(count);
}

} // namespace tessera
