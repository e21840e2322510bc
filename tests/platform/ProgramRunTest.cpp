#include "platform/ProgramRun.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace tessera::platform {
namespace {

const std::atomic<bool> kNeverStop{false};

TEST(ProgramRun, GivesTheExitCode) {
    const ProgramEnd end = runProgram("sh", {"-c", "exit 7"}, kNeverStop);
    EXPECT_EQ(ProgramEnd::Kind::Exited, end.kind);
    EXPECT_EQ(7, end.code);
}

TEST(ProgramRun, ArgumentsArriveAsTheyAre) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "a \"b\" $HOME;\xC3\xBC";
    const ProgramEnd end =
        runProgram("sh", {"-c", "printf '%s' \"$1\" > \"$2\"", "sh", "x '\"$;", file.string()}, kNeverStop);
    EXPECT_EQ(0, end.code);
    std::string text;
    std::getline(std::ifstream(file), text);
    EXPECT_EQ("x '\"$;", text);
}

TEST(ProgramRun, AMissingProgramIsNotStarted) {
    const ProgramEnd end = runProgram("/nowhere/at-all", {}, kNeverStop);
    EXPECT_EQ(ProgramEnd::Kind::NotStarted, end.kind);
    EXPECT_EQ(ENOENT, end.code);
    EXPECT_FALSE(systemErrorText(end.code).empty());
}

TEST(ProgramRun, ACrashIsToldApartFromAnExit) {
    const ProgramEnd end = runProgram("sh", {"-c", "kill -SEGV $$"}, kNeverStop);
    EXPECT_EQ(ProgramEnd::Kind::Crashed, end.kind);
}

TEST(ProgramRun, StoppingEndsTheProgramAndWhatItStarted) {
    const std::filesystem::path alive = std::filesystem::temp_directory_path() / "alive";
    std::atomic<bool> stop{false};
    ProgramEnd end = {};
    std::thread runner([&] {
        end = runProgram(
            "sh",
            {"-c", "sh -c 'while :; do date +%N > \"$1\"; sleep 0.02; done' x \"$1\" & wait", "sh", alive.string()},
            stop);
    });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!std::filesystem::exists(alive) && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ASSERT_TRUE(std::filesystem::exists(alive));
    stop = true;
    runner.join();
    EXPECT_EQ(ProgramEnd::Kind::Stopped, end.kind);
    // Killed processes write no more: once two looks, apart by many of its periods, agree, it is gone.
    std::filesystem::remove(alive);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_FALSE(std::filesystem::exists(alive));
}

} // namespace
} // namespace tessera::platform
