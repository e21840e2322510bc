#include "foundation/threads/FThreadLocal.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/threads/FThread.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace tessera {
namespace {

class Value final : public IBaseUnknown {
public:
    explicit Value(std::atomic<int>& alive, std::function<void()> atEnd = nullptr)
        : alive_(alive), atEnd_(std::move(atEnd)) {
        ++alive_;
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    FResult queryInterface(const FUIDBytes&, void** out) override {
        *out = nullptr;
        return kNoInterface;
    }
    std::uint32_t addRef() override { return static_cast<std::uint32_t>(++references); }
    std::uint32_t release() override {
        const int left = --references;
        if (left == 0) {
            delete this;
        }
        return static_cast<std::uint32_t>(left);
    }

    std::atomic<int> references{1};

private:
    ~Value() {
        if (atEnd_) {
            atEnd_();
        }
        --alive_;
    }

    std::atomic<int>& alive_;
    std::function<void()> atEnd_;
};

class BodyThread : public FThread {
public:
    explicit BodyThread(std::function<void()> body) : FThread("body"), body_(std::move(body)) {}
    std::uint32_t run() override {
        body_();
        return 0;
    }

private:
    std::function<void()> body_;
};

class FThreadLocalTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(slot_.create()); }
    void TearDown() override {
        slot_.set(nullptr);
        slot_.destroy();
        EXPECT_EQ(alive_, 0);
    }
    FRefPtr<Value> makeValue() { return FRefPtr<Value>::adopt(new Value(alive_)); }

    FThreadLocal slot_;
    std::atomic<int> alive_{0};
};

TEST_F(FThreadLocalTest, IsEmptyAtFirst) {
    EXPECT_EQ(slot_.get(), nullptr);
}

TEST_F(FThreadLocalTest, HoldsAReferenceOfTheValue) {
    const FRefPtr<Value> value = makeValue();
    EXPECT_TRUE(slot_.set(value.get()));
    EXPECT_EQ(value->references, 2);
    EXPECT_EQ(slot_.get(), value.get());
    EXPECT_TRUE(slot_.set(value.get()));
    EXPECT_EQ(value->references, 2);
}

TEST_F(FThreadLocalTest, ReleasesTheValueThatIsReplaced) {
    slot_.set(makeValue().get());
    EXPECT_EQ(alive_, 1);
    slot_.set(makeValue().get());
    EXPECT_EQ(alive_, 1);
    slot_.set(nullptr);
    EXPECT_EQ(alive_, 0);
    EXPECT_EQ(slot_.get(), nullptr);
}

TEST_F(FThreadLocalTest, EachThreadSeesItsOwnValue) {
    const FRefPtr<Value> mine = makeValue();
    slot_.set(mine.get());
    BodyThread thread([&] {
        EXPECT_EQ(slot_.get(), nullptr);
        const FRefPtr<Value> theirs = makeValue();
        slot_.set(theirs.get());
        EXPECT_EQ(slot_.get(), theirs.get());
    });
    thread.start();
    thread.join();
    EXPECT_EQ(slot_.get(), mine.get());
}

TEST_F(FThreadLocalTest, ValuesOfAThreadGoWhenItsBodyHasReturned) {
    FThreadLocal second;
    ASSERT_TRUE(second.create());
    BodyThread thread([&] {
        slot_.set(makeValue().get());
        second.set(makeValue().get());
        EXPECT_EQ(alive_, 2);
    });
    thread.start();
    thread.join();
    EXPECT_EQ(alive_, 0);
    second.destroy();
}

TEST_F(FThreadLocalTest, ForeignThreadReleasesItsValuesItself) {
    std::thread([&] {
        slot_.set(makeValue().get());
        releaseThreadLocals();
        EXPECT_EQ(alive_, 0);
        EXPECT_EQ(slot_.get(), nullptr);
        releaseThreadLocals();
    }).join();
    EXPECT_EQ(alive_, 0);
}

TEST_F(FThreadLocalTest, ReleaseLeavesTheValuesOfOtherThreadsAlone) {
    const FRefPtr<Value> mine = makeValue();
    slot_.set(mine.get());
    std::thread([] { releaseThreadLocals(); }).join();
    EXPECT_EQ(slot_.get(), mine.get());
    EXPECT_EQ(mine->references, 2);
}

TEST_F(FThreadLocalTest, AValueMayDestroySlotsWhenItGoes) {
    // The slot in front of the value's, and its own; the one behind moves up each time.
    for (const std::size_t destroyed : {0u, 1u}) {
        std::array<FThreadLocal, 3> slots;
        for (FThreadLocal& slot : slots) {
            ASSERT_TRUE(slot.create());
        }
        std::thread([&] {
            slots[0].set(makeValue().get());
            slots[1].set(FRefPtr<Value>::adopt(new Value(alive_, [&] { slots[destroyed].destroy(); })).get());
            slots[2].set(makeValue().get());
            slot_.set(makeValue().get());
            releaseThreadLocals();
            EXPECT_EQ(alive_, 0) << destroyed;
        }).join();
        for (FThreadLocal& slot : slots) {
            slot.destroy();
        }
    }
}

TEST(FThreadLocal, ThatWasNotCreatedHoldsNothing) {
    FThreadLocal slot;
    std::atomic<int> alive{0};
    const FRefPtr<Value> value = FRefPtr<Value>::adopt(new Value(alive));
    EXPECT_FALSE(slot.set(value.get()));
    EXPECT_EQ(value->references, 1);
    EXPECT_EQ(slot.get(), nullptr);
    slot.destroy();
}

TEST(FThreadLocal, MayBeCreatedAgainAfterItsEnd) {
    FThreadLocal slot;
    std::atomic<int> alive{0};
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(slot.create());
        EXPECT_EQ(slot.get(), nullptr);
        EXPECT_TRUE(slot.set(FRefPtr<Value>::adopt(new Value(alive)).get()));
        EXPECT_TRUE(slot.set(nullptr));
        slot.destroy();
    }
    EXPECT_EQ(alive, 0);
}

TEST(FThreadLocal, CreateFailsWhenTheSystemHasNoSlotLeft) {
    std::vector<std::unique_ptr<FThreadLocal>> slots;
    bool failed = false;
    while (!failed && slots.size() < 100'000) {
        slots.push_back(std::make_unique<FThreadLocal>());
        failed = !slots.back()->create();
    }
    EXPECT_TRUE(failed);
    for (const auto& slot : slots) {
        slot->destroy();
    }
    FThreadLocal next;
    EXPECT_TRUE(next.create());
    next.destroy();
}

} // namespace
} // namespace tessera
