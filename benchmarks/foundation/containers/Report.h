// Report: the time per element, however many a round of a benchmark goes through.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace tessera::benchmarks {

// Runs over all of the sizes; the name is "<row>/<side>".
template <class Function>
void add(const std::string& name, Function function, std::initializer_list<std::int64_t> sizes) {
    auto* registered = benchmark::RegisterBenchmark(name.c_str(), function);
    for (const std::int64_t size : sizes) {
        registered->Arg(size);
    }
}

// The same for a million elements, where one round takes seconds: three of them tell enough.
template <class Function>
void addMillion(const std::string& name, Function function) {
    benchmark::RegisterBenchmark(name.c_str(), function)->Arg(1000000)->Repetitions(3);
}

} // namespace tessera::benchmarks
