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
#include <type_traits>

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

enum class FBinaryTreeReader::Kind { tree, trees, objects, plainObjects };

struct FBinaryTreeReader::Level {
    Kind kind = Kind::tree;
    // In the tree around it.
    FString name;
    // The list, or the tree, unless the caller has it.
    Value value;
    FAttributes* tree = nullptr;
    std::int32_t count = 0;
    std::int32_t index = 0;
    // Of the object whose tree it is.
    bool isObject = false;
    bool hasId = false;
    std::uint64_t id = 0;
    FString className;
};

FBinaryTreeReader::FBinaryTreeReader(FStream& stream) : stream_(stream) {}

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
    if (!instances_.contains(id) && !(beginObject(FString(), true) && readLevels())) {
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
    Level& level = beginLevel(Kind::tree, FString());
    level.tree = &tree;
    return beginTree(level) && readLevels();
}

bool FBinaryTreeReader::readRecords(FAttributes& tree, bool (FBinaryTreeReader::*readOne)(FAttributes& tree)) {
    std::int32_t count = 0;
    bool complete = readCount(count);
    for (std::int32_t i = 0; complete && i < count; ++i) {
        complete = makeRoom(tree, i, count) && (this->*readOne)(tree);
    }
    return complete;
}

bool FBinaryTreeReader::readLevels() {
    while (!levels_.empty()) {
        Level& level = levels_.back();
        if (!(level.index < level.count ? readElement(level) : finishLevel())) {
            return false;
        }
    }
    return true;
}

// An element may begin a level, and the reference to this one is good for nothing then.
bool FBinaryTreeReader::readElement(Level& level) {
    const std::int32_t index = level.index++;
    switch (level.kind) {
    case Kind::tree:
        return makeRoom(*level.tree, index, level.count) && readRecord(*level.tree);
    case Kind::trees:
        return beginTree(beginLevel(Kind::tree, FString()));
    case Kind::objects:
        return readListedObject();
    case Kind::plainObjects:
        return beginObject(FString(), false);
    }
    return false;
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
    case kObject:
        return readValue(std::move(name));
    default:
        return false;
    }
}

bool FBinaryTreeReader::readValue(FString&& name) {
    std::uint16_t tag = 0;
    if (!stream_.readUInt16(tag)) {
        return false;
    }
    switch (tag) {
    case BinaryTag::kTree:
        return beginTree(beginLevel(Kind::tree, std::move(name)));
    case BinaryTag::kSubList:
        return beginList(Kind::trees, std::move(name), new FSubList);
    case BinaryTag::kObjectList:
        return beginList(Kind::objects, std::move(name), new FObjectList);
    case BinaryTag::kPlainObjectList:
        return beginList(Kind::plainObjects, std::move(name), new FObjectList);
    case BinaryTag::kObject:
        return beginObject(std::move(name), true);
    case BinaryTag::kPlainObject:
        return beginObject(std::move(name), false);
    default:
        Value value;
        return readPlainValue(tag, value) && store(levels_.back(), name, std::move(value));
    }
}

bool FBinaryTreeReader::readPlainValue(std::uint16_t tag, Value& value) {
    switch (tag) {
    case BinaryTag::kIntList:
        return readInts(value);
    case BinaryTag::kFloatList:
        return readFloats(value);
    case BinaryTag::kStringList8:
    case BinaryTag::kStringList16:
        return readTexts(value);
    case BinaryTag::kBinary:
        return readBytes(value);
    case BinaryTag::kReference:
        return readReference(value);
    case BinaryTag::kChainedObject:
    case BinaryTag::kChainedObjectList:
    default:
        return false;
    }
}

FBinaryTreeReader::Level& FBinaryTreeReader::beginLevel(Kind kind, FString&& name, CmObject* value) {
    static_assert(std::is_nothrow_move_constructible_v<Level>, "the list would copy what it holds whenever it grows");
    Level& level = levels_.emplace_back();
    level.kind = kind;
    level.name = std::move(name);
    level.value = Value::adopt(value);
    return level;
}

bool FBinaryTreeReader::beginTree(Level& level) {
    if (level.tree == nullptr) {
        level.tree = new FAttributes;
        level.value = Value::adopt(level.tree);
    }
    return ++depth_ <= FAttributes::kDeepest && readCount(level.count);
}

bool FBinaryTreeReader::beginObject(FString&& name, bool hasId) {
    Level& level = beginLevel(Kind::tree, std::move(name));
    level.isObject = true;
    level.hasId = hasId;
    return level.className.readString(stream_) && (!hasId || stream_.readUInt64(level.id)) && beginTree(level);
}

bool FBinaryTreeReader::beginList(Kind kind, FString&& name, CmObject* list) {
    return readCount(beginLevel(kind, std::move(name), list).count);
}

bool FBinaryTreeReader::finishLevel() {
    Level& level = levels_.back();
    depth_ -= level.kind == Kind::tree ? 1 : 0;
    Value value = valueOf(level);
    // The outermost is the caller's, or an object that is found by its ID.
    const bool stored = levels_.size() == 1 || store(levels_[levels_.size() - 2], level.name, std::move(value));
    levels_.pop_back();
    return stored;
}

// Null for an object whose class isn't known.
FBinaryTreeReader::Value FBinaryTreeReader::valueOf(Level& level) {
    if (!level.isObject) {
        return std::move(level.value);
    }
    FRefPtr<FXmlInstance> instance;
    if (isKnownClass(level.className)) {
        static_cast<void>(level.value.detach());
        instance = FRefPtr<FXmlInstance>::adopt(new FXmlInstance(level.id, std::move(level.className), level.tree));
    } else {
        reportError(kUnknownClass, level.className);
    }
    if (level.hasId) {
        // A further record under an ID stands for itself, and references mean the first.
        instances_.emplace(level.id, instance);
    }
    return Value(instance.get());
}

// What is null is left out.
bool FBinaryTreeReader::store(Level& around, const FString& name, Value value) {
    if (!value) {
        return true;
    }
    switch (around.kind) {
    case Kind::tree:
        return around.tree->setObject(name, value.detach(), AttributeHolding::owned, AttributeFlags::kAppend);
    case Kind::trees:
        return static_cast<FSubList*>(around.value.get())->append(static_cast<FAttributes*>(value.detach()));
    case Kind::objects:
    case Kind::plainObjects:
        return static_cast<FObjectList*>(around.value.get())->append(value.detach());
    }
    return false;
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

// A memory stream's own form is what stands here, and it believes no size either.
bool FBinaryTreeReader::readBytes(Value& value) {
    auto* bytes = new FMemoryStream;
    value = Value::adopt(bytes);
    return bytes->read(stream_);
}

bool FBinaryTreeReader::readListedObject() {
    std::uint16_t tag = 0;
    if (!stream_.readUInt16(tag)) {
        return false;
    }
    if (tag == BinaryTag::kObject) {
        return beginObject(FString(), true);
    }
    Value reference;
    return tag == BinaryTag::kReference && readReference(reference) &&
           store(levels_.back(), FString(), std::move(reference));
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
