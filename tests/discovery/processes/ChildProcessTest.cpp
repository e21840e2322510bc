#include "discovery/processes/ChildProcess.h"

#include "discovery/processes/ChildProcessListener.h"
#include "discovery/processes/MonitorThread.h"
#include "discovery/processes/WatchedChildren.h"
#include "foundation/object/FMetaClass.h"
#include "foundation/object/FRefPtr.h"
#include "platform/Processes.h"
#include "platform/Semaphore.h"
#include "platform/Threads.h"
#include "support/Eventually.h"
#include "support/FinishedReport.h"
#include "support/HelperProcess.h"
#include "support/ProcessTable.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace tessera {
namespace {

using testing_support::eventually;
using testing_support::hasVanished;
using testing_support::HelperProcess;
using testing_support::killByNumber;
using testing_support::ScratchFolder;
using testing_support::utf8OfPath;

constexpr std::uint32_t kLong = 20'000;
constexpr std::uint32_t kSoon = 50;

// That of programs: none on some systems.
const std::string kExtension = std::filesystem::path(PROCESS_HELPER).extension().string();

FNPath pathOf(const std::filesystem::path& file) {
    FString text;
    text.assignUtf8(utf8OfPath(file).c_str());
    FNPath path;
    path.setNativePath(text);
    return path;
}

FNPath helperPath() {
    return pathOf(PROCESS_HELPER);
}

class NotingListener final : public ChildProcessListener {
public:
    void onChildEnded(ChildProcess& child) override {
        thread = platform::currentThreadId();
        last = &child;
        ++calls;
        if (then) {
            then();
        }
        told.release(1);
    }

