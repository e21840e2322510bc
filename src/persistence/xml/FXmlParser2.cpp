#include "persistence/xml/FXmlParser2.h"

#include "persistence/streams/FStream.h"

#include <expat.h>

#include <algorithm>
#include <utility>

namespace tessera {

// What the library calls. The user data is the parser.
struct FXmlParser2::Handlers {
    static void startElement(void* data, const XML_Char* name, const XML_Char** attributes) {
        if (auto* self = withListener(data)) {
            self->listener_->startElement(*self, name, attributes);
        }
    }
    static void endElement(void* data, const XML_Char* name) {
        if (auto* self = withListener(data)) {
            self->listener_->endElement(*self, name);
        }
    }
    static void characters(void* data, const XML_Char* text, int length) {
        if (auto* self = withListener(data)) {
            self->listener_->characters(*self, text, length);
        }
    }
    static void comment(void* data, const XML_Char* text) {
        if (auto* self = withListener(data)) {
            self->listener_->comment(*self, text);
        }
    }

private:
    static FXmlParser2* withListener(void* data) {
        auto* self = static_cast<FXmlParser2*>(data);
        return self != nullptr && self->listener_ != nullptr ? self : nullptr;
    }
};

void FXmlParser2::ParserCloser::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

FXmlParser2::FXmlParser2(std::unique_ptr<IXmlListener> listener, const char* encoding)
    : parser_(XML_ParserCreate(encoding)), listener_(std::move(listener)) {
    setHandlers();
}

FXmlParser2::~FXmlParser2() = default;

void FXmlParser2::setHandlers() {
    if (!parser_) {
        return;
    }
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), Handlers::startElement, Handlers::endElement);
    XML_SetCharacterDataHandler(parser_.get(), Handlers::characters);
    XML_SetCommentHandler(parser_.get(), Handlers::comment);
}

bool FXmlParser2::parse(FStream& stream) {
    stream_ = &stream;
    return readBlocks();
}

bool FXmlParser2::readBlocks() {
    for (;;) {
        const std::int32_t size = nextSize();
        void* block = parser_ ? XML_GetBuffer(parser_.get(), size) : nullptr;
        if (block == nullptr) {
            return false;
        }
        const std::int32_t count = readInto(static_cast<char*>(block), size);
        given_ += count;
        switch (XML_ParseBuffer(parser_.get(), count, ended_ ? XML_TRUE : XML_FALSE)) {
        case XML_STATUS_SUSPENDED:
            return true;
        case XML_STATUS_OK:
            if (ended_) {
                return true;
            }
            break;
        default:
            return endsBeforeMore();
        }
    }
}

// The library looks anew at a token that isn't complete with each block that comes. One that is longer than a block
// gets as much again as there is of it, so that it costs no more than in proportion.
std::int32_t FXmlParser2::nextSize() const {
    constexpr std::int64_t kMost = 1 << 28;
    const std::int64_t at = parser_ ? XML_GetCurrentByteIndex(parser_.get()) : -1;
    const std::int64_t waiting = at >= 0 ? std::min(given_ - at, kMost) : 0;
    return static_cast<std::int32_t>(std::max<std::int64_t>(waiting / kBlockSize, 1)) * kBlockSize;
}

std::int32_t FXmlParser2::readInto(char* block, std::int32_t size) {
    std::int32_t filled = 0;
    ended_ = false;
    while (filled < size && !ended_) {
        const std::int32_t count = stream_->read(block + filled, std::min(kBlockSize, size - filled));
        ended_ = count <= 0;
        filled += std::max(count, 0);
        if (size == kBlockSize) {
            break;
        }
    }
    return filled;
}

void FXmlParser2::stop(bool resumable) {
    XML_StopParser(parser_.get(), resumable ? XML_TRUE : XML_FALSE);
}

bool FXmlParser2::resume() {
    if (!parser_ || !stream_) {
        return false;
    }
    switch (XML_ResumeParser(parser_.get())) {
    case XML_STATUS_SUSPENDED:
        return true;
    case XML_STATUS_OK:
        return ended_ || readBlocks();
    default:
        return endsBeforeMore();
    }
}

// After an error: whether the document was complete and something else follows it in the stream, which is then moved
// back to where that begins.
bool FXmlParser2::endsBeforeMore() {
    if (XML_GetErrorCode(parser_.get()) != XML_ERROR_JUNK_AFTER_DOC_ELEMENT) {
        return false;
    }
    const std::int64_t unused = given_ - XML_GetCurrentByteIndex(parser_.get());
    if (unused > 0) {
        stream_->seek(-unused, SeekMode::fromHere);
    }
    return true;
}

bool FXmlParser2::reset(const char* encoding) {
    if (!parser_ || XML_ParserReset(parser_.get(), encoding) != XML_TRUE) {
        return false;
    }
    setHandlers();
    given_ = 0;
    ended_ = false;
    return true;
}

std::int64_t FXmlParser2::lineNumber() const {
    return parser_ ? static_cast<std::int64_t>(XML_GetCurrentLineNumber(parser_.get())) : 0;
}

FString FXmlParser2::getErrorText() const {
    const XML_Error error = parser_ ? XML_GetErrorCode(parser_.get()) : XML_ERROR_NO_MEMORY;
    // The library counts the line behind the callback that ended the document.
    const std::int64_t line = lineNumber() - (error == XML_ERROR_ABORTED ? 1 : 0);
    FString text;
    text.printf("Xml Error: %s \r\nLine: %I64d", XML_ErrorString(error), line);
    return text;
}

} // namespace tessera
