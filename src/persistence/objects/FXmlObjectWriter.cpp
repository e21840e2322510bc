#include "persistence/objects/FXmlObjectWriter.h"

#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/xml/FXmlParser.h"

#include <algorithm>

namespace tessera {

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>";
// What of a type word tells the kind of the value. Pointers of other modules and bare ones have bits in here that no
// kind below has, so they aren't written.
constexpr std::uint16_t kKindMask = 0x30F;
constexpr std::size_t kMetBuckets = 256;

// By the number of the list's kind.
constexpr const char* kListTypes[] = {"int", "float", "string", "obj", "list"};

std::uint64_t addressOf(const CmObject& object) {
    return reinterpret_cast<std::uintptr_t>(&object);
}

std::uint64_t idOf(CmObject& object) {
    const FXmlObject* stored = cmCast<FXmlObject>(&object);
    return stored != nullptr ? stored->getID() : addressOf(object);
}

// What a document says where the object stands: a stored one as it was read, any other by what it stores now.
struct Definition {
    std::uint64_t id = 0;
    const char* className = nullptr;
    // One of the two. The tree is held: its instance lets go of it when somebody has the object built meanwhile.
    FRefPtr<FAttributes> tree;
    const CmObject* object = nullptr;

    bool isThere() const { return tree || object != nullptr; }
};

Definition definitionOf(CmObject& object) {
    FXmlInstance* instance = cmCast<FXmlInstance>(&object);
    if (instance != nullptr && instance->getAttributes() != nullptr) {
        return {instance->getID(), instance->getStoredClassName().text8(),
                FRefPtr<FAttributes>(instance->getAttributes()), nullptr};
    }
    const CmObject* live = instance != nullptr ? instance->getObject() : &object;
    if (live == nullptr) {
        return {};
    }
    return {addressOf(*live), storedClassName(*live), nullptr, live};
}

// Tells an attribute whose reference found nothing from one without an object.
struct Target {
    CmObject* object = nullptr;
    bool isUnresolved = false;
};

Target targetOf(CmObject* object) {
    const FXmlReference* reference = cmCast<FXmlReference>(object);
    if (reference == nullptr) {
        return {object, false};
    }
    return {reference->getTarget(), reference->getTarget() == nullptr};
}

} // namespace

// A reader goes one parse deeper for each element that holds others, the document being the first.
class FXmlObjectWriter::Nesting {
public:
    explicit Nesting(FXmlObjectWriter& writer) : writer_(writer) { ++writer_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --writer_.nesting_; }

    bool isTooDeep() const { return writer_.nesting_ > FXmlParser::kMaximumNesting; }

private:
    FXmlObjectWriter& writer_;
};

FXmlObjectWriter::FXmlObjectWriter(FStream& stream) : line_(stream), met_(kMetBuckets) {}

FXmlObjectWriter::~FXmlObjectWriter() = default;

bool FXmlObjectWriter::writeDocument(const char* rootTag, const FAttributes& objects, const FAttributes& trees) {
    return writeStart(rootTag) && writeRoots(objects, trees) && writePending() && writeEnd(rootTag);
}

bool FXmlObjectWriter::writeObject(const char* rootTag, const CmObject& object) {
    return writeStart(rootTag) && writeMembersOf(object, 1) && writePending() && writeEnd(rootTag);
}

bool FXmlObjectWriter::writeStart(const char* rootTag) {
    line_.append(kDeclaration);
    if (!line_.end()) {
        return false;
    }
    line_.append('<');
    line_.append(rootTag);
    line_.append('>');
    return line_.end();
}

bool FXmlObjectWriter::writeEnd(const char* rootTag) {
    return endTag(rootTag, 0);
}

bool FXmlObjectWriter::writeRoots(const FAttributes& objects, const FAttributes& trees) {
    if (objects.getCount() == 0 && trees.getCount() == 0) {
        return true;
    }
    line_.indent(1);
    line_.append("<rootObjects>");
    if (!line_.end()) {
        return false;
    }
    for (std::int32_t i = 0; i < objects.getCount(); ++i) {
        if (!writeObjectRoot(objects.at(i)->getKey(), objects.at(i)->getObject())) {
            return false;
        }
    }
    for (std::int32_t i = 0; i < trees.getCount(); ++i) {
        if (!writeTreeRoot(trees.at(i)->getKey(), trees.at(i)->getObject())) {
            return false;
        }
    }
    return endTag("rootObjects", 1);
}

// A root that found no object would make the document unreadable by its ID 0; it is left out, as it would be on reading
// if it were no root.
bool FXmlObjectWriter::writeObjectRoot(const FStringRef& name, CmObject* object) {
    CmObject* target = targetOf(object).object;
    if (target == nullptr || !definitionOf(*target).isThere()) {
        return true;
    }
    if (meet(target)) {
        pending_.push_back(target);
    }
    beginNamed("<root name=\"", name, 2);
    line_.append(" ID=\"");
    line_.appendUnsigned(idOf(*target));
    line_.append("\"/>");
    return line_.end();
}

