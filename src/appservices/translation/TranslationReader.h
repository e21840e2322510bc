// TranslationReader: reads translation files of the older form, whose texts are 8-bit.
//
// The form looks like XML and is less: no entities, no declarations, and the tags of a translation file alone:
//
//     <Translation>
//       <LanguageTable> <language key="de">Deutsch</language> </LanguageTable>
//       <StringTable> <String Key="Open"> <de>Öffnen</de> </String> </StringTable>
//     </Translation>
//
// Between the tags white space is nothing, within a text it counts. Texts in "jp" are code page 932, all others 1252.
// Bytes and listener are borrowed. What was told before an error stands. Elements nest five deep and not deeper, so no
// file makes the reader recurse on. Time grows with the length of the file.
#pragma once

#include "foundation/text/FString.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessera {

struct ITranslationListener;

class TranslationReader {
public:
    // The longest comment, processing instruction and attribute value, in bytes.
    static constexpr std::size_t kLongestPart = 32'944;
    static constexpr std::size_t kMostAttributes = 16;

    TranslationReader(std::string_view bytes, ITranslationListener& listener) : bytes_(bytes), listener_(listener) {}

    // Once. False at the first error, also when the listener asks to end.
    bool read();

    // How many translations were read.
    std::int32_t getStringCount() const { return stringCount_; }
    // Empty as long as there is none.
    const FString& getErrorMessage() const { return errorMessage_; }
    // The message for the user: the error, two empty lines, the two lines before the place and the place's own with a
    // mark in it, and up to 200 bytes behind.
    FString describeError() const;

private:
    // What an element ends at.
    enum class CloseKind { endOfFile, endTag };
    // Which element the reader is in. Each but the document knows its place below the one before.
    enum class Place { document, translation, languages, language, strings, string, text };

    struct Attribute {
        std::string_view name;
        std::string_view value;
    };

    struct Tag {
        std::string_view name;
        std::array<Attribute, kMostAttributes> attributes;
        std::size_t attributeCount = 0;
        bool isEmpty = false;
    };

    bool parseElement(std::string_view tagName, CloseKind closeKind);
    bool parseChild();
    bool parseRawText();
    bool parseEndTag(std::string_view tagName, CloseKind closeKind);
    bool parseTag(Tag& tag);
    bool parseAttribute(Attribute& attribute);
    bool parseName(std::string_view& name, const char* illegal);
    bool skipUpTo(std::string_view end, std::size_t start, const char* tooLong, const char* notClosed);

    // Whether the tag may stand here; the place that it makes.
    bool openTag(const Tag& tag, Place& place);
    bool openTranslation(const Tag& tag, Place& place);
    bool openTable(const Tag& tag, Place& place);
    bool openLanguage(const Tag& tag, Place& place);
    bool openInStrings(const Tag& tag, Place& place);
    bool refuseTag(const Tag& tag);
    bool tellText(Place place);
    bool tellTranslation();

    bool collectsText() const { return place_ == Place::language || place_ == Place::text; }
    bool isAtEnd() const { return at_ >= bytes_.size(); }
    bool isAhead(std::string_view text) const { return bytes_.substr(at_).starts_with(text); }
    void skipWhiteSpace();
    std::int32_t countLines();
    bool fail(const char* message);

    std::string_view bytes_;
    ITranslationListener& listener_;
    std::size_t at_ = 0;
    Place place_ = Place::document;
    // Of the string and the language that the reader is in.
    std::string_view key_;
    std::string_view code_;
    std::string text_;
    std::int32_t stringCount_ = 0;
    // Lines are counted up to here.
    std::size_t countedTo_ = 0;
    std::int32_t line_ = 1;
    FString errorMessage_;
};

} // namespace tessera
