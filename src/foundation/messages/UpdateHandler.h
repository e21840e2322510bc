// UpdateHandler: the process-wide registry of who depends on whom, and the queue of changes that are told later.
//
// An object is known by its identity, what it gives for IBaseUnknown, so two interfaces of one object count as one.
// Neither objects nor dependents are referenced while they are entered. Any thread may call any operation; dependents
// are called with no lock held, on the thread of triggerUpdates or triggerDeferred. updateDone out of deferUpdates runs
// under the lock.
//
// Limits: up to 1,024 dependents are told without any heap memory. Beyond that a block of 10,240 is used, and
// dependents beyond that number aren't told. One call of triggerDeferred tells at most 65,536 changes, chains that grow
// while it runs included; the rest waits for the next.
#pragma once

#include "foundation/messages/IDeferredUpdates.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/IUpdateRegistry.h"
#include "foundation/threads/FLock.h"

#include <memory>

namespace tessera {

class DeferredChanges;

class UpdateHandler : public FImplements<FObject, IUpdateRegistry, IDeferredUpdates> {
public:
    // Borrowed. Null at the end of the process, once the singleton list has gone down.
    static UpdateHandler* getInstance(bool create);

    UpdateHandler();
    UpdateHandler(const UpdateHandler&) = delete;
    UpdateHandler& operator=(const UpdateHandler&) = delete;
    ~UpdateHandler() override;
    const char* getClassName() const override;
    bool isTypeOf(const char* className, bool askBase) const override;

    using FObject::addDependent;
    using FObject::removeDependent;
    FResult addDependent(IBaseUnknown* object, IUpdateTarget* dependent) override;
    FResult removeDependent(IBaseUnknown* object, IUpdateTarget* dependent) override;
    FResult triggerUpdates(IBaseUnknown* object, std::int32_t message, bool keepDone) override;
    FResult deferUpdates(IBaseUnknown* object, std::int32_t message) override;
    FResult cancelUpdates(IBaseUnknown* object) override;
    FResult triggerDeferred(IBaseUnknown* object) override;

    // The entries of one object, of all objects for null.
    std::int32_t countDependents(IBaseUnknown* object);

private:
    class Tables;

    bool notify(IBaseUnknown* key, IBaseUnknown* object, std::int32_t message);
    bool tellNextDeferred(IBaseUnknown* object, DeferredChanges& later);

    FLock lock_{"FLock"};
    std::unique_ptr<Tables> tables_;
};

} // namespace tessera
