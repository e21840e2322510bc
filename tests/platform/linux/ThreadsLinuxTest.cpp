// What the Linux side alone promises of threads: nice values, signal masks, and numbers that the system knows.
#include "platform/ProcessPriority.h"
#include "platform/Threads.h"

#include "platform/SleepingThread.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <csignal>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tessera::platform {
namespace {

int niceOf(const SleepingThread& thread) {
    return getpriority(PRIO_PROCESS, thread.handle.id());
}

// Nice values add up: where the program itself was started under nice, none is the one of the table.
const char* whyNoPlainValues() {
    return getpriority(PRIO_PROCESS, 0) == 0 ? nullptr : "the tests were started with a nice value of their own";
}

bool mayRaise() {
    rlimit limit{};
    return geteuid() == 0 || (getrlimit(RLIMIT_NICE, &limit) == 0 && limit.rlim_cur >= 40);
}

// In a process of its own, since the priorities of a whole process change.
int inAnotherProcess(bool (*body)()) {
    int status = -1;
    const auto check = [&](int code) {
        status = WEXITSTATUS(code);
        return true;
    };
    EXPECT_EXIT(_exit(body() ? 0 : 1), check, "");
    return status;
}

TEST(ThreadsLinux, PriorityIsANiceValueOfTheOneThread) {
    if (const char* reason = whyNoPlainValues()) {
        GTEST_SKIP() << reason;
    }
    const int own = getpriority(PRIO_PROCESS, gettid());
    SleepingThread thread;
    EXPECT_TRUE(thread.handle.setPriority(-1));
    EXPECT_EQ(niceOf(thread), 2);
    EXPECT_TRUE(thread.handle.setPriority(-15));
    EXPECT_EQ(niceOf(thread), 19);
    EXPECT_EQ(getpriority(PRIO_PROCESS, gettid()), own);
}

TEST(ThreadsLinux, ClassOfTheProcessMovesItsThreadsAlong) {
    if (const char* reason = whyNoPlainValues()) {
        GTEST_SKIP() << reason;
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EQ(inAnotherProcess([] {
                  SleepingThread thread;
                  thread.handle.setPriority(-1);
                  return setProcessClass(kBelowNormalClass) && processClass() == kBelowNormalClass &&
                         niceOf(thread) == 7 && getpriority(PRIO_PROCESS, gettid()) == 5 &&
                         thread.handle.setPriority(-2) && niceOf(thread) == 9;
              }),
              0);
}

TEST(ThreadsLinux, RefusedClassLeavesAllThreadsWhereTheyWere) {
    if (const char* reason = whyNoPlainValues()) {
        GTEST_SKIP() << reason;
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EQ(inAnotherProcess([] {
                  // Without the right to raise, whoever started the test.
                  const rlimit none{0, 0};
                  if (setrlimit(RLIMIT_NICE, &none) != 0 || (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0)) {
                      return false;
                  }
                  SleepingThread thread;
                  return !setProcessClass(kHighClass) && processClass() == kNormalClass && niceOf(thread) == 0 &&
                         !thread.handle.setPriority(15) && niceOf(thread) == 0;
              }),
              0);
}

TEST(ThreadsLinux, HighClassRaisesWhoMay) {
    if (const char* reason = whyNoPlainValues()) {
        GTEST_SKIP() << reason;
    }
    if (!mayRaise()) {
        GTEST_SKIP() << "this user may not raise priorities";
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EQ(inAnotherProcess([] {
                  SleepingThread thread;
                  return setProcessClass(kHighClass) && niceOf(thread) == -10 && setProcessClass(kNormalClass) &&
                         niceOf(thread) == 0;
              }),
              0);
}

TEST(ThreadsLinux, IdealProcessorIsANumberThatIsKept) {
    SleepingThread thread;
    thread.handle.setIdealProcessor(3);
    EXPECT_EQ(thread.handle.setIdealProcessor(64), 3);
    EXPECT_EQ(thread.handle.setIdealProcessor(63), 3);
    EXPECT_EQ(thread.handle.setIdealProcessor(0), 63);
    EXPECT_EQ(thread.handle.setIdealProcessor(64), 0);
}

TEST(ThreadsLinux, OpenedThreadIsItsNumber) {
    SleepingThread thread;
    EXPECT_EQ(openThread(thread.handle.id()), thread.handle.id());
}

TEST(ThreadsLinux, UnknownClassChangesNothing) {
    EXPECT_FALSE(setProcessClass(64));
    EXPECT_EQ(processClass(), kNormalClass);
}

TEST(ThreadsLinux, ThereIsNoPriorityBoost) {
    EXPECT_FALSE(disablePriorityBoost(true));
    EXPECT_FALSE(disablePriorityBoost(false));
}

TEST(ThreadsLinux, NewThreadLeavesTheSignalsOfTheProcessToOthers) {
    static bool terminationBlocked;
    static bool faultBlocked;
    ThreadHandle thread = ThreadHandle::createSuspended(
        [](void*) -> std::uint32_t {
            sigset_t mask;
            pthread_sigmask(SIG_BLOCK, nullptr, &mask);
            terminationBlocked = sigismember(&mask, SIGTERM) == 1 && sigismember(&mask, SIGCHLD) == 1;
            faultBlocked = sigismember(&mask, SIGSEGV) == 1;
            return 0;
        },
        nullptr);
    thread.resume();
    ASSERT_TRUE(thread.wait(20'000));
    EXPECT_TRUE(terminationBlocked);
    EXPECT_FALSE(faultBlocked);
}

TEST(ThreadsLinux, TerminationIsRefusedWhereAnotherUsesTheSignal) {
    SleepingThread thread;
    const int signal = SIGRTMAX - 1;
    struct sigaction before {};
    struct sigaction foreign {};
    foreign.sa_handler = [](int) {};
    sigaction(signal, &foreign, &before);
    EXPECT_FALSE(thread.handle.terminate());
    sigaction(signal, &before, nullptr);
}

} // namespace
} // namespace tessera::platform
