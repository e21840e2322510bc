// FAttributeValue: one typed value: a number, a text, an object or a pointer. Messages and other attribute lists are
// made of its two keyed forms, FStringIDAttribute and FIntIDAttribute.
//
// The type word tells what the value is and whether it is held (see AttributeBits). Setting a value gives the old one
// up first; the marks given to the constructor stay. Getters convert where they can, and give 0 or null where they
// can't. Not synchronised, not even for reading: asking for a text of the other width converts the value in place.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

class CmString;

namespace AttributeBits {

inline constexpr std::uint16_t kInteger = 0x0001;
inline constexpr std::uint16_t kObject = 0x0002;
inline constexpr std::uint16_t kFloat = 0x0004;
// A CmString that this value owns or, with kByReference, the caller's own text, which must outlive the value.
inline constexpr std::uint16_t kText = 0x0008;
// For texts: not owned. For objects and foreign pointers: a shared reference is held.
inline constexpr std::uint16_t kByReference = 0x0010;
// The object belongs to this value: it is cloned when the value is copied.
inline constexpr std::uint16_t kOwned = 0x0020;
// Marks that survive every change of the value. A value with kTransient is never written to a stream.
inline constexpr std::uint16_t kTransient = 0x0040;
inline constexpr std::uint16_t kLocal = 0x0080;
// A reference-counted interface of another module.
inline constexpr std::uint16_t kForeign = 0x0100;
// A bare pointer that nobody manages; never written, never copied with a message.
inline constexpr std::uint16_t kPointer = 0x0200;
// With kText and kByReference: the text is 16-bit.
inline constexpr std::uint16_t kWideText = 0x0400;
inline constexpr std::uint16_t kHidden = 0x0800;

inline constexpr std::uint16_t kMarks = kTransient | kLocal | kHidden;

} // namespace AttributeBits

class FAttributeValue : public CmClass<FAttributeValue, CmObject> {
public:
    static FMetaClass metaClass;

    enum class TextHolding { copied, byReference };

    // flags: bit 0 sets kTransient, bit 1 kLocal, bit 3 kHidden.
    explicit FAttributeValue(std::uint16_t flags = 0);
    // As copyFrom.
    FAttributeValue(const FAttributeValue& other);
    FAttributeValue& operator=(const FAttributeValue&) = delete;
    ~FAttributeValue() override;

    std::uint16_t getType() const { return type_; }
    bool hasType(std::uint16_t bits) const { return (type_ & bits) != 0; }

    void setInt(std::int64_t value);
    void setFloat(double value);
    // Null is the empty text.
    void setString8(const char* text, TextHolding holding = TextHolding::copied);
    void setString16(const char16_t* text, TextHolding holding = TextHolding::copied);
    // A copy, in the width of the text.
    void setText(const FStringRef& text);
    // holding: kByReference takes a reference, kOwned takes over the caller's; 0 only points at the object. When the
    // value is this very object already nothing happens: it stays held as it is, and the caller keeps its reference.
    void setObject(CmObject* object, std::uint16_t holding);
    // The same three ways.
    void setForeign(IBaseUnknown* object, std::uint16_t holding);
    void setPointer(void* pointer);
    // Gives up what is held; no value remains, only the marks.
    void clear();
    // The other's value and marks: an owned object is cloned, a shared one gets a further reference, an own text is
    // copied, everything else points at the same.
    void copyFrom(const FAttributeValue& other);

    // From a text the first number in it; nothing else is converted, an integer into a float neither.
    std::int64_t getInt() const;
    double getFloat() const;
    // Texts belong to this value and stand until it changes. An object counts when it is a CmString.
    const char* getString8();
    const char16_t* getString16();
    // The text as it is, in its own width; a null view where there is none.
    FStringRef getText() const;
    // Borrowed; null for any other type.
    CmObject* getObject() const;
    IBaseUnknown* getForeign() const;
    void* getPointer() const;

    FAttributeValue* clone() const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;

private:
    void* pointer() const;
    void setValue(std::uint16_t bits, std::int64_t value);
    CmString* ownText() const;
    const FString* textToConvert();
    bool readValue(FStream& stream, std::uint16_t type);

    std::int64_t value_ = 0;
    std::uint16_t type_ = 0;
};

} // namespace tessera
