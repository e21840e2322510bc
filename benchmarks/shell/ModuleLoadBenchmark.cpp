// How long a host is held by loading the module, up to the end of initialize, and how much memory it has cost by then.
// The module is never unmapped, so each load is a new process; the libraries that the module needs are there already,
// as they are in a program that has used them before.
#include "support/host/FakeContext.h"
#include "support/host/FakeHost.h"

#include "shell/hostapi/IModuleFactory.h"
#include "shell/hostapi/IPlugin.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tessera;
using namespace tessera::test;

constexpr FUIDBytes kService = "{973C3773-AC41-4593-BDF4-89C768F4BF5A}"_uid;

struct Cost {
    double seconds = 0;
    double kilobytes = 0;
};

double residentKilobytes() {
    long pages = 0;
    long resident = 0;
    if (FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2) {
            resident = 0;
        }
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

// What the work costs in a process of its own.
Cost inNewProcess(const std::function<bool()>& work) {
    int ends[2];
    if (pipe(ends) != 0) {
        std::abort();
    }
    const pid_t child = fork();
    if (child == 0) {
        Cost cost;
        const double before = residentKilobytes();
        const auto start = std::chrono::steady_clock::now();
        const bool done = work();
        cost.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        cost.kilobytes = residentKilobytes() - before;
        const bool told = write(ends[1], &cost, sizeof cost) == sizeof cost;
        _exit(done && told ? 0 : 1);
    }
    Cost cost;
    const bool heard = read(ends[0], &cost, sizeof cost) == sizeof cost;
    close(ends[0]);
    close(ends[1]);
    int status = 1;
    waitpid(child, &status, 0);
    if (!heard || status != 0) {
        std::abort();
    }
    return cost;
}

void measure(benchmark::State& state, const std::function<bool()>& work) {
    double kilobytes = 0;
    for (auto _ : state) {
        const Cost cost = inNewProcess(work);
        state.SetIterationTime(cost.seconds);
        kilobytes = cost.kilobytes;
    }
    state.counters["resident_kB"] = kilobytes;
}

void loadModule(benchmark::State& state) {
    FakeHost host;
    const auto context = makeFake<FakeContext>("Harrow Max", "9.0.20", host.services.get());
    measure(state, [&] {
        void* module = dlopen(TESX_MODULE, RTLD_NOW | RTLD_LOCAL);
        auto* getFactory =
            reinterpret_cast<IModuleFactory* (*)()>(module == nullptr ? nullptr : dlsym(module, "GetPluginFactory"));
        void* plugin = nullptr;
        return getFactory != nullptr && getFactory()->createObject(kService, IBaseUnknown::iid, &plugin) == kResultOk &&
               static_cast<IPlugin*>(plugin)->initialize(context.get()) == kResultOk;
    });
}

void loadRival(benchmark::State& state) {
    measure(state, [] { return dlopen(TESX_RIVAL, RTLD_NOW | RTLD_LOCAL) != nullptr; });
}

const auto registered = [] {
    const auto folder = std::filesystem::temp_directory_path() / ("tesx-benchmark-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    setenv("TMPDIR", folder.c_str(), 1);
    benchmark::RegisterBenchmark("module.load/ours", loadModule)->UseManualTime()->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("module.load/dlopen", loadRival)->UseManualTime()->Unit(benchmark::kMicrosecond);
    return 0;
}();

} // namespace
