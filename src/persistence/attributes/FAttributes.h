// FAttributes: a tree of named values: what every persistent object saves itself into and is restored from.
//
// A tree is an ordered list of records, FStringIDAttribute with a name and a typed value, in the order in which they
// were entered; a value may be another tree or one of the lists of FAttrList. Names may stand more than once, and a
// look up takes the first: it walks the records, so setting n different names costs n squared, and whoever knows that a
// name is new appends. Other modules reach a tree as IAttributes. The class is stored under its alias, "Attributes".
//
// Setters take the flags of AttributeFlags and give false without memory. Getters give false, and leave their target
// alone, when the name is missing or its value can't be had in that form. What comes out as a pointer or a view belongs
// to the tree and stands until the value changes. What was read from a document stands in the tree as FXmlInstance and
// FXmlReference; getObject and nextObject give the live object behind it, find the record as it is.
//
// Not synchronised. A tree goes to another thread after detachObjects. Trees may be nested to any depth: they are
// released by a loop.
#pragma once

#include "foundation/messages/FStringIDAttribute.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/AttributeFlags.h"
#include "persistence/attributes/FBinaryView.h"
#include "persistence/attributes/FObjectList.h"
#include "persistence/attributes/FStringList.h"
#include "persistence/attributes/IAttributes.h"

namespace tessera {

class CmArray;
class CmContainer;
class FFloatList;
class FIntList;
class FSubList;
class FVariant;

class FAttributes : public CmClass<FAttributes, CmObject, IAttributes> {
public:
    static FMetaClass metaClass;

    using TextHolding = FAttributeValue::TextHolding;

    // Between the names of a path.
    static constexpr char kPathSeparator = '|';
    // The key under which a tree carries a list of attributes that isn't its own.
    static constexpr const char* kAdditionalKey = "Additional Attributes";
    // How deep trees and objects may stand in each other where a tree is walked: by the binary form and detachObjects.
    static constexpr int kDeepest = 1000;

    // What the attributes of a foreign list are known by.
    enum class AdditionalKeys { texts, numbers };
    enum class AdditionalPresent { kept, replaced };

    FAttributes() = default;
    // With copies of the records, see FAttributeValue::copyFrom.
    FAttributes(const FAttributes& other);
    FAttributes& operator=(const FAttributes&) = delete;
    ~FAttributes() override;

    bool setInt(const FStringRef& name, std::int64_t value, std::uint16_t flags = AttributeFlags::kReplace);
    bool setFloat(const FStringRef& name, double value, std::uint16_t flags = AttributeFlags::kReplace);
    // Keeps the width of the text.
    bool setString(const FStringRef& name, const FStringRef& text, std::uint16_t flags = AttributeFlags::kReplace);
    // Of a null object only the name remains.
    bool setObject(const FStringRef& name, CmObject* object, AttributeHolding holding = AttributeHolding::shared,
                   std::uint16_t flags = AttributeFlags::kReplace);
    // False as well for a negative size, and for null bytes of a size that isn't 0.
    bool setBinary(const FStringRef& name, const void* data, std::int32_t size, BinaryHolding holding,
                   std::uint16_t flags = AttributeFlags::kReplace);
    // A new tree under the name, filled by the object's storeAttributes; false, and nothing entered, when that fails.
    bool setAttributes(const FStringRef& name, const CmObject& object, std::uint16_t flags = AttributeFlags::kReplace);

    // A float is cut, at the ends of the range to the nearest value, and a NaN is 0; in a text the first number counts.
    bool getInt(const FStringRef& name, std::int64_t& out) const;
    bool getFloat(const FStringRef& name, double& out) const;
    // For texts alone.
    bool getString(const FStringRef& name, FString& out) const;
    CmObject* getObject(const FStringRef& name) const;
    bool getBinary(const FStringRef& name, FBinaryView& out) const;
    // -1 when there is no binary data under the name.
    std::int32_t getBinarySize(const FStringRef& name) const;
    // The tree under the name.
    FAttributes* getTree(const FStringRef& name) const;
    // Hands the tree under the name to the object's restoreAttributes.
    bool getAttributesInto(const FStringRef& name, CmObject& object) const;
    // The first record of that name goes; false when there is none.
    bool remove(const FStringRef& name);
    void removeAll();

