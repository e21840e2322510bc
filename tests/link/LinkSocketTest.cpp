#include "link/LinkSocket.h"

#include "platform/IpcAddress.h"
#include "platform/Processes.h"
#include "support/NanomsgSpy.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace tessera {
namespace {

using test::NanomsgSpy;
using namespace std::chrono_literals;

class LinkSocketTest : public testing::Test {
protected:
    LinkSocketTest() {
        // With "/" everywhere: a pipe's name has no backslash.
        address_ = "ipc://" + (std::filesystem::temp_directory_path() / "link.ipc").generic_string();
        NanomsgSpy::reset();
    }

    // Both ends up: what this side sends from now on arrives.
    static void connect(LinkSocket& here, LinkSocket& there) {
        ASSERT_TRUE(here.open(LinkSide::Bind));
        ASSERT_TRUE(there.open(LinkSide::Connect));
        ASSERT_GT(there.send("hello", SendMode::Blocking), 0);
        ASSERT_EQ(waitFor(here), "hello");
    }

    static std::string waitFor(LinkSocket& socket) {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        std::string message;
        while (message.empty() && std::chrono::steady_clock::now() < deadline) {
            message = socket.receive();
            std::this_thread::yield();
        }
        return message;
    }

    std::string address_;
};

TEST_F(LinkSocketTest, UserAddressTakesTheNameAsItIs) {
    EXPECT_EQ(LinkSocket::userAddress("ada"), "ipc:///tmp/mgrv_tesxcon_ada.ipc");
    EXPECT_EQ(LinkSocket::userAddress("Ada L\xC3\xB6"), "ipc:///tmp/mgrv_tesxcon_Ada L\xC3\xB6.ipc");
    EXPECT_EQ(LinkSocket::userAddress(""), "ipc:///tmp/mgrv_tesxcon_.ipc");
}

TEST_F(LinkSocketTest, ConstructionMakesNoSocket) {
    LinkSocket socket(LinkSocket::defaultAddress);
    EXPECT_EQ(socket.address(), "ipc:///tmp/mgrv_tesxcon.ipc");
    EXPECT_FALSE(socket.isOpen());
    EXPECT_EQ(NanomsgSpy::totalCalls(), 0);
}

TEST_F(LinkSocketTest, OpenOnAnOpenSocketChangesNothing) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    NanomsgSpy::reset();
    EXPECT_TRUE(socket.open(LinkSide::Bind));
    EXPECT_TRUE(socket.open(LinkSide::Connect));
    EXPECT_TRUE(socket.isOpen());
    EXPECT_EQ(NanomsgSpy::totalCalls(), 0);
}

TEST_F(LinkSocketTest, CloseOfWhatNeverOpenedCallsNothing) {
    LinkSocket socket(address_);
    EXPECT_TRUE(socket.close());
    EXPECT_EQ(NanomsgSpy::totalCalls(), 0);
}

TEST_F(LinkSocketTest, OpenSetsBothTimeOutsAndNothingElse) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    EXPECT_EQ(NanomsgSpy::calls("nn_socket"), 1);
    EXPECT_EQ(NanomsgSpy::calls("nn_setsockopt"), 2);
    EXPECT_EQ(NanomsgSpy::calls("nn_bind"), 1);
    EXPECT_EQ(NanomsgSpy::totalCalls(), 4);
}

TEST_F(LinkSocketTest, EachCloseDiscardsTheSocketAndEachOpenMakesOne) {
    LinkSocket socket(address_);
    for (int round = 1; round <= 3; ++round) {
        ASSERT_TRUE(socket.open(LinkSide::Bind));
        ASSERT_TRUE(socket.close());
        EXPECT_FALSE(socket.isOpen());
        EXPECT_EQ(NanomsgSpy::calls("nn_socket"), round);
        EXPECT_EQ(NanomsgSpy::calls("nn_close"), round);
    }
}

TEST_F(LinkSocketTest, DestructorClosesAnOpenSocket) {
    {
        LinkSocket socket(address_);
        ASSERT_TRUE(socket.open(LinkSide::Bind));
    }
    EXPECT_EQ(NanomsgSpy::calls("nn_close"), 1);
}

