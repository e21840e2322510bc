#include "persistence/xml/FXmlAttributeList.h"

#include <algorithm>
#include <utility>

namespace tessera {

const FXmlAttribute* FXmlAttributeList::find(std::string_view name) const {
    for (const FXmlAttribute& attribute : *this) {
        if (attribute.nameView() == name) {
            return &attribute;
        }
    }
    return nullptr;
}

const FString* FXmlAttributeList::valueOf(std::string_view name) const {
    const FXmlAttribute* attribute = find(name);
    return attribute != nullptr ? &attribute->getValue() : nullptr;
}

void FXmlAttributeList::add(FRefPtr<FXmlAttribute> attribute) {
    FXmlAttribute* added = attribute.detach();
    added->next_ = nullptr;
    (last_ != nullptr ? last_->next_ : first_) = added;
    last_ = added;
    ++count_;
}

void FXmlAttributeList::add(const FStringRef& name, const FStringRef& value) {
    add(FRefPtr<FXmlAttribute>::adopt(new FXmlAttribute(name, value)));
}

FRefPtr<FXmlAttribute> FXmlAttributeList::takeFirst() {
    FXmlAttribute* taken = first_;
    if (taken == nullptr) {
        return nullptr;
    }
    first_ = std::exchange(taken->next_, nullptr);
    last_ = first_ != nullptr ? last_ : nullptr;
    --count_;
    return FRefPtr<FXmlAttribute>::adopt(taken);
}

void FXmlAttributeList::clear() {
    while (!isEmpty()) {
        takeFirst();
    }
}

void FXmlAttributeList::dropShared() {
    const auto isShared = [](const FXmlAttribute& attribute) { return attribute.getReferenceCount() > 1; };
    if (std::none_of(begin(), end(), isShared)) {
        return;
    }
    FXmlAttributeList kept;
    while (FRefPtr<FXmlAttribute> attribute = takeFirst()) {
        if (attribute->getReferenceCount() == 1) {
            kept.add(std::move(attribute));
        }
    }
    prepend(kept);
}

void FXmlAttributeList::prepend(FXmlAttributeList& other) {
    if (other.isEmpty()) {
        return;
    }
    other.last_->next_ = first_;
    first_ = std::exchange(other.first_, nullptr);
    last_ = last_ != nullptr ? last_ : other.last_;
    other.last_ = nullptr;
    count_ += std::exchange(other.count_, 0);
}

} // namespace tessera