    std::atomic<int> calls{0};
    std::atomic<std::uint32_t> thread{0};
    std::atomic<ChildProcess*> last{nullptr};
    std::function<void()> then;
    platform::Semaphore told{0};
};

class ChildProcessTest : public testing::Test {
protected:
    ~ChildProcessTest() override {
        EXPECT_TRUE(eventually([] { return !WatchedChildren::instance().hasMonitor(); }));
    }
    // Ends the child as a crash would.
    static void crash(const ChildProcess& child) { killByNumber(child.processId()); }
    static bool isGone(int id) {
        return eventually([&] { return hasVanished(id); });
    }
};

TEST_F(ChildProcessTest, StartsTheProgramWithItsArguments) {
    const ScratchFolder scratch;
    const std::string name = "gr\u00fc\u00dfe \u266b.txt";
    ChildProcess child(helperPath(), nullptr, ChildProcess::kKeepRunning);
    EXPECT_TRUE(child.start({"report", utf8OfPath(scratch / name), "--tesx", "/a file;with marks.wav"}, 0));
    const std::string report = testing_support::finishedReport(scratch, name);
    EXPECT_TRUE(report.starts_with("argument=--tesx\nargument=/a file;with marks.wav\n")) << report;
}

TEST_F(ChildProcessTest, AnyModeStarts) {
    for (std::int32_t mode : {-1, 0, 1, 2, 3}) {
        ChildProcess child(helperPath(), nullptr, ChildProcess::kEndWithObject);
        EXPECT_TRUE(child.start({"wait"}, mode)) << mode;
        EXPECT_TRUE(child.isRunning());
    }
}

TEST_F(ChildProcessTest, SecondStartIsRefusedAndStartsNothing) {
    ChildProcess child(helperPath(), nullptr, ChildProcess::kEndWithObject);
    ASSERT_TRUE(child.start({"wait"}, 0));
    const int id = child.processId();
    EXPECT_FALSE(child.start({"wait"}, 0));
    EXPECT_EQ(child.processId(), id);
    crash(child);
    EXPECT_TRUE(eventually([&] { return !child.isRunning(); }));
    EXPECT_FALSE(child.start({"wait"}, 0)) << "without a listener nobody has taken note of the end";
    child.terminate();
    EXPECT_TRUE(child.start({"wait"}, 0));
}

TEST_F(ChildProcessTest, StartOfWhatIsNoProgramFails) {
    ChildProcess missing(pathOf("/nowhere/at all"), nullptr, ChildProcess::kEndWithObject);
    EXPECT_FALSE(missing.start({}, 0));
    EXPECT_FALSE(missing.isRunning());
    EXPECT_EQ(missing.processId(), -1);
    ChildProcess empty(FNPath(), nullptr, ChildProcess::kEndWithObject);
    EXPECT_FALSE(empty.start({}, 0));
    NotingListener listener;
    ChildProcess watched(pathOf("/nowhere/at all"), &listener, ChildProcess::kEndWithObject);
    EXPECT_FALSE(watched.start({}, 0));
    EXPECT_TRUE(WatchedChildren::instance().isEmpty());
}

TEST_F(ChildProcessTest, WithoutAListenerNobodyWatches) {
    ChildProcess child(helperPath(), nullptr, ChildProcess::kEndWithObject);
    ASSERT_TRUE(child.start({"wait"}, 0));
    EXPECT_TRUE(WatchedChildren::instance().isEmpty());
    EXPECT_FALSE(WatchedChildren::instance().hasMonitor());
}

TEST_F(ChildProcessTest, ChildOutlivesTheObjectThatIsToKeepItRunning) {
    int id = 0;
    {
        ChildProcess child(helperPath(), nullptr, ChildProcess::kKeepRunning);
        ASSERT_TRUE(child.start({"wait"}, 0));
        id = child.processId();
    }
    EXPECT_FALSE(hasVanished(id));
    killByNumber(id);
    EXPECT_TRUE(isGone(id)) << "and leaves no zombie";
}

TEST_F(ChildProcessTest, DestructorEndsTheChildOtherwise) {
    int id = 0;
    {
        ChildProcess child(helperPath(), nullptr, ChildProcess::kEndWithObject);
        ASSERT_TRUE(child.start({"wait"}, 0));
        id = child.processId();
    }
    EXPECT_TRUE(isGone(id));
}

TEST_F(ChildProcessTest, TerminateEndsTheChildAndForgetsIt) {
    ChildProcess child(helperPath(), nullptr, ChildProcess::kEndWithObject);
    ASSERT_TRUE(child.start({"wait"}, 0));
    const int id = child.processId();
    child.terminate();
    EXPECT_FALSE(child.isRunning());
    EXPECT_EQ(child.processId(), -1);
    EXPECT_TRUE(isGone(id));
    child.terminate();
}

TEST_F(ChildProcessTest, TerminateForgetsAChildThatIsToKeepRunning) {
    ChildProcess child(helperPath(), nullptr, ChildProcess::kKeepRunning);
    ASSERT_TRUE(child.start({"wait"}, 0));
    const int id = child.processId();
    child.terminate();
    EXPECT_FALSE(child.isRunning());
    EXPECT_FALSE(hasVanished(id));
    killByNumber(id);
    EXPECT_TRUE(isGone(id));
}

TEST_F(ChildProcessTest, EndIsNoticedSoonAndToldOnceOnTheMonitorsThread) {
    NotingListener listener;
    ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
    ASSERT_TRUE(child.start({"wait"}, 0));
    EXPECT_TRUE(WatchedChildren::instance().hasMonitor());
    EXPECT_FALSE(listener.told.wait(kSoon));
    const auto end = std::chrono::steady_clock::now();
    crash(child);
    ASSERT_TRUE(listener.told.wait(kLong));
    EXPECT_LT(std::chrono::steady_clock::now() - end, std::chrono::seconds(5)) << "200 ms on an idle machine";
    EXPECT_EQ(listener.last, &child);
    EXPECT_NE(listener.thread, platform::currentThreadId());
    EXPECT_FALSE(child.isRunning());
    EXPECT_EQ(child.processId(), -1);
    EXPECT_TRUE(eventually([] { return !WatchedChildren::instance().hasMonitor(); }));
    EXPECT_EQ(listener.calls, 1);
}

TEST_F(ChildProcessTest, ChildThatEndedIsIdleAndMayBeStartedAgain) {
    NotingListener listener;
    ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
    for (int i = 1; i <= 2; ++i) {
        ASSERT_TRUE(child.start({"exit"}, 0));
        ASSERT_TRUE(listener.told.wait(kLong));
        EXPECT_EQ(listener.calls, i);
    }
}

TEST_F(ChildProcessTest, ListenerMayStartTheChildAgain) {
    NotingListener listener;
    ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
    listener.then = [&] {
        if (listener.calls < 3) {
            EXPECT_TRUE(child.start({"exit"}, 0));
        }
    };
    ASSERT_TRUE(child.start({"exit"}, 0));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(listener.told.wait(kLong));
    }
    EXPECT_FALSE(listener.told.wait(kSoon));
}

TEST_F(ChildProcessTest, ListenerMayDeleteTheChild) {
    NotingListener listener;
    auto child = std::make_unique<ChildProcess>(helperPath(), &listener, ChildProcess::kEndWithObject);
    listener.then = [&] { child.reset(); };
    ASSERT_TRUE(child->start({"exit"}, 0));
    ASSERT_TRUE(listener.told.wait(kLong));
    EXPECT_TRUE(WatchedChildren::instance().isEmpty());
}

TEST_F(ChildProcessTest, ListenerMayDeleteAnotherChildThatHasEndedToo) {
    NotingListener listener;
    NotingListener silent;
    auto other = std::make_unique<ChildProcess>(helperPath(), &silent, ChildProcess::kEndWithObject);
    ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
    listener.then = [&] { other.reset(); };
    ASSERT_TRUE(other->start({"wait"}, 0));
    ASSERT_TRUE(child.start({"exit"}, 0));
    ASSERT_TRUE(listener.told.wait(kLong));
    EXPECT_EQ(silent.calls, 0);
}

