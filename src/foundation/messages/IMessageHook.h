// IMessageHook: sees each delivery to a named target before the target does, when the sender asked for it.
#pragma once

namespace tessera {

class FMessage;
struct IBaseUnknown;

class IMessageHook {
public:
    // On the sender's thread, with no lock held. Everything is borrowed for the call.
    virtual void beforeDelivery(const char* name, IBaseUnknown* target, FMessage* message) = 0;

protected:
    ~IMessageHook() = default;
};

} // namespace tessera
