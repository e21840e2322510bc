// FPostedMessage: a message on its way, with whom it is for and how many rounds it has to wait. It holds a reference of
// the message and none of the target.
#pragma once

#include "foundation/messages/FMessage.h"

namespace tessera {

class FPostedMessage final : public CmClass<FPostedMessage, CmObject> {
public:
    static FMetaClass metaClass;

    // Takes the caller's reference of the message over.
    FPostedMessage(FMessage* message, IBaseUnknown* target, std::int32_t delay);

    FMessage* getMessage() const { return message_.get(); }
    IBaseUnknown* getTarget() const { return target_; }
    // Whether this round delivers the message; if not, one round less remains to wait.
    bool isDue();
    // Null stands for any target, respectively any name.
    bool fits(const IBaseUnknown* target, const FStringRef& name) const;

private:
    FRefPtr<FMessage> message_;
    IBaseUnknown* target_;
    std::int32_t delay_;
};

} // namespace tessera
