// Replacing, and text between UTF-8 and 16 bits.
#include "foundation/text/FString.h"

#include "benchmarks/foundation/text/TextSamples.h"
#include "foundation/text/FUtf8.h"

#include <benchmark/benchmark.h>
#include <unicode/ustring.h>

#include <cstdlib>
#include <iconv.h>
#include <memory>
#include <string>

namespace tessera::benchmarks {
namespace {

std::size_t sizeOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

constexpr std::u16string_view kFind = u"the";
constexpr std::u16string_view kWith = u"a longer one";

// Both copy the text first: what is replaced is a fresh copy each time.
void replaceAllOurs(benchmark::State& state) {
    const FString text(words(Script::ascii, sizeOf(state)).c_str());
    const FString find{std::u16string(kFind).c_str()};
    const FString with{std::u16string(kWith).c_str()};
    for (auto _ : state) {
        FString copy(text);
        benchmark::DoNotOptimize(copy.replaceAll(find, with));
    }
}

void replaceAllStd(benchmark::State& state) {
    const std::u16string text = words(Script::ascii, sizeOf(state));
    for (auto _ : state) {
        std::u16string copy = text;
        for (std::size_t at = copy.find(kFind); at != copy.npos; at = copy.find(kFind, at + kWith.size())) {
            copy.replace(at, kFind.size(), kWith);
        }
        benchmark::DoNotOptimize(copy.data());
    }
}

BENCHMARK(replaceAllOurs)->Name("text.replaceAll/ours")->Arg(1024)->Arg(65536);
BENCHMARK(replaceAllStd)->Name("text.replaceAll/std")->Arg(1024)->Arg(65536);

// So many bytes of UTF-8, give or take the last character.
std::string utf8(Script script, std::size_t length) {
    const std::size_t unitBytes = script == Script::cjk ? 3 : 1;
    const std::u16string units = words(script, length / unitBytes);
    std::string result(FUtf8::narrowedLength(units.data(), units.size()), '\0');
    FUtf8::narrow(units.data(), units.size(), result.data(), result.size());
    return result;
}

std::u16string utf16(const std::string& text) {
    std::u16string result(FUtf8::widenedLength(text.data(), text.size()), u'\0');
    FUtf8::widen(text.data(), text.size(), result.data(), result.size());
    return result;
}

void widenOurs(benchmark::State& state, Script script) {
    const std::string text = utf8(script, sizeOf(state));
    for (auto _ : state) {
        FString wide;
        wide.assignUtf8(text.data(), static_cast<std::int32_t>(text.size()));
        benchmark::DoNotOptimize(wide.rawText());
    }
}

// The rivals get a block that is large enough at once, and the converter stays open.
void widenIconv(benchmark::State& state, Script script) {
    std::string text = utf8(script, sizeOf(state));
    const iconv_t converter = iconv_open("UTF-16LE", "UTF-8");
    for (auto _ : state) {
        std::unique_ptr<char16_t[]> target(new char16_t[text.size() + 1]);
        char* from = text.data();
        char* to = reinterpret_cast<char*>(target.get());
        std::size_t left = text.size();
        std::size_t room = text.size() * sizeof(char16_t);
        iconv(converter, &from, &left, &to, &room);
        benchmark::DoNotOptimize(target.get());
        if (left != 0) {
            state.SkipWithError("iconv failed");
        }
    }
    iconv_close(converter);
}

void widenIcu(benchmark::State& state, Script script) {
    const std::string text = utf8(script, sizeOf(state));
    for (auto _ : state) {
        std::unique_ptr<UChar[]> target(new UChar[text.size() + 1]);
        std::int32_t length = 0;
        UErrorCode error = U_ZERO_ERROR;
        u_strFromUTF8(target.get(), static_cast<std::int32_t>(text.size() + 1), &length, text.data(),
                      static_cast<std::int32_t>(text.size()), &error);
        benchmark::DoNotOptimize(target.get());
        if (U_FAILURE(error)) {
            state.SkipWithError("ICU failed");
        }
    }
}

void narrowOurs(benchmark::State& state, Script script) {
    const std::u16string text = utf16(utf8(script, sizeOf(state)));
    for (auto _ : state) {
        state.PauseTiming();
        FString copy(text.data(), static_cast<std::int32_t>(text.size()));
        state.ResumeTiming();
        copy.toMultiByte(CodePage::utf8);
        benchmark::DoNotOptimize(copy.rawText());
        state.PauseTiming();
        copy.clear();
        state.ResumeTiming();
    }
}

void narrowIconv(benchmark::State& state, Script script) {
    std::u16string text = utf16(utf8(script, sizeOf(state)));
    const iconv_t converter = iconv_open("UTF-8", "UTF-16LE");
    for (auto _ : state) {
        state.PauseTiming();
        state.ResumeTiming();
        const std::size_t capacity = text.size() * 3 + 1;
        std::unique_ptr<char[]> target(new char[capacity]);
        char* from = reinterpret_cast<char*>(text.data());
        char* to = target.get();
        std::size_t left = text.size() * sizeof(char16_t);
        std::size_t room = capacity;
        iconv(converter, &from, &left, &to, &room);
        benchmark::DoNotOptimize(target.get());
        if (left != 0) {
            state.SkipWithError("iconv failed");
        }
        state.PauseTiming();
        target.reset();
        state.ResumeTiming();
    }
    iconv_close(converter);
}

void narrowIcu(benchmark::State& state, Script script) {
    const std::u16string text = utf16(utf8(script, sizeOf(state)));
    for (auto _ : state) {
        state.PauseTiming();
        state.ResumeTiming();
        const std::size_t capacity = text.size() * 3 + 1;
        std::unique_ptr<char[]> target(new char[capacity]);
        std::int32_t length = 0;
        UErrorCode error = U_ZERO_ERROR;
        u_strToUTF8(target.get(), static_cast<std::int32_t>(capacity), &length, text.data(),
                    static_cast<std::int32_t>(text.size()), &error);
        benchmark::DoNotOptimize(target.get());
        if (U_FAILURE(error)) {
            state.SkipWithError("ICU failed");
        }
        state.PauseTiming();
        target.reset();
        state.ResumeTiming();
    }
}

struct Named {
    const char* name;
    Script script;
};

[[maybe_unused]] const bool registered = [] {
    for (const Named& text :
         {Named{"Ascii", Script::ascii}, Named{"Latin", Script::latin}, Named{"Cjk", Script::cjk}}) {
        const auto add = [&](const char* row, const char* side, void (*work)(benchmark::State&, Script)) {
            benchmark::RegisterBenchmark((std::string(row) + text.name + "/" + side).c_str(), work, text.script)
                ->Arg(10000)
                ->Arg(1000000);
        };
        add("text.widen", "ours", widenOurs);
        add("text.widen", "iconv", widenIconv);
        add("text.widen", "icu", widenIcu);
        add("text.narrow", "ours", narrowOurs);
        add("text.narrow", "iconv", narrowIconv);
        add("text.narrow", "icu", narrowIcu);
    }
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
