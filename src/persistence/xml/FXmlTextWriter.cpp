#include "persistence/xml/FXmlTextWriter.h"

#include "foundation/text/FNumberText.h"
#include "persistence/streams/FStream.h"
#include "persistence/xml/XmlEscape.h"

namespace tessera {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::int32_t kLineSize = 1024;

} // namespace

FXmlTextWriter::FXmlTextWriter(FStream* stream, FXmlIndent indent)
    : stream_(stream), indent_(indent), line_(kLineSize) {}

FXmlTextWriter::~FXmlTextWriter() = default;

bool FXmlTextWriter::writeHeader(bool withEncoding) {
    put(withEncoding ? "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>" : "<?xml version=\"1.0\"?>");
    return endPiece();
}

bool FXmlTextWriter::startTag(std::string_view name, FXmlTagMode mode) {
    return openTag(name) && closeTag(mode);
}

bool FXmlTextWriter::openTag(std::string_view name) {
    beginPiece();
    put("<");
    put(name);
    return !failed_;
}

bool FXmlTextWriter::attribute(std::string_view name, std::string_view value) {
    putAttributeName(name);
    failed_ = !escape8(line_, value, true) || failed_;
    put("\"");
    return !failed_;
}

bool FXmlTextWriter::attribute(std::string_view name, std::u16string_view value) {
    putAttributeName(name);
    failed_ = !escapeWide(line_, value) || failed_;
    put("\"");
    return !failed_;
}

bool FXmlTextWriter::attribute(std::string_view name, std::int64_t value) {
    return attribute(name, FNumberText::integer(value).view());
}

bool FXmlTextWriter::attribute(std::string_view name, std::uint64_t value) {
    return attribute(name, FNumberText::unsignedInteger(value).view());
}

bool FXmlTextWriter::attribute(std::string_view name, double value) {
    return attribute(name, FNumberText::exact(value).view());
}

bool FXmlTextWriter::closeTag(FXmlTagMode mode) {
    put(mode == FXmlTagMode::selfClosing ? "/>" : ">");
    level_ += mode == FXmlTagMode::selfClosing ? 0 : 1;
    return endPiece();
}

bool FXmlTextWriter::endTag(std::string_view name, bool keepInline) {
    level_ -= level_ > 0 ? 1 : 0;
    beginPiece();
    put("</");
    put(name);
    put(">");
    inline_ = inline_ && keepInline;
    return endPiece();
}

bool FXmlTextWriter::text(std::string_view text) {
    beginPiece();
    put(text);
    return endPiece();
}

bool FXmlTextWriter::comment(std::string_view text) {
    beginPiece();
    put("<!-- ");
    put(text);
    put(" -->");
    return endPiece();
}

void FXmlTextWriter::put(std::string_view piece) {
    failed_ = !line_.append(piece.data(), static_cast<std::int32_t>(piece.size())) || failed_;
}

void FXmlTextWriter::beginPiece() {
    for (std::int32_t i = 0; atLineStart_ && i < level_; ++i) {
        put(indent_ == FXmlIndent::tab ? "\t" : "   ");
    }
    atLineStart_ = false;
}

bool FXmlTextWriter::endPiece() {
    if (!inline_) {
        put(kLineEnd);
        atLineStart_ = true;
    }
    return flush();
}

bool FXmlTextWriter::flush() {
    const std::int32_t count = line_.getFill();
    failed_ = failed_ || !stream_ || stream_->write(line_.getData(), count) != count;
    line_.setFill(0);
    return !failed_;
}

void FXmlTextWriter::putAttributeName(std::string_view name) {
    put(" ");
    put(name);
    put("=\"");
}

} // namespace tessera
