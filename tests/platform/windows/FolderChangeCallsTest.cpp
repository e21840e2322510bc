// The port of folder changes: which calls of the system it makes, with which arguments, and what it makes of each kind
// of completion. The reads are the test's: the system isn't asked for them.
#include "platform/FolderChangePort.h"

#include "support/ScratchFolder.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tessera::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScratchFolder;
using testing_support::SystemCalls;
using testing_support::utf8OfPath;

constexpr FolderChangePort::Key kKey = 7;
constexpr DWORD kFailed = 0xc0000001;
const std::string kRead = "ReadDirectoryChangesW(..., ..., 4096, 1, 83, null, ..., null)";

class FolderChangeCalls : public testing::Test {
protected:
    void SetUp() override { open(); }
    void TearDown() override {
        // The port waits for what it takes to be under way.
        port_->close(kKey);
        complete(0, 0);
    }

    std::string path() const { return utf8OfPath(scratch_.path()); }
    void open() {
        calls_.answer("ReadDirectoryChangesW", TRUE);
        ASSERT_TRUE(port_->open(kKey, path()));
        systemPort_ = reinterpret_cast<HANDLE>(calls_.argument("CreateIoCompletionPort", 1));
        buffer_ = reinterpret_cast<std::byte*>(calls_.argument("ReadDirectoryChangesW", 1));
        overlapped_ = reinterpret_cast<OVERLAPPED*>(calls_.argument("ReadDirectoryChangesW", 6));
    }
    // What the system does at the end of a read.
    void complete(DWORD status, DWORD bytes) {
        overlapped_->Internal = status;
        PostQueuedCompletionStatus(systemPort_, bytes, kKey, overlapped_);
    }
    FolderChangePort::Read take() {
        FolderChangePort::Key key = 0;
        EXPECT_EQ(port_->wait(key), FolderChangePort::Event::folder);
        EXPECT_EQ(key, kKey);
        return port_->take(key, changes_);
    }
    void readAgain() {
        calls_.answer("ReadDirectoryChangesW", TRUE);
        port_->read(kKey);
    }
    // A record into the buffer of the read.
    void put(std::size_t at, std::uint32_t next, std::uint32_t action, std::u16string_view name) {
        const std::uint32_t words[] = {next, action, static_cast<std::uint32_t>(2 * name.size())};
        std::memcpy(buffer_ + at, words, sizeof words);
        std::memcpy(buffer_ + at + sizeof words, name.data(), 2 * name.size());
    }

    ScratchFolder scratch_;
    SystemCalls calls_;
    std::unique_ptr<FolderChangePort> port_ = FolderChangePort::create();
    std::vector<FolderChange> changes_;
    // Of the read that is under way.
    HANDLE systemPort_ = nullptr;
    std::byte* buffer_ = nullptr;
    OVERLAPPED* overlapped_ = nullptr;
};

TEST_F(FolderChangeCalls, AFolderIsOpenedToListItSharedWithAllAndReadWithWhatIsBelowIt) {
    EXPECT_THAT(calls_.take(), ElementsAre("CreateIoCompletionPort(-1, null, 0, 0)",
                                           "CreateFileW(\"" + path() + "\", 1, 7, null, 3, 1107296256, null)",
                                           "CreateIoCompletionPort(..., ..., 7, 0)", kRead));
    EXPECT_EQ(calls_.argument("ReadDirectoryChangesW", 0), calls_.argument("CreateIoCompletionPort", 0));
    EXPECT_EQ(overlapped_->hEvent, nullptr);
    EXPECT_EQ(overlapped_->Offset, 0u);
}

TEST_F(FolderChangeCalls, DataIsTakenApartAndReadOn) {
    put(0, 20, 1, u"a");
    put(20, 0, 3, u"sub\\b");
    complete(0, 44);
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (std::vector<FolderChange>{{1, "a"}, {3, "sub/b"}}));
    calls_.take();
    overlapped_->Offset = 5;
    readAgain();
    EXPECT_THAT(calls_.take(), ElementsAre(kRead));
    EXPECT_EQ(overlapped_->Offset, 0u) << "cleared before each read";
}

