#include "foundation/object/FSingletonList.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FObject.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

namespace tessera {
namespace {

class Speaker : public FObject {
public:
    explicit Speaker(const char* name) : name_(name) {}
    ~Speaker() override { std::fprintf(stderr, "%s gone, ", name_); }

private:
    const char* name_;
};

Speaker* first(bool create) {
    static constinit FSingleton<Speaker> instance([] { return new Speaker("first"); });
    return instance.get(create);
}

Speaker* second(bool create) {
    static constinit FSingleton<Speaker> instance([] {
        // A constructor may make another singleton.
        first(true);
        return new Speaker("second");
    });
    return instance.get(create);
}

Speaker* late(bool create) {
    static constinit FSingleton<Speaker> instance([] { return new Speaker("late"); });
    return instance.get(create);
}

// Set in the process that a test sends to its end.
bool tellAtEnd = false;

void tellWhatIsLeft() {
    if (!tellAtEnd) {
        return;
    }
    std::fprintf(stderr, "%s %s %s %s",
                 FSingletonList::isDestroyed() ? "down:" : "up:", first(false) == nullptr ? "null" : "object",
                 late(true) == nullptr ? "null" : "object",
                 ClassFactory::getInstance(true) == nullptr ? "null" : "object");
}

TEST(FSingletonList, MakesNothingUnasked) {
    static constinit FSingleton<Speaker> instance([] { return new Speaker("unasked"); });
    EXPECT_EQ(instance.get(false), nullptr);
}

TEST(FSingletonList, MakesEachOnceForAllThreads) {
    static std::atomic<int> made{0};
    static constinit FSingleton<FObject> instance([] {
        ++made;
        return new FObject;
    });
    std::vector<std::thread> threads;
    std::atomic<int> same{0};
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] { same += instance.get(true) == instance.get(false) ? 1 : 0; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(made, 1);
    EXPECT_EQ(same, 8);
}

TEST(FSingletonListDeathTest, ReleasesInTheOrderOfCreation) {
    EXPECT_EXIT(
        {
            second(true);
            late(true);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "first gone, second gone, late gone, ");
}

TEST(FSingletonListDeathTest, AfterTheListThereIsNothingAndNothingIsMade) {
    EXPECT_EXIT(
        {
            tellAtEnd = true;
            first(true);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "first gone, down: null null null");
}

// Runs before the class records make the list, so the handler it enters runs behind the list's own.
[[gnu::init_priority(101)]] const struct EarlyHandler {
    EarlyHandler() { std::atexit(&tellWhatIsLeft); }
} earlyHandler;

} // namespace
} // namespace tessera
