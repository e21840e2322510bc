#include "persistence/objects/FBinaryTreeWriter.h"

#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/objects/BinaryForm.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/objects/StreamText.h"
#include "persistence/streams/FStream.h"

namespace tessera {

using namespace AttributeBits;

namespace {

constexpr std::uint16_t kWrittenTypes = kInteger | kObject | kFloat | kText;

// Values without a type, bare pointers and foreign interfaces stay behind. So does an object value without an object.
bool isWritten(const FAttributeValue& record) {
    return record.hasType(kWrittenTypes) && (!record.hasType(kObject) || record.getObject() != nullptr);
}

std::int32_t countWritten(const FAttributes& tree) {
    std::int32_t count = 0;
    for (std::int32_t i = 0; i < tree.getCount(); ++i) {
        count += isWritten(*tree.at(i)) ? 1 : 0;
    }
    return count;
}

// What has an object record of its own: a live object, or an instance that still waits to be built. Null for a
// reference without a target and for an instance that couldn't be built.
CmObject* writtenObject(CmObject* object) {
    auto* reference = cmCast<FXmlReference>(object);
    if (reference != nullptr) {
        object = reference->getTarget();
    }
    auto* standIn = cmCast<FXmlObject>(object);
    return standIn == nullptr || standIn->getAttributes() != nullptr ? object : standIn->getObject();
}

std::uint64_t idOf(const CmObject& object) {
    const auto* standIn = cmCast<FXmlObject>(&object);
    return standIn != nullptr ? standIn->getID() : reinterpret_cast<std::uintptr_t>(&object);
}

} // namespace

bool saveBinary(FStream& stream, const FAttributes& objects, const FAttributes& trees) {
    return FBinaryTreeWriter(stream).writeDocument(objects, trees);
}

FBinaryTreeWriter::~FBinaryTreeWriter() = default;

bool FBinaryTreeWriter::writeDocument(const FAttributes& objects, const FAttributes& trees) {
    std::vector<std::int32_t> roots;
    for (std::int32_t i = 0; i < objects.getCount(); ++i) {
        if (writtenObject(objects.at(i)->getObject()) != nullptr) {
            roots.push_back(i);
        }
    }
    if (!stream_.writeInt32(static_cast<std::int32_t>(roots.size()))) {
        return false;
    }
    for (const std::int32_t i : roots) {
        if (!writeObjectRoot(objects.at(i)->getKey(), *writtenObject(objects.at(i)->getObject()))) {
            return false;
        }
    }
    roots.clear();
    for (std::int32_t i = 0; i < trees.getCount(); ++i) {
        if (trees.at(i)->getObject() != nullptr) {
            roots.push_back(i);
        }
    }
    if (!stream_.writeInt32(static_cast<std::int32_t>(roots.size()))) {
        return false;
    }
    for (const std::int32_t i : roots) {
        const FStringIDAttribute& root = *trees.at(i);
        const auto* tree = cmCast<FAttributes>(root.getObject());
        if (!writeText(root.getKey()) || !(tree != nullptr ? writeTree(*tree) : writeStoredTree(*root.getObject()))) {
            return false;
        }
    }
    return true;
}

bool FBinaryTreeWriter::writeObjectRoot(const FStringRef& name, CmObject& object) {
    const std::uint64_t id = idOf(object);
    return writeText(name) && stream_.writeUInt64(id) &&
           (writtenIds_.contains(id) || (isNew(object) && writeObjectRecord(object)));
}

bool FBinaryTreeWriter::isNew(CmObject& object) {
    const bool added = written_.insert(&object).second;
    if (added) {
        writtenIds_.insert(idOf(object));
        held_.emplace_back(&object);
    }
    return added;
}

bool FBinaryTreeWriter::writeText(const FStringRef& text) {
    return writeStreamText(stream_, text);
}

bool FBinaryTreeWriter::writeTree(const FAttributes& tree) {
    if (depth_ >= FAttributes::kDeepest || !stream_.writeInt32(countWritten(tree))) {
        return false;
    }
    ++depth_;
    bool complete = true;
    for (std::int32_t i = 0; complete && i < tree.getCount(); ++i) {
        const FStringIDAttribute& record = *tree.at(i);
        complete = !isWritten(record) || (writeText(record.getKey()) && writeRecord(record));
    }
    --depth_;
    return complete;
}

bool FBinaryTreeWriter::writeRecord(const FStringIDAttribute& record) {
    if (!stream_.writeUInt16(record.getType() & kWrittenTypes)) {
        return false;
    }
    if (record.hasType(kInteger)) {
        return stream_.writeInt64(record.getInt());
    }
    if (record.hasType(kFloat)) {
        return stream_.writeDouble(record.getFloat());
    }
    return record.hasType(kText) ? writeText(record.getText()) : writeValue(record.getObject());
}

bool FBinaryTreeWriter::writeValue(CmObject* object) {
    if (const auto* tree = cmCast<FAttributes>(object)) {
        return stream_.writeUInt16(BinaryTag::kTree) && writeTree(*tree);
    }
    if (const auto* list = cmCast<FAttrList>(object)) {
        return writeList(*list);
    }
    FBinaryView bytes;
    return FBinaryView::of(object, bytes) ? writeBytes(bytes) : writeObject(object);
}

bool FBinaryTreeWriter::writeList(const FAttrList& list) {
    const auto begin = [&](std::uint16_t tag) { return stream_.writeUInt16(tag) && stream_.writeInt32(list.count()); };
    bool complete = false;
    switch (list.getKind()) {
    case FAttrListKind::integers:
        complete = begin(BinaryTag::kIntList);
        for (std::int32_t i = 0; complete && i < list.count(); ++i) {
            complete = stream_.writeInt64(static_cast<const FIntList&>(list).at(i));
        }
        return complete;
    case FAttrListKind::floats:
        complete = begin(BinaryTag::kFloatList);
        for (std::int32_t i = 0; complete && i < list.count(); ++i) {
            complete = stream_.writeDouble(static_cast<const FFloatList&>(list).at(i));
        }
        return complete;
    case FAttrListKind::strings:
        return writeTexts(static_cast<const FStringList&>(list));
    case FAttrListKind::objects:
        return writeObjects(static_cast<const FObjectList&>(list));
    case FAttrListKind::subs:
        complete = begin(BinaryTag::kSubList);
        for (std::int32_t i = 0; complete && i < list.count(); ++i) {
            complete = writeTree(*static_cast<const FSubList&>(list).at(i));
        }
        return complete;
    }
    return false;
}

bool FBinaryTreeWriter::writeTexts(const FStringList& list) {
    bool complete = stream_.writeUInt16(list.isWide() ? BinaryTag::kStringList16 : BinaryTag::kStringList8) &&
                    stream_.writeInt32(list.count());
    for (std::int32_t i = 0; complete && i < list.count(); ++i) {
        complete = writeText(list.at(i));
    }
    return complete;
}

bool FBinaryTreeWriter::writeObjects(const FObjectList& list) {
    bool complete = stream_.writeUInt16(BinaryTag::kObjectList) && stream_.writeInt32(list.count());
    for (std::int32_t i = 0; complete && i < list.count(); ++i) {
        complete = writeObject(list.at(i));
    }
    return complete;
}

bool FBinaryTreeWriter::writeBytes(const FBinaryView& bytes) {
    return stream_.writeUInt16(BinaryTag::kBinary) && stream_.writeInt32(bytes.size) &&
           (bytes.size == 0 || stream_.write(bytes.data, bytes.size) == bytes.size);
}

bool FBinaryTreeWriter::writeObject(CmObject* object) {
    CmObject* written = writtenObject(object);
    if (written == nullptr) {
        return stream_.writeUInt16(BinaryTag::kReference) && stream_.writeUInt64(0);
    }
    if (!isNew(*written)) {
        return stream_.writeUInt16(BinaryTag::kReference) && stream_.writeUInt64(idOf(*written));
    }
    return stream_.writeUInt16(BinaryTag::kObject) && writeObjectRecord(*written);
}

bool FBinaryTreeWriter::writeObjectRecord(CmObject& object) {
    if (auto* instance = cmCast<FXmlInstance>(&object)) {
        return writeText(instance->getStoredClassName()) && stream_.writeUInt64(instance->getID()) &&
               writeTree(*instance->getAttributes());
    }
    return writeText(storedClassName(object)) && stream_.writeUInt64(idOf(object)) && writeStoredTree(object);
}

bool FBinaryTreeWriter::writeStoredTree(const CmObject& object) {
    FAttributes tree;
    return object.storeAttributes(tree) && writeTree(tree);
}

} // namespace tessera
