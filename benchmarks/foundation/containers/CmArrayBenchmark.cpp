// The arrays beside std::vector: sorted insertion, binary search, sorting.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmOrderedArray.h"

#include "foundation/containers/BenchmarkKey.h"
#include "foundation/containers/Report.h"

#include <algorithm>

namespace tessera::benchmarks {
namespace {

void addOrdered(benchmark::State& state, std::int32_t growth) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        CmOrderedArray array(0, growth);
        for (CmObject* key : keys) {
            array.add(key);
        }
        benchmark::DoNotOptimize(array.getCount());
    }
}

void addDoubling(benchmark::State& state) {
    addOrdered(state, CmOrderedArray::kDoubling);
}

void addByTen(benchmark::State& state) {
    addOrdered(state, CmOrderedArray::kDefaultGrowth);
}

void addRival(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    for (auto _ : state) {
        std::vector<CmObject*> sorted;
        for (CmObject* key : keys) {
            sorted.insert(std::upper_bound(sorted.begin(), sorted.end(), key, Below()), key);
        }
        benchmark::DoNotOptimize(sorted.data());
    }
}

void findOrdered(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    CmOrderedArray& array = filledWith<CmOrderedArray>(state.range(0), [](CmOrderedArray& ordered, const Keys& all) {
        // From a sorted one: an element that goes to the end moves none.
        CmArray sorted(static_cast<std::int32_t>(all.size()));
        for (CmObject* key : all) {
            sorted.add(key);
        }
        sorted.sort();
        ordered.reserve(static_cast<std::int32_t>(all.size()));
        sorted.forEach([&ordered](CmObject* key) { return ordered.add(key); });
    });
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(array.find(keys.at(index)));
        index = index + 1 == keys.size() ? 0 : index + 1;
    }
}

void findRival(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    using Rival = std::vector<CmObject*>;
    const Rival& sorted = filledWith<Rival>(state.range(0), [](Rival& rival, const Keys& all) {
        rival.assign(all.begin(), all.end());
        std::sort(rival.begin(), rival.end(), Below());
    });
    std::size_t index = 0;
    for (auto _ : state) {
        const auto found = std::lower_bound(sorted.begin(), sorted.end(), keys.at(index), Below());
        const bool there = found != sorted.end() && !Below()(keys.at(index), *found);
        benchmark::DoNotOptimize(there ? *found : nullptr);
        index = index + 1 == keys.size() ? 0 : index + 1;
    }
}

void sortOurs(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    CmArray array(static_cast<std::int32_t>(keys.size()));
    for (auto _ : state) {
        state.PauseTiming();
        array.removeAll();
        array.reserve(static_cast<std::int32_t>(keys.size()));
        for (CmObject* key : keys) {
            array.add(key);
        }
        state.ResumeTiming();
        array.sort();
    }
}

void sortRival(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    std::vector<CmObject*> array;
    for (auto _ : state) {
        state.PauseTiming();
        array.assign(keys.begin(), keys.end());
        state.ResumeTiming();
        std::sort(array.begin(), array.end(), Below());
    }
}

const bool registered = [] {
    const auto sizes = {std::int64_t(100), std::int64_t(1000), std::int64_t(30000)};
    add("containers.orderedArray.add/ours", addDoubling, sizes);
    add("containers.orderedArray.add/std", addRival, sizes);
    add("containers.orderedArray.addByTen/ours", addByTen, sizes);
    add("containers.orderedArray.addByTen/std", addRival, sizes);
    const auto larger = {std::int64_t(100), std::int64_t(1000), std::int64_t(30000), std::int64_t(1000000)};
    add("containers.orderedArray.find/ours", findOrdered, larger);
    add("containers.orderedArray.find/std", findRival, larger);
    add("containers.array.sort/ours", sortOurs, sizes);
    add("containers.array.sort/std", sortRival, sizes);
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
