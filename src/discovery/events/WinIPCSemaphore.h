// WinIPCSemaphore: the named event behind IIPCSemaphore. Each user has an object of its own; the object has no lock.
#pragma once

#include "discovery/events/IIPCSemaphore.h"
#include "foundation/object/CmClass.h"
#include "platform/NamedEvent.h"

namespace tessera {

class FMetaClass;

class WinIPCSemaphore : public FImplements<FObject, IIPCSemaphore> {
public:
    static FMetaClass metaClass;

    const char* getClassName() const override;
    bool isTypeOf(const char* className, bool askBase) const override;

    // A further create leaves the event that was there open, for as long as the process lives.
    FResult create(const char* name) override;
    bool signal() override;
    bool wait() override;

private:
    platform::NamedEvent event_;
};

} // namespace tessera
