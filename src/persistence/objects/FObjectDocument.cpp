#include "persistence/objects/FObjectDocument.h"

#include "persistence/objects/FBinaryTreeReader.h"
#include "persistence/objects/FBinaryTreeWriter.h"
#include "persistence/objects/FXmlObjectReader.h"
#include "persistence/objects/FXmlObjectWriter.h"

#include <iterator>

namespace tessera {

bool FObjectDocument::addObject(const FStringRef& name, CmObject& object) {
    return objects_.setObject(name, &object, AttributeHolding::shared, AttributeFlags::kAppend);
}

bool FObjectDocument::addTree(const FStringRef& name, CmObject& object) {
    return trees_.setObject(name, &object, AttributeHolding::shared, AttributeFlags::kAppend);
}

bool FObjectDocument::getTreeInto(const FStringRef& name, CmObject& object) const {
    FAttributes* tree = getTree(name);
    return tree != nullptr && object.restoreAttributes(*tree);
}

void FObjectDocument::clear() {
    objects_.removeAll();
    trees_.removeAll();
    references_.clear();
}

void FObjectDocument::unlink() {
    for (const FRefPtr<FXmlReference>& reference : references_) {
        reference->setTarget(nullptr);
    }
}

bool FObjectDocument::saveDocument(FStream& stream, const char* rootTag) const {
    return FXmlObjectWriter(stream).writeDocument(rootTag, objects_, trees_);
}

bool FObjectDocument::loadDocument(FStream& stream, const char* rootTag, const FStringRef& onlyRoot,
                                   FXmlEntityColumn column) {
    FXmlObjectReader reader(stream, rootTag, column);
    const bool read = reader.readDocument(objects_, trees_, onlyRoot);
    keep(reader.takeReferences());
    return read;
}

bool FObjectDocument::saveBinary(FStream& stream) const {
    return FBinaryTreeWriter(stream).writeDocument(objects_, trees_);
}

bool FObjectDocument::loadBinary(FStream& stream) {
    FBinaryTreeReader reader(stream);
    const bool read = reader.readDocument(objects_, trees_);
    keep(reader.takeReferences());
    return read;
}

void FObjectDocument::keep(std::vector<FRefPtr<FXmlReference>> references) {
    std::move(references.begin(), references.end(), std::back_inserter(references_));
}

bool FObjectDocument::saveObject(FStream& stream, const char* rootTag, const CmObject& object) {
    return FXmlObjectWriter(stream).writeObject(rootTag, object);
}

bool FObjectDocument::loadObject(FStream& stream, const char* rootTag, CmObject& object) {
    FXmlObjectReader reader(stream, rootTag);
    if (FAttributes* tree = cmCast<FAttributes>(&object)) {
        return reader.readObject(*tree);
    }
    const auto members = FRefPtr<FAttributes>::adopt(new FAttributes);
    return reader.readObject(*members) && object.restoreAttributes(*members);
}

} // namespace tessera
