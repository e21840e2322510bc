#include "appservices/translation/TranslationReader.h"

#include "appservices/translation/CodePageText.h"
#include "appservices/translation/ITranslationListener.h"

#include <algorithm>
#include <utility>

namespace tessera {
namespace {

// The spellings are what users and support have known for years.
namespace Error {

constexpr const char* commentTooLong = "Too int32 comment";
constexpr const char* commentNotClosed = "Non closed comment";
constexpr const char* instructionTooLong = "Too int32 processing instruction";
constexpr const char* instructionNotClosed = "Non closed processing instruction ( '<? ... ?>')";
constexpr const char* declaration = "Non supported '<!' tag";
constexpr const char* strayEndTag = "Non expected end tag";
constexpr const char* endTagSyntax = "syntax error at end tag";
constexpr const char* tooManyAttributes = "Too many attribute/value pairs";
constexpr const char* attributeField = "Attribute field not valid";
constexpr const char* attributeValue = "Attribute value invalid (or too int32)";
constexpr const char* illegalName = "Name is not legal";
constexpr const char* nameTooLong = "Name too int32";
constexpr const char* textOutOfPlace = "The context is not valid for raw text yet!";
constexpr const char* noKey = "The key is not set!";
constexpr const char* noLanguage = "The language is not set!";
constexpr const char* noLanguageCode = "The language code is not set! Can't read a language name yet!";
constexpr const char* attributesNotTaken = "This tag doesn't support attributes (or unknown tag)!";
constexpr const char* tagOutOfPlace = "This tag is not supported in that context!";
constexpr const char* languageNeedsPair = "The language tag requires a single key/value pair!";
constexpr const char* languageAttribute = "This tag doesnt support this attribute name!";
constexpr const char* stringNeedsKey = "The string tag requires a single 'key' attribute with value!";
constexpr const char* stringAttribute = "The string tag doesn't support this attribute name!";
constexpr const char* keyIsSet = "The string key is already set!";
constexpr const char* keyFirst = "You must set the string key first!";
constexpr const char* translationOpen = "You haven't finished the previous translation!";
constexpr const char* attributesOutOfPlace = "Attribute/value pairs are not supported in that context!";

} // namespace Error

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr const char* kMark = "  <====== HERE ======  ";
// What the message for the user shows behind the place, in bytes, and before it, in lines.
constexpr std::size_t kShownBehind = 200;
constexpr int kLinesShown = 3;

bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
           static_cast<unsigned char>(c) > 127;
}

bool isNameCharacter(char c) {
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// CR LF, LF and CR each end a line, at their last byte.
bool endsLine(std::string_view bytes, std::size_t at) {
    return bytes[at] == '\n' || (bytes[at] == '\r' && !bytes.substr(at + 1).starts_with('\n'));
}

CodePage codePageOf(std::string_view languageCode) {
    return languageCode == "jp" ? CodePage::shiftJis : CodePage::western;
}

} // namespace

bool TranslationReader::read() {
    return parseElement({}, CloseKind::endOfFile);
}

bool TranslationReader::parseElement(std::string_view tagName, CloseKind closeKind) {
    for (;;) {
        if (!collectsText()) {
            skipWhiteSpace();
        }
        if (isAtEnd()) {
            return closeKind == CloseKind::endOfFile || fail(Error::endTagSyntax);
        }
        if (isAhead("</")) {
            return parseEndTag(tagName, closeKind);
        }
        if (!parseChild()) {
            return false;
        }
    }
}

bool TranslationReader::parseChild() {
    if (!isAhead("<")) {
        return parseRawText();
    }
    if (isAhead("<!--")) {
        return skipUpTo("-->", 4, Error::commentTooLong, Error::commentNotClosed);
    }
    if (isAhead("<?")) {
        return skipUpTo("?>", 2, Error::instructionTooLong, Error::instructionNotClosed);
    }
    if (isAhead("<!")) {
        return fail(Error::declaration);
    }
    Tag tag;
    Place place = Place::document;
    if (!parseTag(tag) || !openTag(tag, place)) {
        return false;
    }
    const Place before = std::exchange(place_, place);
    text_.clear();
    if (!tag.isEmpty && !parseElement(tag.name, CloseKind::endTag)) {
        return false;
    }
    place_ = before;
    return tellText(place);
}

bool TranslationReader::parseRawText() {
    switch (place_) {
    case Place::document:
    case Place::translation:
        return fail(Error::textOutOfPlace);
    case Place::languages:
        return fail(Error::noLanguageCode);
    case Place::strings:
        return fail(Error::noKey);
    case Place::string:
        return fail(Error::noLanguage);
    case Place::language:
    case Place::text:
        break;
    }
    const std::size_t end = std::min(bytes_.find('<', at_), bytes_.size());
    text_.append(bytes_.substr(at_, end - at_));
    at_ = end;
    return true;
}

bool TranslationReader::parseEndTag(std::string_view tagName, CloseKind closeKind) {
    if (closeKind == CloseKind::endOfFile) {
        return fail(Error::strayEndTag);
    }
    at_ += 2;
    std::string_view name;
    if (!parseName(name, Error::illegalName)) {
        return false;
    }
    if (name != tagName) {
        return fail(Error::strayEndTag);
    }
    skipWhiteSpace();
    if (!isAhead(">")) {
        return fail(Error::endTagSyntax);
    }
    ++at_;
    return true;
}

bool TranslationReader::parseTag(Tag& tag) {
    ++at_;
    if (!parseName(tag.name, Error::illegalName)) {
        return false;
    }
    for (;;) {
        skipWhiteSpace();
        tag.isEmpty = isAhead("/>");
        if (tag.isEmpty || isAhead(">")) {
            at_ += tag.isEmpty ? 2 : 1;
            return true;
        }
        if (tag.attributeCount == kMostAttributes) {
            return fail(Error::tooManyAttributes);
        }
        if (!parseAttribute(tag.attributes[tag.attributeCount++])) {
            return false;
        }
    }
}

bool TranslationReader::parseAttribute(Attribute& attribute) {
    if (!parseName(attribute.name, Error::attributeField)) {
        return false;
    }
    skipWhiteSpace();
    if (!isAhead("=")) {
        return fail(Error::attributeField);
    }
    ++at_;
    skipWhiteSpace();
    if (!isAhead("\"") && !isAhead("'")) {
        return fail(Error::attributeValue);
    }
    const std::size_t start = at_ + 1;
    const std::string_view value = bytes_.substr(start, kLongestPart + 1);
    const std::size_t end = value.find(bytes_[at_]);
    if (end == std::string_view::npos) {
        return fail(Error::attributeValue);
    }
    attribute.value = value.substr(0, end);
    at_ = start + end + 1;
    return true;
}

bool TranslationReader::parseName(std::string_view& name, const char* illegal) {
    const std::string_view rest = bytes_.substr(at_);
    if (rest.empty() || !isNameStart(rest.front())) {
        return fail(illegal);
    }
    const auto end = std::find_if_not(rest.begin(), rest.end(), isNameCharacter);
    if (end == rest.end()) {
        return fail(Error::nameTooLong);
    }
    name = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    at_ += name.size();
    return true;
}

bool TranslationReader::skipUpTo(std::string_view end, std::size_t start, const char* tooLong, const char* notClosed) {
    const std::string_view rest = bytes_.substr(at_ + start);
    const std::size_t length = rest.substr(0, kLongestPart + end.size()).find(end);
    if (length == std::string_view::npos) {
        return fail(rest.size() > kLongestPart ? tooLong : notClosed);
    }
    at_ += start + length + end.size();
    return true;
}

bool TranslationReader::openTag(const Tag& tag, Place& place) {
    switch (place_) {
    case Place::document:
        return openTranslation(tag, place);
    case Place::translation:
        return openTable(tag, place);
    case Place::languages:
        return openLanguage(tag, place);
    case Place::language:
        return refuseTag(tag);
    case Place::strings:
    case Place::string:
    case Place::text:
        return openInStrings(tag, place);
    }
    return false;
}

bool TranslationReader::openTranslation(const Tag& tag, Place& place) {
    place = Place::translation;
    return (tag.name == "Translation" && tag.attributeCount == 0) || refuseTag(tag);
}

bool TranslationReader::openTable(const Tag& tag, Place& place) {
    place = tag.name == "LanguageTable" ? Place::languages : Place::strings;
    return ((tag.name == "LanguageTable" || tag.name == "StringTable") && tag.attributeCount == 0) || refuseTag(tag);
}

bool TranslationReader::openLanguage(const Tag& tag, Place& place) {
    if (tag.name != "language") {
        return refuseTag(tag);
    }
    if (tag.attributeCount != 1) {
        return fail(Error::languageNeedsPair);
    }
    if (tag.attributes[0].name != "key") {
        return fail(Error::languageAttribute);
    }
    code_ = tag.attributes[0].value;
    place = Place::language;
    return true;
}

// In the table of strings a tag is a string or a language, whatever its name.
bool TranslationReader::openInStrings(const Tag& tag, Place& place) {
    if (tag.name != "String") {
        if (place_ == Place::strings) {
            return fail(Error::keyFirst);
        }
        if (place_ == Place::text) {
            return fail(Error::translationOpen);
        }
        if (tag.attributeCount != 0) {
            return fail(Error::attributesOutOfPlace);
        }
        code_ = tag.name;
        place = Place::text;
        return true;
    }
    if (place_ != Place::strings) {
        return fail(Error::keyIsSet);
    }
    if (tag.attributeCount != 1 || tag.attributes[0].value.empty()) {
        return fail(Error::stringNeedsKey);
    }
    if (tag.attributes[0].name != "key" && tag.attributes[0].name != "Key") {
        return fail(Error::stringAttribute);
    }
    key_ = tag.attributes[0].value;
    place = Place::string;
    return true;
}

bool TranslationReader::refuseTag(const Tag& tag) {
    return fail(tag.attributeCount != 0 ? Error::attributesNotTaken : Error::tagOutOfPlace);
}

// At the end of an element of the place. Elements without a text tell nothing.
bool TranslationReader::tellText(Place place) {
    if (text_.empty()) {
        return true;
    }
    if (place == Place::language) {
        listener_.addLanguage(code_, widenText(codePageOf(code_), text_));
    }
    if (place == Place::text) {
        ++stringCount_;
        if (listener_.wants(code_) && !tellTranslation()) {
            return false;
        }
    }
    text_.clear();
    return true;
}

bool TranslationReader::tellTranslation() {
    // Keys are English in every file.
    const std::u16string key = widenText(CodePage::western, key_);
    return listener_.addTranslation(key, code_, widenText(codePageOf(code_), text_), countLines(), errorMessage_) !=
           kResultFailure;
}

void TranslationReader::skipWhiteSpace() {
    at_ = std::min(bytes_.find_first_not_of(kWhiteSpace, at_), bytes_.size());
}

// The line that the reader is in.
std::int32_t TranslationReader::countLines() {
    for (; countedTo_ < at_; ++countedTo_) {
        line_ += endsLine(bytes_, countedTo_) ? 1 : 0;
    }
    return line_;
}

bool TranslationReader::fail(const char* message) {
    errorMessage_.assign8(message);
    return false;
}

FString TranslationReader::describeError() const {
    // No more of what comes before than of anything else: a file may be one line.
    const std::size_t place = std::min(at_, bytes_.size());
    std::size_t start = place;
    for (int lines = 0; start > 0 && place - start < kLongestPart; --start) {
        lines += endsLine(bytes_, start - 1) ? 1 : 0;
        if (lines == kLinesShown) {
            break;
        }
    }
    const std::u16string before = widenText(CodePage::western, bytes_.substr(start, place - start));
    const std::u16string behind = widenText(CodePage::western, bytes_.substr(place, kShownBehind));
    FString text(errorMessage_);
    text.append8("\n\n\n");
    text.append16(before.data(), static_cast<std::int32_t>(before.size()));
    text.append8(kMark);
    text.append16(behind.data(), static_cast<std::int32_t>(behind.size()));
    return text;
}

} // namespace tessera
