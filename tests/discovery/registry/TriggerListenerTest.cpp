#include "discovery/registry/TriggerListener.h"

#include "tests/discovery/registry/RegistryTest.h"

#include <atomic>
#include <string>
#include <thread>

namespace tessera::test {
namespace {

using testing_support::eventually;

using TriggerListenerTest = RegistryTest;

TEST_F(TriggerListenerTest, TellsTheNameOnItsOwnThread) {
    TriggerListener listener;
    std::atomic<int> calls = 0;
    std::atomic<bool> otherThread = false;
    const auto caller = std::this_thread::get_id();
    ASSERT_TRUE(listener.listen("com.marlgrove.test", [&](const std::string& name) {
        EXPECT_EQ(name, "com.marlgrove.test");
        otherThread = std::this_thread::get_id() != caller;
        ++calls;
    }));
    createServiceEvent("com.marlgrove.test")->signal();
    EXPECT_TRUE(eventually([&] { return calls == 1; }));
    EXPECT_TRUE(otherThread);
    createServiceEvent("com.marlgrove.test")->signal();
    EXPECT_TRUE(eventually([&] { return calls == 2; }));
    EXPECT_TRUE(listener.stopListening());
    EXPECT_EQ(calls, 2) << "the signal that ends it isn't told";
}

TEST_F(TriggerListenerTest, StopsOnce) {
    TriggerListener listener;
    EXPECT_FALSE(listener.stopListening());
    ASSERT_TRUE(listener.listen("com.marlgrove.test", nullptr));
    EXPECT_FALSE(listener.listen("com.marlgrove.test", nullptr)) << "it listens already";
    EXPECT_TRUE(listener.stopListening());
    EXPECT_FALSE(listener.stopListening());
}

TEST_F(TriggerListenerTest, HasNoThreadWithoutAnEvent) {
    TriggerListener listener;
    EXPECT_FALSE(listener.listen(std::string(300, 'n'), nullptr));
    EXPECT_FALSE(listener.isStarted());
    EXPECT_FALSE(listener.stopListening());
}

TEST_F(TriggerListenerTest, IsNamed) {
    const TriggerListener listener;
    EXPECT_STREQ(listener.getName().text8(), "com.marlgrove.remote.triggerlistener");
}

TEST_F(TriggerListenerTest, EndsWithItsObject) {
    std::atomic<int> calls = 0;
    {
        TriggerListener listener;
        ASSERT_TRUE(listener.listen("com.marlgrove.test", [&](const std::string&) { ++calls; }));
    }
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace tessera::test
