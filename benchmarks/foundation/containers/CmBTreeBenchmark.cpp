// The tree beside std::set, both of pointers, ordered through the same virtual operation.
#include "foundation/containers/CmBTree.h"

#include "foundation/containers/BenchmarkKey.h"
#include "foundation/containers/Report.h"

#include <set>

namespace tessera::benchmarks {
namespace {

using Set = std::set<CmObject*, Below>;

struct Tree {
    CmBTree tree;
    void insert(CmObject* key) { tree.add(key); }
    CmObject* find(CmObject* key) { return tree.find(key); }
    void erase(CmObject* key) { tree.remove(key); }
};

struct Rival {
    Set set;
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
void insert(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        auto side = std::make_unique<Side>();
        for (CmObject* key : keys) {
            side->insert(key);
        }
        state.PauseTiming();
        side.reset();
        state.ResumeTiming();
    }
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
void erase(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Side side;
        for (CmObject* key : keys) {
            side.insert(key);
        }
        state.ResumeTiming();
        for (std::size_t index = 0; index < keys.size(); ++index) {
            side.erase(keys.at(index));
        }
    }
}

const bool registered = [] {
    const auto sizes = {std::int64_t(1000), std::int64_t(30000)};
    add("containers.btree.insert/ours", insert<Tree>, sizes);
    add("containers.btree.insert/std", insert<Rival>, sizes);
    addMillion("containers.btree.insert/ours", insert<Tree>);
    addMillion("containers.btree.insert/std", insert<Rival>);
    add("containers.btree.find/ours", find<Tree>, {1000, 30000, 1000000});
    add("containers.btree.find/std", find<Rival>, {1000, 30000, 1000000});
    add("containers.btree.erase/ours", erase<Tree>, sizes);
    add("containers.btree.erase/std", erase<Rival>, sizes);
    addMillion("containers.btree.erase/ours", erase<Tree>);
    addMillion("containers.btree.erase/std", erase<Rival>);
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
