// 32-bit values into memory and back, and the lines of a file, beside what the standard library has for both.
#include "persistence/streams/FMemoryStream.h"

#include "persistence/streams/FFileStream.h"
#include "platform/Files.h"
#include "platform/NativePath.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

using namespace tessera;

void valuesOurs(benchmark::State& state) {
    for (auto _ : state) {
        FMemoryStream stream;
        for (std::int32_t i = 0; i < state.range(0); ++i) {
            stream.writeInt32(i);
        }
        stream.rewind();
        std::int32_t value = 0;
        std::int64_t sum = 0;
        while (stream.readInt32(value)) {
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void valuesStd(benchmark::State& state) {
    for (auto _ : state) {
        std::stringstream stream;
        for (std::int32_t i = 0; i < state.range(0); ++i) {
            stream.write(reinterpret_cast<const char*>(&i), sizeof i);
        }
        std::int32_t value = 0;
        std::int64_t sum = 0;
        while (stream.read(reinterpret_cast<char*>(&value), sizeof value)) {
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

// A file of so many lines, of which each is as long as a line of a settings file; gone at the end of the scope.
class LineFile {
public:
    explicit LineFile(std::int64_t lines) {
        std::string pattern = (std::filesystem::temp_directory_path() / "lines-XXXXXX").string();
        const int descriptor = mkstemp(pattern.data());
        if (descriptor == -1) {
            std::abort();
        }
        path_ = pattern;
        std::ofstream file(path_);
        for (std::int64_t i = 0; i < lines; ++i) {
            file << "        <int name=\"" << i << "\" value=\"" << i * i << "\"/>\n";
        }
    }
    ~LineFile() { std::filesystem::remove(path_); }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

void linesOurs(benchmark::State& state) {
    const LineFile lines(state.range(0));
    const std::u16string path = *platform::fromNativePath(lines.path().string());
    const FNPath name(path.c_str(), PathKind::file);
    for (auto _ : state) {
        std::int32_t error = 0;
        platform::File file =
            platform::File::open(path, {.read = true}, platform::FileDisposition::openExisting, error);
        FFileStream source(std::move(file), name, FileOpenMode::read);
        FMemoryStream stream;
        stream.setSize(static_cast<std::int32_t>(source.getSize()));
        source.read(stream.getData(), stream.getSize());
        char line[256];
        std::int64_t total = 0;
        while (stream.tell() < stream.getSize()) {
            total += stream.readLine(line, sizeof line);
        }
        benchmark::DoNotOptimize(total);
    }
}

void linesStd(benchmark::State& state) {
    const LineFile lines(state.range(0));
    for (auto _ : state) {
        std::ifstream file(lines.path());
        std::string line;
        std::int64_t total = 0;
        while (std::getline(file, line)) {
            total += static_cast<std::int64_t>(line.size());
        }
        benchmark::DoNotOptimize(total);
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(32)->Range(1 << 10, 1 << 20);
}

void lineCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(16)->Range(1 << 8, 1 << 16);
}

[[maybe_unused]] const benchmark::internal::Benchmark* const rows[] = {
    benchmark::RegisterBenchmark("streams.memory32/ours", valuesOurs)->Apply(sizes),
    benchmark::RegisterBenchmark("streams.memory32/std", valuesStd)->Apply(sizes),
    benchmark::RegisterBenchmark("streams.lines/ours", linesOurs)->Apply(lineCounts),
    benchmark::RegisterBenchmark("streams.lines/std", linesStd)->Apply(lineCounts),
};

} // namespace
