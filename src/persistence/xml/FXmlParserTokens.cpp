// The token level of FXmlParser: one token at a time into a buffer of fixed size, told apart by where it stands, within
// a tag or outside.
#include "persistence/xml/FXmlParser.h"

#include "foundation/text/FTextBlocks.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tessera {

namespace {

enum ByteClass : std::uint8_t {
    kLineEnd = 1,
    kBlank = 2,
    kQuote = 4,
    kAngle = 8,
    // What ends the name of a tag beside white space and ">".
    kSlash = 16,
    kQuestion = 32,
    kLetter = 64,
    kBackslash = 128,
};
constexpr std::uint8_t kWhiteSpace = kLineEnd | kBlank;

constexpr std::array<std::uint8_t, 256> makeClasses() {
    std::array<std::uint8_t, 256> classes{};
    classes['\n'] = classes['\r'] = kLineEnd;
    classes[' '] = classes['\t'] = kBlank;
    classes['"'] = classes['\''] = kQuote;
    classes['<'] = classes['>'] = kAngle;
    classes['/'] = kSlash;
    classes['?'] = kQuestion;
    classes['\\'] = kBackslash;
    for (int letter = 'a'; letter <= 'z'; ++letter) {
        classes[static_cast<std::size_t>(letter)] = kLetter;
        classes[static_cast<std::size_t>(letter - 'a' + 'A')] = kLetter;
    }
    return classes;
}

constexpr std::array<std::uint8_t, 256> kClasses = makeClasses();

std::uint8_t classOf(char byte) {
    return kClasses[static_cast<std::uint8_t>(byte)];
}

bool is(int byte, std::uint8_t classes) {
    return byte >= 0 && (kClasses[static_cast<std::size_t>(byte)] & classes) != 0;
}

// How many bytes come before the first one of these classes.
std::size_t lengthUpTo(std::string_view bytes, std::uint8_t classes) {
    const auto stops = [classes](char byte) { return (classOf(byte) & classes) != 0; };
    return static_cast<std::size_t>(std::find_if(bytes.begin(), bytes.end(), stops) - bytes.begin());
}

std::size_t lengthOfLineEnds(std::string_view bytes) {
    const auto stops = [](char byte) { return classOf(byte) != kLineEnd; };
    return static_cast<std::size_t>(std::find_if(bytes.begin(), bytes.end(), stops) - bytes.begin());
}

// How many blanks come first: most stand in front of a tag, and many together.
std::size_t lengthOfBlanks(std::string_view bytes) {
    std::size_t length = 0;
    for (; bytes.size() - length >= textblocks::kUnits<char>; length += textblocks::kUnits<char>) {
        const textblocks::Block<char> block = textblocks::load(bytes.data() + length);
        const auto others = textblocks::asBlock<char>((block != std::uint8_t{' '}) & (block != std::uint8_t{'\t'}));
        const std::size_t first = textblocks::firstMarked<char>(others);
        if (first < textblocks::kUnits<char>) {
            return length + first;
        }
    }
    while (length < bytes.size() && classOf(bytes[length]) == kBlank) {
        ++length;
    }
    return length;
}

// Whether a "<" with this behind it is more than data. An underscore isn't: names that begin with one are text here.
bool beginsMarkup(int following) {
    return is(following, kLetter | kSlash | kQuestion) || following == '!';
}

} // namespace

// False when the token is full.
bool FXmlParser::appendToToken(std::string_view bytes) {
    if (bytes.size() > static_cast<std::size_t>(kMaximumTokenSize - tokenLength_)) {
        return false;
    }
    std::memcpy(token_ + tokenLength_, bytes.data(), bytes.size());
    tokenLength_ += static_cast<std::int32_t>(bytes.size());
    return true;
}

bool FXmlParser::appendNextByte() {
    const auto byte = static_cast<char>(nextByte());
    return appendToToken({&byte, 1});
}

// False, and some of it taken, when something else comes.
bool FXmlParser::takeExactly(std::string_view expected) {
    return std::all_of(expected.begin(), expected.end(),
                       [this](char byte) { return nextByte() == static_cast<std::uint8_t>(byte); });
}

FXmlToken FXmlParser::readContentToken() {
    tokenLength_ = 0;
    if (textGoesOn_) {
        textGoesOn_ = false;
        if (readText() == FXmlToken::text && tokenLength_ > 0) {
            return FXmlToken::text;
        }
    }
    const std::string_view bytes = bytesAhead();
    if (bytes.empty()) {
        return FXmlToken::endOfStream;
    }
    if (bytes.front() == '<') {
        nextByte();
        const int following = peekByte();
        if (beginsMarkup(following)) {
            return readMarkup(following);
        }
        unreadByte();
        return readText();
    }
    if (!rawText_ && is(static_cast<std::uint8_t>(bytes.front()), kLineEnd)) {
        return readWhiteSpace(FXmlToken::lineEnd);
    }
    if (!rawText_ && !hasOption(FXmlOption::blanksAreText) && is(static_cast<std::uint8_t>(bytes.front()), kBlank)) {
        return readWhiteSpace(FXmlToken::blanks);
    }
    return readText();
}