TEST_F(LinkSocketTest, FailedBindPrintsItsNumberAndKeepsTheSocketForTheNextOpen) {
    // Not every system refuses an address that somebody else has bound.
    NanomsgSpy::failNext("nn_bind", EADDRINUSE);
    LinkSocket second(address_);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(second.open(LinkSide::Bind));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "nn_bind/nn_connect failed with error code " + std::to_string(EADDRINUSE) + "\n");
    EXPECT_FALSE(second.isOpen());

    // The socket stays behind, so a close finds nothing open and leaves it.
    NanomsgSpy::reset();
    EXPECT_TRUE(second.close());
    EXPECT_EQ(NanomsgSpy::totalCalls(), 0);

    NanomsgSpy::reset();
    EXPECT_TRUE(second.open(LinkSide::Bind));
    EXPECT_EQ(NanomsgSpy::calls("nn_socket"), 0);
    EXPECT_EQ(NanomsgSpy::calls("nn_setsockopt"), 0);
    EXPECT_EQ(NanomsgSpy::calls("nn_bind"), 1);
}

TEST_F(LinkSocketTest, FailedSocketPrintsAndIsTriedAgain) {
    LinkSocket socket(address_);
    NanomsgSpy::failNext("nn_socket", EMFILE);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(socket.open(LinkSide::Bind));
    // The options that are set before the test leave their own number: the socket that they go to doesn't exist.
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "nn_socket failed with error code " + std::to_string(EBADF) + "\n");
    EXPECT_EQ(NanomsgSpy::calls("nn_setsockopt"), 2);
    EXPECT_EQ(NanomsgSpy::calls("nn_bind"), 0);
    EXPECT_TRUE(socket.open(LinkSide::Bind));
    EXPECT_EQ(NanomsgSpy::calls("nn_socket"), 2);
}

TEST_F(LinkSocketTest, FailedClosePrintsAndKeepsTheSocket) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    NanomsgSpy::failNext("nn_close", EINTR);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(socket.close());
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "nn_close failed with error code " + std::to_string(EINTR) + "\n");
    EXPECT_FALSE(socket.isOpen());
    testing::internal::CaptureStdout();
    // The endpoint of the surviving socket still holds the address.
    socket.setAddress(address_ + "2");
    EXPECT_TRUE(socket.open(LinkSide::Bind));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(NanomsgSpy::calls("nn_socket"), 1);
}

TEST_F(LinkSocketTest, ConnectNeedsNobodyThere) {
    LinkSocket socket(address_);
    EXPECT_TRUE(socket.open(LinkSide::Connect));
    EXPECT_TRUE(socket.isOpen());
}

