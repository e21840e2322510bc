// Any bytes may come as one document or as several in a row. Where the blocks of the stream end makes no difference to
// what a listener is told of a document; stops and resumes lose nothing.
//
// Names tell the listener what to do: "s..." suspends the parse, "t..." ends it.
#include "fuzz/SlowStream.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/FXmlParser2.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace tessera;
using fuzz::SlowStream;

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class Listener final : public IXmlListener {
public:
    Listener(std::string& events, bool& suspended) : events_(events), suspended_(suspended) {}

    void startElement(IXmlParser& parser, const char* name, const char* const* attributes) override {
        events_ += std::string("<") + name;
        for (; *attributes != nullptr; ++attributes) {
            events_ += std::string(" ") + *attributes;
        }
        events_ += ">";
        if (*name == 's' || *name == 't') {
            parser.stop(*name == 's');
            suspended_ = *name == 's';
        }
    }
    void endElement(IXmlParser&, const char* name) override { events_ += std::string("</") + name + ">"; }
    void characters(IXmlParser&, const char* text, std::int32_t length) override {
        events_.append(text, static_cast<std::size_t>(length));
    }
    void comment(IXmlParser&, const char* text) override { events_ += std::string("{") + text + "}"; }

private:
    std::string& events_;
    bool& suspended_;
};

struct Reading {
    // Of each document that was read.
    std::vector<std::string> documents;
    bool failed = false;
};

Reading read(std::string_view text, std::int32_t largestRead) {
    SlowStream stream(text, largestRead);
    std::string events;
    bool suspended = false;
    FXmlParser2 parser(std::make_unique<Listener>(events, suspended));
    Reading reading;
    while (stream.tell() < stream.getSize() && !reading.failed) {
        const std::int64_t start = stream.tell();
        bool done = parser.parse(stream);
        while (done && suspended) {
            suspended = false;
            done = parser.resume();
        }
        check(!parser.resume());
        check(!parser.getErrorText().isEmpty());
        check(!done || stream.tell() > start);
        if (done) {
            reading.documents.push_back(events);
        }
        reading.failed = !done;
        events.clear();
        suspended = false;
        check(parser.reset());
    }
    return reading;
}

// How many documents a reading comes to depends on the blocks where what follows one is no document: the library sees
// more or less of it. What both have read is the same.
void checkSame(const Reading& a, const Reading& b) {
    const std::size_t count = std::min(a.documents.size(), b.documents.size());
    check(
        std::equal(a.documents.begin(), a.documents.begin() + static_cast<std::ptrdiff_t>(count), b.documents.begin()));
    check(a.documents.size() == b.documents.size() || a.failed || b.failed);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 1 << 16;
    if (size > kLongest) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Reading whole = read(text, 1 << 20);
    checkSame(read(text, 1), whole);
    checkSame(read(text, 5), whole);
    return 0;
}
