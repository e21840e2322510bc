// Starting a program, and noticing the end of one, beside the bare calls of the system.
#include "discovery/processes/ChildProcess.h"
#include "platform/ProcessEndWatch.h"
#include "platform/Semaphore.h"
#include "support/OneProcessor.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <csignal>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using tessera::ChildProcess;
using Clock = std::chrono::steady_clock;

constexpr char kProgram[] = "/bin/true";
constexpr char kSleeper[] = "/bin/sleep";

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

ChildProcess::Arguments argumentsOf(std::int64_t count) {
    return ChildProcess::Arguments(static_cast<std::size_t>(count), "an argument of a usual length");
}

std::vector<char*> vectorOf(ChildProcess::Arguments& arguments) {
    std::vector<char*> vector{const_cast<char*>(kProgram)};
    for (std::string& argument : arguments) {
        vector.push_back(argument.data());
    }
    vector.push_back(nullptr);
    return vector;
}

// Asleep, as the other side is: a thread that spins is scheduled later the next time.
void sleepUntilEnd(int id) {
    const int file = static_cast<int>(syscall(SYS_pidfd_open, id, 0));
    if (file != -1) {
        pollfd asked{file, POLLIN, 0};
        poll(&asked, 1, -1);
        close(file);
    }
}

// Our children are taken note of by a thread of their own, which the bare side does itself before it goes on: without
// this pause it would still be at work, on the child of the round before, while the next start is measured. Both sides
// pause.
void sleepUntilForgotten(int id) {
    do {
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    } while (kill(id, 0) == 0);
}

// Only the time for which the caller is held counts, not what the child does afterwards.
void ourStart(benchmark::State& state) {
    const ChildProcess::Arguments arguments = argumentsOf(state.range(0));
    const tessera::FNPath path(tessera::FString(kProgram), tessera::PathKind::file);
    for (auto step : state) {
        ChildProcess child(path, nullptr, ChildProcess::kKeepRunning);
        const auto start = Clock::now();
        const bool started = child.start(arguments, 0);
        state.SetIterationTime(secondsSince(start));
        if (!started) {
            state.SkipWithError("the program didn't start");
            break;
        }
        const int id = child.processId();
        sleepUntilEnd(id);
        sleepUntilForgotten(id);
    }
}

void bareStart(benchmark::State& state) {
    ChildProcess::Arguments arguments = argumentsOf(state.range(0));
    for (auto step : state) {
        const auto start = Clock::now();
        pid_t id = -1;
        posix_spawn(&id, kProgram, nullptr, nullptr, vectorOf(arguments).data(), environ);
        state.SetIterationTime(secondsSince(start));
        waitpid(id, nullptr, 0);
        sleepUntilForgotten(id);
    }
}

pid_t startSleeper() {
    const char* arguments[] = {kSleeper, "1000", nullptr};
    pid_t id = -1;
    posix_spawn(&id, kSleeper, nullptr, nullptr, const_cast<char**>(arguments), environ);
    return id;
}

// From the kill to the moment at which the watching side is told. Sizes are processes watched at the same time.
void ourEnd(benchmark::State& state) {
    const tessera::benchmarks::OneProcessor pinned;
    std::vector<pid_t> others;
    std::vector<tessera::platform::ProcessEndWatch> watches(static_cast<std::size_t>(state.range(0)));
    for (std::size_t i = 1; i < watches.size(); ++i) {
        others.push_back(startSleeper());
        watches[i].start(others.back(), [] {});
    }
    tessera::platform::Semaphore told(0);
    Clock::time_point end;
    for (auto step : state) {
        const pid_t id = startSleeper();
        watches[0].start(id, [&] {
            end = Clock::now();
            told.release(1);
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // as the other side does
        const auto start = Clock::now();
        kill(id, SIGKILL);
        told.wait(tessera::platform::kNoTimeLimit);
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
        waitpid(id, nullptr, 0);
    }
    for (tessera::platform::ProcessEndWatch& watch : watches) {
        watch.stop();
    }
    for (pid_t other : others) {
        kill(other, SIGKILL);
        waitpid(other, nullptr, 0);
    }
}

void bareEnd(benchmark::State& state) {
    const tessera::benchmarks::OneProcessor pinned;
    std::vector<pid_t> others;
    std::vector<pollfd> files(static_cast<std::size_t>(state.range(0)));
    for (std::size_t i = 1; i < files.size(); ++i) {
        others.push_back(startSleeper());
        files[i] = {static_cast<int>(syscall(SYS_pidfd_open, others.back(), 0)), POLLIN, 0};
    }
    tessera::platform::Semaphore begin(0);
    tessera::platform::Semaphore told(0);
    Clock::time_point end;
    std::thread watcher([&] {
        while (begin.wait(tessera::platform::kNoTimeLimit) && files[0].fd != -1) {
            poll(files.data(), files.size(), -1);
            end = Clock::now();
            told.release(1);
        }
    });
    for (auto step : state) {
        const pid_t id = startSleeper();
        files[0] = {static_cast<int>(syscall(SYS_pidfd_open, id, 0)), POLLIN, 0};
        begin.release(1);
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the watcher is in poll by then
        const auto start = Clock::now();
        kill(id, SIGKILL);
        told.wait(tessera::platform::kNoTimeLimit);
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
        waitpid(id, nullptr, 0);
        close(files[0].fd);
    }
    files[0].fd = -1;
    begin.release(1);
    watcher.join();
    for (std::size_t i = 1; i < files.size(); ++i) {
        kill(others[i - 1], SIGKILL);
        waitpid(others[i - 1], nullptr, 0);
        close(files[i].fd);
    }
}

BENCHMARK(ourStart)->Name("process.start/ours")->Arg(1)->Arg(100)->UseManualTime();
BENCHMARK(bareStart)->Name("process.start/posix_spawn")->Arg(1)->Arg(100)->UseManualTime();
BENCHMARK(ourEnd)->Name("process.end/ours")->Arg(1)->Arg(32)->UseManualTime()->Iterations(200);
BENCHMARK(bareEnd)->Name("process.end/poll")->Arg(1)->Arg(32)->UseManualTime()->Iterations(200);

} // namespace