TEST_F(ChildProcessTest, TerminatedChildIsNotReported) {
    NotingListener listener;
    ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
    ASSERT_TRUE(child.start({"wait"}, 0));
    child.terminate();
    EXPECT_TRUE(WatchedChildren::instance().isEmpty());
    EXPECT_TRUE(eventually([] { return !WatchedChildren::instance().hasMonitor(); }));
    EXPECT_EQ(listener.calls, 0);
}

TEST_F(ChildProcessTest, SeveralChildrenShareOneMonitor) {
    NotingListener listeners[3];
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (NotingListener& listener : listeners) {
        children.push_back(std::make_unique<ChildProcess>(helperPath(), &listener, ChildProcess::kEndWithObject));
        ASSERT_TRUE(children.back()->start({"wait"}, 0));
    }
    crash(*children[1]);
    ASSERT_TRUE(listeners[1].told.wait(kLong));
    EXPECT_EQ(listeners[0].calls, 0);
    EXPECT_EQ(listeners[2].calls, 0);
    EXPECT_TRUE(WatchedChildren::instance().hasMonitor());
    crash(*children[0]);
    crash(*children[2]);
    ASSERT_TRUE(listeners[0].told.wait(kLong));
    ASSERT_TRUE(listeners[2].told.wait(kLong));
    EXPECT_NE(listeners[0].thread, 0u);
}

TEST_F(ChildProcessTest, DestructorOfTheLastOneWaitsForTheMonitor) {
    NotingListener listener;
    {
        ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
        ASSERT_TRUE(child.start({"wait"}, 0));
    }
    EXPECT_FALSE(WatchedChildren::instance().hasMonitor());
}

TEST_F(ChildProcessTest, ManyStartsAndEndsLoseNoChild) {
    NotingListener listener;
    for (int i = 0; i < 20; ++i) {
        ChildProcess child(helperPath(), &listener, ChildProcess::kEndWithObject);
        ASSERT_TRUE(child.start({"exit"}, 0));
        if (i % 3 == 0) {
            ASSERT_TRUE(listener.told.wait(kLong));
        }
    }
}

TEST_F(ChildProcessTest, AttachTakesARunningProgramOfTheSameName) {
    const ScratchFolder scratch;
    const std::filesystem::path copy = scratch / ("attach_" + std::to_string(platform::ownProcessId()) + kExtension);
    std::filesystem::copy_file(PROCESS_HELPER, copy);
    ChildProcess child(pathOf(copy), nullptr, ChildProcess::kEndWithObject);
    EXPECT_FALSE(child.attach());
    EXPECT_FALSE(child.isRunning());

    HelperProcess helper(utf8OfPath(copy), {"lines"});
    ASSERT_EQ(helper.hear(), std::to_string(helper.id()));
    // The folder doesn't count, only the name of the file.
    ChildProcess elsewhere(pathOf("/another/folder" / copy.filename()), nullptr, ChildProcess::kKeepRunning);
    EXPECT_TRUE(elsewhere.attach());
    EXPECT_EQ(elsewhere.processId(), helper.id());
    EXPECT_TRUE(elsewhere.attach()) << "it has one already";
    EXPECT_FALSE(elsewhere.start({"wait"}, 0));

    EXPECT_TRUE(child.attach());
    child.terminate();
    EXPECT_TRUE(eventually([&] { return !elsewhere.isRunning(); })) << "an attached program is ended like a child";
}

TEST_F(ChildProcessTest, AttachedChildIsNotWatched) {
    const ScratchFolder scratch;
    const std::filesystem::path copy = scratch / ("watch_" + std::to_string(platform::ownProcessId()) + kExtension);
    std::filesystem::copy_file(PROCESS_HELPER, copy);
    HelperProcess helper(utf8OfPath(copy), {"lines"});
    ASSERT_EQ(helper.hear(), std::to_string(helper.id()));
    NotingListener listener;
    ChildProcess child(pathOf(copy), &listener, ChildProcess::kKeepRunning);
    EXPECT_TRUE(child.attach());
    EXPECT_TRUE(WatchedChildren::instance().isEmpty());
}

TEST_F(ChildProcessTest, StartOrShowStartsOnceAndThenLooksForAWindow) {
    ChildProcess child(helperPath(), nullptr, ChildProcess::kEndWithObject);
    EXPECT_TRUE(child.startOrShow({"wait"}));
    const int id = child.processId();
    EXPECT_FALSE(child.startOrShow({"wait"})) << "there is no window to show";
    EXPECT_EQ(child.processId(), id);
}

TEST(MonitorThread, KnowsItsClassAndIsMadeByNobodyElse) {
    const auto thread = FRefPtr<MonitorThread>::adopt(new MonitorThread);
    EXPECT_STREQ(thread->getClassName(), "MonitorThread");
    EXPECT_TRUE(thread->isTypeOf("FObject", true));
    EXPECT_EQ(MonitorThread::metaClass.getFactory(), nullptr);
    EXPECT_STREQ(thread->getName().text8(), "com.marlgrove.childprocess-monitor");
}

} // namespace
} // namespace tessera
