// Translations beside what a program would have without us: an unordered map of 16-bit strings that can be asked with a
// view, filled from a document of tinyxml2. Texts are as long as those of a program's menus and messages.
#include "appservices/translation/TranslatedText.h"
#include "appservices/translation/TranslationTable.h"
#include "foundation/text/FString.h"

#include <benchmark/benchmark.h>
#include <tinyxml2.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tessera {
namespace {

struct ViewHash : std::hash<std::u16string_view> {
    using is_transparent = void;
};
using Map = std::unordered_map<std::u16string, std::u16string, ViewHash, std::equal_to<>>;

std::vector<std::u16string> keys(std::int64_t count) {
    std::vector<std::u16string> result;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        result.push_back(u"Move the selected events to track " + std::u16string(number.begin(), number.end()));
    }
    return result;
}

std::u16string textOf(const std::u16string& key) {
    return u"Die gewählten Events verschieben: " + key;
}

enum class Form { xml, old };

// Every string in two languages, as our own files have them.
std::string fileOf(const std::vector<std::u16string>& all, Form form) {
    std::string file = form == Form::xml ? "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n" : "<?xml version=\"1.0\"?>\n";
    file += "<Translation>\n  <LanguageTable>\n    <language key=\"de\">Deutsch</language>\n  </LanguageTable>\n"
            "  <StringTable>\n";
    const std::string letter = form == Form::xml ? "\xC3\xA4" : "\xE4";
    for (const std::u16string& key : all) {
        const std::string narrow(key.begin(), key.end());
        file += "    <String key=\"" + narrow + "\">\n      <de>Die gew" + letter +
                "hlten Events verschieben: " + narrow + "</de>\n      <fr>Deplacer les evenements: " + narrow +
                "</fr>\n    </String>\n";
    }
    return file + "  </StringTable>\n</Translation>\n";
}

// Neighbours in the walk lie far apart in the table.
std::size_t stepThrough(std::size_t index, std::size_t size) {
    return (index + 7919) % size;
}

void lookupOurs(benchmark::State& state) {
    const auto all = keys(state.range(0));
    TranslationMap map;
    for (const std::u16string& key : all) {
        map.set(key, textOf(key));
    }
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.find(all[index]));
        index = stepThrough(index, all.size());
    }
}

void lookupStd(benchmark::State& state) {
    const auto all = keys(state.range(0));
    Map map;
    for (const std::u16string& key : all) {
        map[key] = textOf(key);
    }
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.find(std::u16string_view(all[index]))->second.c_str());
        index = stepThrough(index, all.size());
    }
}

void fillOurs(benchmark::State& state) {
    const auto all = keys(state.range(0));
    const std::u16string text = textOf(all[0]);
    for (auto _ : state) {
        TranslationMap map;
        for (const std::u16string& key : all) {
            map.set(key, text);
        }
        benchmark::DoNotOptimize(map.size());
    }
}

void fillStd(benchmark::State& state) {
    const auto all = keys(state.range(0));
    const std::u16string text = textOf(all[0]);
    for (auto _ : state) {
        Map map;
        for (const std::u16string& key : all) {
            map.insert_or_assign(key, text);
        }
        benchmark::DoNotOptimize(map.size());
    }
}

template <Form form>
void loadOurs(benchmark::State& state) {
    const auto all = keys(state.range(0));
    const std::string file = fileOf(all, form);
    for (auto _ : state) {
        TranslationTable table;
        table.setLanguage("de");
        if (!table.loadFromMemory(file.data(), file.size()) || table.getStringCount() != all.size()) {
            state.SkipWithError("not loaded");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}

std::u16string widened(const char* utf8) {
    FString text;
    text.assignUtf8(utf8);
    return std::u16string(text.view16());
}

void loadTinyxml2(benchmark::State& state) {
    const auto all = keys(state.range(0));
    const std::string file = fileOf(all, Form::xml);
    for (auto _ : state) {
        tinyxml2::XMLDocument document;
        document.Parse(file.data(), file.size());
        Map map;
        const tinyxml2::XMLElement* table = document.RootElement()->FirstChildElement("StringTable");
        for (const auto* string = table->FirstChildElement(); string != nullptr;
             string = string->NextSiblingElement()) {
            map.insert_or_assign(widened(string->Attribute("key")),
                                 widened(string->FirstChildElement("de")->GetText()));
        }
        if (map.size() != all.size()) {
            state.SkipWithError("not loaded");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}

// What a program pays each time that it shows a constant.
void constantOurs(benchmark::State& state) {
    static constinit TranslatedText constant{u"Move the selected events"};
    for (auto _ : state) {
        benchmark::DoNotOptimize(translate(constant));
    }
}

void constantStd(benchmark::State& state) {
    Map map;
    for (const std::u16string& key : keys(1000)) {
        map[key] = textOf(key);
    }
    map[u"Move the selected events"] = u"Die gewählten Events verschieben";
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.find(std::u16string_view(u"Move the selected events"))->second.c_str());
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10'000)->Arg(100'000);
}

void fileSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10'000)->Unit(benchmark::kMicrosecond);
}

[[maybe_unused]] const benchmark::internal::Benchmark* const rows[] = {
    benchmark::RegisterBenchmark("translation.constant/ours", constantOurs),
    benchmark::RegisterBenchmark("translation.constant/std", constantStd),
    benchmark::RegisterBenchmark("translation.lookup/ours", lookupOurs)->Apply(sizes),
    benchmark::RegisterBenchmark("translation.lookup/std", lookupStd)->Apply(sizes),
    benchmark::RegisterBenchmark("translation.fill/ours", fillOurs)->Apply(sizes),
    benchmark::RegisterBenchmark("translation.fill/std", fillStd)->Apply(sizes),
    benchmark::RegisterBenchmark("translation.load/ours", loadOurs<Form::xml>)->Apply(fileSizes),
    benchmark::RegisterBenchmark("translation.load/tinyxml2", loadTinyxml2)->Apply(fileSizes),
    benchmark::RegisterBenchmark("translation.loadOld/ours", loadOurs<Form::old>)->Apply(fileSizes),
    benchmark::RegisterBenchmark("translation.loadOld/tinyxml2", loadTinyxml2)->Apply(fileSizes),
};

} // namespace
} // namespace tessera
