#include "foundation/messages/FMessage.h"

#include "foundation/containers/CmOrderedArray.h"

namespace tessera {
namespace {

// Values of higher types aren't copied with a message: foreign objects, pointers, raw 16-bit texts, and whatever is
// marked local or hidden.
constexpr std::uint16_t kTypesNotCopied = 128;

} // namespace

FMessage::FMessage(const FStringRef& name) : name_(name) {}

FMessage::FMessage(const FMessage& other) : CmClass(other), name_(other.name_) {
    for (std::int32_t i = 0; i < other.getAttributeCount(); ++i) {
        const FStringIDAttribute* attribute = other.attributeAt(i);
        if (attribute->getType() < kTypesNotCopied) {
            addAttribute(attribute->clone());
        }
    }
}

FMessage::~FMessage() = default;

std::int32_t FMessage::getAttributeCount() const {
    return attributes_ ? attributes_->getCount() : 0;
}

FStringIDAttribute* FMessage::attributeAt(std::int32_t index) const {
    return static_cast<FStringIDAttribute*>(attributes_->at(index));
}

// The first place whose key doesn't sort before this one.
std::int32_t FMessage::lowerBound(const FStringRef& key) const {
    std::int32_t first = 0;
    std::int32_t end = getAttributeCount();
    while (first < end) {
        const std::int32_t middle = first + (end - first) / 2;
        if (attributeAt(middle)->getKey().compare(key) < 0) {
            first = middle + 1;
        } else {
            end = middle;
        }
    }
    return first;
}

FStringIDAttribute* FMessage::find(const FStringRef& key) const {
    const std::int32_t index = lowerBound(key);
    if (index == getAttributeCount()) {
        return nullptr;
    }
    FStringIDAttribute* attribute = attributeAt(index);
    return attribute->getKey() == key ? attribute : nullptr;
}

// Takes the caller's reference over, whether there is room or not.
bool FMessage::addAttribute(FStringIDAttribute* attribute) {
    if (!attributes_) {
        attributes_ = FRefPtr<CmOrderedArray>::adopt(new CmOrderedArray);
        attributes_->setOwnership(CmOwnership::owner);
    }
    if (attributes_->add(attribute)) {
        return true;
    }
    attribute->release();
    return false;
}

FStringIDAttribute* FMessage::obtain(const FStringRef& key, KeyHolding holding, std::uint16_t flags) {
    if (FStringIDAttribute* present = find(key)) {
        return present;
    }
    auto* attribute = new FStringIDAttribute(key, holding, flags);
    return addAttribute(attribute) ? attribute : nullptr;
}

bool FMessage::isMessage(const char* name) {
    return name_ == FStringRef(name);
}

const char* FMessage::getName() {
    return name_.text8();
}

void FMessage::setName(const char* name) {
    name_ = name;
}

FResult FMessage::setInt(const char* key, std::int64_t value) {
    FStringIDAttribute* attribute = obtain(key);
    if (attribute == nullptr) {
        return kResultFailure;
    }
    attribute->setInt(value);
    return kResultOk;
}

FResult FMessage::setFloat(const char* key, double value) {
    FStringIDAttribute* attribute = obtain(key);
    if (attribute == nullptr) {
        return kResultFailure;
    }
    attribute->setFloat(value);
    return kResultOk;
}

FResult FMessage::setString(const char* key, const char* text) {
    FStringIDAttribute* attribute = obtain(key);
    if (attribute == nullptr) {
        return kResultFailure;
    }
    attribute->setString8(text);
    return kResultOk;
}

FResult FMessage::setPointer(const char* key, void* pointer) {
    FStringIDAttribute* attribute = obtain(key);
    if (attribute == nullptr) {
        return kResultFailure;
    }
    attribute->setPointer(pointer);
    return kResultOk;
}

FResult FMessage::getInt(const char* key, std::int64_t* out) {
    const FStringIDAttribute* attribute = find(key);
    if (attribute == nullptr) {
        return kResultFalse;
    }
    *out = attribute->getInt();
    return kResultOk;
}

FResult FMessage::getFloat(const char* key, double* out) {
    const FStringIDAttribute* attribute = find(key);
    if (attribute == nullptr) {
        return kResultFalse;
    }
    *out = attribute->getFloat();
    return kResultOk;
}

FResult FMessage::getString(const char* key, const char** out) {
    FStringIDAttribute* attribute = find(key);
    if (attribute == nullptr) {
        return kResultFalse;
    }
    *out = attribute->getString8();
    return kResultOk;
}

FResult FMessage::getString16(const char* key, const char16_t** out) {
    FStringIDAttribute* attribute = find(key);
    if (attribute == nullptr) {
        return kResultFalse;
    }
    *out = attribute->getString16();
    return kResultOk;
}

FResult FMessage::getPointer(const char* key, void** out) {
    const FStringIDAttribute* attribute = find(key);
    if (attribute == nullptr) {
        return kResultFalse;
    }
    *out = attribute->getPointer();
    return kResultOk;
}

FResult FMessage::setObject(const char* key, IBaseUnknown* object, bool own) {
    if (object == nullptr) {
        return remove(key);
    }
    FStringIDAttribute* attribute = obtain(key);
    if (attribute == nullptr) {
        return kResultFailure;
    }
    if (own) {
        // The reference that comes is taken even if the object is there already.
        attribute->clear();
    }
    const std::uint16_t holding = own ? AttributeBits::kOwned : AttributeBits::kByReference;
    if (CmObject* ours = asCmObject(object)) {
        attribute->setObject(ours, holding);
    } else {
        attribute->setForeign(object, holding);
    }
    return kResultOk;
}

FResult FMessage::getObject(const char* key, IBaseUnknown** out) {
    const FStringIDAttribute* attribute = find(key);
    if (attribute == nullptr) {
        return kResultFalse;
    }
    CmObject* ours = attribute->getObject();
    *out = ours != nullptr ? ours : attribute->getForeign();
    return kResultOk;
}

FResult FMessage::remove(const char* key) {
    FStringIDAttribute* attribute = find(key);
    return attribute != nullptr && attributes_->removeAt(lowerBound(key)) ? kResultOk : kResultFalse;
}

bool FMessage::has(const char* key) {
    return find(key) != nullptr;
}

std::int64_t FMessage::getInt(const FStringRef& key) const {
    const FStringIDAttribute* attribute = find(key);
    return attribute != nullptr ? attribute->getInt() : 0;
}

double FMessage::getFloat(const FStringRef& key) const {
    const FStringIDAttribute* attribute = find(key);
    return attribute != nullptr ? attribute->getFloat() : 0;
}

const char* FMessage::getString(const FStringRef& key) const {
    FStringIDAttribute* attribute = find(key);
    return attribute != nullptr ? attribute->getString8() : nullptr;
}

const char16_t* FMessage::getString16(const FStringRef& key) const {
    FStringIDAttribute* attribute = find(key);
    return attribute != nullptr ? attribute->getString16() : nullptr;
}

CmObject* FMessage::getObject(const FStringRef& key) const {
    const FStringIDAttribute* attribute = find(key);
    return attribute != nullptr ? attribute->getObject() : nullptr;
}

void* FMessage::getPointer(const FStringRef& key) const {
    const FStringIDAttribute* attribute = find(key);
    return attribute != nullptr ? attribute->getPointer() : nullptr;
}

FMessage* FMessage::clone() const {
    return new FMessage(*this);
}

} // namespace tessera
