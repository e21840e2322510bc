// FPostedMessage: a message on its way, with whom it is for and how many rounds it has to wait. It holds a reference of
// the message and none of the receiver.
#pragma once

#include "foundation/messages/FMessage.h"
#include "foundation/messages/MessageReceiver.h"

namespace tessera {

class FPostedMessage final : public CmClass<FPostedMessage, CmObject> {
public:
    static FMetaClass metaClass;

    // Takes the caller's reference of the message over.
    FPostedMessage(FMessage* message, const MessageReceiver& receiver, std::int32_t delay);

    FMessage* getMessage() const { return message_.get(); }
    const MessageReceiver& getReceiver() const { return receiver_; }
    // Whether this round delivers the message; if not, one round less remains to wait.
    bool isDue();
    // Null stands for any target, respectively any name.
    bool fits(const IBaseUnknown* identity, const FStringRef& name) const;

private:
    FRefPtr<FMessage> message_;
    MessageReceiver receiver_;
    std::int32_t delay_;
};

} // namespace tessera
