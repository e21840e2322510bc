// Numbers to text and back.
#include "foundation/text/FNumberText.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <iterator>

namespace tessera::benchmarks {
namespace {

// What a project holds: gains, positions, rates, and a few that need all their digits.
constexpr double kFloats[] = {0.0,  1.0,           -6.25,       44100.0, 120.5, 0.1, 3.14159265358979,
                              1e-5, 987654321.123, -0.333333333};
constexpr std::int64_t kIntegers[] = {0, 7, -1, 48000, 1234567, -987654321, 9007199254740993, 1 << 20, 255, -40};

constexpr const char* kFloatTexts[] = {
    "0", "1", "-6.25", "44100", "120.5", "0.1", "1e-5", "3.14159265358979", "987654321.123", "-0.333333333"};
constexpr const char* kIntegerTexts[] = {"0",       "7",   "-1", "48000", "1234567", "-987654321", "9007199254740993",
                                         "1048576", "255", "-40"};

// One step is all values of the list.
template <class Values, class Work>
void forEach(benchmark::State& state, const Values& values, Work work) {
    for (auto _ : state) {
        for (auto value : values) {
            benchmark::DoNotOptimize(value);
            work(value);
        }
    }
}

void floatToTextOurs(benchmark::State& state) {
    forEach(state, kFloats, [](double value) {
        const FNumberText text = FNumberText::exact(value);
        benchmark::DoNotOptimize(text.text());
    });
}

void floatToTextPrintf(benchmark::State& state) {
    forEach(state, kFloats, [](double value) {
        char text[64];
        std::snprintf(text, sizeof text, "%.50g", value);
        benchmark::DoNotOptimize(&text[0]);
    });
}

void integerToTextOurs(benchmark::State& state) {
    forEach(state, kIntegers, [](std::int64_t value) {
        const FNumberText text = FNumberText::integer(value);
        benchmark::DoNotOptimize(text.text());
    });
}

void integerToTextPrintf(benchmark::State& state) {
    forEach(state, kIntegers, [](std::int64_t value) {
        char text[64];
        std::snprintf(text, sizeof text, "%lld", static_cast<long long>(value));
        benchmark::DoNotOptimize(&text[0]);
    });
}

void textToFloatOurs(benchmark::State& state) {
    forEach(state, kFloatTexts, [](const char* text) {
        double value = 0.0;
        FStringRef(text).getFloat(value);
        benchmark::DoNotOptimize(value);
    });
}

void textToFloatScanf(benchmark::State& state) {
    forEach(state, kFloatTexts, [](const char* text) {
        double value = 0.0;
        std::sscanf(text, "%lf", &value);
        benchmark::DoNotOptimize(value);
    });
}

void textToIntegerOurs(benchmark::State& state) {
    forEach(state, kIntegerTexts, [](const char* text) {
        std::int64_t value = 0;
        FStringRef(text).getInt64(value);
        benchmark::DoNotOptimize(value);
    });
}

void textToIntegerScanf(benchmark::State& state) {
    forEach(state, kIntegerTexts, [](const char* text) {
        long long value = 0;
        std::sscanf(text, "%lld", &value);
        benchmark::DoNotOptimize(value);
    });
}

BENCHMARK(floatToTextOurs)->Name("text.floatToText/ours");
BENCHMARK(floatToTextPrintf)->Name("text.floatToText/snprintf");
BENCHMARK(integerToTextOurs)->Name("text.integerToText/ours");
BENCHMARK(integerToTextPrintf)->Name("text.integerToText/snprintf");
BENCHMARK(textToFloatOurs)->Name("text.textToFloat/ours");
BENCHMARK(textToFloatScanf)->Name("text.textToFloat/sscanf");
BENCHMARK(textToIntegerOurs)->Name("text.textToInteger/ours");
BENCHMARK(textToIntegerScanf)->Name("text.textToInteger/sscanf");

} // namespace
} // namespace tessera::benchmarks
