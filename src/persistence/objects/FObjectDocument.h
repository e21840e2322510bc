// FObjectDocument: an object document: named objects and named trees of values, as XML on a stream.
//
//   <?xml version="1.0" encoding="utf-8"?>
//   <Project>
//      <rootObjects>
//         <root name="mixer" ID="94002"/>              an object, by its ID
//         <root name="view">                           a tree
//            <int name="zoom" value="3"/>
//         </root>
//      </rootObjects>
//
//      <obj class="Mixer" ID="94002">                  what is named by an ID and defined nowhere else
//         <string name="title" value="Main"/>
//      </obj>
//
//   </Project>
//
// The text is UTF-8, lines end in CR LF. An object that several others hold stands in the document once, and the others
// name its ID, which is a number for this document alone. Saving asks each object's storeAttributes; FXmlObjectWriter
// tells the layout, FXmlObjectReader what is accepted.
//
// Reading builds no object: the document holds FXmlReference and FXmlInstance, and getObject makes the object when it
// is asked for. A document can be filled, saved, loaded and saved again. Objects that aren't built are saved as they
// were read, with their IDs. A document holds a reference of each root. One thread at a time.
//
// Limits that writer and reader don't share, kept because documents in the field are read by programs that have them:
// a name of 48 bytes or more, and a text that is at most 2048 characters long and takes 2048 bytes or more once it is
// escaped, are written and make the whole document unreadable. Text with characters beyond ASCII is best kept in 16
// bits, and texts near the limit are best split. An empty list vanishes, and so does a reference without a target; in
// a list of objects the latter makes the document unreadable as well.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/xml/XmlEntities.h"

#include <vector>

namespace tessera {

class FStream;

class FObjectDocument {
public:
    FObjectDocument() = default;
    FObjectDocument(const FObjectDocument&) = delete;
    FObjectDocument& operator=(const FObjectDocument&) = delete;

    // Behind the ones that are there already, whatever their names. False without memory.
    bool addObject(const FStringRef& name, CmObject& object);
    // The tree that the object stores, as it is when the document is saved; an FAttributes is the tree itself.
    bool addTree(const FStringRef& name, CmObject& object);

    // The first of that name, borrowed; null when there is none. An object that was read is built now.
    CmObject* getObject(const FStringRef& name) const { return objects_.getObject(name); }
    FAttributes* getTree(const FStringRef& name) const { return trees_.getTree(name); }
    // Hands the tree of that name to the object's restoreAttributes.
    bool getTreeInto(const FStringRef& name, CmObject& object) const;

    // All of them, in their order.
    FAttributes& getObjects() { return objects_; }
    const FAttributes& getObjects() const { return objects_; }
    FAttributes& getTrees() { return trees_; }
    const FAttributes& getTrees() const { return trees_; }

    void clear();
    // Objects of a document that refer to each other in a circle keep each other alive. Who drops what was loaded, and
    // hasn't built all of it, calls this first: every reference gives up what it found.
    void unlink();

    // False as soon as an object's storeAttributes or a write to the stream fails, and beyond a nesting that could be
    // read again. What has been written by then stays in the stream.
    bool saveDocument(FStream& stream, const char* rootTag) const;
    // Adds to what is there. False for anything that isn't a document with this root tag, see FXmlObjectReader; what
    // was read by then stays. With onlyRoot, of the named objects just that one is read, and no other object, whether
    // it stands in this one or is only named there. column: what the names of signs beyond ASCII mean.
    bool loadDocument(FStream& stream, const char* rootTag, const FStringRef& onlyRoot = FStringRef(),
                      FXmlEntityColumn column = FXmlEntityColumn::ansi);

    // The same content in the binary form, see BinaryForm.h. Saving fails as above, loading for anything that isn't a
    // binary document.
    bool saveBinary(FStream& stream) const;
    bool loadBinary(FStream& stream);

    // A document that is one object: what it stores stands right in the root tag.
    static bool saveObject(FStream& stream, const char* rootTag, const CmObject& object);
    // Hands what was read to the object's restoreAttributes, whose answer it gives; an FAttributes gets it itself.
    static bool loadObject(FStream& stream, const char* rootTag, CmObject& object);

private:
    void keep(std::vector<FRefPtr<FXmlReference>> references);

    FAttributes objects_;
    FAttributes trees_;
    // Those that were loaded.
    std::vector<FRefPtr<FXmlReference>> references_;
};

} // namespace tessera
