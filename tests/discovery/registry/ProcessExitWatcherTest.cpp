#include "discovery/registry/ProcessExitWatcher.h"

#include "support/ProcessTable.h"
#include "tests/discovery/registry/RegistryTest.h"

namespace tessera::test {
namespace {

using testing_support::eventually;

class ProcessExitWatcherTest : public RegistryTest {
protected:
    bool hearsOf(int processId) {
        return eventually([this, processId] {
            FTaskList::process().runTasks();
            return ended_ == processId;
        });
    }

    ProcessExitWatcher::Callback note() {
        return [this](int processId) { ended_ = processId; };
    }

    int ended_ = 0;
    ProcessExitWatcher watcher_;
};

TEST_F(ProcessExitWatcherTest, TellsTheEndThroughTheListOfTasks) {
    const auto process = startHelper("");
    const int id = process->id();
    ASSERT_TRUE(watcher_.watch(id, note()));
    EXPECT_EQ(watcher_.processId(), id);
    process->kill();
    EXPECT_TRUE(hearsOf(id));
}

TEST_F(ProcessExitWatcherTest, KnowsNoProcessAtFirstAndAfterAStop) {
    EXPECT_EQ(watcher_.processId(), -1);
    const auto process = startHelper("");
    ASSERT_TRUE(watcher_.watch(process->id(), note()));
    watcher_.stop();
    EXPECT_EQ(watcher_.processId(), -1);
    process->kill();
    FTaskList::process().runTasks();
    EXPECT_EQ(ended_, 0);
}

TEST_F(ProcessExitWatcherTest, CantWatchWhatIsntThere) {
    auto process = startHelper("");
    const int id = process->id();
    process->kill();
    ASSERT_TRUE(eventually([id] { return testing_support::isForgotten(id); }));
    EXPECT_FALSE(watcher_.watch(id, note()));
    EXPECT_EQ(watcher_.processId(), -1);
}

TEST_F(ProcessExitWatcherTest, ASecondProcessTakesThePlaceOfTheFirst) {
    const auto first = startHelper("");
    const auto second = startHelper("");
    const int id = second->id();
    ASSERT_TRUE(watcher_.watch(first->id(), note()));
    ASSERT_TRUE(watcher_.watch(id, note()));
    first->kill();
    second->kill();
    EXPECT_TRUE(hearsOf(id));
}

} // namespace
} // namespace tessera::test
