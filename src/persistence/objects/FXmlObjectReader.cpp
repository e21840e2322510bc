#include "persistence/objects/FXmlObjectReader.h"

#include "foundation/containers/FByteBuffer.h"
#include "foundation/text/FNumberScan.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/objects/FKeptNames.h"
#include "persistence/streams/FMemoryStream.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace tessera {

namespace {

// What the running parse is inside of. Programs in the field know these numbers.
enum class Place {
    tree = 0,
    member = 1,
    binary = 2,
    ints = 3,
    floats = 4,
    strings = 5,
    objects = 6,
    trees = 7,
    treeItem = 8,
    document = 9,
    body = 10,
};

struct ListType {
    std::string_view name;
    Place place;
    FAttrList* (*make)();
};

constexpr ListType kListTypes[] = {
    {"obj", Place::objects, []() -> FAttrList* { return new FObjectList; }},
    {"list", Place::trees, []() -> FAttrList* { return new FSubList; }},
    {"int", Place::ints, []() -> FAttrList* { return new FIntList; }},
    {"float", Place::floats, []() -> FAttrList* { return new FFloatList; }},
    {"string", Place::strings, []() -> FAttrList* { return new FStringList; }},
};

const ListType* listType(std::string_view name) {
    const auto* found = std::find_if(std::begin(kListTypes), std::end(kListTypes),
                                     [name](const ListType& type) { return type.name == name; });
    return found != std::end(kListTypes) ? found : nullptr;
}

int digitOf(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The bytes of an attribute; nothing where there is none of that name.
using Value = std::optional<std::string_view>;

FStringRef refOf(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

// A missing value is 0, and so is one without a number.
std::int64_t integerOf(Value value) {
    std::int64_t number = 0;
    if (value) {
        FNumberScan::signedDecimal(value->data(), value->data() + value->size(), number);
    }
    return number;
}

std::uint64_t unsignedOf(Value value) {
    std::uint64_t number = 0;
    if (value) {
        FNumberScan::unsignedDecimal(value->data(), value->data() + value->size(), number);
    }
    return number;
}

double floatOf(Value value) {
    double number = 0;
    if (value) {
        FNumberScan::anyFloat(value->data(), value->data() + value->size(), number);
    }
    return number;
}

// A named root's ID that begins with "-" comes from a program whose IDs were signed, 32 bits wide.
std::uint64_t rootIdOf(Value value) {
    return value && value->starts_with('-') ? static_cast<std::uint32_t>(integerOf(value)) : unsignedOf(value);
}

std::string_view asView(const FByteBuffer& buffer) {
    return {reinterpret_cast<const char*>(buffer.getData()), static_cast<std::size_t>(buffer.getFill())};
}

// The text of a body stands between two line ends that the writer put there, the second with the indentation of the
// end tag behind it.
std::string_view withoutFrame(std::string_view text) {
    if (text.starts_with("\r\n")) {
        text.remove_prefix(2);
    } else if (text.starts_with('\n') || text.starts_with('\r')) {
        text.remove_prefix(1);
    }
    const std::size_t end = text.find_last_not_of(" \t");
    if (end == text.npos || (text[end] != '\n' && text[end] != '\r')) {
        return text;
    }
    text = text.substr(0, end + 1);
    text.remove_suffix(text.ends_with("\r\n") ? 2 : 1);
    return text;
}

// The text as it is kept: 16 bits, or 8 bits where all of it is ASCII. What means nothing in its code page stays as the
// bytes that it is.
void setText(FStringIDAttribute& record, std::string_view bytes, bool isWide) {
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return FStringRef::isAsciiChar(c); });
    if (bytes.empty()) {
        record.setText(FStringRef(u"", 0));
    } else if (isWide) {
        FString text;
        text.assignUtf8(bytes.data(), static_cast<std::int32_t>(bytes.size()));
        record.setText(text);
    } else if (isAscii) {
        record.setText(refOf(bytes));
    } else {
        record.setText(FString(bytes.data(), CodePage::system, static_cast<std::int32_t>(bytes.size())));
    }
}

// Null without a name.
FRefPtr<FStringIDAttribute> newRecord(Value name) {
    if (!name) {
        return nullptr;
    }
    const FStringRef kept = FKeptNames::find(*name);
    return FRefPtr<FStringIDAttribute>::adopt(kept.isNull() ? new FStringIDAttribute(refOf(*name))
                                                            : new FStringIDAttribute(kept, KeyHolding::constant));
}

// Where nothing can be stored, for want of a name or of a tree, that is no failure.
template <class SetValue>
bool storeValue(FAttributes* tree, FRefPtr<FStringIDAttribute> record, SetValue setValue) {
    if (tree == nullptr || !record) {
        return true;
    }
    setValue(*record);
    return tree->append(record.detach());
}

bool storeObject(FAttributes* tree, FRefPtr<FStringIDAttribute> record, CmObject* object) {
    return storeValue(tree, std::move(record),
                      [object](FStringIDAttribute& made) { made.setObject(object, AttributeBits::kByReference); });
}

} // namespace

