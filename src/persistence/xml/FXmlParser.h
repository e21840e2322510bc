// FXmlParser: reads an XML document from a stream and calls back what it finds. Readers derive from it.
//
// It understands what this system writes, and a little more: tags, attributes, text, comments, a declaration. It skips
// CDATA sections and document types, checks that end tags match, and knows no namespaces and no encodings: all texts
// are the bytes of the document. White space in front of a text is dropped, and entities in a text are left to the
// reader, as is a character that is cut where a long text comes in pieces. A mark of UTF-8 in front of the document is
// text like any other.
//
// A reader may call parse again from inside startElement, with a context of its own: the nested call ends behind that
// element's end tag, which is told with the nested context. An element that is empty has no such tag, so there nesting
// isn't allowed. Nesting is bounded by kMaximumNesting.
//
// A failure ends all parses that are running; what was called back until then stays with the reader. A document that
// ends with tags open is no failure of the outermost parse: the reader knows what it has got. In a nested one it is.
// A name beyond 4096 bytes, an attribute's name beyond 47 or a value beyond 2047, counted before entities are resolved,
// make the document malformed. One thread per parser.
#pragma once

#include "foundation/containers/CmBuffer.h"
#include "foundation/containers/CmStack.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/xml/FXmlAttributeList.h"
#include "persistence/xml/FXmlError.h"
#include "persistence/xml/FXmlOption.h"
#include "persistence/xml/FXmlToken.h"
#include "persistence/xml/IXmlParser.h"
#include "persistence/xml/XmlEntities.h"
#include "platform/CodePages.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace tessera {

class FStream;

class FXmlParser : public IXmlParser {
public:
    static constexpr std::int32_t kBlockSize = 2048;
    static constexpr std::int32_t kMaximumTokenSize = 4096;
    static constexpr std::int32_t kCommentBlockSize = 4126;
    static constexpr std::int32_t kMaximumAttributeName = 47;
    static constexpr std::int32_t kMaximumAttributeValue = 2047;
    // Calls of parse that run at a time.
    static constexpr std::int32_t kMaximumNesting = 1000;

    using ErrorListener = std::function<void(const FStringRef& report)>;

    // The stream is read from where it stands; null reads as an empty one. FXmlReadAhead::none reads byte by byte and
    // leaves the stream right behind what was needed.
    explicit FXmlParser(FStream* stream, FXmlReadAhead readAhead = FXmlReadAhead::block);
    FXmlParser(const FXmlParser&) = delete;
    FXmlParser& operator=(const FXmlParser&) = delete;
    virtual ~FXmlParser();

    // Until the end of the stream, or of the element when nested. False when it failed, see getErrorState. A nested
    // call fails as well when the stream ends in its element, and when there are too many of them.
    bool parse(void* context);
    // From inside startElement: passes over the element's content and its end tag without a callback.
    bool skipSubtree();
    // Ends every parse that is running, as a success; it can't be resumed.
    void stop(bool resumable) override;

    std::int64_t lineNumber() const override { return lineNumber_; }
    FXmlError getErrorState() const { return errorState_; }
    FString getErrorText() const override;
    // The name of the innermost open element; empty when there is none.
    FString getCurrentTag() const;
    // CodePage::utf8 once the document has declared it in just this spelling, otherwise CodePage::system.
    CodePage getCodePage() const { return codePage_; }

    // A new document: forgets what was read ahead, line, code page and, unless a parse is running, open tags.
    void setStream(FStream* stream);
    void setOption(FXmlOption option, bool on);
    bool hasOption(FXmlOption option) const { return (options_ & static_cast<std::uint32_t>(option)) != 0; }
    FXmlEntityColumn entityColumn() const;
    void setReportErrors(bool on) { reportErrors_ = on; }

    // Who is told of malformed documents, in any parser of the process. Not locked: set it at start-up.
    static void setErrorListener(ErrorListener listener);

protected:
    // The callbacks, with the context that the running parse was given. False ends the parse, as
    // FXmlError::unexpectedTag unless setErrorState was called. All accept by default. Names end with a NUL and stand
    // until the callback returns, over nested calls as well.
    virtual bool startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void* context);
    virtual bool endElement(const char* name, void* context);
    // Pieces of at most kMaximumTokenSize bytes, ending with a NUL that isn't counted, and a piece of length 0 when the
    // end tag of the element that holds the text follows.
    virtual bool characters(const char* text, std::int32_t length, void* context);
    // Pieces of kCommentBlockSize bytes; isLast marks the last piece, which may be empty.
    virtual bool comment(const char* text, void* context, bool isLast);

    void setErrorState(FXmlError state) { errorState_ = state; }
    bool isSkipping() const { return skipping_; }

    // Tells the listener of malformed documents as well.
    void fail(FXmlError error);
    // With that of the element whose start is told, unless it is empty; without that of the one whose end is told.
    std::int32_t countOpenTags() const { return openTags_.getCount(); }

    // From the next token on: text counts with every byte, so blanks and line ends in front of it are delivered.
    void setRawText(bool on) { rawText_ = on; }

    // For readers that go on by themselves, byte by byte: the next byte, or -1 at the end of the stream.
    int nextByte();
    int peekByte();
    // Puts back the byte that nextByte gave last; not a line end. At the start of a block the stream is moved back; if
    // it can't be, the parser is at FXmlError::endOfFile, and the answer is false.
    bool unreadByte();

