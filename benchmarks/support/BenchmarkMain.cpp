// The main of every benchmark program. A host has many threads, while glibc, Boost and shared_ptr skip their atomic
// operations as long as a process has only one; so one is started before anything is measured.
#include <benchmark/benchmark.h>

#include <thread>

int main(int argc, char** argv) {
    std::thread([] {}).join();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
