#include "appservices/defaults/FDefaults.h"

#include "appservices/defaults/StorableText.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FXmlObject.h"
#include "persistence/attributes/FloatToInteger.h"
#include "persistence/objects/FKeptNames.h"

namespace tessera {

using namespace AttributeBits;

namespace {

constexpr const char* kGroup = "Group";
constexpr const char* kVersion = "Version";
constexpr const char* kValues = "Values";

bool isPlain(const FStringRef& key) {
    return key.isWide() || key.isAscii();
}

} // namespace

FDefaults::FDefaults(const FStringRef& groupName, std::int32_t version) : version_(version) {
    setGroupName(groupName);
}

void FDefaults::setGroupName(const FStringRef& name) {
    groupName_ = name;
    if (groupName_.isWide()) {
        static_cast<void>(groupName_.toMultiByte());
    }
}

FStringIDAttribute* FDefaults::at(std::int32_t index) const {
    return values_ ? static_cast<FStringIDAttribute*>(values_->at(index)) : nullptr;
}

FStringIDAttribute* FDefaults::find(const FStringRef& key) const {
    return isPlain(key) ? findForm(key) : findForm(storableForm(key));
}

FStringIDAttribute* FDefaults::findForm(const FStringRef& key) const {
    if (!values_ || key.isEmpty()) {
        return nullptr;
    }
    // Points at the key, which outlives it.
    const FStringIDAttribute wanted(key, KeyHolding::constant);
    return static_cast<FStringIDAttribute*>(values_->find(&wanted));
}

FStringIDAttribute* FDefaults::obtain(const FStringRef& key) {
    if (FStringIDAttribute* value = find(key)) {
        return value;
    }
    const FString form = storableForm(key);
    if (!isStorableKey(form)) {
        return nullptr;
    }
    makeValues();
    // Many groups have the same keys, mostly.
    const FStringRef kept = FKeptNames::find(form.view8());
    auto value = FRefPtr<FStringIDAttribute>::adopt(kept.isNull() ? new FStringIDAttribute(form)
                                                                  : new FStringIDAttribute(kept, KeyHolding::constant));
    return values_->add(value.get()) ? value.detach() : nullptr;
}

void FDefaults::makeValues() {
    if (!values_) {
        values_ = FRefPtr<CmOrderedArray>::adopt(new CmOrderedArray);
        values_->setOwnership(CmOwnership::owner);
    }
}

bool FDefaults::setInt(const FStringRef& key, std::int64_t value) {
    FStringIDAttribute* record = obtain(key);
    if (record != nullptr) {
        record->setInt(value);
    }
    return record != nullptr;
}

bool FDefaults::setFloat(const FStringRef& key, double value) {
    FStringIDAttribute* record = obtain(key);
    if (record != nullptr) {
        record->setFloat(value);
    }
    return record != nullptr;
}

bool FDefaults::setString(const FStringRef& key, const FStringRef& text) {
    const FString form = storableForm(text);
    FStringIDAttribute* record = isStorableText(form) ? obtain(key) : nullptr;
    if (record != nullptr) {
        record->setText(form);
    }
    return record != nullptr;
}

bool FDefaults::setObject(const FStringRef& key, CmObject* object) {
    if (object == nullptr) {
        remove(key);
        return !key.isEmpty();
    }
    FStringIDAttribute* record = obtain(key);
    if (record != nullptr) {
        record->setObject(object, kByReference);
    }
    return record != nullptr;
}

bool FDefaults::getInt(const FStringRef& key, std::int64_t& value) const {
    const FStringIDAttribute* record = find(key);
    if (record == nullptr) {
        return false;
    }
    if (record->hasType(kInteger)) {
        value = record->getInt();
        return true;
    }
    if (record->hasType(kFloat)) {
        value = integerFromFloat(record->getFloat());
        return true;
    }
    return record->getText().getInt64(value, 0, FNumberSearch::ahead);
}

bool FDefaults::getFloat(const FStringRef& key, double& value) const {
    const FStringIDAttribute* record = find(key);
    if (record == nullptr) {
        return false;
    }
    if (record->hasType(kFloat)) {
        value = record->getFloat();
        return true;
    }
    if (record->hasType(kInteger)) {
        value = static_cast<double>(record->getInt());
        return true;
    }
    return record->getText().getFloat(value, 0, FNumberSearch::ahead);
}

bool FDefaults::getString(const FStringRef& key, FString& text) const {
    const FStringIDAttribute* record = find(key);
    return record != nullptr && record->hasType(kText) && text.assign(record->getText());
}

CmObject* FDefaults::getObject(const FStringRef& key, const char* className) const {
    const FStringIDAttribute* record = find(key);
    CmObject* object = record != nullptr ? FXmlObject::resolve(record->getObject()) : nullptr;
    return object != nullptr && (className == nullptr || object->isTypeOf(className, true)) ? object : nullptr;
}

bool FDefaults::remove(const FStringRef& key) {
    FStringIDAttribute* record = find(key);
    return record != nullptr && values_->remove(record);
}

bool FDefaults::storeAttributes(FAttributes& attributes) const {
    if (!attributes.setString(kGroup, storableForm(groupName_)) ||
        (version_ != kNoVersion && !attributes.setInt(kVersion, version_))) {
        return false;
    }
    return isEmpty() || attributes.exportAdditional(*values_, kValues);
}

bool FDefaults::restoreAttributes(FAttributes& attributes) {
    FString name;
    if (attributes.getString(kGroup, name)) {
        setGroupName(name);
    }
    std::int64_t version = version_;
    if (attributes.getInt(kVersion, version)) {
        version_ = static_cast<std::int32_t>(version);
    }
    makeValues();
    attributes.importAdditional(*values_, FAttributes::AdditionalKeys::texts, FAttributes::AdditionalPresent::kept,
                                kValues);
    bringKeysIntoForm();
    dropUnstorable();
    return true;
}

// Documents give names in 8 bits. Beyond ASCII the two widths sort differently, and the look-up goes by order.
void FDefaults::bringKeysIntoForm() {
    bool changed = false;
    for (std::int32_t i = 0; i < getCount(); ++i) {
        FStringIDAttribute* record = at(i);
        if (!isPlain(record->getKey())) {
            record->setKey(storableForm(record->getKey()));
            changed = true;
        }
    }
    if (changed) {
        values_->sort();
    }
}

// A file that was made elsewhere may spell a text shorter than it will be written here, and would be unreadable after
// the next save.
void FDefaults::dropUnstorable() {
    for (std::int32_t i = getCount() - 1; i >= 0; --i) {
        const FStringIDAttribute* record = at(i);
        if (!isStorableKey(record->getKey()) || !isStorableText(record->getText())) {
            values_->removeAt(i);
        }
    }
}

} // namespace tessera