TEST_F(FolderChangeCalls, AReadThatFailedIsStartedAgain) {
    complete(kFailed, 24);
    EXPECT_EQ(take(), FolderChangePort::Read::again);
    EXPECT_TRUE(changes_.empty());
    readAgain();
    put(0, 0, 2, u"a");
    complete(0, 14);
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (std::vector<FolderChange>{{2, "a"}}));
    readAgain();
}

TEST_F(FolderChangeCalls, WithoutAByteTheFolderIsFinishedWhateverTheStatus) {
    for (const DWORD status : {DWORD{0}, kFailed}) {
        calls_.take();
        complete(status, 0);
        EXPECT_EQ(take(), FolderChangePort::Read::finished);
        EXPECT_THAT(calls_.take({"CloseHandle"}), ElementsAre("CloseHandle(...)"));
        open();
    }
}

TEST_F(FolderChangeCalls, ACompletionWithoutAKeyIsPassedOver) {
    PostQueuedCompletionStatus(systemPort_, 100, 0, nullptr);
    FolderChangePort::Key key = 0;
    EXPECT_EQ(port_->wait(key), FolderChangePort::Event::skip);
    calls_.answer("GetQueuedCompletionStatus", FALSE);
    EXPECT_EQ(port_->wait(key), FolderChangePort::Event::skip) << "the wait failed";
    EXPECT_THAT(calls_.take({"GetQueuedCompletionStatus"}),
                ElementsAre("GetQueuedCompletionStatus(..., [0], ..., ..., 4294967295)",
                            "GetQueuedCompletionStatus(..., [0], ..., ..., 4294967295)"));
}

TEST_F(FolderChangeCalls, AStopIsACompletionOfOneByteWithoutAKey) {
    calls_.take();
    port_->postStop();
    EXPECT_THAT(calls_.take(), ElementsAre("PostQueuedCompletionStatus(..., 1, 0, null)"));
    FolderChangePort::Key key = 0;
    EXPECT_EQ(port_->wait(key), FolderChangePort::Event::stop);
}

TEST_F(FolderChangeCalls, AReadThatCannotBeStartedEndsTheFolder) {
    put(0, 0, 1, u"a");
    complete(0, 14);
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    calls_.answer("ReadDirectoryChangesW", FALSE);
    port_->read(kKey);
    EXPECT_EQ(take(), FolderChangePort::Read::finished);
    open();
}

TEST_F(FolderChangeCalls, ClosingClosesTheHandleAndTheEntryGoesWithItsCompletion) {
    calls_.take();
    port_->close(kKey);
    EXPECT_THAT(calls_.take(), ElementsAre("CloseHandle(...)"));
    // Data that had come already is nobody's any more.
    complete(0, 14);
    EXPECT_EQ(take(), FolderChangePort::Read::finished);
    EXPECT_TRUE(changes_.empty());
    open();
}

TEST_F(FolderChangeCalls, WhatFailsOnTheWayGivesTheFolderBack) {
    calls_.take();
    calls_.answer("CreateIoCompletionPort", 0);
    EXPECT_FALSE(port_->open(8, path()));
    EXPECT_THAT(calls_.take({"CloseHandle"}), ElementsAre("CloseHandle(...)"));
    calls_.answer("ReadDirectoryChangesW", FALSE);
    EXPECT_FALSE(port_->open(8, path()));
    EXPECT_THAT(calls_.take({"CloseHandle"}), ElementsAre("CloseHandle(...)"));
    calls_.answer("CreateFileW", -1);
    EXPECT_FALSE(port_->open(8, path()));
    EXPECT_THAT(calls_.take({"CreateIoCompletionPort"}), IsEmpty());
}

TEST(FolderChangePortWithoutMeans, IsNone) {
    SystemCalls calls;
    calls.answer("CreateIoCompletionPort", 0);
    EXPECT_EQ(FolderChangePort::create(), nullptr);
}

} // namespace
} // namespace tessera::platform
