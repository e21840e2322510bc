// The tags of FXmlParser: a start tag with its attributes, an end tag, a declaration.
#include "persistence/xml/FXmlParser.h"

#include "foundation/containers/CmString.h"
#include "foundation/text/FTextBlocks.h"
#include "persistence/streams/FStream.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace tessera {

namespace {

// What a single odd tag has left over is given back.
constexpr std::int32_t kMostFreeAttributes = 256;

bool isWhiteSpace(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

constexpr std::array<bool, 256> kLettersAndDigits = [] {
    std::array<bool, 256> bytes{};
    for (const char byte : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789")) {
        bytes[static_cast<std::uint8_t>(byte)] = true;
    }
    return bytes;
}();

bool isLetterOrDigit(char byte) {
    return kLettersAndDigits[static_cast<std::uint8_t>(byte)];
}

// The quotes are among them: of the two kinds, either may be the one that ends the value.
constexpr std::string_view kNoPlainValue = "\"'&\\\n\r";

// The first byte that ends a plain value, or makes it none.
const char* endOfPlainValue(const char* at, const char* end) {
    using namespace textblocks;
    for (; end - at >= static_cast<std::ptrdiff_t>(kUnits<char>); at += kUnits<char>) {
        const Block<char> block = load(at);
        Block<char> ends{};
        for (const char byte : kNoPlainValue) {
            ends |= asBlock<char>(block == static_cast<std::uint8_t>(byte));
        }
        if (anyMarked<char>(ends)) {
            return at + firstMarked<char>(ends);
        }
    }
    return std::find_first_of(at, end, kNoPlainValue.begin(), kNoPlainValue.end());
}

bool isNameEnd(char byte) {
    return byte == '=' || isWhiteSpace(byte);
}

} // namespace

void FXmlParser::readTag(void* context) {
    // The attributes come in the same token buffer, and nested calls in theirs; short names need no memory.
    const std::string name(token_, static_cast<std::size_t>(tokenLength_));
    FXmlAttributeList attributes;
    const FXmlToken end = readAttributes(attributes);
    const bool isEmpty = end == FXmlToken::emptyTagEnd;
    if (!isEmpty && end != FXmlToken::tagEnd) {
        fail(FXmlError::malformed);
    } else {
        if (!isEmpty) {
            openTags_.push(new CmString(FStringRef(name.data(), static_cast<std::int32_t>(name.size()))));
        }
        if (!skipping_) {
            const bool outer = std::exchange(inEmptyElement_, isEmpty);
            accept(startElement(name.c_str(), attributes, isEmpty, context));
            inEmptyElement_ = outer;
        }
    }
    recycle(attributes);
}

void FXmlParser::readEndTag(bool endsText, void* context) {
    const std::string_view name(token_, static_cast<std::size_t>(tokenLength_));
    const auto* const open = static_cast<const CmString*>(openTags_.at(0));
    const bool matches = open != nullptr && open->string().view8() == name;
    if (matches && endsText && !skipping_) {
        accept(characters("", 0, context));
    }
    const auto closed = FRefPtr<CmString>::adopt(static_cast<CmString*>(openTags_.pop()));
    if (!matches) {
        fail(FXmlError::malformed);
    } else if (!skipping_ && errorState_ == FXmlError::none) {
        accept(endElement(closed->string().text8(), context));
    }
}

void FXmlParser::readDeclaration() {
    FXmlAttributeList attributes;
    const FXmlToken end = readAttributes(attributes);
    if (end != FXmlToken::declarationEnd) {
        fail(end == FXmlToken::endOfStream ? FXmlError::endOfFile : FXmlError::malformed);
    } else if (const FString* encoding = attributes.valueOf("encoding")) {
        // Just this spelling: what writes another means something else by its bytes.
        codePage_ = encoding->view8() == "utf-8" ? CodePage::utf8 : codePage_;
    }
    recycle(attributes);
}

// Gives the token that ended them.
FXmlToken FXmlParser::readAttributes(FXmlAttributeList& attributes) {
    for (;;) {
        if (takePlainAttribute(attributes)) {
            continue;
        }
        const FXmlToken token = readTagToken();
        if (token == FXmlToken::attribute) {
            if (!parseAttribute(attributes)) {
                return FXmlToken::error;
            }
        } else if (token != FXmlToken::blanks && token != FXmlToken::lineEnd) {
            return token;
        }
    }
}

// An attribute as nearly all of them are, out of the block that lies ready: one blank, the name, "=" and the value,
// with no entity, backslash or line end in it. False, and nothing taken, for any other, which the tokens then tell.
bool FXmlParser::takePlainAttribute(FXmlAttributeList& attributes) {
    const std::string_view bytes = bytesAhead();
    const char* const begin = bytes.data() + (bytes.starts_with(' ') ? 1 : 0);
    const char* const end = bytes.data() + bytes.size();
    const char* at = std::find_if_not(begin, end, isLetterOrDigit);
    const auto nameLength = at - begin;
    if (nameLength == 0 || nameLength > kMaximumAttributeName || end - at < 2 || *at != '=') {
        return false;
    }
    const char quote = at[1];
    const char* const value = at + 2;
    at = quote == '"' || quote == '\'' ? endOfPlainValue(value, end) : end;
    if (at == end || *at != quote || at - value > kMaximumAttributeValue) {
        return false;
    }
    FRefPtr<FXmlAttribute> attribute = newAttribute();
    attribute->setName({begin, static_cast<std::size_t>(nameLength)});
    attribute->setValue({value, static_cast<std::size_t>(at - value)});
    attributes.add(std::move(attribute));
    take(static_cast<std::size_t>(at + 1 - bytes.data()));
    return true;
}

// Splits the token, which ends with the quote that closes the value.
bool FXmlParser::parseAttribute(FXmlAttributeList& attributes) {
    char* const closing = token_ + tokenLength_ - 1;
    char* const nameEnd = std::find_if(token_, closing, isNameEnd);
    char* at = std::find_if_not(nameEnd, closing, isWhiteSpace);
    if (at == closing || *at != '=' || nameEnd - token_ > kMaximumAttributeName) {
        return false;
    }
    at = std::find_if_not(at + 1, closing, isWhiteSpace);
    if (at == closing || *at != *closing || closing - (at + 1) > kMaximumAttributeValue) {
        return false;
    }
    char* const value = at + 1;
    auto length = static_cast<std::size_t>(closing - value);
    bool hasHighByte = false;
    if (std::memchr(value, '&', length) != nullptr) {
        length = resolveXmlEntities(value, length, entityColumn(), &hasHighByte);
    }
    FRefPtr<FXmlAttribute> attribute = newAttribute();
    attribute->setName({token_, static_cast<std::size_t>(nameEnd - token_)});
    attribute->setValue({value, length});
    if (hasHighByte && hasOption(FXmlOption::widenEntityValues)) {
        // Bytes that mean nothing in the code page stay as they are.
        attribute->value().toWide(CodePage::system);
    }
    attributes.add(std::move(attribute));
    return true;
}

FRefPtr<FXmlAttribute> FXmlParser::newAttribute() {
    FRefPtr<FXmlAttribute> attribute = freeAttributes_.takeFirst();
    return attribute ? std::move(attribute) : FRefPtr<FXmlAttribute>::adopt(new FXmlAttribute);
}

void FXmlParser::recycle(FXmlAttributeList& attributes) {
    // What a reader has kept is the reader's.
    attributes.dropShared();
    // In front, so that the next tag finds the names of this one where it looks for its own.
    freeAttributes_.prepend(attributes);
    while (freeAttributes_.getCount() > kMostFreeAttributes) {
        freeAttributes_.takeFirst();
    }
}

} // namespace tessera
