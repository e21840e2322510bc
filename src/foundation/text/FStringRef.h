// FStringRef: a read-only view of text that something else owns, and the base of FString.
//
// Text is either 8-bit, in the system's code page unless told otherwise, or 16-bit (UTF-16 code units, each counted as
// one character). Lengths and positions are characters; a negative length means "to the end", for a pointer "to the
// NUL". A view need not end with a NUL; FString's text always does. Every operation goes by the length.
//
// Where two widths meet, the 8-bit side is copied and widened with the system's code page, and positions speak of the
// widened text. A view never changes. An FString looked at through this class does: text8, text16, text, char8At and
// char16At convert it in place to the width that was asked for, const or not. So two threads may read one FString at
// the same time only in the width that it has. Nothing here throws; a view must not outlive its text.
#pragma once

#include "foundation/text/FTextOptions.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessera {

class FString;
class FVariant;
struct IStringSource;

class FStringRef {
public:
    static constexpr std::int32_t kMaximumLength = 0x3fffffff;

    FStringRef() = default;
    // Null text gives a null view, length 0.
    FStringRef(const char* text, std::int32_t length = -1);
    FStringRef(const char16_t* text, std::int32_t length = -1);
    // A stretch of the other text. A non-positive offset is 0; an offset or a length past the end is cut.
    FStringRef(const FStringRef& other, std::int32_t offset, std::int32_t length = -1);
    // 8-bit and 16-bit text; any other type gives a null view.
    explicit FStringRef(const FVariant& value);
    FStringRef(const FStringRef& other) = default;
    FStringRef& operator=(const FStringRef& other) = default;

    // The order of these is part of the contract between modules.
    virtual ~FStringRef() = default;
    virtual std::int32_t length() const;
    // The text if it is of that width; the empty text otherwise, never null.
    virtual const char* text8() const;
    virtual const char16_t* text16() const;
    virtual const char16_t* text() const;
    // The pointer as it is, null included.
    virtual const void* rawText() const;
    // 0 past the end, for null text, and for text of the other width.
    virtual char char8At(std::int32_t index) const;
    virtual char16_t char16At(std::int32_t index) const;

    // The text without a conversion: empty when it is of the other width.
    std::string_view view8() const {
        return isWide() ? std::string_view() : std::string_view(narrowText(), static_cast<std::size_t>(characters()));
    }
    std::u16string_view view16() const {
        return isWide() ? std::u16string_view(wideText(), static_cast<std::size_t>(characters()))
                        : std::u16string_view();
    }

    bool isWide() const { return (word_ & kWideBit) != 0; }
    FTextWidth width() const { return isWide() ? FTextWidth::wide : FTextWidth::narrow; }
    bool isNull() const { return text_ == nullptr; }
    bool isEmpty() const { return text_ == nullptr || characters() == 0; }

    // Comparing. Only the sign of a result means anything. The comparison ends at a NUL in either text if one comes
    // before the length. An empty other gives 1, or 0 when this is empty too; an empty self -1; a start past the end
    // -1. When the widening of one side fails the 8-bit side counts as the greater one.
    int compare(const FStringRef& other, std::int32_t length = -1, FCase folding = FCase::exact) const;
    int compareAt(std::int32_t start, const FStringRef& other, std::int32_t length = -1,
                  FCase folding = FCase::exact) const;
    // "file9" before "file10": runs of digits compare by their value, and equal values by the count of leading zeros.
    int compareNatural(const FStringRef& other, FCase folding = FCase::exact) const;
    // False for an empty argument unless this text is empty too: an absent prefix must not match. contains is false for
    // an empty argument always.
    bool startsWith(const FStringRef& other, FCase folding = FCase::exact) const;
    bool endsWith(const FStringRef& other, FCase folding = FCase::exact) const;
    bool contains(const FStringRef& other, FCase folding = FCase::exact) const;
    // The first position at which the two differ, their ends compared as well; -1 if there is none.
    std::int32_t firstDifference(const FStringRef& other, FCase folding = FCase::exact) const;
    bool equalsCharAt(std::int32_t index, char c) const;
    bool equalsCharAt(std::int32_t index, char16_t c) const;
    friend bool operator==(const FStringRef& a, const FStringRef& b) { return a.compare(b) == 0; }
    friend bool operator<(const FStringRef& a, const FStringRef& b) { return a.compare(b) < 0; }

    // Searching; -1 when there is nothing. lastStart is the last position that is tried, if it lies within the text;
    // otherLength bounds how much of other is looked for.
    std::int32_t indexOf(std::int32_t start, const FStringRef& other, std::int32_t otherLength = -1,
                         FCase folding = FCase::exact, std::int32_t lastStart = -1) const;
    std::int32_t indexOf(std::int32_t start, char c, FCase folding = FCase::exact, std::int32_t lastStart = -1) const;
    std::int32_t indexOf(std::int32_t start, char16_t c, FCase folding = FCase::exact,
                         std::int32_t lastStart = -1) const;
    // Backward from start to 0; a negative start, or one past the length, is the length.
    std::int32_t lastIndexOf(std::int32_t start, const FStringRef& other, std::int32_t otherLength = -1,
                             FCase folding = FCase::exact) const;
    std::int32_t lastIndexOf(std::int32_t start, char c, FCase folding = FCase::exact) const;
    std::int32_t lastIndexOf(std::int32_t start, char16_t c, FCase folding = FCase::exact) const;
    // How often the character occurs from start on; -1 if it can't be held in this text's width.
    std::int32_t count(char c, std::int32_t start = 0, FCase folding = FCase::exact) const;
    std::int32_t count(char16_t c, std::int32_t start = 0, FCase folding = FCase::exact) const;