struct FXmlObjectReader::Open {
    Place place;
    // Where values go; null where they are dropped.
    FAttributes* tree = nullptr;
    FAttrList* list = nullptr;
    FMemoryStream* bytes = nullptr;
    // How it is stored in the element around it.
    Finish finish = nullptr;
    FRefPtr<CmObject> value{};
    FRefPtr<FStringIDAttribute> record{};
    // Of a body.
    std::unique_ptr<FByteBuffer> text{};
    bool isWide = false;
    // The first digit of a pair, or -1.
    int firstDigit = -1;
    // How many tags were open when it had begun.
    std::int32_t depth = 0;

    static Open ofTree(Place place, Finish finish, FRefPtr<FStringIDAttribute> record) {
        auto* tree = new FAttributes;
        return {place, tree, nullptr, nullptr, finish, FRefPtr<CmObject>::adopt(tree), std::move(record)};
    }
};

struct FXmlObjectReader::Element {
    const FXmlAttributeList& attributes;
    Value name;
    bool isEmpty;
    // Stands until another element begins.
    Open& within;

    Value valueOf(std::string_view key) const { return valueIn(attributes, key); }
    static Value valueIn(const FXmlAttributeList& attributes, std::string_view key) {
        const FXmlAttribute* found = attributes.find(key);
        return found != nullptr ? Value(found->valueView()) : Value();
    }
};

struct FXmlObjectReader::Tag {
    std::string_view name;
    bool (FXmlObjectReader::*read)(const Element& element);
};

FXmlObjectReader::FXmlObjectReader(FStream& stream, const char* rootTag, FXmlEntityColumn column)
    : FXmlParser(&stream), rootTag_(rootTag) {
    setOption(FXmlOption::secondEntityColumn, column == FXmlEntityColumn::second);
}

FXmlObjectReader::~FXmlObjectReader() = default;

bool FXmlObjectReader::readDocument(FAttributes& objects, FAttributes& trees, const FStringRef& onlyRoot) {
    objects_ = &objects;
    trees_ = &trees;
    onlyRoot_ = onlyRoot;
    return readAll(nullptr);
}

bool FXmlObjectReader::readObject(FAttributes& members) {
    return readAll(&members);
}

bool FXmlObjectReader::readAll(FAttributes* members) {
    open_.push_back(Open{Place::document, members});
    if (!readElements()) {
        return false;
    }
    resolve();
    return rootSeen_;
}

bool FXmlObjectReader::readElements() {
    if (!parse(nullptr)) {
        return false;
    }
    if (open_.size() > 1 && !complete_) {
        fail(FXmlError::endOfFile);
        return false;
    }
    // What holds the one root that was wanted counts as far as it was read.
    while (open_.size() > 1) {
        if (!finishInnermost()) {
            return false;
        }
    }
    return true;
}

