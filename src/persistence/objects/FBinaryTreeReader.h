// FBinaryTreeReader: reads trees, and the objects in them, from the binary form; see BinaryForm.h. One reader reads one
// document.
//
// The stream may hold anything: no count that it tells is believed further than its bytes reach. Depth costs no stack:
// what is being read stands in a list.
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
    explicit FBinaryTreeReader(FStream& stream);
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
    enum class Kind;
    // A tree or a list whose elements are being read.
    struct Level;

    bool readTree(FAttributes& tree);
    // A count, and that many of what readOne reads.
    bool readRecords(FAttributes& tree, bool (FBinaryTreeReader::*readOne)(FAttributes& tree));
    bool readObjectRoot(FAttributes& objects);
    bool readTreeRoot(FAttributes& trees);

    // Until the level that has been begun is finished, with all that stands in it.
    bool readLevels();
    bool readElement(Level& level);
    bool readRecord(FAttributes& tree);
    bool readValue(FString&& name);
    // Lists of plain values, which hold nothing that holds something.
    bool readPlainValue(std::uint16_t tag, Value& value);
    bool readInts(Value& value);
    bool readFloats(Value& value);
    bool readTexts(Value& value);
    bool readBytes(Value& value);
    bool readReference(Value& value);
    bool readListedObject();
    bool readCount(std::int32_t& count);
    // Calls readElement so many times, as long as it is true.
    template <class ReadElement>
    bool readElements(ReadElement readElement);

    // The new innermost, which is good until another begins.
    Level& beginLevel(Kind kind, FString&& name, CmObject* value = nullptr);
    bool beginTree(Level& level);
    bool beginObject(FString&& name, bool hasId);
    bool beginList(Kind kind, FString&& name, CmObject* list);
    // The innermost is complete and goes into the one around it.
    bool finishLevel();
    Value valueOf(Level& level);
    static bool store(Level& around, const FString& name, Value value);
    FRefPtr<FXmlReference> newReference(std::uint64_t id);
    void resolve();

    FStream& stream_;
    // The innermost last.
    std::vector<Level> levels_;
    // How many of them are trees.
    int depth_ = 0;
    // Null for an object whose class isn't known: its ID has come, and no other object record follows for it. In order,
    // since a table by hash could be made slow by a document that chooses its IDs.
    std::map<std::uint64_t, FRefPtr<FXmlInstance>> instances_;
    std::vector<FRefPtr<FXmlReference>> references_;
};

} // namespace tessera
