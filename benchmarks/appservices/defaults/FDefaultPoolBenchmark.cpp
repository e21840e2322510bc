// Settings beside what a program would have without us: a map of maps in memory, and on the way to a file and back the
// property tree of Boost, which writes the same values as XML.
#include "appservices/defaults/FDefaultPool.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/streams/FMemoryStream.h"

#include "appservices/defaults/PropertyTreeRival.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace tessera {
namespace {

using benchmarks::PropertyTreeRival;

constexpr const char* kRootTag = "Defaults";
constexpr const char* kKeys[] = {"window.left", "window.top", "window.zoom", "lastFolder", "title"};
constexpr std::size_t kKeyCount = std::size(kKeys);

using Map = std::map<std::string, std::map<std::string, std::int64_t, std::less<>>, std::less<>>;

std::vector<std::string> groupNames(std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < count; ++i) {
        names.push_back("Components\\Module Cache\\C:\\Modules\\" + std::to_string(i) + ".shlb");
    }
    return names;
}

void fill(FDefaultPool& pool, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        pool.setInt(name.c_str(), kKeys[0], 17);
        pool.setInt(name.c_str(), kKeys[1], 1234567);
        pool.setFloat(name.c_str(), kKeys[2], 0.75);
        pool.setString(name.c_str(), kKeys[3], "C:\\Users\\somebody\\Music");
        pool.setString(name.c_str(), kKeys[4], "a title of some length");
    }
}

void fillNumbers(FDefaultPool& pool, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        for (const char* key : kKeys) {
            pool.setInt(name.c_str(), key, 17);
        }
    }
}

void fillNumbers(Map& map, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        for (const char* key : kKeys) {
            map[name][key] = 17;
        }
    }
}

// Neighbours in the walk lie far apart in the table.
std::size_t stepThrough(std::size_t index, std::size_t size) {
    return (index + 7919) % size;
}

void fillOurs(benchmark::State& state) {
    const auto names = groupNames(state.range(0));
    for (auto _ : state) {
        FDefaultPool pool;
        fillNumbers(pool, names);
        benchmark::DoNotOptimize(pool.getGroupCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void fillStandard(benchmark::State& state) {
    const auto names = groupNames(state.range(0));
    for (auto _ : state) {
        Map map;
        fillNumbers(map, names);
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void getOurs(benchmark::State& state) {
    const auto names = groupNames(state.range(0));
    FDefaultPool pool;
    fillNumbers(pool, names);
    std::size_t index = 0;
    for (auto _ : state) {
        std::int64_t value = 0;
        pool.getInt(names[index].c_str(), kKeys[index % kKeyCount], value);
        benchmark::DoNotOptimize(value);
        index = stepThrough(index, names.size());
    }
}

void getStandard(benchmark::State& state) {
    const auto names = groupNames(state.range(0));
    Map map;
    fillNumbers(map, names);
    std::size_t index = 0;
    for (auto _ : state) {
        std::int64_t value = 0;
        const auto group = map.find(names[index].c_str());
        if (group != map.end()) {
            if (const auto found = group->second.find(kKeys[index % kKeyCount]); found != group->second.end()) {
                value = found->second;
            }
        }
        benchmark::DoNotOptimize(value);
        index = stepThrough(index, names.size());
    }
}

void saveOurs(benchmark::State& state) {
    FDefaultPool pool;
    fill(pool, groupNames(state.range(0)));
    for (auto _ : state) {
        FMemoryStream stream;
        if (!FObjectDocument::saveObject(stream, kRootTag, pool)) {
            state.SkipWithError("not saved");
            break;
        }
        benchmark::DoNotOptimize(stream.getData());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void saveBoost(benchmark::State& state) {
    const PropertyTreeRival rival(groupNames(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(rival.save());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void loadOurs(benchmark::State& state) {
    FDefaultPool pool;
    fill(pool, groupNames(state.range(0)));
    FMemoryStream stream;
    FObjectDocument::saveObject(stream, kRootTag, pool);
    for (auto _ : state) {
        stream.rewind();
        FDefaultPool loaded;
        if (!FObjectDocument::loadObject(stream, kRootTag, loaded) || loaded.getGroupCount() != pool.getGroupCount()) {
            state.SkipWithError("not loaded");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void loadBoost(benchmark::State& state) {
    const std::string text = PropertyTreeRival(groupNames(state.range(0))).save();
    for (auto _ : state) {
        benchmark::DoNotOptimize(PropertyTreeRival::load(text));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10000);
}

BENCHMARK(fillOurs)->Name("defaults.fill/ours")->Apply(sizes);
BENCHMARK(fillStandard)->Name("defaults.fill/std")->Apply(sizes);
BENCHMARK(getOurs)->Name("defaults.get/ours")->Apply(sizes);
BENCHMARK(getStandard)->Name("defaults.get/std")->Apply(sizes);
BENCHMARK(saveOurs)->Name("defaults.save/ours")->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(saveBoost)->Name("defaults.save/boost")->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(loadOurs)->Name("defaults.load/ours")->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(loadBoost)->Name("defaults.load/boost")->Apply(sizes)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tessera
