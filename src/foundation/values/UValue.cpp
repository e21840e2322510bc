#include "foundation/values/UValue.h"

#include "foundation/messages/FMessage.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/values/CutToInteger.h"
#include "foundation/values/IValueObserver.h"
#include "foundation/values/UPlugTarget.h"

#include <string_view>

namespace tessera {
namespace {

IValueObserver* globalObserver = nullptr;
bool globalObserverOff = false;

} // namespace

UValue::UValue(const UValue& other)
    : CmClass(other),
      state_(other.state_),
      tag_(other.tag_),
      target_(other.target_),
      editFromUser_(other.editFromUser_) {
    if (target_ != nullptr && hasState(kOwnsTarget)) {
        target_->addRef();
    }
}

UValue::~UValue() {
    releaseTarget();
}

bool UValue::isTypeOf(const char* className, bool askBase) const {
    return CmClass::isTypeOf(className, askBase) ||
           (className != nullptr && std::string_view(className) == kBindingName);
}

UValue* UValue::clone() const {
    return new UValue(*this);
}

void UValue::setState(std::uint32_t bits, bool on) {
    state_ = on ? state_ | bits : state_ & ~bits;
}

void UValue::releaseTarget() {
    if (target_ != nullptr && hasState(kOwnsTarget)) {
        target_->release();
    }
    target_ = nullptr;
}

void UValue::setTarget(CmObject* target, std::uint32_t tag, bool own) {
    releaseTarget();
    target_ = target;
    setState(kOwnsTarget, own);
    setBracketTarget(cmCast<UPlugTarget>(target) != nullptr);
    setTag(tag);
}

void UValue::setTag(std::uint32_t tag) {
    tag_ = tag;
}

void UValue::setEnabled(bool on) {
    if (on != isEnabled()) {
        setState(kDisabled, !on);
        changed(kEnabledChanged);
    }
}

bool UValue::isEnabled() const {
    return !hasState(kDisabled);
}

bool UValue::isText() const {
    return false;
}

bool UValue::isFraction() const {
    return false;
}

bool UValue::isStepped() const {
    return true;
}

bool UValue::isEditable() const {
    return true;
}

std::int32_t UValue::limit(std::int32_t value) const {
    return value;
}

void UValue::setNormalized(double value) {
    const double minimum = getMinimum();
    setValue(cutToInteger(minimum + value * (getMaximum() - minimum)));
}

void UValue::setReport(bool on) {
    setState(kUnreported, !on);
}

void UValue::setWrap(bool on) {
    setState(kWraps, on);
}

void UValue::decrement() {
    if (getValue() > getMinimum()) {
        setValue(getValue() - 1);
    }
}

void UValue::increment() {
    if (getValue() < getMaximum()) {
        setValue(getValue() + 1);
    }
}

void UValue::copyValue(const UValue* other) {
    if (other != nullptr) {
        setValue(other->getValue());
    }
}

void UValue::toggle() {
    const bool permitted = checkChange();
    if (permitted) {
        beginEdit(true);
    }
    setValue(getValue() == 0 ? 1 : 0);
    if (permitted) {
        endEdit(true);
    }
}

void UValue::notify() {
    if (globalObserver != nullptr && !globalObserverOff && !hasState(kUnobserved)) {
        globalObserver->valueNotifies(*this);
    }
    if (target_ != nullptr) {
        target_->updateFrom(this, kNotified);
    }
}

// Tells a bracket target; forwarded when it is a plug target, whose owner then does all the rest.
UValue::Bracket UValue::tellBracket(const char* messageName, bool fromUser) {
    editFromUser_ = fromUser;
    if (!hasState(kBracketTarget) || target_ == nullptr) {
        return Bracket::told;
    }
    // The target may be another one when the message comes back.
    const bool plugTarget = cmCast<UPlugTarget>(target_) != nullptr;
    const auto message = FRefPtr<FMessage>::adopt(new FMessage(messageName));
    message->setObject("Value", static_cast<CmObject*>(this), false);
    target_->receiveMessage(message.get());
    return plugTarget ? Bracket::forwarded : Bracket::told;
}

void UValue::beginEdit(bool fromUser) {
    const Bracket bracket = tellBracket("BeginEdit", fromUser);
    if (checkChange() && bracket == Bracket::told) {
        notify();
    }
}

void UValue::endEdit(bool fromUser) {
    if (tellBracket("EndEdit", fromUser) == Bracket::forwarded) {
        return;
    }
    if (!hasState(kUncheckedEnd) && !checkChange()) {
        return;
    }
    // Whoever hears of it may let go of the value.
    const FRefPtr<UValue> self(this);
    const bool before = hasState(kEndFromUser);
    setState(kEndFromUser, fromUser);
    notify();
    setState(kEndFromUser, before);
}

bool UValue::isDisplay() const {
    return hasState(kDisplayOnly);
}

void UValue::setDisplay(bool on) {
    setState(kDisplayOnly, on);
}

void UValue::setValue(std::int32_t) {}

std::int32_t UValue::getValue() const {
    return 0;
}

std::int32_t UValue::getMinimum() const {
    return 0;
}

void UValue::setMinimum(std::int32_t) {}

std::int32_t UValue::getMaximum() const {
    return 0;
}

void UValue::setMaximum(std::int32_t) {}

std::int32_t UValue::getDefault() const {
    return 0;
}

void UValue::setDefault(std::int32_t) {}

bool UValue::getString(FString&) const {
    return false;
}

bool UValue::setString(const FStringRef&) {
    return false;
}

bool UValue::checkChange() {
    return true;
}

void UValue::applyChange() {}

void UValue::setGlobalObserver(IValueObserver* observer) {
    globalObserver = observer;
}

void UValue::setGlobalObserverOff(bool off) {
    globalObserverOff = off;
}

} // namespace tessera
