#include "foundation/threads/Atomics.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tessera {
namespace {

TEST(Atomics, IncrementAndDecrementGiveTheValueBefore) {
    std::int32_t word = 5;
    EXPECT_EQ(atomicIncrement(word), 5);
    EXPECT_EQ(word, 6);
    EXPECT_EQ(atomicDecrement(word), 6);
    EXPECT_EQ(word, 5);
}

TEST(Atomics, AddHasAFormForEitherValue) {
    std::int32_t word = 5;
    EXPECT_EQ(atomicAdd(word, 10), 5);
    EXPECT_EQ(word, 15);
    EXPECT_EQ(atomicAddAfter(word, -20), -5);
    EXPECT_EQ(word, -5);
}

TEST(Atomics, CountsWrap) {
    std::int32_t word = INT32_MAX;
    EXPECT_EQ(atomicAddAfter(word, 1), INT32_MIN);
    EXPECT_EQ(word, INT32_MIN);
    EXPECT_EQ(atomicDecrement(word), INT32_MIN);
    EXPECT_EQ(word, INT32_MAX);
}

TEST(Atomics, CompareExchangeHappensOnlyOnTheExpectedValue) {
    std::int32_t word = 1;
    EXPECT_FALSE(atomicCompareExchange(word, 2, 3));
    EXPECT_EQ(word, 1);
    EXPECT_TRUE(atomicCompareExchange(word, 1, 3));
    EXPECT_EQ(word, 3);
}

TEST(Atomics, CompareExchangeTakesPointers) {
    int first = 0;
    int second = 0;
    int* place = &first;
    int* none = nullptr;
    EXPECT_FALSE(atomicCompareExchange(place, none, &second));
    EXPECT_EQ(place, &first);
    EXPECT_TRUE(atomicCompareExchange(place, &first, &second));
    EXPECT_EQ(place, &second);
}

TEST(Atomics, LoseNoStepAmongThreads) {
    constexpr int kRounds = 20'000;
    std::int32_t word = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                atomicIncrement(word);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(word, 4 * kRounds);
}

} // namespace
} // namespace tessera
