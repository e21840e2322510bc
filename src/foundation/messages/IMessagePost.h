// IMessagePost: the post office for other modules; the interface of FMessenger. Any thread may call it.
//
// target is a bare pointer to any object: posting takes no reference. Whoever is posted to removes its messages before
// it goes.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IMessagePost : IBaseUnknown {
    static constexpr FUIDBytes iid = "{C3BB1A7E-4A00-42AB-9514-3F8E6042499D}"_uid;

    // The post office takes a reference of its own. Nothing happens unless the message is an FMessage of this module.
    virtual void post(IBaseUnknown* target, IBaseUnknown* message) = 0;
    // Of that name, or all of them for a null name. Waits for a round of delivery on another thread to end.
    virtual void removeMessages(IBaseUnknown* target, const char* name) = 0;
    // Whether such a message waits for delivery; null means any target, respectively any name.
    virtual bool hasMessages(IBaseUnknown* target, const char* name) = 0;

protected:
    ~IMessagePost() = default;
};

} // namespace tessera