bool FXmlObjectReader::begin(const Element& element, Open open) {
    if (element.isEmpty) {
        return (this->*open.finish)(open);
    }
    if (open_.size() == static_cast<std::size_t>(kMaximumNesting)) {
        return false;
    }
    open.depth = countOpenTags();
    setRawText(open.text != nullptr);
    open_.push_back(std::move(open));
    return true;
}

bool FXmlObjectReader::finishInnermost() {
    Open element = std::move(open_.back());
    open_.pop_back();
    setRawText(open_.back().text != nullptr);
    return (this->*element.finish)(element);
}

// Sorted once: a table by ID could be made slow by a document that chooses its IDs.
void FXmlObjectReader::resolve() {
    const auto before = [](const Instance& a, const Instance& b) { return a.id < b.id; };
    std::stable_sort(instances_.begin(), instances_.end(), before);
    for (const FRefPtr<FXmlReference>& reference : references_) {
        const auto found =
            std::lower_bound(instances_.begin(), instances_.end(), Instance{reference->getID(), nullptr}, before);
        if (found != instances_.end() && found->id == reference->getID()) {
            reference->setTarget(found->object.get());
        }
    }
    instances_.clear();
}

bool FXmlObjectReader::startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void*) {
    static constexpr Tag kTags[] = {
        {"int", &FXmlObjectReader::readInt},       {"item", &FXmlObjectReader::readItem},
        {"string", &FXmlObjectReader::readString}, {"float", &FXmlObjectReader::readFloat},
        {"obj", &FXmlObjectReader::readObjectTag}, {"member", &FXmlObjectReader::readMember},
        {"list", &FXmlObjectReader::readList},     {"bin", &FXmlObjectReader::readBinary},
        {"root", &FXmlObjectReader::readRoot},     {"rootObjects", &FXmlObjectReader::readRootObjects},
    };
    Open& within = open_.back();
    if (within.place == Place::document && name == rootTag_) {
        rootSeen_ = true;
        return true;
    }
    const Value valueName = Element::valueIn(attributes, "name");
    // Programs in the field hold the name of a value to the limit that the parser has for the name of an attribute.
    if (valueName && valueName->size() > static_cast<std::size_t>(kMaximumAttributeName)) {
        setErrorState(FXmlError::malformed);
        return false;
    }
    const std::string_view wanted(name);
    for (const Tag& tag : kTags) {
        if (tag.name == wanted) {
            return (this->*tag.read)(Element{attributes, valueName, isEmpty, within});
        }
    }
    setErrorState(within.place == Place::document && !rootSeen_ ? FXmlError::malformed : FXmlError::unexpectedTag);
    return false;
}

bool FXmlObjectReader::endElement(const char*, void*) {
    // The tag has been closed, so it isn't counted any more.
    return open_.back().depth != countOpenTags() + 1 || finishInnermost();
}

bool FXmlObjectReader::characters(const char* text, std::int32_t length, void*) {
    Open& within = open_.back();
    if (within.text != nullptr) {
        return length == 0 || within.text->append(text, length);
    }
    if (within.bytes == nullptr) {
        return true;
    }
    std::uint8_t pairs[kMaximumTokenSize / 2 + 1];
    std::int32_t count = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        const int digit = digitOf(text[i]);
        if (digit < 0) {
            continue;
        }
        if (within.firstDigit < 0) {
            within.firstDigit = digit;
        } else {
            pairs[count++] = static_cast<std::uint8_t>(within.firstDigit << 4 | digit);
            within.firstDigit = -1;
        }
    }
    return within.bytes->write(pairs, count) == count;
}

bool FXmlObjectReader::readRootObjects(const Element&) {
    return true;
}

bool FXmlObjectReader::readRoot(const Element& element) {
    if (!element.name) {
        return false;
    }
    if (element.isEmpty) {
        return readObjectRoot(element);
    }
    return begin(element, Open::ofTree(Place::tree, &FXmlObjectReader::finishRoot, newRecord(element.name)));
}

