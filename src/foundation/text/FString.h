// FString: text that owns its buffer, 8-bit or 16-bit, and changes between the two in place.
//
// A default string is 16-bit, empty and null. Reading through the accessor of the other width converts the string, with
// the loss that the system's code page brings (see FStringRef): text8() of a string with characters that it can't hold
// loses them for good. The text always ends with a NUL of its width. Buffers are exactly as long as their text and come
// from the C allocator; none is shared. A string holds at most 0x3fffffff characters; what would go beyond is refused.
//
// No operation throws. Those that can fail say so and leave the string as it was; append, insert and replace drop the
// new text silently when there is no memory. Assigning or appending a string's own buffer from its very start does
// nothing; a source further inside is copied first. Not synchronised.
#pragma once

#include "foundation/text/FStringRef.h"

#include <cstdarg>
#include <cstdint>
#include <string_view>

namespace tessera {

class FStream;
struct IAttributes;
struct IStringResult;

class FString : public FStringRef {
public:
    // printf keeps so many characters and drops the rest.
    static constexpr std::int32_t kPrintLimit = 4095;
    // The longest body that readString accepts, in bytes with the NUL and the mark.
    static constexpr std::int32_t kMaximumStreamBytes = 50000;

    FString() : FStringRef(nullptr, 0, FTextWidth::wide) {}
    FString(const char* text, std::int32_t length = -1, FNul nul = FNul::kept);
    FString(const char16_t* text, std::int32_t length = -1, FNul nul = FNul::kept);
    // The text is widened; it stays 8-bit when it means nothing in the code page.
    FString(const char* text, CodePage codePage, std::int32_t length = -1, FNul nul = FNul::kept);
    FString(const FString& other);
    FString(const FStringRef& other, std::int32_t length = -1);
    explicit FString(const FVariant& value);
    explicit FString(IStringResult& source);
    // The source is left empty in the width it had.
    FString(FString&& other) noexcept;
    ~FString() override;

    FString& operator=(const FString& other);
    FString& operator=(const FStringRef& other);
    FString& operator=(FString&& other) noexcept;
    FString& operator=(const char* text);
    FString& operator=(const char16_t* text);

    const char* text8() const override;
    const char16_t* text16() const override;
    char char8At(std::int32_t index) const override;
    char16_t char16At(std::int32_t index) const override;

    // Replacing the whole text; the string takes the width of what it is given. False when it is refused.
    bool assign(const FStringRef& other, std::int32_t length = -1);
    bool assign8(const char* text, std::int32_t length = -1, FNul nul = FNul::kept);
    bool assign16(const char16_t* text, std::int32_t length = -1, FNul nul = FNul::kept);
    // 16-bit text; bytes that are no UTF-8 stay as 8-bit text, and the answer is false.
    bool assignUtf8(const char* text, std::int32_t length = -1);
    // Integers in the string's present width. Any other type clears the string and is false.
    bool assignVariant(const FVariant& value);
    // "%lf" of the locale without its trailing zeros; one digit stays behind the point.
    void assignDouble(double value);

    // Text of the other width brings this string to 16 bits first.
    void append(const FStringRef& other);
    void append8(const char* text, std::int32_t length = -1);
    void append16(const char16_t* text, std::int32_t length = -1);
    void appendChar(char c, std::int32_t repeat = 1);
    void appendChar(char16_t c, std::int32_t repeat = 1);
    // Positions outside the text do nothing and are false.
    bool insert(std::int32_t position, const FStringRef& text, std::int32_t length = -1);
    bool replace(std::int32_t position, std::int32_t count, const FStringRef& text, std::int32_t length = -1);
    // How many were replaced. Inserted text isn't searched again; null text on either side replaces nothing.
    std::int32_t replaceAll(const FStringRef& find, const FStringRef& with,
                            FOccurrences occurrences = FOccurrences::all, FCase folding = FCase::exact);
    // Every character that occurs in set; a replacement of 0 is a blank. Whether anything changed.
    bool replaceChars(const FStringRef& set, char replacement);
    bool replaceChars(const FStringRef& set, char16_t replacement);
    bool removeChars(const FStringRef& set);
    // Whether anything was removed. Each search begins at the start of the text, so what closes up is found again.
    bool removeSubstring(const FStringRef& other, FOccurrences occurrences = FOccurrences::all);
    void remove(std::int32_t position, std::int32_t count = -1);
    // Whether the length changed; false for an unknown mode.
    bool trim(FTrimMode mode = FTrimMode::whiteSpace);
    bool removeAll(FTrimMode mode);
    // Past the end the text is extended with blanks. A NUL ends the text at the index; at or beyond the length it
    // changes nothing. False when the character can't be held in this text's width.
    bool setChar(std::int32_t index, char c);
    bool setChar(std::int32_t index, char16_t c);
    void toLower(std::int32_t index);
    void toLower();
    void toUpper(std::int32_t index);
    void toUpper();
    void clear();