    // Lists. The first value makes the list; false when something else stands under the name, or a list of another
    // kind, or one that holds its elements the other way.
    bool appendInt(const FStringRef& name, std::int64_t value);
    bool appendFloat(const FStringRef& name, double value);
    bool appendString(const FStringRef& name, const FStringRef& text, TextHolding holding = TextHolding::copied);
    bool appendObject(const FStringRef& name, CmObject* object, AttributeHolding holding = AttributeHolding::shared);
    // Takes the caller's reference over, whatever the answer.
    bool appendSub(const FStringRef& name, FAttributes* tree);
    // False at the end of the list, and where there is no such list. See FObjectList::next for a null object.
    bool nextInt(const FStringRef& name, std::int64_t& out);
    bool nextFloat(const FStringRef& name, double& out);
    bool nextString(const FStringRef& name, FStringRef& out);
    bool nextObject(const FStringRef& name, CmObject*& out);
    // Null at the end, from where the walk begins anew.
    FAttributes* nextSub(const FStringRef& name);
    // 0 where there is no list.
    std::int32_t listCount(const FStringRef& name) const;
    void resetList(const FStringRef& name);
    FAttrList* getList(const FStringRef& name) const;

    // By path: "a|b" is b in the tree a. On the way lie trees, what instances hold that aren't built yet, and the
    // elements of FSubList and FObjectList in order; the first hit counts. Recursive by the names in the path.
    FAttributes* lookupAttributes(const FStringRef& path) const;
    bool lookupValue(const FStringRef& path, FVariant& out) const;

    // A list of FStringIDAttribute or FIntIDAttribute, as a tree under the key. Transient attributes and bare pointers
    // stay behind. A number is written as its four bytes, lowest first, if all of them are printable, and as "IntID:"
    // and its digits otherwise.
    bool exportAdditional(const CmContainer& list, const FStringRef& key = kAdditionalKey);
    // Back into a list, to which the new records then belong. False when there is no tree under the key.
    bool importAdditional(CmContainer& list, AdditionalKeys keys,
                          AdditionalPresent present = AdditionalPresent::replaced,
                          const FStringRef& key = kAdditionalKey) const;

    // Makes the tree independent of live objects, of bytes that others own, and of the thread: objects become
    // instances that hold what the object stored, and an object that is met again a reference to the first; lists of
    // objects become lists of those; binary data and texts become own ones. False when an object can't be stored, and
    // beyond kDeepest; the tree is then detached in part.
    static bool detachObjects(FAttributes& tree);

    // The records, in their order. Borrowed; null for a bad index or a name that is missing.
    std::int32_t getCount() const;
    FStringIDAttribute* at(std::int32_t index) const;
    FStringIDAttribute* find(const FStringRef& name) const;
    // Takes the caller's reference over. For readers: nothing is looked up.
    bool append(FStringIDAttribute* record);
    // Room for so many records.
    bool reserve(std::int32_t count);

    // The tree record of the binary form, without a class name.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // Appends copies of all records, respectively takes copies of all records in.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
    FAttributes* clone() const override;

    FResult set(const char* name, FVariant& value) override;
    FResult queue(const char* name, FVariant& value) override;
    FResult setBinary(const char* name, const void* data, std::uint32_t size, bool copy) override;
    FResult get(const char* name, FVariant& out) override;
    FResult unqueue(const char* name, FVariant& out) override;
    std::int32_t queuedCount(const char* name) override;
    FResult resetQueue(const char* name) override;
    FResult resetAllQueues() override;
    FResult getBinary(const char* name, void* buffer, std::uint32_t size) override;
    FResult getBinarySize(const char* name, std::uint32_t* size) override;
    std::int32_t count() override { return getCount(); }
    const char* getName(std::int32_t index) override;

private:
    FStringIDAttribute* obtain(const FStringRef& name, std::uint16_t flags);
    template <class List, class... Arguments>
    List* obtainList(const FStringRef& name, Arguments... arguments);

    // Made with the first record; owns them.
    CmArray* records_ = nullptr;
};

} // namespace tessera
