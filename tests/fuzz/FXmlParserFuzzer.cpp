// Any bytes may come as a document. Where the blocks of the stream end makes no difference to what is called back, and
// neither does reading ahead; a failure has a text and a success has none; what is escaped resolves to what it was.
//
// The first byte is the set of options. Names tell the reader what to do: "n..." is read by a parse of its own, "r..."
// as raw text, "s..." is skipped, "f..." refused, "t..." stops the parse.
#include "foundation/containers/FByteBuffer.h"
#include "fuzz/SlowStream.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/FXmlParser.h"
#include "persistence/xml/XmlEscape.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace tessera;
using fuzz::SlowStream;

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class Reader : public FXmlParser {
public:
    Reader(FStream* stream, FXmlReadAhead readAhead, std::uint8_t options) : FXmlParser(stream, readAhead) {
        for (std::uint32_t bit = 1; bit <= 64; bit *= 2) {
            setOption(static_cast<FXmlOption>(bit), (options & bit) != 0);
        }
    }

    std::string events;

protected:
    bool startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void* context) override {
        check(isEmpty || FStringRef(name).compare(getCurrentTag()) == 0);
        events += std::string("<") + name;
        for (const FXmlAttribute& attribute : attributes) {
            check(attribute.getName().length() <= kMaximumAttributeName);
            check(attribute.getValue().length() <= kMaximumAttributeValue);
            events.append(attribute.getName().view8());
            events += "=";
            events.append(attribute.getValue().view8());
            events += std::to_string(attribute.getValue().length());
        }
        events += isEmpty ? "/>" : ">";
        switch (*name) {
        case 'n':
            return isEmpty || parse(context);
        case 'r':
            setRawText(!isEmpty);
            return true;
        case 's':
            return isEmpty || skipSubtree();
        case 'f':
            return false;
        case 't':
            stop(false);
            return true;
        default:
            return true;
        }
    }
    bool endElement(const char* name, void*) override {
        setRawText(false);
        events += std::string("</") + name + ">";
        return true;
    }
    bool characters(const char* text, std::int32_t length, void*) override {
        check(length >= 0 && length <= kMaximumTokenSize && text[length] == '\0');
        events.append(text, static_cast<std::size_t>(length));
        events += "|";
        return true;
    }
    bool comment(const char* text, void*, bool isLast) override {
        events += text;
        events += isLast ? "}" : "..";
        return true;
    }
};

std::string eventsOf(std::string_view text, std::uint8_t options, std::int32_t largestRead, FXmlReadAhead readAhead) {
    SlowStream stream(text, largestRead);
    Reader reader(&stream, readAhead, options);
    const bool done = reader.parse(nullptr);
    check(done == (reader.getErrorState() == FXmlError::none));
    check(done == reader.getErrorText().isEmpty());
    return reader.events + "#" + std::to_string(static_cast<int>(reader.getErrorState())) + "#" +
           std::to_string(reader.lineNumber()) + "#" + std::to_string(static_cast<int>(reader.getCodePage()));
}

void checkEscape(std::string_view text) {
    FByteBuffer buffer;
    check(escape8(buffer, text, false));
    auto* escaped = reinterpret_cast<char*>(buffer.getData());
    const auto count = static_cast<std::size_t>(buffer.getFill());
    const std::string_view view(escaped, count);
    check(std::all_of(view.begin(), view.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }));
    check(view.find_first_of("<>\"\r\n") == view.npos);
    check(std::string_view(escaped, resolveXmlEntities(escaped, count, FXmlEntityColumn::ansi)) == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 1 << 20;
    if (size == 0 || size > kLongest) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string whole = eventsOf(text, data[0], 1 << 20, FXmlReadAhead::block);
    check(eventsOf(text, data[0], 1, FXmlReadAhead::block) == whole);
    check(eventsOf(text, data[0], 7, FXmlReadAhead::block) == whole);
    check(eventsOf(text, data[0], 1, FXmlReadAhead::none) == whole);
    checkEscape(text);
    return 0;
}
