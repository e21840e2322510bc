#include "persistence/objects/FScratchBufferPool.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tessera {
namespace {

using Pool = FScratchBufferPool;

TEST(FScratchBufferPool, HandsOutEmptyBuffersOf1024Bytes) {
    Pool pool;
    const auto buffer = pool.take();
    EXPECT_EQ(buffer->getSize(), 1024);
    EXPECT_EQ(buffer->getFill(), 0);
}

TEST(FScratchBufferPool, WhatComesBackIsHandedOutAgain) {
    Pool pool;
    auto buffer = pool.take();
    const auto* first = buffer.get();
    buffer->append("text", 4);
    pool.giveBack(std::move(buffer));
    EXPECT_EQ(pool.getWaiting(), 1u);
    const auto again = pool.take();
    EXPECT_EQ(again.get(), first);
    EXPECT_EQ(again->getFill(), 0);
    EXPECT_EQ(pool.getWaiting(), 0u);
}

TEST(FScratchBufferPool, ABufferThatGrewIsKeptUnlessItIsHuge) {
    Pool pool;
    auto buffer = pool.take();
    buffer->setSize(Pool::kLargestKept);
    pool.giveBack(std::move(buffer));
    EXPECT_EQ(pool.getWaiting(), 1u);
    buffer = pool.take();
    EXPECT_EQ(buffer->getSize(), Pool::kLargestKept);
    buffer->setSize(Pool::kLargestKept + 1);
    pool.giveBack(std::move(buffer));
    EXPECT_EQ(pool.getWaiting(), 0u);
    pool.giveBack(nullptr);
    EXPECT_EQ(pool.getWaiting(), 0u);
}

TEST(FScratchBufferPool, KeepsSoManyAndNoMore) {
    Pool pool;
    std::vector<std::unique_ptr<FByteBuffer>> taken;
    for (std::size_t i = 0; i < Pool::kMostKept + 3; ++i) {
        taken.push_back(pool.take());
    }
    for (auto& buffer : taken) {
        pool.giveBack(std::move(buffer));
    }
    EXPECT_EQ(pool.getWaiting(), Pool::kMostKept);
}

TEST(FScratchBufferPool, AScopeTakesOneOfTheProcessAndGivesItBack) {
    Pool& pool = *Pool::getInstance();
    const std::size_t before = [&pool] {
        FScratchBuffer buffer;
        buffer->append("text", 4);
        return pool.getWaiting();
    }();
    EXPECT_EQ(pool.getWaiting(), before + 1);
    FScratchBuffer outer;
    FScratchBuffer inner;
    EXPECT_NE(&*outer, &*inner);
}

TEST(FScratchBufferPool, ServesThreadsAtATime) {
    Pool pool;
    const auto work = [&pool] {
        for (int i = 0; i < 1000; ++i) {
            auto buffer = pool.take();
            buffer->append("text", 4);
            ASSERT_EQ(buffer->getFill(), 4);
            pool.giveBack(std::move(buffer));
        }
    };
    std::thread first(work);
    std::thread second(work);
    work();
    first.join();
    second.join();
    EXPECT_LE(pool.getWaiting(), 3u);
}

} // namespace
} // namespace tessera