bool FXmlObjectWriter::writeTreeRoot(const FStringRef& name, const CmObject* object) {
    if (object == nullptr) {
        return true;
    }
    const Nesting nesting(*this);
    beginNamed("<root name=\"", name, 2);
    line_.append('>');
    return line_.end() && writeMembersOf(*object, 3) && endTag("root", 2);
}

bool FXmlObjectWriter::writePending() {
    if (pending_.empty()) {
        return true;
    }
    if (!line_.end()) {
        return false;
    }
    // Each may add further ones.
    for (std::size_t i = 0; i < pending_.size(); ++i) {
        if (!writeInline(nullptr, pending_[i], 1) || !line_.end()) {
            return false;
        }
    }
    return true;
}

bool FXmlObjectWriter::writeMembersOf(const CmObject& object, int level) {
    // A tree is what it stores; a copy would have other objects in it.
    if (const FAttributes* tree = cmCast<FAttributes>(&object)) {
        return writeMembers(*tree, level);
    }
    const auto stored = FRefPtr<FAttributes>::adopt(new FAttributes);
    return object.storeAttributes(*stored) && writeMembers(*stored, level);
}

bool FXmlObjectWriter::writeMembers(const FAttributes& tree, int level) {
    const std::int32_t count = tree.getCount();
    for (std::int32_t i = 0; i < count; ++i) {
        if (!writeAttribute(*tree.at(i), level)) {
            return false;
        }
    }
    return true;
}

bool FXmlObjectWriter::writeAttribute(const FStringIDAttribute& attribute, int level) {
    const FStringRef& name = attribute.getKey();
    switch (attribute.getType() & kKindMask) {
    case AttributeBits::kInteger:
        beginNamed("<int name=\"", name, level);
        line_.append(" value=\"");
        line_.appendInt(attribute.getInt());
        line_.append("\"/>");
        return line_.end();
    case AttributeBits::kFloat:
        beginNamed("<float name=\"", name, level);
        line_.append(" value=\"");
        line_.appendFloat(attribute.getFloat());
        line_.append("\"/>");
        return line_.end();
    case AttributeBits::kText:
        return writeText(name, attribute.getText(), level);
    case AttributeBits::kObject:
        return writeObjectValue(name, attribute.getObject(), level);
    default:
        return true;
    }
}

bool FXmlObjectWriter::writeText(const FStringRef& name, const FStringRef& text, int level) {
    const auto appendText = [&] { text.isWide() ? line_.appendEscapedWide(text) : line_.appendEscaped8(text); };
    const std::string_view width = text.isWide() ? " wide=\"true\"" : "";
    beginNamed("<string name=\"", name, level);
    if (text.length() <= kLongestAttribute) {
        line_.append(" value=\"");
        appendText();
        line_.append('"');
        line_.append(width);
        line_.append("/>");
        return line_.end();
    }
    const Nesting nesting(*this);
    if (nesting.isTooDeep()) {
        return false;
    }
    line_.append(width);
    line_.append('>');
    if (!line_.end()) {
        return false;
    }
    appendText();
    return line_.end() && endTag("string", level);
}

bool FXmlObjectWriter::writeObjectValue(const FStringRef& name, CmObject* object, int level) {
    if (object == nullptr) {
        return true;
    }
    if (const FAttributes* tree = cmCast<FAttributes>(object)) {
        return writeTree(name, *tree, level);
    }
    if (const FAttrList* list = cmCast<FAttrList>(object)) {
        return writeList(name, *list, level);
    }
    FBinaryView bytes;
    if (FBinaryView::of(object, bytes)) {
        return writeBinary(name, bytes, level);
    }
    return writeObjectAttribute(name, object, level);
}

bool FXmlObjectWriter::writeTree(const FStringRef& name, const FAttributes& tree, int level) {
    const Nesting nesting(*this);
    if (nesting.isTooDeep()) {
        return false;
    }
    beginNamed("<member name=\"", name, level);
    line_.append('>');
    return line_.end() && writeMembers(tree, level + 1) && endTag("member", level);
}

bool FXmlObjectWriter::writeBinary(const FStringRef& name, const FBinaryView& bytes, int level) {
    const Nesting nesting(*this);
    if (nesting.isTooDeep()) {
        return false;
    }
    beginNamed("<bin name=\"", name, level);
    line_.append('>');
    bool written = line_.end();
    for (std::int32_t at = 0; written && at < bytes.size; at += kBytesPerLine) {
        line_.tabs(level + 1);
        line_.appendHex(bytes.data + at, std::min(kBytesPerLine, bytes.size - at));
        written = line_.end();
    }
    return written && endTag("bin", level);
}