    // Numbers in decimal, after white space and with a sign. False leaves out as it was. 64-bit values out of range
    // become the nearest one, 32-bit values are the low half of those. The decimal point is ".", whatever the locale.
    bool getInt64(std::int64_t& out, std::int32_t index = 0, FNumberSearch search = FNumberSearch::atIndex) const;
    bool getUInt64(std::uint64_t& out, std::int32_t index = 0, FNumberSearch search = FNumberSearch::atIndex) const;
    bool getInt32(std::int32_t& out, std::int32_t index = 0, FNumberSearch search = FNumberSearch::atIndex) const;
    bool getUInt32(std::uint32_t& out, std::int32_t index = 0, FNumberSearch search = FNumberSearch::atIndex) const;
    // "inf", "nan" and hexadecimal floats count only at the index itself.
    bool getFloat(double& out, std::int32_t index = 0, FNumberSearch search = FNumberSearch::atIndex) const;
    // Hexadecimal digits with or without "0x"; the low 32 bits.
    bool getHex(std::uint32_t& out, std::int32_t index = 0, FNumberSearch search = FNumberSearch::atIndex) const;
    // Where the digits at the end of the text begin, or -1; with required not 0 they must be exactly so many.
    std::int32_t trailingDigitsStart(std::int32_t required = 0) const;
    std::int64_t trailingNumber(std::int64_t defaultValue = -1) const;

    // Classifying.
    bool isDigitAt(std::int32_t index) const;
    bool isAscii() const;
    bool isNormalized(FNormalForm form = FNormalForm::composed) const;
    static bool isSpace(char c);
    static bool isSpace(char16_t c);
    // The narrower idea of a blank: 32, 160, 8194 to 8203, 8239, 8287, 12288; no tabulators and no line ends.
    static bool isBlank(char16_t c);
    static bool isAlpha(char c);
    static bool isAlpha(char16_t c);
    static bool isAlnum(char c);
    static bool isAlnum(char16_t c);
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    static bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
    static bool isAsciiChar(char c) { return static_cast<unsigned char>(c) < 0x80; }
    static bool isAsciiChar(char16_t c) { return c < 0x80; }
    static bool isLower(char c);
    static bool isLower(char16_t c);
    static bool isUpper(char c);
    static bool isUpper(char16_t c);

    // Copying out. The buffer takes count characters (negative: all from start) and a NUL; the number of characters
    // copied. Text of the other width is converted on the way, and is bounded by count after that.
    std::int32_t copyTo8(char* buffer, std::int32_t start = 0, std::int32_t count = -1) const;
    std::int32_t copyTo16(char16_t* buffer, std::int32_t start = 0, std::int32_t count = -1) const;
    // False and an empty target when start lies past the end.
    bool substring(FString& target, std::int32_t start, std::int32_t count = -1) const;
    // To a foreign string object, in 16 bits if it takes them.
    void sendTo(IStringSource& target) const;
    // Text that still belongs to this string, which must end with a NUL and outlive the variant.
    void toVariant(FVariant& out) const;

    // The hash of the text in the width it has: equal texts of different width hash differently. 0 for empty text and
    // for a table size of 0.
    std::uint32_t hash(std::uint32_t tableSize) const;

protected:
    static constexpr std::uint32_t kLengthMask = 0x3fffffffu;
    static constexpr std::uint32_t kWideBit = 0x40000000u;

    FStringRef(const void* text, std::int32_t length, FTextWidth width)
        : text_(const_cast<void*>(text)),
          word_(static_cast<std::uint32_t>(length) | (width == FTextWidth::wide ? kWideBit : 0)) {}

    std::int32_t characters() const { return static_cast<std::int32_t>(word_ & kLengthMask); }
    void setCharacters(std::int32_t length) const {
        word_ = (word_ & ~kLengthMask) | static_cast<std::uint32_t>(length);
    }
    void setWidth(FTextWidth width) const { word_ = width == FTextWidth::wide ? word_ | kWideBit : word_ & ~kWideBit; }
    const char* narrowText() const { return static_cast<const char*>(text_); }
    const char16_t* wideText() const { return static_cast<const char16_t*>(text_); }

    // Mutable because FString's accessors convert the text that they read.
    mutable void* text_ = nullptr;
    // Bits 0 to 29 the length, bit 30 set for 16-bit text, bit 31 carried along and interpreted by nobody.
    mutable std::uint32_t word_ = 0;
};

static_assert(sizeof(void*) != 8 || sizeof(FStringRef) == 24);

} // namespace tessera
