// FXmlParser2: reads any well-formed XML document from a stream, through the Expat library, and tells a listener.
//
// Texts come as UTF-8, whatever the document's encoding, with entities resolved. Blocks of kBlockSize bytes are read
// straight into the library's buffer, several of them for a token that is longer than a block. When something follows
// the document, the stream is moved back to where that begins, ready for the next parse; a stream that can't seek loses
// what was read ahead. After a document the parser needs a reset before the next one. One thread per parser.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/xml/IXmlListener.h"
#include "persistence/xml/IXmlParser.h"

#include <cstdint>
#include <memory>

struct XML_ParserStruct;

namespace tessera {

class FStream;

class FXmlParser2 final : public IXmlParser {
public:
    static constexpr std::int32_t kBlockSize = 32768;

    // encoding: overrides what the document declares ("UTF-8", "ISO-8859-1", ...); null leaves it to the document. A
    // null listener is told nothing.
    explicit FXmlParser2(std::unique_ptr<IXmlListener> listener, const char* encoding = nullptr);
    FXmlParser2(const FXmlParser2&) = delete;
    FXmlParser2& operator=(const FXmlParser2&) = delete;
    ~FXmlParser2();

    // From where the stream stands to the end of the document. True also when the listener has suspended the parse.
    // False for a document that isn't well-formed, or that the listener has ended; getErrorText tells.
    bool parse(FStream& stream);
    // From inside a callback. Resumable: parse gives true, and resume goes on behind the callback. Otherwise the
    // document has failed. One more callback may come.
    void stop(bool resumable) override;
    // As parse. False as well when nothing was suspended.
    bool resume();
    // Ready for another document.
    bool reset(const char* encoding = nullptr);

    // From 1; of where the parser has come to.
    std::int64_t lineNumber() const override;
    FString getErrorText() const override;

private:
    struct Handlers;

    struct ParserCloser {
        void operator()(XML_ParserStruct* parser) const;
    };

    void setHandlers();
    bool readBlocks();
    std::int32_t nextSize() const;
    std::int32_t readInto(char* block, std::int32_t size);
    bool endsBeforeMore();

    std::unique_ptr<XML_ParserStruct, ParserCloser> parser_;
    std::unique_ptr<IXmlListener> listener_;
    FRefPtr<FStream> stream_;
    // Bytes of the stream that the library has got since the last reset.
    std::int64_t given_ = 0;
    // Whether the last block was the stream's end.
    bool ended_ = false;
};

} // namespace tessera
