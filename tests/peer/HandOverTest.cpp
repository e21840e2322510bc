#include "peer/HandOver.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace tessera::peer {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

class HandOverTest : public testing::Test {
protected:
    void TearDown() override { fs::remove_all(folder_); }

    // Plays the live peer's loop until it has something.
    static Texts waitForFiles(HandOver& live) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        Texts files;
        while (files.empty() && std::chrono::steady_clock::now() < deadline) {
            files = live.takeFiles();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return files;
    }

    const std::string folder_ = (fs::temp_directory_path() / "TesxPeer").generic_string();
};

TEST_F(HandOverTest, TheFirstStartIsTheLiveOne) {
    HandOver first(folder_);
    HandOver second(folder_);
    EXPECT_TRUE(first.tryBecomeLive());
    EXPECT_TRUE(first.tryBecomeLive());
    EXPECT_FALSE(second.tryBecomeLive());
    EXPECT_FALSE(second.folderProblem());
}

TEST_F(HandOverTest, ASecondStartsFileReachesTheLiveOne) {
    HandOver live(folder_);
    ASSERT_TRUE(live.tryBecomeLive());
    EXPECT_TRUE(live.takeFiles().empty());
    HandOver::Outcome outcome = HandOver::Outcome::NobodyTookIt;
    std::thread second([&] { outcome = HandOver(folder_).handOver("/tmp/a b;c.wav", 20'000); });
    EXPECT_EQ((Texts{"/tmp/a b;c.wav"}), waitForFiles(live));
    second.join();
    EXPECT_EQ(HandOver::Outcome::Taken, outcome);
    EXPECT_TRUE(live.takeFiles().empty());
}

TEST_F(HandOverTest, ALivePeerThatDoesNotAnswerIsNoticedAndNothingIsLeft) {
    HandOver live(folder_);
    ASSERT_TRUE(live.tryBecomeLive());
    EXPECT_EQ(HandOver::Outcome::NobodyTookIt, HandOver(folder_).handOver("/tmp/a.wav", 60));
    EXPECT_TRUE(live.takeFiles().empty());
}

TEST_F(HandOverTest, WhenTheLiveOneEndsTheSecondTakesItsPlace) {
    HandOver second(folder_);
    EXPECT_EQ(HandOver::Outcome::BecameLive, second.handOver("/tmp/a.wav", 20'000));
    EXPECT_FALSE(HandOver(folder_).tryBecomeLive());
    EXPECT_TRUE(second.takeFiles().empty());
}

TEST_F(HandOverTest, AFolderThatCannotBeMadeGivesNobody) {
    std::ofstream(folder_) << "a file is in the way";
    HandOver none(folder_);
    EXPECT_FALSE(none.tryBecomeLive());
    EXPECT_TRUE(none.folderProblem());
    EXPECT_EQ(HandOver::Outcome::NobodyTookIt, none.handOver("/tmp/a.wav", 60));
}

} // namespace
} // namespace tessera::peer