    // The formats of FTextFormat, at most kPrintLimit characters. The string takes the format's width. False, and
    // nothing changed, without memory.
    bool printf(const char* format, ...);
    bool printf(const char16_t* format, ...);
    bool vprintf(const char* format, std::va_list arguments);
    bool vprintf(const char16_t* format, std::va_list arguments);

    // Makes a name unique by a counted suffix: "Take_07" becomes "Take_08" and "Take" becomes "Take_01" with width 2
    // and separator '_'. keepNumber leaves a number that is there as it is. The number is at least minimum. False for a
    // width above 32 and at the largest number.
    bool incrementVersion(std::uint32_t width, char separator, std::uint64_t minimum, bool keepNumber);

    // Room for length characters and the NUL in the given width; length 0 frees the buffer. The length of the text
    // changes only when it becomes 0. With fill, blanks stand from the old length to the new one.
    bool resize(std::int32_t length, FTextWidth width, bool fill = false);
    // In place. On false the old text stands.
    bool toWide(CodePage codePage = CodePage::system) const;
    bool toMultiByte(CodePage codePage = CodePage::system) const;
    // 16-bit text only. A composed form of the same length isn't taken over.
    bool normalize(FNormalForm form = FNormalForm::composed);

    void swap(FString& other) noexcept;
    // Takes the other's buffer over and leaves it empty.
    void take(FString& other);
    // A block of the C allocator that ends with a NUL becomes this string's.
    void adopt(char* buffer);
    void adopt(char16_t* buffer);
    // The buffer becomes the caller's, who gives it to free; the string is empty then. May be null.
    [[nodiscard]] void* release();
    // The buffer becomes the variant's. Empty text is given without the owner bit.
    void takeToVariant(FVariant& out);

    // Pascal form: a byte with the length, then so many characters. toPascal writes at most 256 bytes, cutting the
    // text.
    void fromPascal(const std::uint8_t* bytes);
    void toPascal(std::uint8_t* buffer) const;

    // A 32-bit count, that many bytes with the NUL, and behind 16-bit text, which travels as UTF-8, the bytes EF BB BF.
    // Defined in persistence. A count above kMaximumStreamBytes is skipped and false.
    bool readString(FStream& stream);
    bool writeString(FStream& stream) const;

    // As the value under the key in a tree of named values, in the width that it has. getAttribute is false, and the
    // string unchanged, when the key is missing or its value is no text. Defined in persistence.
    bool getAttribute(IAttributes& list, const char* key);
    bool setAttribute(IAttributes& list, const char* key) const;

private:
    template <class Character>
    bool assignText(std::basic_string_view<Character> source);
    template <class Character>
    void adoptText(Character* buffer);
    // In the width that the string has.
    bool assignAscii(std::string_view text);
    // The bytes may be the own ones.
    bool assignWidened(CodePage codePage, std::string_view source) const;
    // From one code page into another.
    bool recode(CodePage codePage) const;
    // Frees the buffer and puts another in its place. Const, since reading converts.
    void own(void* block, std::size_t length, FTextWidth width) const;
    // Gives back what is behind the new, shorter length.
    void shrinkTo(std::size_t length);
    // Brings this string and another text to one width, this one to 16 bits if need be, and calls work with the other.
    template <class Work>
    bool editInCommonWidth(const FStringRef& other, Work work);
    template <class Character>
    void appendText(std::basic_string_view<Character> text);
    template <class Character>
    void appendRepeated(Character c, std::size_t count);
    template <class Character>
    bool splice(std::size_t position, std::size_t count, std::basic_string_view<Character> text);
    template <class Character>
    void replaceOccurrences(std::basic_string_view<Character> find, std::basic_string_view<Character> with,
                            FOccurrences occurrences, FCase folding, std::size_t& count);
    template <class Character>
    bool replaceMembers(std::basic_string_view<Character> set, Character replacement);
    template <class Character, class Predicate>
    bool removeIf(Predicate predicate);
    template <class Character>
    bool removeText(std::basic_string_view<Character> needle, FOccurrences occurrences);
    template <class Character>
    bool trimText(FTrimMode mode);
    template <class Character>
    bool placeCharacter(std::int32_t index, Character c);
    template <class Wide, class Narrow>
    void mapCase(std::int32_t from, std::int32_t to, Wide wide, Narrow narrow);
    template <class Character>
    std::basic_string_view<Character> viewAs() const {
        return {bufferAs<Character>(), static_cast<std::size_t>(characters())};
    }
    template <class Character>
    Character* bufferAs() const {
        return static_cast<Character*>(text_);
    }

    char* narrowBuffer() const { return bufferAs<char>(); }
    char16_t* wideBuffer() const { return bufferAs<char16_t>(); }
};

static_assert(sizeof(FString) == sizeof(FStringRef));

} // namespace tessera