private:
    static constexpr int kNoByte = -1;

    void readElements(void* context, std::int32_t entryDepth);
    bool readContent(FXmlToken token, FXmlToken before, void* context, std::int32_t entryDepth);
    bool isBeyondLastTag() const;
    void readTag(void* context);
    void readEndTag(bool endsText, void* context);
    void readDeclaration();
    void readComment(void* context);
    void skipCdata();
    void skipDoctype();
    FXmlToken readAttributes(FXmlAttributeList& attributes);
    bool takePlainAttribute(FXmlAttributeList& attributes);
    bool parseAttribute(FXmlAttributeList& attributes);
    FRefPtr<FXmlAttribute> newAttribute();
    void recycle(FXmlAttributeList& attributes);
    void accept(bool accepted);

    FXmlToken readContentToken();
    FXmlToken readTagToken();
    FXmlToken readText();
    FXmlToken readMarkup(int following);
    FXmlToken readExclamation();
    FXmlToken readEndName();
    FXmlToken readAttributeText();
    FXmlToken readWhiteSpace(FXmlToken token);
    bool readUpTo(std::uint8_t stopClasses);
    bool takeExactly(std::string_view expected);
    bool appendToToken(std::string_view bytes);
    bool appendNextByte();

    bool refill();
    int peekAtStream();
    std::string_view bytesAhead();
    void take(std::size_t count);
    void takeLines(std::string_view bytes);
    void countLine(char byte);

    FRefPtr<FStream> stream_;
    // Ends of lines passed: CR, LF, or both in this order.
    std::int32_t lineNumber_ = 0;
    bool skipping_ = false;
    bool stop_ = false;
    std::int32_t bufferPosition_ = 0;
    // Read from the stream ahead of the next block.
    int pushedBackByte_ = kNoByte;
    FXmlError errorState_ = FXmlError::none;
    CmBuffer readBuffer_;
    // Of CmString.
    CmStack openTags_;
    FXmlAttributeList freeAttributes_;
    std::uint32_t options_ = 0;
    CodePage codePage_ = CodePage::system;
    bool reportErrors_ = true;

    // How many calls of parse are running.
    std::int32_t nesting_ = 0;
    bool inEmptyElement_ = false;
    bool rawText_ = false;
    // The text goes on that filled the last token.
    bool textGoesOn_ = false;
    bool streamEnded_ = false;
    // A line end may have its second byte to come.
    bool afterReturn_ = false;
    std::int32_t tokenLength_ = 0;
    // One of them, and no parse has its own: what nested calls take of the thread's stack stays small.
    char token_[kMaximumTokenSize + 1];
};

inline int FXmlParser::nextByte() {
    if (bufferPosition_ >= readBuffer_.getFill() && !refill()) {
        return kNoByte;
    }
    const std::uint8_t byte = readBuffer_.getData()[bufferPosition_++];
    countLine(static_cast<char>(byte));
    return byte;
}

inline int FXmlParser::peekByte() {
    return bufferPosition_ < readBuffer_.getFill() ? readBuffer_.getData()[bufferPosition_] : peekAtStream();
}

// What lies ready, read if need be; empty at the end of the stream.
inline std::string_view FXmlParser::bytesAhead() {
    if (bufferPosition_ >= readBuffer_.getFill() && !refill()) {
        return {};
    }
    return {reinterpret_cast<const char*>(readBuffer_.getData()) + bufferPosition_,
            static_cast<std::size_t>(readBuffer_.getFill() - bufferPosition_)};
}

// Passes over bytes of bytesAhead among which there is no line end.
inline void FXmlParser::take(std::size_t count) {
    bufferPosition_ += static_cast<std::int32_t>(count);
    afterReturn_ = afterReturn_ && count == 0;
}

inline void FXmlParser::countLine(char byte) {
    if (byte == '\n') {
        lineNumber_ += afterReturn_ ? 0 : 1;
    } else if (byte == '\r') {
        ++lineNumber_;
    }
    afterReturn_ = byte == '\r';
}

} // namespace tessera