bool FXmlObjectWriter::writeObjectAttribute(const FStringRef& name, CmObject* object, int level) {
    const Target target = targetOf(object);
    if (target.isUnresolved) {
        return writeReference(name, 0, level);
    }
    if (!definitionOf(*target.object).isThere()) {
        return true;
    }
    if (!meet(target.object)) {
        return writeReference(name, idOf(*target.object), level);
    }
    if (level < kReferenceLevel) {
        return writeInline(&name, target.object, level);
    }
    pending_.push_back(target.object);
    return writeReference(name, idOf(*target.object), level);
}

bool FXmlObjectWriter::writeInline(const FStringRef* name, CmObject* object, int level) {
    const Nesting nesting(*this);
    const Definition definition = definitionOf(*object);
    if (nesting.isTooDeep()) {
        return false;
    }
    // Its building may have failed while the document was being written.
    if (!definition.isThere()) {
        return true;
    }
    line_.indent(level);
    line_.append("<obj class=\"");
    line_.append(definition.className);
    line_.append("\" ");
    if (name != nullptr) {
        line_.append("name=\"");
        line_.appendEscaped8(*name);
        line_.append("\" ");
    }
    line_.append("ID=\"");
    line_.appendUnsigned(definition.id);
    line_.append("\">");
    if (!line_.end()) {
        return false;
    }
    const bool written =
        definition.tree ? writeMembers(*definition.tree, level + 1) : writeMembersOf(*definition.object, level + 1);
    return written && endTag("obj", level);
}

bool FXmlObjectWriter::writeReference(const FStringRef& name, std::uint64_t id, int level) {
    beginNamed("<obj name=\"", name, level);
    line_.append(" ID=\"");
    line_.appendUnsigned(id);
    line_.append("\"/>");
    return line_.end();
}

bool FXmlObjectWriter::writeList(const FStringRef& name, const FAttrList& list, int level) {
    if (list.count() == 0) {
        return true;
    }
    const Nesting nesting(*this);
    if (nesting.isTooDeep()) {
        return false;
    }
    beginNamed("<list name=\"", name, level);
    line_.append(" type=\"");
    line_.append(kListTypes[static_cast<std::size_t>(list.getKind())]);
    line_.append("\">");
    return line_.end() && writeItems(list, level + 1) && endTag("list", level);
}

bool FXmlObjectWriter::writeItems(const FAttrList& list, int level) {
    const std::int32_t count = list.count();
    const auto writeValues = [&](auto appendValue) {
        for (std::int32_t i = 0; i < count; ++i) {
            line_.indent(level);
            line_.append("<item value=\"");
            appendValue(i);
            line_.append("\"/>");
            if (!line_.end()) {
                return false;
            }
        }
        return true;
    };
    const auto writeEach = [&](auto writeOne) {
        for (std::int32_t i = 0; i < count; ++i) {
            if (!writeOne(i)) {
                return false;
            }
        }
        return true;
    };
    switch (list.getKind()) {
    case FAttrListKind::integers:
        return writeValues([&](std::int32_t i) { line_.appendInt(static_cast<const FIntList&>(list).at(i)); });
    case FAttrListKind::floats:
        return writeValues([&](std::int32_t i) { line_.appendFloat(static_cast<const FFloatList&>(list).at(i)); });
    case FAttrListKind::strings:
        return writeValues(
            [&](std::int32_t i) { line_.appendEscapedWide(static_cast<const FStringList&>(list).at(i)); });
    case FAttrListKind::subs:
        return writeEach([&](std::int32_t i) { return writeItem(static_cast<const FSubList&>(list), i, level); });
    case FAttrListKind::objects:
        return writeEach(
            [&](std::int32_t i) { return writeObjectItem(static_cast<const FObjectList&>(list).at(i), level); });
    }
    return true;
}

bool FXmlObjectWriter::writeObjectItem(CmObject* element, int level) {
    const Target target = targetOf(element);
    if (!target.isUnresolved) {
        if (!definitionOf(*target.object).isThere()) {
            return true;
        }
        if (meet(target.object)) {
            return writeInline(nullptr, target.object, level);
        }
    }
    line_.indent(level);
    line_.append("<item value=\"");
    line_.appendUnsigned(target.isUnresolved ? 0 : idOf(*target.object));
    line_.append("\"/>");
    return line_.end();
}

bool FXmlObjectWriter::writeItem(const FSubList& list, std::int32_t index, int level) {
    const Nesting nesting(*this);
    if (nesting.isTooDeep()) {
        return false;
    }
    line_.indent(level);
    line_.append("<item>");
    return line_.end() && writeMembers(*list.at(index), level + 1) && endTag("item", level);
}

void FXmlObjectWriter::beginNamed(const char* tag, const FStringRef& name, int level) {
    line_.indent(level);
    line_.append(tag);
    line_.appendEscaped8(name);
    line_.append('"');
}

bool FXmlObjectWriter::endTag(const char* tag, int level) {
    line_.indent(level);
    line_.append("</");
    line_.append(tag);
    line_.append('>');
    return line_.end();
}

bool FXmlObjectWriter::meet(CmObject* object) {
    if (!met_.insert(object).second) {
        return false;
    }
    kept_.emplace_back(object);
    return true;
}

} // namespace tessera
