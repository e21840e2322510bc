#include "foundation/messages/FAttributeValue.h"

#include "foundation/containers/CmString.h"

#include <bit>

namespace tessera {

using namespace AttributeBits;

namespace {

// The constructor's flags and the marks that they set.
constexpr struct {
    std::uint16_t flag;
    std::uint16_t mark;
} kMarkFlags[] = {{1, kTransient}, {2, kLocal}, {8, kHidden}};

std::uint16_t marksOf(std::uint16_t flags) {
    std::uint16_t marks = 0;
    for (const auto& row : kMarkFlags) {
        if ((flags & row.flag) != 0) {
            marks |= row.mark;
        }
    }
    return marks;
}

std::int64_t wordOf(const void* pointer) {
    return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(pointer));
}

} // namespace

FAttributeValue::FAttributeValue(std::uint16_t flags) : type_(marksOf(flags)) {}

FAttributeValue::FAttributeValue(const FAttributeValue& other) : CmClass(other) {
    copyFrom(other);
}

FAttributeValue::~FAttributeValue() {
    clear();
}

void* FAttributeValue::pointer() const {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(value_));
}

void FAttributeValue::setValue(std::uint16_t bits, std::int64_t value) {
    clear();
    value_ = value;
    type_ = static_cast<std::uint16_t>(type_ | bits);
}

void FAttributeValue::clear() {
    if (hasType(kObject) && hasType(kByReference | kOwned)) {
        static_cast<CmObject*>(pointer())->release();
    } else if (hasType(kForeign) && hasType(kByReference | kOwned)) {
        static_cast<IBaseUnknown*>(pointer())->release();
    } else if (CmString* text = ownText()) {
        text->release();
    }
    value_ = 0;
    type_ &= kMarks;
}

void FAttributeValue::setInt(std::int64_t value) {
    setValue(kInteger, value);
}

void FAttributeValue::setFloat(double value) {
    setValue(kFloat, std::bit_cast<std::int64_t>(value));
}

void FAttributeValue::setString8(const char* text, TextHolding holding) {
    if (text == nullptr) {
        text = "";
    }
    if (holding == TextHolding::byReference) {
        setValue(kText | kByReference, wordOf(text));
    } else {
        setText(FStringRef(text));
    }
}

void FAttributeValue::setString16(const char16_t* text, TextHolding holding) {
    if (text == nullptr) {
        text = u"";
    }
    if (holding == TextHolding::byReference) {
        setValue(kText | kByReference | kWideText, wordOf(text));
    } else {
        setText(FStringRef(text));
    }
}

void FAttributeValue::setText(const FStringRef& text) {
    if (CmString* present = ownText()) {
        present->string().assign(text);
        return;
    }
    // Made before the old value goes: the text may lie in it.
    auto* copy = new CmString(text);
    setValue(kText, wordOf(copy));
}

void FAttributeValue::setObject(CmObject* object, std::uint16_t holding) {
    if (hasType(kObject) && pointer() == object) {
        return;
    }
    if (object == nullptr) {
        clear();
        return;
    }
    if ((holding & kByReference) != 0) {
        object->addRef();
    }
    setValue(static_cast<std::uint16_t>(kObject | (holding & (kByReference | kOwned))), wordOf(object));
}

void FAttributeValue::setForeign(IBaseUnknown* object, std::uint16_t holding) {
    if (object == nullptr) {
        clear();
        return;
    }
    if ((holding & kByReference) != 0) {
        object->addRef();
    }
    setValue(static_cast<std::uint16_t>(kForeign | (holding & (kByReference | kOwned))), wordOf(object));
}

void FAttributeValue::setPointer(void* pointer) {
    setValue(kPointer, wordOf(pointer));
}

void FAttributeValue::copyFrom(const FAttributeValue& other) {
    if (this == &other) {
        return;
    }
    clear();
    type_ = other.type_ & kMarks;
    if (const CmString* text = other.ownText()) {
        setValue(kText, wordOf(new CmString(text->string())));
    } else if (CmObject* object = other.getObject()) {
        const bool owned = other.hasType(kOwned);
        setObject(owned ? object->clone() : object, other.type_);
    } else if (IBaseUnknown* foreign = other.getForeign()) {
        // There is no copy of a foreign object to be had, so an owned one is shared.
        setForeign(foreign, other.hasType(kByReference | kOwned) ? kByReference : 0);
    } else {
        value_ = other.value_;
        type_ = other.type_;
    }
}

CmString* FAttributeValue::ownText() const {
    return hasType(kText) && !hasType(kByReference) ? static_cast<CmString*>(pointer()) : nullptr;
}

FStringRef FAttributeValue::getText() const {
    if (const CmString* text = ownText()) {
        return text->string();
    }
    if (hasType(kText)) {
        return hasType(kWideText) ? FStringRef(static_cast<const char16_t*>(pointer()))
                                  : FStringRef(static_cast<const char*>(pointer()));
    }
    const auto* object = cmCast<CmString>(getObject());
    return object != nullptr ? FStringRef(object->string()) : FStringRef();
}

std::int64_t FAttributeValue::getInt() const {
    if (hasType(kInteger)) {
        return value_;
    }
    std::int64_t number = 0;
    return getText().getInt64(number, 0, FNumberSearch::ahead) ? number : 0;
}

double FAttributeValue::getFloat() const {
    if (hasType(kFloat)) {
        return std::bit_cast<double>(value_);
    }
    double number = 0;
    return getText().getFloat(number, 0, FNumberSearch::ahead) ? number : 0;
}

// A raw text of the other width becomes an owned one, which can be converted.
const FString* FAttributeValue::textToConvert() {
    if (hasType(kText) && hasType(kByReference)) {
        setText(getText());
    }
    if (const CmString* text = ownText()) {
        return &text->string();
    }
    const auto* object = cmCast<CmString>(getObject());
    return object != nullptr ? &object->string() : nullptr;
}

const char* FAttributeValue::getString8() {
    if (hasType(kText) && hasType(kByReference) && !hasType(kWideText)) {
        return static_cast<const char*>(pointer());
    }
    const FString* text = textToConvert();
    return text != nullptr ? text->text8() : nullptr;
}

const char16_t* FAttributeValue::getString16() {
    if (hasType(kText) && hasType(kByReference) && hasType(kWideText)) {
        return static_cast<const char16_t*>(pointer());
    }
    const FString* text = textToConvert();
    return text != nullptr ? text->text16() : nullptr;
}

CmObject* FAttributeValue::getObject() const {
    return hasType(kObject) ? static_cast<CmObject*>(pointer()) : nullptr;
}

IBaseUnknown* FAttributeValue::getForeign() const {
    return hasType(kForeign) ? static_cast<IBaseUnknown*>(pointer()) : nullptr;
}

void* FAttributeValue::getPointer() const {
    return hasType(kPointer) ? pointer() : nullptr;
}

FAttributeValue* FAttributeValue::clone() const {
    return new FAttributeValue(*this);
}

} // namespace tessera
