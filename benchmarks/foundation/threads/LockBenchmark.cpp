// The locks beside those of the C++ library and of the system. Sizes are pairs of lock and unlock.
#include "foundation/threads/FLock.h"
#include "foundation/threads/FReadWriteLock.h"

#include <benchmark/benchmark.h>

#include <mutex>
#include <pthread.h>
#include <shared_mutex>

namespace {

using tessera::FLock;
using tessera::FReadWriteLock;

constexpr int kFewest = 100;
constexpr int kMost = 10'000;

// Each side offers the pair under one name, so that all are measured by the same loop.
struct OurLock {
    FLock lock;
    void enter() { lock.lock(); }
    void leave() { lock.unlock(); }
};

struct StandardLock {
    std::recursive_mutex lock;
    void enter() { lock.lock(); }
    void leave() { lock.unlock(); }
};

struct OurReader {
    FReadWriteLock lock{true};
    void enter() { lock.lockRead(); }
    void leave() { lock.unlockRead(); }
};

struct StandardReader {
    std::shared_mutex lock;
    void enter() { lock.lock_shared(); }
    void leave() { lock.unlock_shared(); }
};

struct SystemReader {
    pthread_rwlock_t lock = PTHREAD_RWLOCK_INITIALIZER;
    void enter() { pthread_rwlock_rdlock(&lock); }
    void leave() { pthread_rwlock_unlock(&lock); }
};

template <class Side>
void pairs(benchmark::State& state, Side& side) {
    const auto count = state.range(0);
    for (auto step : state) {
        for (std::int64_t i = 0; i < count; ++i) {
            side.enter();
            benchmark::DoNotOptimize(side);
            side.leave();
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
}

template <class Side>
void outer(benchmark::State& state) {
    Side side;
    pairs(state, side);
}

template <class Side>
void nested(benchmark::State& state) {
    Side side;
    side.enter();
    pairs(state, side);
    side.leave();
}

BENCHMARK(outer<OurLock>)->Name("lock.outer/ours")->Range(kFewest, kMost);
BENCHMARK(outer<StandardLock>)->Name("lock.outer/std")->Range(kFewest, kMost);
BENCHMARK(nested<OurLock>)->Name("lock.nested/ours")->Range(kFewest, kMost);
BENCHMARK(nested<StandardLock>)->Name("lock.nested/std")->Range(kFewest, kMost);
BENCHMARK(outer<OurReader>)->Name("rwlock.read.outer/ours")->Range(kFewest, kMost);
BENCHMARK(outer<StandardReader>)->Name("rwlock.read.outer/std")->Range(kFewest, kMost);
BENCHMARK(nested<OurReader>)->Name("rwlock.read.nested/ours")->Range(kFewest, kMost);
BENCHMARK(nested<SystemReader>)->Name("rwlock.read.nested/pthread")->Range(kFewest, kMost);

} // namespace
