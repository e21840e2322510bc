// FXmlObjectReader: reads one object document from a stream, in the form that FXmlObjectWriter tells.
//
// Values land in the trees that the caller gives. No object is built: FXmlInstance stands for one that the document
// defines, FXmlReference for one that it names, and when all has been read each reference gets the instance of its ID.
// An ID that is defined twice means the first one; one that isn't defined leaves the reference without a target.
//
// What is accepted beyond what is written: line ends and white space of any kind, comments, tags without a name where
// nothing is stored then, a tree without a name, lists of an unknown type, whose items are dropped, and objects
// anywhere. The named values in such a tree or list belong to the tree around it. What is refused: a root tag that
// isn't the expected one, and a name of more than 47 bytes, as FXmlError::malformed; unknown tags, lists and binary
// data without a name, and items that don't fit their list, as FXmlError::unexpectedTag; and whatever FXmlParser
// refuses. A document that ends after its root tag is accepted as far as it goes, unless it ends within an element that
// holds values.
//
// One reader reads one document. Depth costs no stack: the elements that are open stand in a list, and there are at
// most as many of them as parses could run in each other.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/xml/FXmlParser.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessera {

class FAttributes;
class FStringIDAttribute;

class FXmlObjectReader : public FXmlParser {
public:
    using References = std::vector<FRefPtr<FXmlReference>>;

    FXmlObjectReader(FStream& stream, const char* rootTag, FXmlEntityColumn column = FXmlEntityColumn::ansi);
    ~FXmlObjectReader() override;

    // Adds the named objects, as FXmlReference, and the named trees. With onlyRoot the object of that name is read and
    // no other: the rest of the document is passed over, or not read at all. The trees are read all the same.
    bool readDocument(FAttributes& objects, FAttributes& trees, const FStringRef& onlyRoot);
    // Adds the values that stand right in the root tag.
    bool readObject(FAttributes& members);

    // All references that were read, resolved or not.
    References takeReferences() { return std::move(references_); }

protected:
    bool startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void* context) override;
    bool endElement(const char* name, void* context) override;
    bool characters(const char* text, std::int32_t length, void* context) override;

private:
    struct Open;
    struct Element;
    struct Tag;

    bool readAll(FAttributes* members);
    bool readElements();
    void resolve();
    // What an element is stored by, at its end; at once, if it is empty.
    using Finish = bool (FXmlObjectReader::*)(Open& element);
    bool begin(const Element& element, Open open);
    bool finishInnermost();

    bool readRootObjects(const Element& element);
    bool readRoot(const Element& element);
    bool readInt(const Element& element);
    bool readFloat(const Element& element);
    bool readString(const Element& element);
    bool readBinary(const Element& element);
    bool readMember(const Element& element);
    bool readList(const Element& element);
    bool readItem(const Element& element);
    bool readObjectTag(const Element& element);

    bool readObjectRoot(const Element& element);
    bool readInstance(const Element& element, std::uint64_t id, std::string_view className);
    bool readTreeItem(const Element& element);
    bool readReferenceItem(const Element& element);
    FRefPtr<FXmlReference> newReference(std::uint64_t id);
    bool finishRoot(Open& element);
    bool finishBody(Open& element);
    bool finishBinary(Open& element);
    bool finishInstance(Open& element);
    bool finishTreeItem(Open& element);
    bool store(Open& element);
    bool storeStandIn(FRefPtr<FStringIDAttribute> record, FXmlObject& object);

    struct Instance {
        std::uint64_t id;
        FRefPtr<FXmlInstance> object;
    };

    std::string rootTag_;
    bool rootSeen_ = false;
    // The one root that was wanted is there.
    bool complete_ = false;
    // The document, and the elements in it that hold values and whose end tags are to come, the innermost last.
    std::vector<Open> open_;
    FAttributes* objects_ = nullptr;
    FAttributes* trees_ = nullptr;
    FString onlyRoot_;
    std::uint64_t wantedId_ = 0;
    std::vector<Instance> instances_;
    References references_;
};

} // namespace tessera
