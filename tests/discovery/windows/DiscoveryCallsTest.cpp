// Events, threads, processes and identity of this layer: which calls of the system they come to, with which arguments.
#include "discovery/events/LocalSemaphore.h"
#include "discovery/events/LocalThread.h"
#include "discovery/events/WinIPCSemaphore.h"
#include "discovery/identity/ApplicationInfo.h"
#include "discovery/identity/SystemInfo.h"
#include "discovery/processes/ChildProcess.h"
#include "discovery/registry/ProcessExitWatcher.h"
#include "discovery/registry/ServiceDiscovery.h"
#include "discovery/registry/ServiceRecord.h"
#include "foundation/object/FRefPtr.h"
#include "platform/Processes.h"
#include "platform/Threads.h"
#include "support/HelperProcess.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <bit>
#include <string>

namespace tessera {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing_support::HelperProcess;
using testing_support::SystemCalls;

TEST(DiscoveryCalls, TheServicesEventIsAManualOneAndASecondCreateLeavesTheFirstOpen) {
    const auto event = FRefPtr<WinIPCSemaphore>::adopt(new WinIPCSemaphore);
    SystemCalls calls;
    EXPECT_EQ(event->create("com.marlgrove.test.calls"), kResultOk);
    EXPECT_EQ(event->create("com.marlgrove.test.others"), kResultOk);
    EXPECT_THAT(calls.take(), ElementsAre("CreateEventA(null, 1, 0, \"com.marlgrove.test.calls\")",
                                          "CreateEventA(null, 1, 0, \"com.marlgrove.test.others\")"));
    EXPECT_TRUE(event->signal());
    EXPECT_TRUE(event->wait());
    EXPECT_THAT(calls.take(), ElementsAre("SetEvent(...)", "WaitForSingleObject(..., 4294967295)", "ResetEvent(...)"));
    calls.answer("CreateEventA", 0);
    EXPECT_EQ(event->create("com.marlgrove.test.calls"), kResultFalse);
    EXPECT_FALSE(event->signal());
    EXPECT_FALSE(event->wait());
}

TEST(DiscoveryCalls, ATimedSleepIsAWaitForASemaphoreThatNobodyReleases) {
    SystemCalls calls;
    LocalSemaphore::sleep(3);
    EXPECT_THAT(calls.take(),
                ElementsAre("CreateSemaphoreW(null, 0, 2147483647, null)", "WaitForSingleObject(..., 3)"));
    LocalSemaphore::sleep(4);
    EXPECT_THAT(calls.take(), ElementsAre("WaitForSingleObject(..., 4)"));
}

TEST(DiscoveryCalls, AThreadTellsItsNameBeforeItsStartIsOver) {
    SystemCalls calls;
    LocalThread thread("worker", [] { platform::sleepFor(5); });
    EXPECT_THAT(calls.take(), ElementsAre("CreateThread(null, 0, ..., ..., 4, [0])"));
    ASSERT_TRUE(thread.start());
    ASSERT_TRUE(thread.join());
    const auto made = calls.take({"CreateSemaphoreW", "ResumeThread", "CoInitialize", "RaiseException",
                                  "ReleaseSemaphore", "Sleep", "CoUninitialize"});
    EXPECT_THAT(made, ElementsAre("CreateSemaphoreW(null, 0, 2147483647, null)", "ResumeThread(...)",
                                  "CoInitialize(null)", "RaiseException(1080890248, 0, 3, ...)",
                                  "ReleaseSemaphore(..., 1, null)", "Sleep(5)", "CoUninitialize()"));
}

TEST(DiscoveryCalls, AThreadHasThreePrioritiesAndTheProcessorsOfTheProcess) {
    LocalThread thread("worker", [] {});
    SystemCalls calls;
    for (const std::int32_t priority : {0, 1, 2}) {
        EXPECT_TRUE(thread.setPriority(priority));
    }
    EXPECT_THAT(calls.take({"SetThreadPriority"}),
                ElementsAre("SetThreadPriority(..., -1)", "SetThreadPriority(..., 0)", "SetThreadPriority(..., 1)"));
    const std::uint64_t all = platform::processAffinityMask();
    const std::int32_t last = 63 - std::countl_zero(all);
    EXPECT_TRUE(thread.setAffinity(last));
    EXPECT_FALSE(last < 63 && thread.setAffinity(last + 1));
    EXPECT_THAT(calls.take({"SetThreadAffinityMask"}),
                ElementsAre("SetThreadAffinityMask(..., " + std::to_string(std::uint64_t{1} << last) + ")"));
    thread.start();
    thread.join();
}

TEST(DiscoveryCalls, AChildIsStartedByTheNativePathInQuotes) {
    FString path;
    path.assignUtf8("C:\\Gr\xC3\xBC\xC3\x9F\x65\\no program.exe");
    FNPath executable;
    executable.setNativePath(path);
    ChildProcess child(executable, nullptr, ChildProcess::kKeepRunning);
    SystemCalls calls;
    EXPECT_FALSE(child.start({"--tesx", "C:\\take 1.wav"}, 0));
    EXPECT_THAT(calls.take(),
                ElementsAre("CreateProcessW(null, \"\"C:\\Gr\xC3\xBC\xC3\x9F\x65\\no program.exe\" \"--tesx\" "
                            "\"C:\\take 1.wav\"\", null, null, 0, 32, null, null, (104), ...)"));
}

TEST(DiscoveryCalls, AnAttachedChildIsTheFirstOfThatNameWithAllRights) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    FString path;
    path.assignUtf8(PROCESS_HELPER);
    FNPath executable;
    executable.setNativePath(path);
    ChildProcess child(executable, nullptr, ChildProcess::kKeepRunning);
    SystemCalls calls;
    ASSERT_TRUE(child.attach());
    const auto made = calls.take();
    ASSERT_GE(made.size(), 4u);
    EXPECT_EQ(made.front(), "CreateToolhelp32Snapshot(2, 0)");
    EXPECT_EQ(made.at(1), "Process32FirstW(..., (568))");
    EXPECT_EQ(made.back(), "OpenProcess(2097151, 0, " + std::to_string(child.processId()) + ")");
    ASSERT_TRUE(child.attach());
    EXPECT_THAT(calls.take(), IsEmpty());
}

