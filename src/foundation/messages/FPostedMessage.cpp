#include "foundation/messages/FPostedMessage.h"

namespace tessera {

FPostedMessage::FPostedMessage(FMessage* message, const MessageReceiver& receiver, std::int32_t delay)
    : message_(FRefPtr<FMessage>::adopt(message)), receiver_(receiver), delay_(delay) {}

bool FPostedMessage::isDue() {
    if (delay_ < 1) {
        return true;
    }
    --delay_;
    return false;
}

bool FPostedMessage::fits(const IBaseUnknown* identity, const FStringRef& name) const {
    return (identity == nullptr || identity == receiver_.identity) &&
           (name.isNull() || message_->getNameText() == name);
}

} // namespace tessera
