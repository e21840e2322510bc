// Events, semaphores, locks and slots: which calls of the system they are, with which arguments.
#include "platform/NamedEvent.h"
#include "platform/Semaphore.h"
#include "platform/SlowReadWriteLock.h"
#include "platform/ThreadSlots.h"
#include "platform/WordLock.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

namespace tessera::platform {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::SystemCalls;

TEST(EventCalls, AnEventThatItsWaiterClearsIsAManualOneAndUnset) {
    SystemCalls calls;
    NamedEvent event = NamedEvent::open("com.marlgrove.test.calls", NamedEvent::Reset::byWaiter);
    EXPECT_THAT(calls.take(), ElementsAre("CreateEventA(null, 1, 0, \"com.marlgrove.test.calls\")"));
    event.signal();
    event.wait(kNoTimeLimit);
    EXPECT_THAT(calls.take(), ElementsAre("SetEvent(...)", "WaitForSingleObject(..., 4294967295)", "ResetEvent(...)"));
    event.wait(0);
    EXPECT_THAT(calls.take(), ElementsAre("WaitForSingleObject(..., 0)")) << "none but a regular end clears it";
    event.close();
    EXPECT_THAT(calls.take(), ElementsAre("CloseHandle(...)"));
}

TEST(EventCalls, AnEventThatTheSystemClearsIsAnAutomaticOneAndUnset) {
    SystemCalls calls;
    NamedEvent event = NamedEvent::open("com.marlgrove.test.calls", NamedEvent::Reset::bySystem);
    EXPECT_THAT(calls.take(), ElementsAre("CreateEventA(null, 0, 0, \"com.marlgrove.test.calls\")"));
    event.signal();
    event.wait(20);
    EXPECT_THAT(calls.take(), ElementsAre("SetEvent(...)", "WaitForSingleObject(..., 20)"));
}

TEST(EventCalls, OnlyAResultOfOneIsASignal) {
    NamedEvent event = NamedEvent::open(nullptr, NamedEvent::Reset::byWaiter);
    SystemCalls calls;
    calls.answer("SetEvent", 2);
    EXPECT_FALSE(event.signal());
    EXPECT_TRUE(event.signal());
}

TEST(EventCalls, AWaitThatEndsOtherwiseFailsAndClearsNothing) {
    NamedEvent event = NamedEvent::open(nullptr, NamedEvent::Reset::byWaiter);
    for (const DWORD other : {DWORD{WAIT_ABANDONED}, WAIT_FAILED}) {
        SystemCalls calls;
        calls.answer("WaitForSingleObject", static_cast<std::intptr_t>(other));
        EXPECT_EQ(event.wait(kNoTimeLimit), NamedEvent::WaitResult::failed);
        EXPECT_THAT(calls.take({"ResetEvent"}), IsEmpty());
    }
}

TEST(EventCalls, AnAbandonedEventIsNotClosed) {
    NamedEvent event = NamedEvent::open(nullptr, NamedEvent::Reset::byWaiter);
    SystemCalls calls;
    event.abandon();
    event = NamedEvent();
    EXPECT_THAT(calls.take(), IsEmpty());
}

TEST(EventCalls, ASemaphoreCountsToTheLargestNumber) {
    SystemCalls calls;
    {
        Semaphore semaphore(3);
        EXPECT_THAT(calls.take(), ElementsAre("CreateSemaphoreW(null, 3, 2147483647, null)"));
        semaphore.wait(kNoTimeLimit);
        semaphore.release(2);
        EXPECT_THAT(calls.take(),
                    ElementsAre("WaitForSingleObject(..., 4294967295)", "ReleaseSemaphore(..., 2, null)"));
    }
    EXPECT_THAT(calls.take(), ElementsAre("CloseHandle(...)"));
}

TEST(EventCalls, TheSlowLockIsAMutexAnEventAndASemaphore) {
    SystemCalls calls;
    {
        SlowReadWriteLock lock;
        EXPECT_THAT(calls.take(), ElementsAre("CreateMutexW(null, 0, null)", "CreateEventW(null, 1, 1, null)",
                                              "CreateSemaphoreW(null, 0, 2147483647, null)"));
    }
    EXPECT_THAT(calls.take(), ElementsAre("CloseHandle(...)", "CloseHandle(...)", "CloseHandle(...)"));
}

TEST(EventCalls, TheSlowLockIsNotValidWithoutAnyOfThem) {
    for (const char* missing : {"CreateMutexW", "CreateEventW", "CreateSemaphoreW"}) {
        SystemCalls calls;
        calls.answer(missing, 0);
        EXPECT_FALSE(SlowReadWriteLock().isValid()) << missing;
        EXPECT_THAT(calls.take({"CloseHandle"}), ElementsAre("CloseHandle(...)", "CloseHandle(...)"));
    }
}

TEST(EventCalls, TheFirstReaderAndTheLastTellTheWriters) {
    SlowReadWriteLock lock;
    SystemCalls calls;
    lock.lockRead();
    const auto mutex = calls.argument("ReleaseMutex", 0);
    EXPECT_EQ(calls.argument("WaitForSingleObject", 0), mutex);
    const auto readers = calls.argument("ReleaseSemaphore", 0);
    const auto noReaders = calls.argument("ResetEvent", 0);
    EXPECT_THAT(calls.take(), ElementsAre("WaitForSingleObject(..., 4294967295)", "ReleaseSemaphore(..., 1, ...)",
                                          "ResetEvent(...)", "ReleaseMutex(...)"));
    lock.lockRead();
    EXPECT_THAT(calls.take(), ElementsAre("WaitForSingleObject(..., 4294967295)", "ReleaseSemaphore(..., 1, ...)",
                                          "ReleaseMutex(...)"));
    lock.unlockRead();
    EXPECT_EQ(calls.argument("WaitForSingleObject", 0), readers);
    EXPECT_THAT(calls.take(),
                ElementsAre("WaitForMultipleObjects(2, ..., 1, 4294967295)", "ReleaseSemaphore(..., 1, ...)",
                            "WaitForSingleObject(..., 4294967295)", "ReleaseMutex(...)"));
    lock.unlockRead();
    EXPECT_EQ(calls.argument("SetEvent", 0), noReaders);
    EXPECT_EQ(calls.argument("ReleaseMutex", 0), mutex);
    EXPECT_THAT(calls.take(),
                ElementsAre("WaitForMultipleObjects(2, ..., 1, 4294967295)", "ReleaseSemaphore(..., 1, ...)",
                            "WaitForSingleObject(..., 4294967295)", "SetEvent(...)", "ReleaseMutex(...)"));
}

TEST(EventCalls, TheWriterKeepsTheMutexThatItGetsTogetherWithTheEvent) {
    SlowReadWriteLock lock;
    SystemCalls calls;
    lock.lockWrite();
    EXPECT_THAT(calls.take(), ElementsAre("WaitForMultipleObjects(2, ..., 1, 4294967295)"));
    lock.unlockWrite();
    EXPECT_THAT(calls.take(), ElementsAre("ReleaseMutex(...)"));
}

TEST(EventCalls, TheWordLocksEntriesAreLookedUpLateAndOnce) {
    SystemCalls calls;
    wordLockEntries();
    EXPECT_THAT(calls.take(), ElementsAre("GetProcAddress(..., \"InitializeSRWLock\")",
                                          "GetProcAddress(..., \"AcquireSRWLockShared\")",
                                          "GetProcAddress(..., \"ReleaseSRWLockShared\")",
                                          "GetProcAddress(..., \"AcquireSRWLockExclusive\")",
                                          "GetProcAddress(..., \"ReleaseSRWLockExclusive\")",
                                          "GetProcAddress(..., \"TryAcquireSRWLockExclusive\")",
                                          "GetProcAddress(..., \"TryAcquireSRWLockShared\")"));
    EXPECT_EQ(calls.argument("GetProcAddress", 0), reinterpret_cast<std::uintptr_t>(GetModuleHandleW(L"Kernel32")));
    wordLockEntries();
    EXPECT_THAT(calls.take(), IsEmpty());
}

TEST(EventCalls, ASlotIsOneOfTheSystemsOwn) {
    SystemCalls calls;
    const ThreadSlot slot = allocateThreadSlot();
    EXPECT_THAT(calls.take(), Contains("TlsAlloc()"));
    freeThreadSlot(slot);
    EXPECT_THAT(calls.take(), ElementsAre("TlsFree(" + std::to_string(slot) + ")"));
    freeThreadSlot(kNoThreadSlot);
    EXPECT_THAT(calls.take(), IsEmpty());
}

TEST(EventCalls, WithoutAFreeSlotThereIsNone) {
    SystemCalls calls;
    calls.answer("TlsAlloc", static_cast<std::intptr_t>(TLS_OUT_OF_INDEXES));
    EXPECT_EQ(allocateThreadSlot(), kNoThreadSlot);
}

TEST(EventCalls, TheSlotOfNumberZeroIsGivenBackForAnother) {
    SystemCalls calls;
    calls.answer("TlsAlloc", 0);
    calls.answer("TlsFree", 1);
    const ThreadSlot slot = allocateThreadSlot();
    EXPECT_NE(slot, kNoThreadSlot);
    EXPECT_THAT(calls.take(), ElementsAre("TlsAlloc()", "TlsAlloc()", "TlsFree(0)"));
    freeThreadSlot(slot);
}

} // namespace
} // namespace tessera::platform
