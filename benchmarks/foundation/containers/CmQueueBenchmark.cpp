// The queue beside std::list, filled and emptied.
#include "foundation/containers/CmQueue.h"

#include "foundation/containers/BenchmarkKey.h"
#include "foundation/containers/Report.h"

#include <list>

namespace tessera::benchmarks {
namespace {

void ours(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    CmQueue queue;
    for (auto _ : state) {
        for (CmObject* key : keys) {
            queue.enqueue(key);
        }
        while (CmObject* key = queue.dequeue()) {
            benchmark::DoNotOptimize(key);
        }
    }
}

void rival(benchmark::State& state) {
    const Keys& keys = keysOf(state.range(0));
    std::list<CmObject*> queue;
    for (auto _ : state) {
        for (CmObject* key : keys) {
            queue.push_back(key);
        }
        while (!queue.empty()) {
            CmObject* key = queue.front();
            queue.pop_front();
            benchmark::DoNotOptimize(key);
        }
    }
}

const bool registered = [] {
    const auto sizes = {std::int64_t(10), std::int64_t(1000), std::int64_t(100000)};
    add("containers.queue/ours", ours, sizes);
    add("containers.queue/std", rival, sizes);
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
