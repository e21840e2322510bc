// FXmlObjectWriter: writes an object document, line by line, to a stream.
//
// Everything stands in UTF-8, each line ends in CR LF, and a level is indented by three blanks; the lines of binary
// data are indented by tabs. One writer writes one document.
//
//   <int name="N" value="-5"/>                     <float name="N" value="0.5"/>
//   <string name="N" value="8-bit"/>               <string name="N" value="16-bit" wide="true"/>
//   <string name="N">                              more than 2048 characters; the text is not indented
//   the text
//   </string>
//   <member name="N"> values </member>             a tree in the tree
//   <list name="N" type="T"> items </list>         T: int, float, string, list (of trees), obj; never an empty list
//   <bin name="N"> 64 digits a line </bin>
//   <obj class="C" name="N" ID="I"> values </obj>  an object, where it is met first
//   <obj name="N" ID="I"/>                         an object that stands elsewhere in the document
//   <item value="I"/>                              the same in a list of objects
//
// An object stands where it is met first, but an attribute at level 8 or deeper only names its object, which then
// stands at the end of the document. Lists of objects know no such limit. The ID is the object's address; what was read
// and isn't built keeps the ID, the class name and the tree that it had. A reference that found no target is written
// with the ID 0; an attribute without an object, and an instance whose object couldn't be built, aren't written.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/objects/FDocumentLine.h"

#include <cstdint>
#include <unordered_set>
#include <vector>

namespace tessera {

class CmObject;
class FAttrList;
class FAttributes;
class FObjectList;
class FStringIDAttribute;
class FSubList;
class FStream;
class FStringRef;
struct FBinaryView;

class FXmlObjectWriter {
public:
    // An attribute at this level, or below it, doesn't hold its object in the document any more.
    static constexpr int kReferenceLevel = 8;
    // In characters; what is longer stands in a body.
    static constexpr std::int32_t kLongestAttribute = 2048;
    static constexpr std::int32_t kBytesPerLine = 32;

    explicit FXmlObjectWriter(FStream& stream);
    ~FXmlObjectWriter();

    // False as soon as an object's storeAttributes is, or a write to the stream; and when elements stand in each other
    // deeper than a reader goes.
    bool writeDocument(const char* rootTag, const FAttributes& objects, const FAttributes& trees);
    bool writeObject(const char* rootTag, const CmObject& object);

private:
    class Nesting;

    bool writeStart(const char* rootTag);
    bool writeEnd(const char* rootTag);
    bool writeRoots(const FAttributes& objects, const FAttributes& trees);
    bool writeObjectRoot(const FStringRef& name, CmObject* object);
    bool writeTreeRoot(const FStringRef& name, const CmObject* object);
    bool writePending();

    bool writeMembersOf(const CmObject& object, int level);
    bool writeMembers(const FAttributes& tree, int level);
    bool writeAttribute(const FStringIDAttribute& attribute, int level);
    bool writeText(const FStringRef& name, const FStringRef& text, int level);
    bool writeTree(const FStringRef& name, const FAttributes& tree, int level);
    bool writeBinary(const FStringRef& name, const FBinaryView& bytes, int level);
    bool writeObjectValue(const FStringRef& name, CmObject* object, int level);
    bool writeObjectAttribute(const FStringRef& name, CmObject* object, int level);
    // Without a name for nullptr.
    bool writeInline(const FStringRef* name, CmObject* object, int level);
    bool writeReference(const FStringRef& name, std::uint64_t id, int level);
    bool writeList(const FStringRef& name, const FAttrList& list, int level);
    bool writeItems(const FAttrList& list, int level);
    bool writeObjectItem(CmObject* element, int level);
    bool writeItem(const FSubList& list, std::int32_t index, int level);

    void beginNamed(const char* tag, const FStringRef& name, int level);
    bool endTag(const char* tag, int level);
    // Whether the object wasn't met before.
    bool meet(CmObject* object);

    FDocumentLine line_;
    int nesting_ = 1;
    // By identity. References are held: a tree that an object made for being stored may go, and a new object must not
    // get the address of one that the document knows already.
    std::unordered_set<const CmObject*> met_;
    std::vector<FRefPtr<CmObject>> kept_;
    std::vector<CmObject*> pending_;
};

} // namespace tessera
