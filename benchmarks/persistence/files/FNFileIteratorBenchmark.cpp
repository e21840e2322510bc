// The walk of a folder with kind, size and time of each entry, beside the standard library's.
#include "persistence/files/FNFileIterator.h"
#include "platform/Folder.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace tessera {
namespace {

namespace fs = std::filesystem;

// Folders of so many small files, made once and removed at the end.
class Folders {
public:
    ~Folders() {
        for (const auto& folder : folders_) {
            fs::remove_all(folder.second);
        }
    }

    const fs::path& withFiles(std::int64_t count) {
        fs::path& folder = folders_[count];
        if (folder.empty()) {
            std::string pattern = (fs::temp_directory_path() / "walk-XXXXXX").string();
            if (mkdtemp(pattern.data()) == nullptr) {
                std::abort();
            }
            folder = pattern;
            for (std::int64_t i = 0; i < count; ++i) {
                std::ofstream(folder / ("Recording " + std::to_string(i) + ".wav")) << "RIFF" << i;
            }
        }
        return folder;
    }

private:
    std::map<std::int64_t, fs::path> folders_;
};

Folders folders;

FNPath pathOf(const fs::path& native) {
    FString text;
    text.assignUtf8(native.c_str());
    return FNPath(text, PathKind::folder);
}

std::u16string textOf(const fs::path& native) {
    const FString text = pathOf(native).getFullPath();
    return {text.text16(), static_cast<std::size_t>(text.length())};
}

// Kind, size and time, as a scan for changed files needs them.
void walkPlatform(benchmark::State& state) {
    const std::u16string folder = textOf(folders.withFiles(state.range(0)));
    for (auto _ : state) {
        std::int32_t error = 0;
        platform::Folder open = platform::Folder::open(folder, error);
        std::int64_t sum = 0;
        while (const platform::FolderEntry* entry = open.next()) {
            sum += entry->size + entry->modified + (entry->isFolder ? 1 : 0);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The same as path objects, which know kind and size.
void walkPaths(benchmark::State& state) {
    const FNPath folder = pathOf(folders.withFiles(state.range(0)));
    for (auto _ : state) {
        const auto entries = FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folder, false, false));
        std::int64_t sum = 0;
        while (FPath* entry = entries->next()) {
            sum += entry->getCachedSize() + (entry->isFolder() ? 1 : 0);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void walkStandard(benchmark::State& state) {
    const fs::path& folder = folders.withFiles(state.range(0));
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (entry.is_directory()) {
                ++sum;
                continue;
            }
            sum += static_cast<std::int64_t>(entry.file_size());
            sum += entry.last_write_time().time_since_epoch().count();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void walkStandardWithoutTime(benchmark::State& state) {
    const fs::path& folder = folders.withFiles(state.range(0));
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            sum += entry.is_directory() ? 1 : static_cast<std::int64_t>(entry.file_size());
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(walkPlatform)->Name("files.walk/ours")->Apply(sizes);
BENCHMARK(walkStandard)->Name("files.walk/std")->Apply(sizes);
BENCHMARK(walkPaths)->Name("files.walkPaths/ours")->Apply(sizes);
BENCHMARK(walkStandardWithoutTime)->Name("files.walkPaths/std")->Apply(sizes);

} // namespace
} // namespace tessera