TEST_F(LinkSocketTest, ReceiveWithNothingWaitingIsEmptyAndSilent) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    testing::internal::CaptureStdout();
    EXPECT_EQ(socket.receive(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(LinkSocketTest, ReceiveWithoutASocketPrintsTheFailure) {
    LinkSocket socket(address_);
    testing::internal::CaptureStdout();
    EXPECT_EQ(socket.receive(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "nn_recv failed with error code " + std::to_string(EBADF) + "\n");
}

TEST_F(LinkSocketTest, NonBlockingSendWithNobodyThereFailsSilently) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    testing::internal::CaptureStdout();
    EXPECT_EQ(socket.send("a", SendMode::NonBlocking), -1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(LinkSocketTest, MessagesArriveWholeAndInOrder) {
    LinkSocket here(address_);
    LinkSocket there(address_);
    connect(here, there);
    const std::string first("a\0b;\xFF", 5);
    const std::string second(100000, 'x');
    EXPECT_EQ(there.send(first, SendMode::Blocking), 5);
    EXPECT_EQ(there.send(second, SendMode::Blocking), 100000);
    EXPECT_EQ(waitFor(here), first);
    EXPECT_EQ(waitFor(here), second);
}

TEST_F(LinkSocketTest, MessagesInOneBreathArriveThoughNoneWaits) {
    LinkSocket here(address_), there(address_);
    connect(here, there);
    for (const char* message : {"one", "two", "three", "four"}) {
        EXPECT_GT(here.send(message, SendMode::NonBlocking), 0) << message;
    }
    for (const char* message : {"one", "two", "three", "four"}) {
        EXPECT_EQ(waitFor(there), message);
    }
}

TEST_F(LinkSocketTest, MessageOfNoBytesCountsAsNothing) {
    LinkSocket here(address_);
    LinkSocket there(address_);
    connect(here, there);
    EXPECT_EQ(there.send("", SendMode::Blocking), 0);
    EXPECT_EQ(there.send("behind it", SendMode::Blocking), 9);
    // The waiting receive takes the empty message as its answer.
    EXPECT_EQ(here.sendAndReceive("question", SendMode::Blocking), "");
    EXPECT_EQ(waitFor(here), "behind it");
}

TEST_F(LinkSocketTest, SendAndReceiveGivesTheAnswer) {
    LinkSocket here(address_);
    LinkSocket there(address_);
    connect(here, there);
    std::thread peer([&] {
        if (waitFor(there) == "question") {
            there.send("answer", SendMode::Blocking);
        }
    });
    EXPECT_EQ(here.sendAndReceive("question", SendMode::Blocking), "answer");
    peer.join();
}

TEST_F(LinkSocketTest, WhateverComesFirstIsTheAnswer) {
    LinkSocket here(address_);
    LinkSocket there(address_);
    connect(here, there);
    ASSERT_GT(there.send("unsolicited", SendMode::Blocking), 0);
    EXPECT_EQ(here.sendAndReceive("question", SendMode::NonBlocking), "unsolicited");
}

TEST_F(LinkSocketTest, SendAndReceiveWithNobodyThereWaitsForBothTimeOuts) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    testing::internal::CaptureStdout();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(socket.sendAndReceive("question", SendMode::Blocking), "");
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "nn_recv failed with error code " + std::to_string(ETIMEDOUT) + "\n");
    EXPECT_GE(waited, 7900ms);
    EXPECT_LT(waited, 30s);
}

TEST_F(LinkSocketTest, AgainDuringAWaitPrintsTheTimedOutLine) {
    LinkSocket socket(address_);
    ASSERT_TRUE(socket.open(LinkSide::Bind));
    NanomsgSpy::failNext("nn_recv", EAGAIN);
    testing::internal::CaptureStdout();
    EXPECT_EQ(socket.sendAndReceive("question", SendMode::NonBlocking), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "nn_recv timed out!\n");
}

// Every length around the limits: of the system's address, of the lengths that would end the process in the library,
// and of the library itself. The path has to be a real one for the lengths that do fit.
TEST_F(LinkSocketTest, AddressTooLongIsAFailedBindOfAnyLength) {
    // That of a path which still fits: the system's, or the library's less the scheme.
    std::size_t limit = 104;
    while (platform::fitsIpcAddress(std::string(limit, 'x')) && limit < 122) {
        ++limit;
    }
    const std::string tooLong = "nn_bind/nn_connect failed with error code " + std::to_string(ENAMETOOLONG) + "\n";
    for (std::size_t length = 104; length <= 140; ++length) {
        std::string path = "/tmp/tesx-long-" + std::to_string(platform::ownProcessId()) + "-";
        path.resize(length, 'x');
        for (const LinkSide side : {LinkSide::Bind, LinkSide::Connect}) {
            LinkSocket socket("ipc://" + path);
            testing::internal::CaptureStdout();
            const bool opened = socket.open(side);
            EXPECT_EQ(testing::internal::GetCapturedStdout(), length < limit ? "" : tooLong) << length;
            EXPECT_EQ(opened, length < limit) << length;
        }
        std::filesystem::remove(path);
    }
}

TEST_F(LinkSocketTest, LongUserNamesFailToBindAndKillNobody) {
    for (const std::size_t length : {85u, 86u, 99u, 100u, 200u}) {
        const std::string address = LinkSocket::userAddress(std::string(length, 'u'));
        const bool fits = platform::fitsIpcAddress(address.substr(6)) && address.size() < 128;
        EXPECT_TRUE(length > 85 || fits);
        EXPECT_TRUE(length < 100 || !fits);
        LinkSocket socket(address);
        testing::internal::CaptureStdout();
        EXPECT_EQ(socket.open(LinkSide::Connect), fits) << length;
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_EQ(printed.empty(), fits) << printed;
    }
}

} // namespace
} // namespace tessera
