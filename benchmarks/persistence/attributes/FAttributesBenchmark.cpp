// Named values set and found, beside a plain list of names and variants; and the binary form of a
// document beside its XML form.
#include "persistence/attributes/FAttributes.h"

#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmString.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/streams/FMemoryStream.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace tessera;

std::vector<std::string> namesFor(std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < count; ++i) {
        names.push_back("parameter " + std::to_string(i));
    }
    return names;
}

// What one would write without us: names and values in their order, found by a walk.
class PlainList {
public:
    void append(const std::string& name, std::int64_t value) { values_.emplace_back(name, value); }
    void set(const std::string& name, std::int64_t value) {
        const auto found = find(name);
        if (found != values_.end()) {
            found->second = value;
        } else {
            append(name, value);
        }
    }
    std::int64_t get(const std::string& name) { return std::get<std::int64_t>(find(name)->second); }

private:
    using Value = std::variant<std::int64_t, double, std::string, std::u16string>;
    using Values = std::vector<std::pair<std::string, Value>>;

    Values::iterator find(const std::string& name) {
        return std::find_if(values_.begin(), values_.end(), [&name](const auto& entry) { return entry.first == name; });
    }

    Values values_;
};

void setOurs(benchmark::State& state) {
    const auto names = namesFor(state.range(0));
    for (auto _ : state) {
        FAttributes attributes;
        for (const std::string& name : names) {
            attributes.setInt(name.c_str(), 1);
        }
        benchmark::DoNotOptimize(attributes.getCount());
    }
}

void setPlain(benchmark::State& state) {
    const auto names = namesFor(state.range(0));
    for (auto _ : state) {
        PlainList list;
        for (const std::string& name : names) {
            list.set(name, 1);
        }
        benchmark::DoNotOptimize(&list);
    }
}

void getOurs(benchmark::State& state) {
    const auto names = namesFor(state.range(0));
    FAttributes attributes;
    for (const std::string& name : names) {
        attributes.setInt(name.c_str(), 1, AttributeFlags::kAppend);
    }
    const std::string& wanted = names[names.size() / 2];
    for (auto _ : state) {
        std::int64_t value = 0;
        attributes.getInt(wanted.c_str(), value);
        benchmark::DoNotOptimize(value);
    }
}

void getPlain(benchmark::State& state) {
    const auto names = namesFor(state.range(0));
    PlainList list;
    for (const std::string& name : names) {
        list.append(name, 1);
    }
    const std::string& wanted = names[names.size() / 2];
    for (auto _ : state) {
        benchmark::DoNotOptimize(list.get(wanted));
    }
}

// Lists of texts, each with a tree of settings beside it, as a program's document has them.
void fill(FObjectDocument& document, std::int64_t lists) {
    for (std::int64_t i = 0; i < lists; ++i) {
        const std::string name = "track " + std::to_string(i);
        const auto list = FRefPtr<CmArray>::adopt(new CmArray);
        list->setOwnership(CmOwnership::owner);
        for (int j = 0; j < 4; ++j) {
            list->add(new CmString((name + " take").c_str()));
        }
        document.addObject(name.c_str(), *list);
        const auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        tree->setInt("channels", 2);
        tree->setFloat("gain", 0.1 * static_cast<double>(i));
        tree->setString("title", u"Stra\u00dfenl\u00e4rm");
        tree->setString("device", "built-in");
        tree->appendFloat("curve", 0.5);
        tree->appendFloat("curve", 1.0 / 3);
        document.addTree(name.c_str(), *tree);
    }
}

void expect(bool done) {
    if (!done) {
        std::abort();
    }
}

enum class Form { binary, xml };

void save(const FObjectDocument& document, FStream& stream, Form form) {
    expect(form == Form::binary ? document.saveBinary(stream) : document.saveDocument(stream, "Project"));
}

template <Form form>
void writeDocument(benchmark::State& state) {
    FObjectDocument document;
    fill(document, state.range(0));
    for (auto _ : state) {
        FMemoryStream stream;
        save(document, stream, form);
        benchmark::DoNotOptimize(stream.getSize());
    }
}

template <Form form>
void readDocument(benchmark::State& state) {
    FObjectDocument document;
    fill(document, state.range(0));
    FMemoryStream stream;
    save(document, stream, form);
    for (auto _ : state) {
        FObjectDocument read;
        stream.rewind();
        expect(form == Form::binary ? read.loadBinary(stream) : read.loadDocument(stream, "Project"));
    }
}

void valueCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 1000);
}

void listCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMicrosecond);
}

[[maybe_unused]] const benchmark::internal::Benchmark* const rows[] = {
    benchmark::RegisterBenchmark("attributes.set/ours", setOurs)->Apply(valueCounts),
    benchmark::RegisterBenchmark("attributes.set/std", setPlain)->Apply(valueCounts),
    benchmark::RegisterBenchmark("attributes.get/ours", getOurs)->Apply(valueCounts),
    benchmark::RegisterBenchmark("attributes.get/std", getPlain)->Apply(valueCounts),
    benchmark::RegisterBenchmark("attributes.binaryWrite/ours", writeDocument<Form::binary>)->Apply(listCounts),
    benchmark::RegisterBenchmark("attributes.binaryWrite/xml", writeDocument<Form::xml>)->Apply(listCounts),
    benchmark::RegisterBenchmark("attributes.binaryRead/ours", readDocument<Form::binary>)->Apply(listCounts),
    benchmark::RegisterBenchmark("attributes.binaryRead/xml", readDocument<Form::xml>)->Apply(listCounts),
};

} // namespace
