#include "persistence/xml/FXmlParser.h"

#include "foundation/containers/CmString.h"
#include "persistence/streams/FStream.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <string>
#include <utility>

namespace tessera {

namespace {

constexpr std::string_view kReportLine = "------------------------------------------------------------------------";
static_assert(kReportLine.size() == 72);

// Made on first use and never taken down: parsers may run to the very end of the process.
FXmlParser::ErrorListener& errorListener() {
    static auto* const listener = new FXmlParser::ErrorListener;
    return *listener;
}

std::string_view textOf(const CmObject* tag) {
    return tag != nullptr ? static_cast<const CmString*>(tag)->string().view8() : std::string_view();
}

} // namespace

FXmlParser::FXmlParser(FStream* stream, FXmlReadAhead readAhead)
    : stream_(stream), readBuffer_(readAhead == FXmlReadAhead::none ? 1 : kBlockSize) {
    readBuffer_.setSize(readBuffer_.getDelta());
    openTags_.setOwnership(CmOwnership::owner);
}

FXmlParser::~FXmlParser() = default;

bool FXmlParser::skipSubtree() {
    const bool outer = std::exchange(skipping_, true);
    const bool done = parse(nullptr);
    skipping_ = outer;
    return done;
}

void FXmlParser::stop(bool) {
    stop_ = true;
}

FString FXmlParser::getErrorText() const {
    return FString(xmlErrorText(errorState_));
}

FString FXmlParser::getCurrentTag() const {
    const std::string_view tag = textOf(openTags_.at(0));
    return FString(tag.data(), static_cast<std::int32_t>(tag.size()));
}

void FXmlParser::setStream(FStream* stream) {
    stream_ = stream;
    lineNumber_ = 0;
    bufferPosition_ = 0;
    pushedBackByte_ = kNoByte;
    readBuffer_.setFill(0);
    codePage_ = CodePage::system;
    textGoesOn_ = false;
    streamEnded_ = false;
    afterReturn_ = false;
    rawText_ = false;
    if (nesting_ == 0) {
        openTags_.removeAll();
    }
}

void FXmlParser::setOption(FXmlOption option, bool on) {
    const auto bit = static_cast<std::uint32_t>(option);
    options_ = on ? options_ | bit : options_ & ~bit;
}

FXmlEntityColumn FXmlParser::entityColumn() const {
    return hasOption(FXmlOption::secondEntityColumn) ? FXmlEntityColumn::second : FXmlEntityColumn::ansi;
}

void FXmlParser::setErrorListener(ErrorListener listener) {
    errorListener() = std::move(listener);
}

bool FXmlParser::startElement(const char*, const FXmlAttributeList&, bool, void*) {
    return true;
}

bool FXmlParser::endElement(const char*, void*) {
    return true;
}

bool FXmlParser::characters(const char*, std::int32_t, void*) {
    return true;
}

bool FXmlParser::comment(const char*, void*, bool) {
    return true;
}

bool FXmlParser::parse(void* context) {
    assert(!inEmptyElement_ && "the end tag that this call looks for is that of the element around it");
    if (nesting_ == kMaximumNesting) {
        errorState_ = FXmlError::unexpectedTag;
        return false;
    }
    const std::int32_t entryDepth = openTags_.getCount();
    if (nesting_ == 0) {
        streamEnded_ = false;
        stop_ = stop_ && entryDepth != 0;
    }
    errorState_ = FXmlError::none;
    ++nesting_;
    readElements(context, entryDepth);
    --nesting_;
    return errorState_ == FXmlError::none;
}

void FXmlParser::readElements(void* context, std::int32_t entryDepth) {
    FXmlToken before = FXmlToken::endOfStream;
    while (errorState_ == FXmlError::none && !stop_) {
        const FXmlToken token = readContentToken();
        if (!readContent(token, before, context, entryDepth)) {
            break;
        }
        before = token;
    }
}

// False when this parse has nothing more to read.
bool FXmlParser::readContent(FXmlToken token, FXmlToken before, void* context, std::int32_t entryDepth) {
    switch (token) {
    case FXmlToken::endOfStream:
        if (nesting_ > 1) {
            fail(FXmlError::endOfFile);
        }
        return false;
    case FXmlToken::startTag:
        readTag(context);
        return !isBeyondLastTag();
    case FXmlToken::endTag:
        readEndTag(before == FXmlToken::text, context);
        return !isBeyondLastTag() && openTags_.getCount() >= entryDepth;
    case FXmlToken::text:
        if (!skipping_) {
            token_[tokenLength_] = '\0';
            accept(characters(token_, tokenLength_, context));
        }
        return true;
    case FXmlToken::lineEnd:
    case FXmlToken::blanks:
        return true;
    case FXmlToken::declaration:
        readDeclaration();
        return true;
    case FXmlToken::comment:
        readComment(context);
        return true;
    case FXmlToken::cdata:
        skipCdata();
        return true;
    case FXmlToken::doctype:
        skipDoctype();
        return true;
    default:
        fail(FXmlError::malformed);
        return false;
    }
}

bool FXmlParser::isBeyondLastTag() const {
    return hasOption(FXmlOption::endWithLastTag) && openTags_.isEmpty();
}

void FXmlParser::readComment(void* context) {
    constexpr std::string_view kBegin = "<!--";
    constexpr std::string_view kEnd = "-->";
    // What may turn out to be the end of the comment is held back.
    constexpr std::int32_t kHeldBack = 3;
    const bool delivers = hasOption(FXmlOption::deliverComments) && !skipping_;
    const bool nests = !hasOption(FXmlOption::commentsEndAtOnce);
    char text[kCommentBlockSize + kHeldBack + 1];
    std::int32_t length = 0;
    // The two marks don't share a byte: "<!-->" ends nothing.
    std::int32_t sinceMark = 0;
    for (std::int64_t open = 1; open > 0;) {
        const int byte = nextByte();
        if (byte == kNoByte) {
            fail(FXmlError::endOfFile);
            return;
        }
        if (length == kCommentBlockSize + kHeldBack) {
            const char next = std::exchange(text[kCommentBlockSize], '\0');
            accept(!delivers || comment(text, context, false));
            if (errorState_ != FXmlError::none) {
                return;
            }
            text[kCommentBlockSize] = next;
            std::memmove(text, text + kCommentBlockSize, kHeldBack);
            length = kHeldBack;
        }
        text[length++] = static_cast<char>(byte);
        sinceMark = std::min<std::int32_t>(sinceMark + 1, kBegin.size());
        const std::string_view tail(text + length - sinceMark, static_cast<std::size_t>(sinceMark));
        if (tail.ends_with(kEnd)) {
            --open;
            sinceMark = 0;
        } else if (nests && tail == kBegin) {
            ++open;
            sinceMark = 0;
        }
    }
    text[length - static_cast<std::int32_t>(kEnd.size())] = '\0';
    accept(!delivers || comment(text, context, true));
}

void FXmlParser::skipCdata() {
    int brackets = 0;
    for (int byte = nextByte(); byte != '>' || brackets < 2; byte = nextByte()) {
        if (byte == kNoByte) {
            fail(FXmlError::endOfFile);
            return;
        }
        brackets = byte == ']' ? std::min(brackets + 1, 2) : 0;
    }
}

void FXmlParser::skipDoctype() {
    std::int64_t brackets = 0;
    int quote = kNoByte;
    for (int byte = nextByte(); byte != '>' || brackets > 0 || quote != kNoByte; byte = nextByte()) {
        if (byte == kNoByte) {
            fail(FXmlError::endOfFile);
            return;
        }
        if (quote != kNoByte) {
            quote = byte == quote ? kNoByte : quote;
        } else if (byte == '"' || byte == '\'') {
            quote = byte;
        } else if (byte == '[') {
            ++brackets;
        } else if (byte == ']') {
            --brackets;
        }
    }
}

// What a callback answered.
void FXmlParser::accept(bool accepted) {
    if (!accepted && errorState_ == FXmlError::none) {
        errorState_ = FXmlError::unexpectedTag;
    }
}

void FXmlParser::fail(FXmlError error) {
    errorState_ = error;
    const ErrorListener& listener = errorListener();
    if (!reportErrors_ || !listener) {
        return;
    }
    std::string report = "Error Message:     ";
    report += xmlErrorText(error);
    report += "\nCurrent Start Tag: ";
    report += textOf(openTags_.at(0));
    report += "\nCurrent Token:     ";
    report.append(token_, static_cast<std::size_t>(tokenLength_));
    report += "\n";
    report += kReportLine;
    report += "\n\n";
    report.append(reinterpret_cast<const char*>(readBuffer_.getData()) + bufferPosition_,
                  static_cast<std::size_t>(readBuffer_.getFill() - bufferPosition_));
    listener(FStringRef(report.data(), static_cast<std::int32_t>(report.size())));
}

} // namespace tessera
