// FXmlTextWriter: puts a document together by hand, piece by piece: tags, attributes, text.
//
// Each piece is a line of its own, indented by its level and ended with CR LF, unless the writer is told to stay in the
// line. Attributes are escaped so that any XML reader understands them; names and raw text go out as they are. Nothing
// checks that tags match. Every operation is false once the stream has taken less than it was given.
#pragma once

#include "foundation/containers/CmBuffer.h"
#include "foundation/object/FRefPtr.h"

#include <cstdint>
#include <string_view>

namespace tessera {

class FStream;

// How a start tag ends: with ">", and what follows stands a level deeper, or with "/>".
enum class FXmlTagMode : std::int32_t { open = 0, selfClosing = 1 };

enum class FXmlIndent : bool { tab, threeBlanks };

class FXmlTextWriter {
public:
    // Holds a reference of the stream. A null stream takes nothing.
    explicit FXmlTextWriter(FStream* stream, FXmlIndent indent = FXmlIndent::tab);
    FXmlTextWriter(const FXmlTextWriter&) = delete;
    FXmlTextWriter& operator=(const FXmlTextWriter&) = delete;
    ~FXmlTextWriter();

    std::int32_t getLevel() const { return level_; }
    bool isInline() const { return inline_; }
    // While on, no line ends and no indents are written; an end tag switches it off and ends the line.
    void setInline(bool on) { inline_ = on; }

    // With the encoding, the three bytes that mark UTF-8 come first.
    bool writeHeader(bool withEncoding);
    bool startTag(std::string_view name, FXmlTagMode mode = FXmlTagMode::open);
    // Leaves the tag open for attributes; closeTag ends it.
    bool openTag(std::string_view name);
    // 8-bit text is taken for what the document's encoding says.
    bool attribute(std::string_view name, std::string_view value);
    bool attribute(std::string_view name, std::u16string_view value);
    bool attribute(std::string_view name, std::int64_t value);
    bool attribute(std::string_view name, std::uint64_t value);
    // All decimals of the binary value, up to fifty of them.
    bool attribute(std::string_view name, double value);
    bool closeTag(FXmlTagMode mode = FXmlTagMode::open);
    // keepInline leaves the writer in the line.
    bool endTag(std::string_view name, bool keepInline = false);
    // As it is.
    bool text(std::string_view text);
    bool comment(std::string_view text);

private:
    void put(std::string_view piece);
    // The indent, if a line begins here.
    void beginPiece();
    // The line end, unless in the line, and on to the stream.
    bool endPiece();
    bool flush();
    void putAttributeName(std::string_view name);

    FRefPtr<FStream> stream_;
    FXmlIndent indent_;
    std::int32_t level_ = 0;
    bool inline_ = false;
    bool atLineStart_ = true;
    bool failed_ = false;
    CmBuffer line_;
};

} // namespace tessera
