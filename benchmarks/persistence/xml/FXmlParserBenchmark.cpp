// An object document read by both of our parsers, beside bare Expat with the same four handlers. Nobody builds
// anything: what is measured is the way to the callbacks, from a stream in memory. Sizes are in megabytes.
#include "persistence/xml/FXmlParser.h"

#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/FXmlParser2.h"

#include <benchmark/benchmark.h>

#include <expat.h>

#include <cstdint>
#include <memory>
#include <string>

namespace {

using namespace tessera;

// As a program's documents look: objects in objects, mostly numbers and short texts, here and there a body of bytes.
const std::string& document(std::int64_t megabytes) {
    static std::string text;
    static std::int64_t size = 0;
    if (size == megabytes) {
        return text;
    }
    size = megabytes;
    text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<Project>\r\n";
    for (std::int64_t i = 0; text.size() < static_cast<std::size_t>(megabytes) << 20; ++i) {
        const std::string number = std::to_string(i);
        text += "   <obj class=\"AudioEvent\" name=\"Event " + number + "\" ID=\"" + std::to_string(i * 64 + 4096) +
                "\">\r\n"
                "      <int name=\"Start\" value=\"" +
                std::to_string(i * 48000) +
                "\"/>\r\n"
                "      <int name=\"Length\" value=\"192000\"/>\r\n"
                "      <float name=\"Gain\" value=\"0.70710678118654757273731092936941422522068023681640625\"/>\r\n"
                "      <string name=\"Title\" value=\"Take " +
                number +
                " &amp; more\" wide=\"true\"/>\r\n"
                "      <member name=\"Additional Attributes\">\r\n"
                "         <int name=\"Flgs\" value=\"3\"/>\r\n"
                "         <list name=\"Curve\" type=\"float\">\r\n"
                "            <item value=\"0\"/>\r\n"
                "            <item value=\"0.5\"/>\r\n"
                "            <item value=\"1\"/>\r\n"
                "         </list>\r\n";
        if (i % 8 == 0) {
            text += "         <bin name=\"Data\">\r\n";
            for (int line = 0; line < 4; ++line) {
                text += "\t\t\t\t000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F\r\n";
            }
            text += "         </bin>\r\n";
        }
        text += "      </member>\r\n"
                "   </obj>\r\n\r\n";
    }
    text += "</Project>\r\n";
    return text;
}

class CountingParser final : public FXmlParser {
public:
    using FXmlParser::FXmlParser;
    std::int64_t count = 0;

protected:
    bool startElement(const char*, const FXmlAttributeList& attributes, bool, void*) override {
        count += 1 + attributes.getCount();
        return true;
    }
    bool endElement(const char*, void*) override {
        ++count;
        return true;
    }
    bool characters(const char*, std::int32_t length, void*) override {
        count += length;
        return true;
    }
};

void parserOurs(benchmark::State& state) {
    const std::string& text = document(state.range(0));
    for (auto _ : state) {
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        CountingParser parser(&stream);
        if (!parser.parse(nullptr)) {
            state.SkipWithError("the document doesn't parse");
            break;
        }
        benchmark::DoNotOptimize(parser.count);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

class CountingListener final : public IXmlListener {
public:
    explicit CountingListener(std::int64_t& count) : count_(count) {}

    void startElement(IXmlParser&, const char*, const char* const* attributes) override {
        count_ += attributes[0] != nullptr ? 2 : 1;
    }
    void endElement(IXmlParser&, const char*) override { ++count_; }
    void characters(IXmlParser&, const char*, std::int32_t length) override { count_ += length; }
    void comment(IXmlParser&, const char*) override { ++count_; }

private:
    std::int64_t& count_;
};

void parser2Ours(benchmark::State& state) {
    const std::string& text = document(state.range(0));
    for (auto _ : state) {
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        std::int64_t count = 0;
        FXmlParser2 parser(std::make_unique<CountingListener>(count));
        if (!parser.parse(stream)) {
            state.SkipWithError("the document doesn't parse");
            break;
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

std::int64_t& countOf(void* data) {
    return *static_cast<std::int64_t*>(data);
}

void expat(benchmark::State& state) {
    const std::string& text = document(state.range(0));
    constexpr std::int32_t kBlock = 32768;
    for (auto _ : state) {
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        std::int64_t count = 0;
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                                  XML_ParserFree);
        XML_SetUserData(parser.get(), &count);
        XML_SetElementHandler(
            parser.get(),
            [](void* data, const char*, const char** attributes) { countOf(data) += attributes[0] != nullptr ? 2 : 1; },
            [](void* data, const char*) { ++countOf(data); });
        XML_SetCharacterDataHandler(parser.get(), [](void* data, const char*, int length) { countOf(data) += length; });
        XML_SetCommentHandler(parser.get(), [](void* data, const char*) { ++countOf(data); });
        std::int32_t read = kBlock;
        while (read > 0) {
            read = stream.read(XML_GetBuffer(parser.get(), kBlock), kBlock);
            if (XML_ParseBuffer(parser.get(), read, read == 0) != XML_STATUS_OK) {
                state.SkipWithError("the document doesn't parse");
                break;
            }
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(2)->Arg(20)->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const benchmark::internal::Benchmark* const rows[] = {
    benchmark::RegisterBenchmark("xml.parser/ours", parserOurs)->Apply(sizes),
    benchmark::RegisterBenchmark("xml.parser/Expat", expat)->Apply(sizes),
    benchmark::RegisterBenchmark("xml.parser2/ours", parser2Ours)->Apply(sizes),
    benchmark::RegisterBenchmark("xml.parser2/Expat", expat)->Apply(sizes),
};

} // namespace