TEST(DiscoveryCalls, ARecordIsAliveWhenItsProcessHasTheName) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    ServiceRecord record = ServiceRecord::forPath("C:/x/com.marlgrove.tessera");
    record.processId = helper.id();
    record.processName = platform::processBaseName(helper.id());
    SystemCalls calls;
    EXPECT_TRUE(record.isAlive());
    EXPECT_THAT(calls.take(), ElementsAre("OpenProcess(1040, 0, " + std::to_string(helper.id()) + ")",
                                          "K32GetModuleBaseNameW(..., null, ..., 260)", "CloseHandle(...)"));
    calls.answer("OpenProcess", 0);
    EXPECT_FALSE(record.isAlive());
    calls.answer("K32GetModuleBaseNameW", 0);
    EXPECT_FALSE(record.isAlive());
    record.processName.clear();
    calls.answer("OpenProcess", 0);
    EXPECT_TRUE(record.isAlive()) << "no name, and no process that could have one";
}

TEST(DiscoveryCalls, AWatchedProcessIsLetGoByItsWaitFirst) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    ProcessExitWatcher watcher;
    SystemCalls calls;
    ASSERT_TRUE(watcher.watch(helper.id(), [](int) {}));
    watcher.stop();
    EXPECT_EQ(watcher.processId(), -1);
    EXPECT_THAT(calls.take({"OpenProcess", "RegisterWaitForSingleObject", "UnregisterWaitEx", "CloseHandle"}),
                ElementsAre("OpenProcess(2097151, 0, " + std::to_string(helper.id()) + ")",
                            "RegisterWaitForSingleObject(..., ..., ..., ..., 4294967295, 8)",
                            "UnregisterWaitEx(..., -1)", "CloseHandle(...)"));
}

TEST(DiscoveryCalls, IdentityIsAskedForOnce) {
    SystemCalls calls;
    systemInfo();
    EXPECT_THAT(calls.take(), UnorderedElementsAre("GetUserNameW(..., [256])", "GetComputerNameW(..., [256])",
                                                   "GetVersionExW((276))"));
    systemInfo();
    EXPECT_THAT(calls.take(), IsEmpty());
}

TEST(DiscoveryCalls, TheModulesNameIsAskedForWith1024Units) {
    SystemCalls calls;
    const ApplicationInfo info;
    EXPECT_THAT(calls.take(), Contains("GetModuleFileNameW(..., ..., 1024)"));
}

} // namespace
} // namespace tessera
