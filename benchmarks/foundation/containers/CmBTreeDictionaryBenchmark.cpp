// The dictionary beside std::map, both of pointers, ordered through the same virtual operation.
#include "foundation/containers/CmBTreeDictionary.h"

#include "foundation/containers/BenchmarkKey.h"
#include "foundation/containers/Report.h"

#include <map>

namespace tessera::benchmarks {
namespace {

struct Dictionary {
    CmBTreeDictionary dictionary;
    void set(CmObject* key) { dictionary.set(key, key); }
    CmObject* get(CmObject* key) { return dictionary.get(key); }
    void remove(CmObject* key) { dictionary.removeKey(key); }
};

struct Rival {
    std::map<CmObject*, CmObject*, Below> map;
    void set(CmObject* key) { map.emplace(key, key); }
    CmObject* get(CmObject* key) { return map.find(key)->second; }
    void remove(CmObject* key) { map.erase(key); }
};

template <class Side>
Side& filled(std::int64_t count) {
    return filledWith<Side>(count, [](Side& side, const Keys& keys) {
        for (CmObject* key : keys) {
            side.set(key);
        }
    });
}

template <class Side>
void set(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        auto side = std::make_unique<Side>();
        for (CmObject* key : keys) {
            side->set(key);
        }
        state.PauseTiming();
        side.reset();
        state.ResumeTiming();
    }
}

template <class Side>
void get(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    Side& side = filled<Side>(state.range(0));
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(side.get(keys.at(index)));
        index = index + 1 == keys.size() ? 0 : index + 1;
    }
}

template <class Side>
void remove(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Side side;
        for (CmObject* key : keys) {
            side.set(key);
        }
        state.ResumeTiming();
        for (std::size_t index = 0; index < keys.size(); ++index) {
            side.remove(keys.at(index));
        }
    }
}

const bool registered = [] {
    const auto sizes = {std::int64_t(1000), std::int64_t(30000)};
    add("containers.dictionary.set/ours", set<Dictionary>, sizes);
    add("containers.dictionary.set/std", set<Rival>, sizes);
    add("containers.dictionary.get/ours", get<Dictionary>, sizes);
    add("containers.dictionary.get/std", get<Rival>, sizes);
    add("containers.dictionary.remove/ours", remove<Dictionary>, sizes);
    add("containers.dictionary.remove/std", remove<Rival>, sizes);
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