FXmlToken FXmlParser::readTagToken() {
    tokenLength_ = 0;
    const std::string_view bytes = bytesAhead();
    if (bytes.empty()) {
        return FXmlToken::endOfStream;
    }
    const char byte = bytes.front();
    const std::uint8_t kind = classOf(byte);
    if (kind == kLineEnd || kind == kBlank) {
        return readWhiteSpace(kind == kBlank ? FXmlToken::blanks : FXmlToken::lineEnd);
    }
    if (byte == '>') {
        take(1);
        return FXmlToken::tagEnd;
    }
    if (kind == kSlash || kind == kQuestion) {
        take(1);
        if (peekByte() == '>') {
            nextByte();
            return kind == kSlash ? FXmlToken::emptyTagEnd : FXmlToken::declarationEnd;
        }
        return peekByte() == kNoByte ? FXmlToken::endOfStream : FXmlToken::error;
    }
    return readAttributeText();
}

// A run of blanks and tabs, or of line ends: nobody needs them one by one.
FXmlToken FXmlParser::readWhiteSpace(FXmlToken token) {
    for (std::string_view bytes = bytesAhead(); !bytes.empty(); bytes = bytesAhead()) {
        const bool areBlanks = token == FXmlToken::blanks;
        const std::size_t length = areBlanks ? lengthOfBlanks(bytes) : lengthOfLineEnds(bytes);
        const std::string_view run = bytes.substr(0, length);
        if (areBlanks) {
            take(run.size());
        } else {
            std::for_each(run.begin(), run.end(), [this](char byte) { countLine(byte); });
            bufferPosition_ += static_cast<std::int32_t>(run.size());
        }
        if (run.size() < bytes.size()) {
            break;
        }
    }
    return token;
}

FXmlToken FXmlParser::readText() {
    for (std::string_view bytes = bytesAhead(); !bytes.empty(); bytes = bytesAhead()) {
        if (tokenLength_ == kMaximumTokenSize) {
            textGoesOn_ = true;
            break;
        }
        const std::string_view fitting = bytes.substr(0, static_cast<std::size_t>(kMaximumTokenSize - tokenLength_));
        const std::string_view text = fitting.substr(0, fitting.find('<'));
        appendToToken(text);
        takeLines(text);
        if (text.size() == fitting.size()) {
            continue;
        }
        nextByte();
        if (beginsMarkup(peekByte())) {
            unreadByte();
            break;
        }
        appendToToken("<");
    }
    return FXmlToken::text;
}

// Behind a "<".
FXmlToken FXmlParser::readMarkup(int following) {
    if (is(following, kLetter)) {
        return readUpTo(kWhiteSpace | kSlash | kAngle) ? FXmlToken::startTag : FXmlToken::error;
    }
    nextByte();
    if (following == '/') {
        return readEndName();
    }
    if (following == '?') {
        // One that is cut short is told from a malformed one by what follows.
        return readUpTo(kWhiteSpace | kSlash | kAngle | kQuestion) || bytesAhead().empty() ? FXmlToken::declaration
                                                                                           : FXmlToken::error;
    }
    return readExclamation();
}

// Behind "<!".
FXmlToken FXmlParser::readExclamation() {
    constexpr std::int32_t kTypeLeft = 7;
    const int byte = peekByte();
    if (byte == '-') {
        return takeExactly("--") ? FXmlToken::comment : FXmlToken::error;
    }
    if (byte == '[') {
        return takeExactly("[CDATA[") ? FXmlToken::cdata : FXmlToken::error;
    }
    if (byte != 'D' && byte != 'd') {
        return FXmlToken::error;
    }
    // Taken unseen: what matters is that it isn't content.
    for (std::int32_t i = 0; i < kTypeLeft; ++i) {
        nextByte();
    }
    return FXmlToken::doctype;
}

// A blank anywhere in an end tag makes it malformed.
FXmlToken FXmlParser::readEndName() {
    return readUpTo(kWhiteSpace | kAngle) && takeExactly(">") ? FXmlToken::endTag : FXmlToken::error;
}

// Takes what comes before the first byte of these classes. False at the end of the stream and when the token is full.
bool FXmlParser::readUpTo(std::uint8_t stopClasses) {
    for (std::string_view bytes = bytesAhead(); !bytes.empty(); bytes = bytesAhead()) {
        // Line ends are counted one by one.
        const std::string_view run = bytes.substr(0, lengthUpTo(bytes, stopClasses | kLineEnd));
        if (!appendToToken(run)) {
            return false;
        }
        take(run.size());
        if (run.size() == bytes.size()) {
            continue;
        }
        if ((classOf(bytes[run.size()]) & stopClasses) != 0) {
            return true;
        }
        if (!appendNextByte()) {
            return false;
        }
    }
    return false;
}

// name="value", as it stands. The token begins with the name and ends with the closing quote.
FXmlToken FXmlParser::readAttributeText() {
    if (!readUpTo(kQuote | kAngle) || !is(peekByte(), kQuote)) {
        return bytesAhead().empty() ? FXmlToken::endOfStream : FXmlToken::error;
    }
    const int quote = peekByte();
    const std::uint8_t stops = hasOption(FXmlOption::backslashEscapesQuote) ? kQuote | kBackslash : kQuote;
    bool fits = appendNextByte();
    while (fits && readUpTo(stops)) {
        const int byte = peekByte();
        fits = appendNextByte();
        if (byte == quote) {
            return fits ? FXmlToken::attribute : FXmlToken::error;
        }
        if (byte == '\\' && is(peekByte(), kQuote)) {
            fits = fits && appendNextByte();
        }
    }
    return bytesAhead().empty() ? FXmlToken::endOfStream : FXmlToken::error;
}

} // namespace tessera
