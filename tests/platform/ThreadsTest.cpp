#include "platform/Threads.h"

#include "platform/Semaphore.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <chrono>
#include <thread>

namespace tessera::platform {
namespace {

constexpr std::uint32_t kLong = 20'000;

struct Body {
    std::atomic<bool> ran{false};
    std::atomic<std::uint32_t> id{0};
    Semaphore mayEnd{0};

    static std::uint32_t run(void* self) {
        auto* body = static_cast<Body*>(self);
        body->id = currentThreadId();
        body->ran = true;
        body->mayEnd.wait(kNoTimeLimit);
        return 0;
    }
};

TEST(Threads, RunOnlyOnceResumed) {
    Body body;
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    ASSERT_TRUE(thread);
    EXPECT_NE(thread.id(), 0u);
    EXPECT_FALSE(thread.wait(50));
    EXPECT_FALSE(body.ran);
    EXPECT_TRUE(thread.resume());
    EXPECT_FALSE(thread.resume());
    body.mayEnd.release(1);
    EXPECT_TRUE(thread.wait(kLong));
    EXPECT_TRUE(body.ran);
    EXPECT_EQ(body.id, thread.id());
}

TEST(Threads, WaitMayBeAskedOftenAndByMany) {
    Body body;
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    thread.resume();
    EXPECT_FALSE(thread.wait(0));
    EXPECT_FALSE(thread.wait(20));
    std::thread another([&] { EXPECT_TRUE(thread.wait(kNoTimeLimit)); });
    body.mayEnd.release(1);
    EXPECT_TRUE(thread.wait(kNoTimeLimit));
    EXPECT_TRUE(thread.wait(kNoTimeLimit));
    EXPECT_TRUE(thread.wait(0));
    another.join();
}

TEST(Threads, NeverResumedEndWithoutHavingRun) {
    Body body;
    std::uint32_t id = 0;
    {
        ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
        id = thread.id();
    }
    EXPECT_TRUE(testing_support::eventually([&] {
        std::uint32_t ids[64];
        const int count = listThreads(ids, 64);
        return std::find(ids, ids + count, id) == ids + count;
    }));
    EXPECT_FALSE(body.ran);
}

TEST(Threads, RunOnWhenTheirHandleGoes) {
    static std::atomic<bool> over;
    over = false;
    Body body;
    {
        ThreadHandle thread = ThreadHandle::createSuspended(
            [](void* self) -> std::uint32_t {
                Body::run(self);
                over = true;
                return 0;
            },
            &body);
        thread.resume();
    }
    EXPECT_FALSE(over);
    body.mayEnd.release(1);
    EXPECT_TRUE(testing_support::eventually([&] { return over.load(); }));
}

TEST(Threads, TerminatedRunNoMore) {
    static std::atomic<long> steps;
    static std::atomic<bool> began;
    steps = 0;
    began = false;
    ThreadHandle thread = ThreadHandle::createSuspended(
        [](void*) -> std::uint32_t {
            for (;;) {
                ++steps;
                began = true;
                sleepFor(1);
            }
        },
        nullptr);
    thread.resume();
    ASSERT_TRUE(testing_support::eventually([&] { return began.load(); }));
    EXPECT_FALSE(thread.wait(0));
    EXPECT_TRUE(thread.terminate());
    EXPECT_TRUE(thread.wait(kLong));
    const long then = steps;
    sleepFor(50);
    EXPECT_EQ(steps, then);
    EXPECT_FALSE(thread.terminate()) << "it has ended";
}

TEST(Threads, ThatHaveEndedTakeNoFurtherOrders) {
    Body body;
    body.mayEnd.release(1);
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    thread.resume();
    ASSERT_TRUE(thread.wait(kLong));
    EXPECT_FALSE(thread.terminate());
    EXPECT_FALSE(thread.setPriority(-1));
    EXPECT_FALSE(thread.setAffinity(processAffinityMask()));
}

TEST(Threads, EmptyHandleAnswersFalse) {
    ThreadHandle none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.id(), 0u);
    EXPECT_FALSE(none.resume());
    EXPECT_FALSE(none.wait(kNoTimeLimit));
    EXPECT_FALSE(none.terminate());
    EXPECT_FALSE(none.setPriority(0));
    EXPECT_FALSE(none.setAffinity(1));
    EXPECT_EQ(none.setIdealProcessor(0), -1);
    none.close();
}

TEST(Threads, AffinityStaysWithinTheProcess) {
    Body body;
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    const std::uint64_t all = processAffinityMask();
    ASSERT_NE(all, 0u);
    EXPECT_TRUE(thread.setAffinity(std::uint64_t{1} << std::countr_zero(all)));
    EXPECT_TRUE(thread.setAffinity(all));
    EXPECT_FALSE(thread.setAffinity(0));
    if (~all != 0) {
        EXPECT_FALSE(thread.setAffinity(~all));
    }
}

TEST(Threads, IdealProcessorIsOneOfSixtyFour) {
    Body body;
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    EXPECT_NE(thread.setIdealProcessor(0), -1);
    EXPECT_NE(thread.setIdealProcessor(64), -1) << "only asks";
    EXPECT_EQ(thread.setIdealProcessor(-1), -1);
    EXPECT_EQ(thread.setIdealProcessor(65), -1);
}

TEST(Threads, UnknownPriorityIsRefused) {
    Body body;
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    EXPECT_FALSE(thread.setPriority(3));
    EXPECT_FALSE(thread.setPriority(-16));
}

TEST(Threads, ListHoldsTheOwnOnesUpToTheCapacity) {
    Body body;
    ThreadHandle thread = ThreadHandle::createSuspended(Body::run, &body);
    std::uint32_t ids[64];
    const int count = listThreads(ids, 64);
    ASSERT_GE(count, 2);
    EXPECT_NE(std::find(ids, ids + count, thread.id()), ids + count);
    EXPECT_NE(std::find(ids, ids + count, currentThreadId()), ids + count);
    EXPECT_EQ(listThreads(ids, 1), 1);
}

TEST(Threads, SleepLastsAtLeastItsTime) {
    const auto before = std::chrono::steady_clock::now();
    sleepFor(30);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(30));
    sleepFor(0);
}

} // namespace
} // namespace tessera::platform
