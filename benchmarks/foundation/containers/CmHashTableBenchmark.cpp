// The hash table beside std::unordered_set, both of pointers, hashed and compared through the same virtual operations.
#include "foundation/containers/CmHashTable.h"

#include "foundation/containers/BenchmarkKey.h"
#include "foundation/containers/Report.h"

#include <limits>
#include <unordered_set>

namespace tessera::benchmarks {
namespace {

struct Hash {
    std::size_t operator()(const CmObject* key) const { return key->hash(std::numeric_limits<std::uint32_t>::max()); }
};

struct Equal {
    bool operator()(const CmObject* a, const CmObject* b) const { return a->isEqual(b); }
};

struct Table {
    CmHashTable table{CmHashTable::kDefaultSize, true};
    void insert(CmObject* key) { table.add(key); }
    CmObject* find(CmObject* key) { return table.find(key); }
    void erase(CmObject* key) { table.remove(key); }
};

struct Rival {
    std::unordered_set<CmObject*, Hash, Equal> set;
    void insert(CmObject* key) { set.insert(key); }
    CmObject* find(CmObject* key) { return *set.find(key); }
    void erase(CmObject* key) { set.erase(key); }
};

template <class Side>
Side& filled(std::int64_t count) {
    return filledWith<Side>(count, [](Side& side, const Keys& keys) {
        for (CmObject* key : keys) {
            side.insert(key);
        }
    });
}

template <class Side>
void find(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    Side& side = filled<Side>(state.range(0));
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(side.find(keys.at(index)));
        index = index + 1 == keys.size() ? 0 : index + 1;
    }
}

template <class Side>
void insertAndErase(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        Side side;
        for (CmObject* key : keys) {
            side.insert(key);
        }
        for (std::size_t index = 0; index < keys.size(); ++index) {
            side.erase(keys.at(index));
        }
    }
}

const bool registered = [] {
    const auto sizes = {std::int64_t(1000), std::int64_t(30000)};
    const auto larger = {std::int64_t(1000), std::int64_t(30000), std::int64_t(1000000)};
    add("containers.hashTable.find/ours", find<Table>, larger);
    add("containers.hashTable.find/std", find<Rival>, larger);
    add("containers.hashTable.insertErase/ours", insertAndErase<Table>, sizes);
    add("containers.hashTable.insertErase/std", insertAndErase<Rival>, sizes);
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
