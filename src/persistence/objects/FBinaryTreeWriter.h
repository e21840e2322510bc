// FBinaryTreeWriter: writes trees, and the objects in them, in the binary form; see BinaryForm.h. One writer writes one
// document: an object that was written before is named by its ID from then on.
#pragma once

#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"

#include <cstdint>
#include <set>
#include <unordered_set>
#include <vector>

namespace tessera {

class FAttributes;
class FAttrList;
class FObjectList;
class FStream;
class FStringIDAttribute;
class FStringList;
class FStringRef;
struct FBinaryView;

class FBinaryTreeWriter {
public:
    explicit FBinaryTreeWriter(FStream& stream) : stream_(stream) {}
    FBinaryTreeWriter(const FBinaryTreeWriter&) = delete;
    FBinaryTreeWriter& operator=(const FBinaryTreeWriter&) = delete;
    ~FBinaryTreeWriter();

    bool writeDocument(const FAttributes& objects, const FAttributes& trees);
    // A tree record.
    bool writeTree(const FAttributes& tree);

private:
    bool writeText(const FStringRef& text);
    bool writeRecord(const FStringIDAttribute& record);
    bool writeValue(CmObject* object);
    bool writeList(const FAttrList& list);
    bool writeTexts(const FStringList& list);
    bool writeObjects(const FObjectList& list);
    bool writeBytes(const FBinaryView& bytes);
    // With its tag.
    bool writeObject(CmObject* object);
    bool writeObjectRecord(CmObject& object);
    bool writeStoredTree(const CmObject& object);
    bool writeObjectRoot(const FStringRef& name, CmObject& object);
    bool isNew(CmObject& object);

    FStream& stream_;
    int depth_ = 0;
    std::unordered_set<const CmObject*> written_;
    // A root goes by its ID alone, since that is what a reader has. In order, since a table by hash could be made slow
    // by a document that chose its IDs.
    std::set<std::uint64_t> writtenIds_;
    // Held to the end: an object that was made for its owner's tree goes with that tree, and the next one must not get
    // its address, which is its ID.
    std::vector<FRefPtr<CmObject>> held_;
};

} // namespace tessera
