#include "persistence/registry/FRegistryEntry.h"

#include "platform/RegistryValues.h"

#include <optional>
#include <string>

namespace tessera {

namespace {

std::u16string wideText(const FString& text) {
    return FString(text).text16();
}

} // namespace

CmObject* FRegistryEntry::clone() const {
    return new FRegistryEntry(*this);
}

bool FRegistryEntry::isEqual(const CmObject* other) const {
    const auto* entry = cmCast<FRegistryEntry>(other);
    return entry != nullptr && names(entry->key_, entry->valueName_) && hasText_ == entry->hasText_ &&
           text_ == entry->text_;
}

bool FRegistryEntry::names(const FStringRef& key, const FStringRef& valueName) const {
    return key_ == key && valueName_ == valueName;
}

void FRegistryEntry::setText(const FStringRef& text) {
    text_ = text;
    hasText_ = true;
}

void FRegistryEntry::clearText() {
    text_.clear();
    hasText_ = false;
}

void FRegistryEntry::take() {
    // What is there for all users isn't the user's: put back, it would become so.
    const std::optional<std::u16string> text =
        platform::readRegistryValue(wideText(key_), wideText(valueName_), platform::RegistryScope::user);
    if (text) {
        setText(FStringRef(text->data(), static_cast<std::int32_t>(text->size())));
    } else {
        clearText();
    }
}

bool FRegistryEntry::putBack() const {
    const std::u16string key = wideText(key_);
    const std::u16string name = wideText(valueName_);
    return hasText_ ? platform::writeRegistryValue(key, name, wideText(text_))
                    : platform::deleteRegistryValue(key, name);
}

} // namespace tessera
