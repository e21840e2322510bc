// Comparing, searching and hashing.
#include "foundation/text/FString.h"

#include "benchmarks/foundation/text/TextSamples.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <cwchar>
#include <string>

namespace tessera::benchmarks {
namespace {

std::size_t sizeOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// Two texts that differ in their last character, each in a block of its own.
void compare16Ours(benchmark::State& state) {
    const std::u16string text = words(Script::ascii, sizeOf(state));
    const FString a(text.c_str());
    FString b(text.c_str());
    b.setChar(b.length() - 1, u'~');
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.compare(b));
    }
}

void compare16Std(benchmark::State& state) {
    const std::u16string a = words(Script::ascii, sizeOf(state));
    std::u16string b = a;
    b.back() = u'~';
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.compare(b));
        benchmark::ClobberMemory();
    }
}

BENCHMARK(compare16Ours)->Name("text.compare16/ours")->Arg(20)->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(compare16Std)->Name("text.compare16/std")->Arg(20)->Arg(100)->Arg(1000)->Arg(10000);

// What is looked for stands at the end, behind many words that begin as it does.
constexpr std::u16string_view kNeedle = u"tessera exchange";

void find16Ours(benchmark::State& state) {
    const FString text((words(Script::ascii, sizeOf(state)) + std::u16string(kNeedle)).c_str());
    const FString needle{std::u16string(kNeedle).c_str()};
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.indexOf(0, needle));
    }
}

void find16Std(benchmark::State& state) {
    const std::u16string text = words(Script::ascii, sizeOf(state)) + std::u16string(kNeedle);
    const std::u16string needle(kNeedle);
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.find(needle));
        benchmark::ClobberMemory();
    }
}

void find8Ours(benchmark::State& state) {
    const FString text((bytes(words(Script::ascii, sizeOf(state))) + bytes(kNeedle)).c_str());
    const FString needle(bytes(kNeedle).c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.indexOf(0, needle));
    }
}

void find8Std(benchmark::State& state) {
    const std::string text = bytes(words(Script::ascii, sizeOf(state))) + bytes(kNeedle);
    const std::string needle = bytes(kNeedle);
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.find(needle));
        benchmark::ClobberMemory();
    }
}

BENCHMARK(find16Ours)->Name("text.find16/ours")->Arg(1000)->Arg(1000000);
BENCHMARK(find16Std)->Name("text.find16/std")->Arg(1000)->Arg(1000000);
BENCHMARK(find8Ours)->Name("text.find8/ours")->Arg(1000)->Arg(1000000);
BENCHMARK(find8Std)->Name("text.find8/std")->Arg(1000)->Arg(1000000);

// Equal but for the case of every letter.
void compareBlindOurs(benchmark::State& state) {
    const FString a(words(Script::ascii, sizeOf(state)).c_str());
    FString b(a);
    b.toUpper();
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.compare(b, -1, FCase::ignore));
    }
}

void compareBlindWide(benchmark::State& state) {
    const std::u16string text = words(Script::ascii, sizeOf(state));
    const std::wstring a(text.begin(), text.end());
    std::wstring b = a;
    for (wchar_t& c : b) {
        c = c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(wcscasecmp(a.c_str(), b.c_str()));
        benchmark::ClobberMemory();
    }
}

BENCHMARK(compareBlindOurs)->Name("text.compareBlind/ours")->Arg(32)->Arg(1000);
BENCHMARK(compareBlindWide)->Name("text.compareBlind/wcscasecmp")->Arg(32)->Arg(1000);

// File names as a list sorts them: a common stem and a number.
constexpr const char* kNames[] = {"Audio Take 9 (edited).wav", "Audio Take 10 (edited).wav", "Audio Take 10 (edit).wav",
                                  "Audio Take 107.wav"};

void compareNaturalOurs(benchmark::State& state) {
    FString names[4];
    for (std::size_t i = 0; i < 4; ++i) {
        names[i] = kNames[i];
    }
    for (auto _ : state) {
        for (std::size_t i = 0; i < 3; ++i) {
            benchmark::DoNotOptimize(names[i].compareNatural(names[i + 1]));
        }
    }
}

void compareNaturalVersions(benchmark::State& state) {
    for (auto _ : state) {
        for (std::size_t i = 0; i < 3; ++i) {
            const char* a = kNames[i];
            const char* b = kNames[i + 1];
            benchmark::DoNotOptimize(a);
            benchmark::DoNotOptimize(b);
            benchmark::DoNotOptimize(strverscmp(a, b));
        }
    }
}

BENCHMARK(compareNaturalOurs)->Name("text.compareNatural/ours");
BENCHMARK(compareNaturalVersions)->Name("text.compareNatural/strverscmp");

// The class registry's table has 50 buckets.
constexpr std::uint32_t kBuckets = 50;

void hashOurs(benchmark::State& state) {
    const FString text(bytes(words(Script::ascii, sizeOf(state))).c_str());
    std::uint32_t buckets = kBuckets;
    benchmark::DoNotOptimize(buckets);
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.hash(buckets));
    }
}

void hashStepByStep(benchmark::State& state) {
    const std::string text = bytes(words(Script::ascii, sizeOf(state)));
    std::uint32_t buckets = kBuckets;
    benchmark::DoNotOptimize(buckets);
    for (auto _ : state) {
        std::uint32_t h = 0;
        for (const char c : text) {
            h = ((h << 6) + static_cast<std::uint32_t>(static_cast<signed char>(c))) % buckets;
        }
        benchmark::DoNotOptimize(h);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(hashOurs)->Name("text.hash/ours")->Arg(10)->Arg(20)->Arg(1000);
BENCHMARK(hashStepByStep)->Name("text.hash/division")->Arg(10)->Arg(20)->Arg(1000);

} // namespace
} // namespace tessera::benchmarks
