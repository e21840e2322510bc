// FBinaryTreeReader: reads trees, and the objects in them, from the binary form; see BinaryForm.h. One reader reads one
// document.
//
// The stream may hold anything: no count that it tells is believed further than its bytes reach.
#pragma once

#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace tessera {

class FStream;

class FBinaryTreeReader {
public:
    explicit FBinaryTreeReader(FStream& stream) : stream_(stream) {}
    FBinaryTreeReader(const FBinaryTreeReader&) = delete;
    FBinaryTreeReader& operator=(const FBinaryTreeReader&) = delete;
    ~FBinaryTreeReader();

    bool readDocument(FAttributes& objects, FAttributes& trees);
    // A tree record, with its references resolved.
    bool readSingleTree(FAttributes& tree);

    // All that were read, for whoever has to break circles among them.
    std::vector<FRefPtr<FXmlReference>> takeReferences() { return std::move(references_); }

private:
    using Value = FRefPtr<CmObject>;

    bool readTree(FAttributes& tree);
    // A count, and that many of what readOne reads.
    bool readRecords(FAttributes& tree, bool (FBinaryTreeReader::*readOne)(FAttributes& tree));
    bool readRecord(FAttributes& tree);
    // A value that is null afterwards is left out of the tree.
    bool readValue(Value& value);
    bool readValueOf(std::uint16_t tag, Value& value);
    bool readInts(Value& value);
    bool readFloats(Value& value);
    bool readTexts(Value& value);
    bool readTrees(Value& value);
    bool readBytes(Value& value);
    bool readObjects(Value& value);
    bool readPlainObjects(Value& value);
    bool readObjectRecord(Value& value);
    bool readPlainObject(Value& value);
    bool readReference(Value& value);
    bool readCount(std::int32_t& count);
    // Calls readElement so many times, as long as it is true.
    template <class ReadElement>
    bool readElements(ReadElement readElement);

    bool readObjectRoot(FAttributes& objects);
    bool readTreeRoot(FAttributes& trees);
    static Value newInstance(std::uint64_t id, FString className, FRefPtr<FAttributes> tree);
    FRefPtr<FXmlReference> newReference(std::uint64_t id);
    void resolve();

    FStream& stream_;
    int depth_ = 0;
    // Null for an object whose class isn't known: its ID has come, and no other object record follows for it. In order,
    // since a table by hash could be made slow by a document that chooses its IDs.
    std::map<std::uint64_t, FRefPtr<FXmlInstance>> instances_;
    std::vector<FRefPtr<FXmlReference>> references_;
};

} // namespace tessera
