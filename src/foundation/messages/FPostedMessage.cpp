#include "foundation/messages/FPostedMessage.h"

namespace tessera {

FPostedMessage::FPostedMessage(FMessage* message, IBaseUnknown* target, std::int32_t delay)
    : message_(FRefPtr<FMessage>::adopt(message)), target_(target), delay_(delay) {}

bool FPostedMessage::isDue() {
    if (delay_ < 1) {
        return true;
    }
    --delay_;
    return false;
}

bool FPostedMessage::fits(const IBaseUnknown* target, const FStringRef& name) const {
    return (target == nullptr || target == target_) && (name.isNull() || message_->getNameText() == name);
}

} // namespace tessera
