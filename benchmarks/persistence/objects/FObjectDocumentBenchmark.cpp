// A document of tracks, read into a tree and written from one: beside two libraries that read XML into trees of their
// own, and beside the plain way to put lines together.
#include "persistence/objects/FObjectDocument.h"

#include "persistence/attributes/FSubList.h"
#include "persistence/streams/FMemoryStream.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>
#include <tinyxml2.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using namespace tessera;

// As a mixer saves them: so many tracks, each with four integers, four floats of full precision and two texts.
FRefPtr<FAttributes> tracks(std::int64_t count) {
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    for (std::int64_t i = 0; i < count; ++i) {
        auto* track = new FAttributes;
        const double position = static_cast<double>(i) / 7;
        track->setInt("Color", 0xFF00FF00 + i);
        track->setInt("Channels", 2);
        track->setInt("Flags", i % 1024);
        track->setInt("Output", i * 1000003);
        track->setFloat("Volume", 1.0 / static_cast<double>(i + 3));
        track->setFloat("Pan", -position / 1000);
        track->setFloat("Start", position * 48000);
        track->setFloat("Length", position + 0.1);
        track->setString("Name", ("Track " + std::to_string(i)).c_str());
        track->setString("Comment", u"Aufnahme für Träger & Co.");
        tree->appendSub("Tracks", track);
    }
    return tree;
}

std::string documentOf(std::int64_t count) {
    FObjectDocument document;
    const auto tree = tracks(count);
    document.addTree("project", *tree);
    FMemoryStream stream;
    if (!document.saveDocument(stream, "Project")) {
        std::abort();
    }
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

void readOurs(benchmark::State& state) {
    const std::string text = documentOf(state.range(0));
    for (auto _ : state) {
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        FObjectDocument document;
        if (!document.loadDocument(stream, "Project")) {
            std::abort();
        }
        benchmark::DoNotOptimize(document.getTree("project"));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

void readTinyxml2(benchmark::State& state) {
    const std::string text = documentOf(state.range(0));
    for (auto _ : state) {
        tinyxml2::XMLDocument document;
        if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
            std::abort();
        }
        benchmark::DoNotOptimize(document.FirstChildElement("Project"));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

// Every value as what it is, as whoever reads the document would want it.
double convertAll(pugi::xml_node node) {
    double sum = 0;
    for (const pugi::xml_node child : node.children()) {
        if (std::strcmp(child.name(), "int") == 0) {
            sum += static_cast<double>(child.attribute("value").as_llong());
        } else if (std::strcmp(child.name(), "float") == 0) {
            sum += child.attribute("value").as_double();
        } else if (std::strcmp(child.name(), "string") == 0) {
            const bool isWide = child.attribute("wide").as_bool();
            const char* value = child.attribute("value").as_string();
            sum += static_cast<double>(isWide ? pugi::as_wide(value).size() : std::string(value).size());
        } else {
            sum += convertAll(child);
        }
    }
    return sum;
}

void readPugixml(benchmark::State& state) {
    const std::string text = documentOf(state.range(0));
    for (auto _ : state) {
        pugi::xml_document document;
        if (!document.load_buffer(text.data(), text.size())) {
            std::abort();
        }
        benchmark::DoNotOptimize(convertAll(document));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

void writeOurs(benchmark::State& state) {
    FObjectDocument document;
    const auto tree = tracks(state.range(0));
    document.addTree("project", *tree);
    for (auto _ : state) {
        FMemoryStream stream;
        if (!document.saveDocument(stream, "Project")) {
            std::abort();
        }
        benchmark::DoNotOptimize(stream.getData());
    }
}

// A line at a time through the library's formatter, into the same stream. Gives less than we do: the texts and names go
// out as they are.
class LineAssembler {
public:
    explicit LineAssembler(FStream& stream) : stream_(stream) {}

    void writeDocument(const FAttributes& tree) {
        line("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n");
        line("<Project>\r\n%*s<rootObjects>\r\n%*s<root name=\"%s\">\r\n", 3, "", 6, "", "project");
        writeMembers(tree, 3);
        line("%*s</root>\r\n%*s</rootObjects>\r\n</Project>\r\n", 6, "", 3, "");
    }

private:
    template <class... Arguments>
    void line(const char* format, Arguments... arguments) {
        const int length = std::snprintf(buffer_, sizeof buffer_, format, arguments...);
        stream_.write(buffer_, length);
    }

    void writeMembers(const FAttributes& tree, int level) {
        for (std::int32_t i = 0; i < tree.getCount(); ++i) {
            writeMember(*tree.at(i), level);
        }
    }

    void writeMember(const FStringIDAttribute& attribute, int level) {
        const char* name = attribute.getKey().view8().data();
        switch (attribute.getType() & 0xF) {
        case AttributeBits::kInteger:
            line("%*s<int name=\"%s\" value=\"%" PRId64 "\"/>\r\n", level * 3, "", name, attribute.getInt());
            break;
        case AttributeBits::kFloat:
            line("%*s<float name=\"%s\" value=\"%.50g\"/>\r\n", level * 3, "", name, attribute.getFloat());
            break;
        case AttributeBits::kText:
            writeText(name, attribute.getText(), level);
            break;
        default:
            writeList(name, *cmCast<FSubList>(attribute.getObject()), level);
        }
    }

    void writeText(const char* name, const FStringRef& text, int level) {
        if (!text.isWide()) {
            line("%*s<string name=\"%s\" value=\"%s\"/>\r\n", level * 3, "", name, text.view8().data());
            return;
        }
        FString narrow(text);
        narrow.toMultiByte(CodePage::utf8);
        line("%*s<string name=\"%s\" value=\"%s\" wide=\"true\"/>\r\n", level * 3, "", name, narrow.view8().data());
    }

    void writeList(const char* name, const FSubList& list, int level) {
        line("%*s<list name=\"%s\" type=\"list\">\r\n", level * 3, "", name);
        for (std::int32_t i = 0; i < list.count(); ++i) {
            line("%*s<item>\r\n", level * 3 + 3, "");
            writeMembers(*list.at(i), level + 2);
            line("%*s</item>\r\n", level * 3 + 3, "");
        }
        line("%*s</list>\r\n", level * 3, "");
    }

    FStream& stream_;
    char buffer_[1024];
};

void writeSnprintf(benchmark::State& state) {
    const auto tree = tracks(state.range(0));
    for (auto _ : state) {
        FMemoryStream stream;
        LineAssembler(stream).writeDocument(*tree);
        benchmark::DoNotOptimize(stream.getData());
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(100, 10'000);
}

[[maybe_unused]] const benchmark::internal::Benchmark* const rows[] = {
    benchmark::RegisterBenchmark("objects.read/ours", readOurs)->Apply(sizes),
    benchmark::RegisterBenchmark("objects.read/tinyxml2", readTinyxml2)->Apply(sizes),
    benchmark::RegisterBenchmark("objects.read/pugixml", readPugixml)->Apply(sizes),
    benchmark::RegisterBenchmark("objects.write/ours", writeOurs)->Apply(sizes),
    benchmark::RegisterBenchmark("objects.write/snprintf", writeSnprintf)->Apply(sizes),
};

} // namespace