bool FXmlObjectReader::finishRoot(Open& element) {
    return storeObject(trees_, std::move(element.record), element.value.get());
}

bool FXmlObjectReader::readObjectRoot(const Element& element) {
    const std::uint64_t id = rootIdOf(element.valueOf("ID"));
    if (id == 0) {
        return false;
    }
    if (!onlyRoot_.isEmpty()) {
        if (!(onlyRoot_ == refOf(*element.name))) {
            return true;
        }
        wantedId_ = id;
    }
    const FRefPtr<FXmlReference> reference = newReference(id);
    return objects_ == nullptr || objects_->setObject(refOf(*element.name), reference.get(), AttributeHolding::shared,
                                                      AttributeFlags::kAppend);
}

FRefPtr<FXmlReference> FXmlObjectReader::newReference(std::uint64_t id) {
    references_.push_back(FRefPtr<FXmlReference>::adopt(new FXmlReference(id)));
    return references_.back();
}

bool FXmlObjectReader::readInt(const Element& element) {
    return storeValue(element.within.tree, newRecord(element.name),
                      [&](FStringIDAttribute& record) { record.setInt(integerOf(element.valueOf("value"))); });
}

bool FXmlObjectReader::readFloat(const Element& element) {
    return storeValue(element.within.tree, newRecord(element.name),
                      [&](FStringIDAttribute& record) { record.setFloat(floatOf(element.valueOf("value"))); });
}

bool FXmlObjectReader::readString(const Element& element) {
    const Value wide = element.valueOf("wide");
    const bool isWide = wide && (*wide == "true" || *wide == "1");
    const Value value = element.valueOf("value");
    if (value || element.isEmpty) {
        const std::string_view text = value.value_or(std::string_view());
        return storeValue(element.within.tree, newRecord(element.name),
                          [&](FStringIDAttribute& record) { setText(record, text, isWide); });
    }
    Open body{Place::body};
    body.finish = &FXmlObjectReader::finishBody;
    body.record = newRecord(element.name);
    body.text = std::make_unique<FByteBuffer>();
    body.isWide = isWide;
    return begin(element, std::move(body));
}

bool FXmlObjectReader::finishBody(Open& element) {
    // Only now: an entity may have been cut between two pieces.
    FByteBuffer& bytes = *element.text;
    const std::string_view raw = withoutFrame(asView(bytes));
    char* start = reinterpret_cast<char*>(bytes.getData()) + (raw.data() - asView(bytes).data());
    const std::string_view text(start, resolveXmlEntities(start, raw.size(), entityColumn()));
    return storeValue(open_.back().tree, std::move(element.record),
                      [&](FStringIDAttribute& record) { setText(record, text, element.isWide); });
}

bool FXmlObjectReader::readBinary(const Element& element) {
    if (!element.name) {
        return false;
    }
    auto* stream = new FMemoryStream;
    Open binary{Place::binary};
    binary.bytes = stream;
    binary.finish = &FXmlObjectReader::finishBinary;
    binary.value = FRefPtr<CmObject>::adopt(stream);
    binary.record = newRecord(element.name);
    return begin(element, std::move(binary));
}

bool FXmlObjectReader::finishBinary(Open& element) {
    element.bytes->truncate();
    element.bytes->rewind();
    return store(element);
}

bool FXmlObjectReader::readMember(const Element& element) {
    // Without a name the element is as good as absent: its values go where it stands.
    if (!element.name) {
        return true;
    }
    return begin(element, Open::ofTree(Place::member, &FXmlObjectReader::store, newRecord(element.name)));
}

