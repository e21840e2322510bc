#include "persistence/attributes/FAttributes.h"

#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmBuffer.h"
#include "persistence/attributes/FAttrBuffer.h"
#include "persistence/attributes/FXmlObject.h"
#include "persistence/attributes/FloatToInteger.h"

#include <utility>
#include <vector>

namespace tessera {

using namespace AttributeBits;

namespace {

constexpr std::int32_t kGrowth = 10;

// A list of records can hold trees that hold lists of records and so on, as deep as a document was nested. Down to a
// few levels each goes with the tree around it, while it is still in the cache; what lies deeper waits for the
// outermost.
constexpr int kLevelsAtOnce = 8;

struct Going {
    int level = 0;
    std::vector<CmArray*> waiting;
};

// What goes on this thread, if something does.
thread_local Going* going = nullptr;

void releaseRecords(CmArray* records) {
    if (going != nullptr && going->level == kLevelsAtOnce) {
        going->waiting.push_back(records);
        return;
    }
    if (going != nullptr) {
        ++going->level;
        records->release();
        --going->level;
        return;
    }
    Going outermost;
    going = &outermost;
    records->release();
    while (!outermost.waiting.empty()) {
        CmArray* next = outermost.waiting.back();
        outermost.waiting.pop_back();
        next->release();
    }
    going = nullptr;
}

// Nearly all names are 8-bit, and most differ in their length already.
bool isName(const FStringRef& key, const FStringRef& name) {
    return key.isWide() || name.isWide() ? key == name : key.view8() == name.view8();
}

} // namespace

FAttributes::FAttributes(const FAttributes& other) : CmClass(other) {
    other.storeAttributes(*this);
}

FAttributes::~FAttributes() {
    removeAll();
}

void FAttributes::removeAll() {
    if (CmArray* records = std::exchange(records_, nullptr)) {
        releaseRecords(records);
    }
}

std::int32_t FAttributes::getCount() const {
    return records_ != nullptr ? records_->getCount() : 0;
}

FStringIDAttribute* FAttributes::at(std::int32_t index) const {
    return records_ != nullptr ? static_cast<FStringIDAttribute*>(records_->at(index)) : nullptr;
}

FStringIDAttribute* FAttributes::find(const FStringRef& name) const {
    const std::int32_t end = getCount();
    for (std::int32_t i = 0; i < end; ++i) {
        FStringIDAttribute* record = at(i);
        if (isName(record->getKey(), name)) {
            return record;
        }
    }
    return nullptr;
}

bool FAttributes::reserve(std::int32_t count) {
    if (records_ == nullptr) {
        records_ = new CmArray(0, kGrowth);
        records_->setOwnership(CmOwnership::owner);
    }
    return records_->reserve(count);
}

bool FAttributes::append(FStringIDAttribute* record) {
    const bool hasRoom = records_ != nullptr || reserve(kGrowth);
    if (!hasRoom || !records_->add(record)) {
        record->release();
        return false;
    }
    return true;
}

FStringIDAttribute* FAttributes::obtain(const FStringRef& name, std::uint16_t flags) {
    if ((flags & AttributeFlags::kAppend) == 0) {
        if (FStringIDAttribute* present = find(name)) {
            return present;
        }
    }
    auto* record = new FStringIDAttribute(name, KeyHolding::copied, flags);
    return append(record) ? record : nullptr;
}

bool FAttributes::setInt(const FStringRef& name, std::int64_t value, std::uint16_t flags) {
    FStringIDAttribute* record = obtain(name, flags);
    if (record == nullptr) {
        return false;
    }
    record->setInt(value);
    return true;
}

bool FAttributes::setFloat(const FStringRef& name, double value, std::uint16_t flags) {
    FStringIDAttribute* record = obtain(name, flags);
    if (record == nullptr) {
        return false;
    }
    record->setFloat(value);
    return true;
}

bool FAttributes::setString(const FStringRef& name, const FStringRef& text, std::uint16_t flags) {
    FStringIDAttribute* record = obtain(name, flags);
    if (record == nullptr) {
        return false;
    }
    record->setText(text);
    return true;
}

bool FAttributes::setObject(const FStringRef& name, CmObject* object, AttributeHolding holding, std::uint16_t flags) {
    // Held until it stands in the record: it may be what the present value alone keeps alive.
    auto keep = holding == AttributeHolding::owned ? FRefPtr<CmObject>::adopt(object) : FRefPtr<CmObject>(object);
    FStringIDAttribute* record = obtain(name, flags);
    if (record == nullptr) {
        return false;
    }
    // A record that has the object already would keep it as it held it before.
    record->clear();
    record->setObject(object, static_cast<std::uint16_t>(holding));
    if (holding == AttributeHolding::owned) {
        static_cast<void>(keep.detach());
    }
    return true;
}

bool FAttributes::setBinary(const FStringRef& name, const void* data, std::int32_t size, BinaryHolding holding,
                            std::uint16_t flags) {
    if (size < 0 || (data == nullptr && size > 0)) {
        return false;
    }
    if (holding == BinaryHolding::byReference) {
        return setObject(name, new FAttrBuffer(data, size), AttributeHolding::owned, flags);
    }
    auto copy = FRefPtr<CmBuffer>::adopt(new CmBuffer);
    if (size > 0 && !copy->append(data, size)) {
        return false;
    }
    return setObject(name, copy.detach(), AttributeHolding::owned, flags);
}

bool FAttributes::setAttributes(const FStringRef& name, const CmObject& object, std::uint16_t flags) {
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    return object.storeAttributes(*tree) && setObject(name, tree.detach(), AttributeHolding::owned, flags);
}

bool FAttributes::getInt(const FStringRef& name, std::int64_t& out) const {
    const FStringIDAttribute* record = find(name);
    if (record == nullptr) {
        return false;
    }
    if (record->hasType(kFloat)) {
        out = integerFromFloat(record->getFloat());
        return true;
    }
    if (record->hasType(kInteger)) {
        out = record->getInt();
        return true;
    }
    return record->getText().getInt64(out, 0, FNumberSearch::ahead);
}

bool FAttributes::getFloat(const FStringRef& name, double& out) const {
    const FStringIDAttribute* record = find(name);
    if (record == nullptr) {
        return false;
    }
    if (record->hasType(kInteger)) {
        out = static_cast<double>(record->getInt());
        return true;
    }
    if (record->hasType(kFloat)) {
        out = record->getFloat();
        return true;
    }
    return record->getText().getFloat(out, 0, FNumberSearch::ahead);
}

bool FAttributes::getString(const FStringRef& name, FString& out) const {
    const FStringIDAttribute* record = find(name);
    return record != nullptr && record->hasType(kText) && out.assign(record->getText());
}

CmObject* FAttributes::getObject(const FStringRef& name) const {
    const FStringIDAttribute* record = find(name);
    return record != nullptr ? FXmlObject::resolve(record->getObject()) : nullptr;
}

bool FAttributes::getBinary(const FStringRef& name, FBinaryView& out) const {
    const FStringIDAttribute* record = find(name);
    return record != nullptr && FBinaryView::of(record->getObject(), out);
}

std::int32_t FAttributes::getBinarySize(const FStringRef& name) const {
    FBinaryView bytes;
    return getBinary(name, bytes) ? bytes.size : -1;
}

FAttributes* FAttributes::getTree(const FStringRef& name) const {
    const FStringIDAttribute* record = find(name);
    return record != nullptr ? cmCast<FAttributes>(record->getObject()) : nullptr;
}

bool FAttributes::getAttributesInto(const FStringRef& name, CmObject& object) const {
    FAttributes* tree = getTree(name);
    return tree != nullptr && object.restoreAttributes(*tree);
}

bool FAttributes::remove(const FStringRef& name) {
    FStringIDAttribute* record = find(name);
    return record != nullptr && records_->removeAt(records_->indexOfInstance(record));
}

bool FAttributes::storeAttributes(FAttributes& attributes) const {
    // Counted once: the other tree may be this one.
    const std::int32_t end = getCount();
    if (end > 0 && !attributes.reserve(attributes.getCount() + end)) {
        return false;
    }
    for (std::int32_t i = 0; i < end; ++i) {
        if (!attributes.append(at(i)->clone())) {
            return false;
        }
    }
    return true;
}

bool FAttributes::restoreAttributes(FAttributes& attributes) {
    return attributes.storeAttributes(*this);
}

FAttributes* FAttributes::clone() const {
    return new FAttributes(*this);
}

} // namespace tessera
