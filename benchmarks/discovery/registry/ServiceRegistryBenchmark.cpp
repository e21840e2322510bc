// A record written, and a folder of live records scanned, each beside what the standard library offers for it.
#include "discovery/registry/ServiceDiscovery.h"
#include "platform/Processes.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace tessera::benchmarks {
namespace {

namespace fs = std::filesystem;

// A folder on the disk of this program, since a temporary folder may be memory, where nothing waits.
class Folder {
public:
    Folder() {
        std::string pattern = (fs::current_path() / "registry-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            std::abort();
        }
        path_ = pattern;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

ServiceRecord liveRecord(const fs::path& path) {
    ServiceRecord record = ServiceRecord::forPath(path.string());
    record.processName = platform::ownBaseName();
    record.processId = platform::ownProcessId();
    record.type = kLinkServiceType;
    return record;
}

void writeOurs(benchmark::State& state) {
    const Folder folder;
    const ServiceRecord record = liveRecord(folder.path() / "com.marlgrove.test");
    for (auto _ : state) {
        benchmark::DoNotOptimize(record.writeFile());
    }
}

void writeRival(benchmark::State& state) {
    const Folder folder;
    const ServiceRecord record = liveRecord(folder.path() / "com.marlgrove.test");
    for (auto _ : state) {
        std::ofstream file(record.path, std::ios::trunc);
        file << record.processName << '\n' << record.processId << '\n' << record.type << '\n';
        file.close();
        benchmark::DoNotOptimize(file.good());
    }
}

void fill(const fs::path& folder, std::int64_t count) {
    fs::create_directories(folder);
    for (std::int64_t index = 0; index < count; ++index) {
        liveRecord(folder / ("com.marlgrove.test" + std::to_string(index))).writeFile();
    }
}

void scanOurs(benchmark::State& state) {
    const Folder folder;
    setenv("TMPDIR", folder.path().c_str(), 1);
    fill(folder.path() / "Marlgrove/ServiceDiscovery", state.range(0));
    for (auto _ : state) {
        ServiceDiscovery registry;
        registry.start("com.marlgrove.own");
        registry.scan();
        if (registry.records().size() != static_cast<std::size_t>(state.range(0))) {
            state.SkipWithError("not all records were found");
        }
    }
}

// The same questions: the three lines, and the name of the process that they tell of.
bool readAndTest(const fs::path& path, std::string& type) {
    std::ifstream file(path);
    std::string name;
    std::string number;
    std::getline(file, name);
    std::getline(file, number);
    std::getline(file, type);
    std::error_code error;
    return fs::read_symlink("/proc/" + std::to_string(std::stoi(number)) + "/exe", error).filename() == name;
}

void scanRival(benchmark::State& state) {
    const Folder folder;
    fill(folder.path(), state.range(0));
    for (auto _ : state) {
        std::int64_t live = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.path())) {
            std::string type;
            if (readAndTest(entry.path(), type)) {
                ++live;
            }
        }
        if (live != state.range(0)) {
            state.SkipWithError("not all records were found");
        }
    }
}

const bool registered = [] {
    benchmark::RegisterBenchmark("registry.write/ours", writeOurs)->Arg(1);
    benchmark::RegisterBenchmark("registry.write/std", writeRival)->Arg(1);
    benchmark::RegisterBenchmark("registry.scan/ours", scanOurs)->Arg(1)->Arg(10)->Arg(100);
    benchmark::RegisterBenchmark("registry.scan/std", scanRival)->Arg(1)->Arg(10)->Arg(100);
    return true;
}();

} // namespace
} // namespace tessera::benchmarks
