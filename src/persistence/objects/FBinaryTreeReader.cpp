#include "persistence/objects/FBinaryTreeReader.h"

#include "foundation/object/ClassFactory.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/objects/BinaryForm.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/streams/FMemoryStream.h"

#include <algorithm>

namespace tessera {

using namespace AttributeBits;

namespace {

constexpr std::int32_t kUnknownClass = -98;
// Room that a tree gets ahead of the first records; later it gets as much again as has really come.
constexpr std::int32_t kTrustedRecords = 32;

// Before the record with this index: room in few steps, so that a long tree isn't moved for every ten records.
bool makeRoom(FAttributes& tree, std::int32_t index, std::int32_t count) {
    const bool isStep = index == 0 || (index >= kTrustedRecords && (index & (index - 1)) == 0);
    return !isStep || tree.reserve(tree.getCount() + std::min(count - index, std::max(index, kTrustedRecords)));
}

bool isKnownClass(const FString& name) {
    const ClassFactory* registry = ClassFactory::getInstance(false);
    const FMetaClass* record = registry != nullptr ? registry->findByName(name.text8()) : nullptr;
    return record != nullptr && record->getFactory() != nullptr;
}

} // namespace

bool loadBinary(FStream& stream, FAttributes& objects, FAttributes& trees) {
    return FBinaryTreeReader(stream).readDocument(objects, trees);
}

FBinaryTreeReader::~FBinaryTreeReader() = default;

bool FBinaryTreeReader::readDocument(FAttributes& objects, FAttributes& trees) {
    const bool complete = readRecords(objects, &FBinaryTreeReader::readObjectRoot) &&
                          readRecords(trees, &FBinaryTreeReader::readTreeRoot);
    if (complete) {
        resolve();
    }
    return complete;
}

bool FBinaryTreeReader::readSingleTree(FAttributes& tree) {
    if (!readTree(tree)) {
        return false;
    }
    resolve();
    return true;
}

void FBinaryTreeReader::resolve() {
    for (const auto& reference : references_) {
        const auto found = instances_.find(reference->getID());
        if (found != instances_.end()) {
            reference->setTarget(found->second.get());
        }
    }
}

bool FBinaryTreeReader::readCount(std::int32_t& count) {
    return stream_.readInt32(count) && count >= 0;
}

template <class ReadElement>
bool FBinaryTreeReader::readElements(ReadElement readElement) {
    std::int32_t count = 0;
    bool complete = readCount(count);
    for (; complete && count > 0; --count) {
        complete = readElement();
    }
    return complete;
}

bool FBinaryTreeReader::readObjectRoot(FAttributes& objects) {
    FString name;
    std::uint64_t id = 0;
    if (!name.readString(stream_) || !stream_.readUInt64(id)) {
        return false;
    }
    Value object;
    if (!instances_.contains(id) && !readObjectRecord(object)) {
        return false;
    }
    return objects.setObject(name, newReference(id).get(), AttributeHolding::shared, AttributeFlags::kAppend);
}

bool FBinaryTreeReader::readTreeRoot(FAttributes& trees) {
    FString name;
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    return name.readString(stream_) && readTree(*tree) &&
           trees.setObject(name, tree.detach(), AttributeHolding::owned, AttributeFlags::kAppend);
}

bool FBinaryTreeReader::readTree(FAttributes& tree) {
    if (depth_ >= FAttributes::kDeepest) {
        return false;
    }
    ++depth_;
    const bool complete = readRecords(tree, &FBinaryTreeReader::readRecord);
    --depth_;
    return complete;
}

bool FBinaryTreeReader::readRecords(FAttributes& tree, bool (FBinaryTreeReader::*readOne)(FAttributes& tree)) {
    std::int32_t count = 0;
    bool complete = readCount(count);
    for (std::int32_t i = 0; complete && i < count; ++i) {
        complete = makeRoom(tree, i, count) && (this->*readOne)(tree);
    }
    return complete;
}

bool FBinaryTreeReader::readRecord(FAttributes& tree) {
    FString name;
    std::uint16_t type = 0;
    if (!name.readString(stream_) || !stream_.readUInt16(type)) {
        return false;
    }
    switch (type) {
    case kInteger: {
        std::int64_t value = 0;
        return stream_.readInt64(value) && tree.setInt(name, value, AttributeFlags::kAppend);
    }
    case kFloat: {
        double value = 0;
        return stream_.readDouble(value) && tree.setFloat(name, value, AttributeFlags::kAppend);
    }
    case kText: {
        FString text;
        return text.readString(stream_) && tree.setString(name, text, AttributeFlags::kAppend);
    }
    case kObject: {
        Value value;
        return readValue(value) &&
               (!value || tree.setObject(name, value.detach(), AttributeHolding::owned, AttributeFlags::kAppend));
    }
    default:
        return false;
    }
}

bool FBinaryTreeReader::readValue(Value& value) {
    std::uint16_t tag = 0;
    return stream_.readUInt16(tag) && readValueOf(tag, value);
}

bool FBinaryTreeReader::readValueOf(std::uint16_t tag, Value& value) {
    switch (tag) {
    case BinaryTag::kIntList:
        return readInts(value);
    case BinaryTag::kFloatList:
        return readFloats(value);
    case BinaryTag::kStringList8:
    case BinaryTag::kStringList16:
        return readTexts(value);
    case BinaryTag::kSubList:
        return readTrees(value);
    case BinaryTag::kTree: {
        auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        value = tree.get();
        return readTree(*tree);
    }
    case BinaryTag::kBinary:
        return readBytes(value);
    case BinaryTag::kObject:
        return readObjectRecord(value);
    case BinaryTag::kReference:
        return readReference(value);
    case BinaryTag::kObjectList:
        return readObjects(value);
    case BinaryTag::kPlainObject:
        return readPlainObject(value);
    case BinaryTag::kPlainObjectList:
        return readPlainObjects(value);
    case BinaryTag::kChainedObject:
    case BinaryTag::kChainedObjectList:
    default:
        return false;
    }
}

bool FBinaryTreeReader::readInts(Value& value) {
    auto* list = new FIntList;
    value = Value::adopt(list);
    return readElements([&] {
        std::int64_t element = 0;
        const bool read = stream_.readInt64(element);
        if (read) {
            list->append(element);
        }
        return read;
    });
}

bool FBinaryTreeReader::readFloats(Value& value) {
    auto* list = new FFloatList;
    value = Value::adopt(list);
    return readElements([&] {
        double element = 0;
        const bool read = stream_.readDouble(element);
        if (read) {
            list->append(element);
        }
        return read;
    });
}

// Each text tells its own width, and the list holds all in 16 bits: the two tags are read alike.
bool FBinaryTreeReader::readTexts(Value& value) {
    auto* list = new FStringList;
    value = Value::adopt(list);
    return readElements([&] {
        FString element;
        return element.readString(stream_) && list->append(element);
    });
}

bool FBinaryTreeReader::readTrees(Value& value) {
    auto* list = new FSubList;
    value = Value::adopt(list);
    return readElements([&] {
        auto* tree = new FAttributes;
        return list->append(tree) && readTree(*tree);
    });
}

// A memory stream's own form is what stands here, and it believes no size either.
bool FBinaryTreeReader::readBytes(Value& value) {
    auto* bytes = new FMemoryStream;
    value = Value::adopt(bytes);
    return bytes->read(stream_);
}

bool FBinaryTreeReader::readObjects(Value& value) {
    auto* list = new FObjectList;
    value = Value::adopt(list);
    return readElements([&] {
        std::uint16_t tag = 0;
        Value element;
        if (!stream_.readUInt16(tag) || (tag != BinaryTag::kObject && tag != BinaryTag::kReference) ||
            !readValueOf(tag, element)) {
            return false;
        }
        return !element || list->append(element.detach());
    });
}

bool FBinaryTreeReader::readPlainObjects(Value& value) {
    auto* list = new FObjectList;
    value = Value::adopt(list);
    return readElements([&] {
        Value element;
        return readPlainObject(element) && (!element || list->append(element.detach()));
    });
}

bool FBinaryTreeReader::readObjectRecord(Value& value) {
    FString className;
    std::uint64_t id = 0;
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    if (!className.readString(stream_) || !stream_.readUInt64(id) || !readTree(*tree)) {
        return false;
    }
    value = newInstance(id, std::move(className), std::move(tree));
    // A further record under an ID stands for itself, and references mean the first.
    instances_.emplace(id, FRefPtr<FXmlInstance>(static_cast<FXmlInstance*>(value.get())));
    return true;
}

bool FBinaryTreeReader::readPlainObject(Value& value) {
    FString className;
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    if (!className.readString(stream_) || !readTree(*tree)) {
        return false;
    }
    value = newInstance(0, std::move(className), std::move(tree));
    return true;
}

FBinaryTreeReader::Value FBinaryTreeReader::newInstance(std::uint64_t id, FString className,
                                                        FRefPtr<FAttributes> tree) {
    if (!isKnownClass(className)) {
        reportError(kUnknownClass, className);
        return {};
    }
    return Value::adopt(new FXmlInstance(id, std::move(className), tree.detach()));
}

bool FBinaryTreeReader::readReference(Value& value) {
    std::uint64_t id = 0;
    if (!stream_.readUInt64(id)) {
        return false;
    }
    // That one led nowhere when it was written.
    if (id != 0) {
        value = newReference(id).get();
    }
    return true;
}

FRefPtr<FXmlReference> FBinaryTreeReader::newReference(std::uint64_t id) {
    references_.push_back(FRefPtr<FXmlReference>::adopt(new FXmlReference(id)));
    return references_.back();
}

} // namespace tessera
