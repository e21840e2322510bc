// The named event, through the interface that the module uses, beside named and unnamed POSIX semaphores.
#include "discovery/events/WinIPCSemaphore.h"
#include "foundation/object/FRefPtr.h"
#include "support/OneProcessor.h"

#include <benchmark/benchmark.h>

#include <csignal>
#include <fcntl.h>
#include <semaphore.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tessera::FRefPtr;
using tessera::IIPCSemaphore;
using tessera::WinIPCSemaphore;

FRefPtr<IIPCSemaphore> makeEvent(const std::string& name) {
    auto event = FRefPtr<IIPCSemaphore>::adopt(new WinIPCSemaphore);
    event->create(name.c_str());
    return event;
}

std::string nameOf(const char* stem) {
    return std::string(stem) + "." + std::to_string(getpid());
}

class EchoProcess {
public:
    EchoProcess(const char* side, const std::string& in, const std::string& out) {
        const char* arguments[] = {ECHO_HELPER, side, in.c_str(), out.c_str(), nullptr};
        posix_spawn(&id_, ECHO_HELPER, nullptr, nullptr, const_cast<char**>(arguments), environ);
    }
    EchoProcess(const EchoProcess&) = delete;
    EchoProcess& operator=(const EchoProcess&) = delete;
    ~EchoProcess() {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }

private:
    pid_t id_ = -1;
};

void ourRoundTrip(benchmark::State& state) {
    const tessera::benchmarks::OneProcessor pinned;
    const auto there = makeEvent(nameOf("bench.there"));
    const auto back = makeEvent(nameOf("bench.back"));
    const EchoProcess echo("ours", nameOf("bench.there"), nameOf("bench.back"));
    for (auto step : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            there->signal();
            back->wait();
        }
    }
}

void semaphoreRoundTrip(benchmark::State& state) {
    const tessera::benchmarks::OneProcessor pinned;
    const std::string thereName = nameOf("/bench.there");
    const std::string backName = nameOf("/bench.back");
    sem_t* there = sem_open(thereName.c_str(), O_CREAT, 0600, 0);
    sem_t* back = sem_open(backName.c_str(), O_CREAT, 0600, 0);
    {
        const EchoProcess echo("sem", thereName, backName);
        for (auto step : state) {
            for (std::int64_t i = 0; i < state.range(0); ++i) {
                sem_post(there);
                sem_wait(back);
            }
        }
    }
    sem_close(there);
    sem_close(back);
    sem_unlink(thereName.c_str());
    sem_unlink(backName.c_str());
}

void ourSignalAndWait(benchmark::State& state) {
    const auto event = makeEvent(nameOf("bench.alone"));
    for (auto step : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            event->signal();
            event->wait();
        }
    }
}

void semaphoreSignalAndWait(benchmark::State& state) {
    sem_t semaphore;
    sem_init(&semaphore, 1, 0);
    for (auto step : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            sem_post(&semaphore);
            sem_wait(&semaphore);
        }
    }
    sem_destroy(&semaphore);
}

BENCHMARK(ourRoundTrip)->Name("event.roundtrip/ours")->Arg(10)->Arg(1000)->UseRealTime();
BENCHMARK(semaphoreRoundTrip)->Name("event.roundtrip/sem_open")->Arg(10)->Arg(1000)->UseRealTime();
BENCHMARK(ourSignalAndWait)->Name("event.alone/ours")->Arg(100)->Arg(10'000);
BENCHMARK(semaphoreSignalAndWait)->Name("event.alone/sem_t")->Arg(100)->Arg(10'000);

} // namespace
