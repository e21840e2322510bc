#include "platform/ProgramRun.h"

#include "support/Eventually.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace tessera::platform {
namespace {

using testing_support::eventually;
using testing_support::ScratchFolder;

const std::atomic<bool> kNeverStop{false};

TEST(ProgramRun, GivesTheExitCode) {
    const ProgramEnd end = runProgram(RUN_HELPER, {"exit", "7"}, kNeverStop);
    EXPECT_EQ(ProgramEnd::Kind::Exited, end.kind);
    EXPECT_EQ(7, end.code);
}

TEST(ProgramRun, ArgumentsArriveAsTheyAre) {
    const ScratchFolder scratch;
    const std::string texts[] = {"x '\"$;", "", "back\\slash\\", "\\\"", "\\\\\"\\", "\xc3\xa4\xf0\x9f\x8e\xb5 *"};
    for (const std::string& text : texts) {
        const std::string file = (scratch / "a 'b' $HOME;\xc3\xbc").string();
        const ProgramEnd end = runProgram(RUN_HELPER, {"write", file, text}, kNeverStop);
        EXPECT_EQ(0, end.code);
        EXPECT_EQ(text, scratch.read("a 'b' $HOME;\xc3\xbc"));
    }
}

TEST(ProgramRun, AMissingProgramIsNotStarted) {
    const ProgramEnd end = runProgram("/nowhere/at-all", {}, kNeverStop);
    EXPECT_EQ(ProgramEnd::Kind::NotStarted, end.kind);
    EXPECT_NE(0, end.code);
    EXPECT_FALSE(systemErrorText(end.code).empty());
}

TEST(ProgramRun, ACrashIsToldApartFromAnExit) {
    const ProgramEnd end = runProgram(RUN_HELPER, {"crash"}, kNeverStop);
    EXPECT_EQ(ProgramEnd::Kind::Crashed, end.kind);
}

TEST(ProgramRun, StoppingEndsTheProgramAndWhatItStarted) {
    const ScratchFolder scratch;
    std::atomic<bool> stop{false};
    ProgramEnd end = {};
    std::thread runner([&] { end = runProgram(RUN_HELPER, {"beat", (scratch / "alive").string()}, stop); });
    EXPECT_TRUE(eventually([&] { return scratch.has("alive"); }));
    stop = true;
    runner.join();
    EXPECT_EQ(ProgramEnd::Kind::Stopped, end.kind);
    // What was killed writes no more: gone, the file stays away for many of its periods.
    EXPECT_TRUE(eventually([&] { return std::filesystem::remove(scratch / "alive"); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_FALSE(scratch.has("alive"));
}

} // namespace
} // namespace tessera::platform