bool FXmlObjectReader::readList(const Element& element) {
    const Value type = element.valueOf("type");
    if (!element.name || !type) {
        return false;
    }
    const ListType* known = listType(*type);
    if (known == nullptr) {
        return true;
    }
    Open list{known->place};
    list.list = known->make();
    list.finish = &FXmlObjectReader::store;
    list.value = FRefPtr<CmObject>::adopt(list.list);
    list.record = newRecord(element.name);
    return begin(element, std::move(list));
}

bool FXmlObjectReader::store(Open& element) {
    return storeObject(open_.back().tree, std::move(element.record), element.value.get());
}

bool FXmlObjectReader::readItem(const Element& element) {
    const Open& within = element.within;
    const Value value = element.valueOf("value");
    switch (within.place) {
    case Place::ints:
        if (element.isEmpty) {
            static_cast<FIntList*>(within.list)->append(integerOf(value));
        }
        return element.isEmpty;
    case Place::floats:
        if (element.isEmpty) {
            static_cast<FFloatList*>(within.list)->append(floatOf(value));
        }
        return element.isEmpty;
    case Place::strings: {
        const std::string_view bytes = value.value_or(std::string_view());
        const FString text(bytes.data(), getCodePage(), static_cast<std::int32_t>(bytes.size()));
        return element.isEmpty && static_cast<FStringList*>(within.list)->append(text);
    }
    case Place::objects:
        return element.isEmpty && readReferenceItem(element);
    case Place::trees:
        return !element.isEmpty && readTreeItem(element);
    default:
        // In a list of an unknown type.
        return true;
    }
}

bool FXmlObjectReader::readReferenceItem(const Element& element) {
    const std::uint64_t id = unsignedOf(element.valueOf("value"));
    return id != 0 && static_cast<FObjectList*>(element.within.list)->append(newReference(id).detach());
}

bool FXmlObjectReader::readTreeItem(const Element& element) {
    return begin(element, Open::ofTree(Place::treeItem, &FXmlObjectReader::finishTreeItem, nullptr));
}

bool FXmlObjectReader::finishTreeItem(Open& element) {
    // The reference goes over to the list.
    static_cast<void>(element.value.detach());
    return static_cast<FSubList*>(open_.back().list)->append(element.tree);
}

bool FXmlObjectReader::readObjectTag(const Element& element) {
    const std::uint64_t id = unsignedOf(element.valueOf("ID"));
    const Value className = element.valueOf("class");
    if (!className) {
        return id == 0 || storeStandIn(newRecord(element.name), *newReference(id));
    }
    // With one root wanted, all other objects are passed over, also those that stand in it.
    if (id == 0 || (wantedId_ != 0 && id != wantedId_)) {
        return element.isEmpty || skipSubtree();
    }
    return readInstance(element, id, *className);
}

bool FXmlObjectReader::readInstance(const Element& element, std::uint64_t id, std::string_view className) {
    Open object = Open::ofTree(Place::tree, &FXmlObjectReader::finishInstance, newRecord(element.name));
    // The reference goes over to the instance.
    static_cast<void>(object.value.detach());
    object.value = FRefPtr<CmObject>::adopt(new FXmlInstance(id, refOf(className), object.tree));
    return begin(element, std::move(object));
}

bool FXmlObjectReader::finishInstance(Open& element) {
    const FRefPtr<FXmlInstance> instance(static_cast<FXmlInstance*>(element.value.get()));
    instances_.push_back({instance->getID(), instance});
    if (instance->getID() == wantedId_ && references_.size() == 1) {
        complete_ = true;
        stop(false);
    }
    return storeStandIn(std::move(element.record), *instance);
}

// In a list of objects as an element, elsewhere under its name. One without either is found by its ID alone.
bool FXmlObjectReader::storeStandIn(FRefPtr<FStringIDAttribute> record, FXmlObject& object) {
    const Open& within = open_.back();
    if (within.place == Place::objects) {
        return static_cast<FObjectList*>(within.list)->append(FRefPtr<FXmlObject>(&object).detach());
    }
    return storeObject(within.tree, std::move(record), &object);
}

} // namespace tessera
