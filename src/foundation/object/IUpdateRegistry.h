// IUpdateRegistry: who depends on whom, for any object with an identity; the first interface of UpdateHandler.
//
// Neither the object nor the dependent is referenced: whoever entered one takes it out again before it dies. Any thread
// may call any operation.
#pragma once

#include "foundation/object/IUpdateTarget.h"

namespace tessera {

struct IUpdateRegistry : IBaseUnknown {
    static constexpr FUIDBytes iid = "{F5246D56-8654-4D60-B026-AFB57B697B37}"_uid;

    // A dependent added twice is told twice. kResultFalse when either is null or the object answers to no identity.
    virtual FResult addDependent(IBaseUnknown* object, IUpdateTarget* dependent) = 0;
    // Takes every occurrence out, also from a notification that is running. A null object means the dependent's places
    // with all objects, a null dependent all dependents of the object. kResultFalse when both are null.
    virtual FResult removeDependent(IBaseUnknown* object, IUpdateTarget* dependent) = 0;
    // Tells all dependents now, on the calling thread, then asks the object to updateDone unless keepDone is set or the
    // message is kObjectDestroyed. kResultOk when there was somebody to tell, else kResultFalse.
    virtual FResult triggerUpdates(IBaseUnknown* object, std::int32_t message, bool keepDone) = 0;
    // Queues the change for the next round of the idle task; a pair that is queued already isn't queued again. An
    // object without dependents gets its updateDone at once.
    virtual FResult deferUpdates(IBaseUnknown* object, std::int32_t message) = 0;

protected:
    ~IUpdateRegistry() = default;
};

} // namespace tessera
