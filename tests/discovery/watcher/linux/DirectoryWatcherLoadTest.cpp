// A tree under load: every change of a kind is told once, in order per file, and nothing is left behind.
#include "discovery/watcher/WatcherTest.h"

#include <atomic>
#include <map>
#include <random>
#include <thread>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using testing_support::ScratchFolder;
using Events = std::vector<ChangeEvent>;

constexpr int kFiles = 10'000;
constexpr int kWriters = 2;
constexpr int kFilesPerFolder = 100;

std::string folderOf(int number) {
    const int folder = number / kFilesPerFolder;
    return "group" + std::to_string(folder / 10) + "/folder" + std::to_string(folder);
}
std::string firstName(int number) {
    return folderOf(number) + "/take " + std::to_string(number) + ".wav";
}
// Every third one moves to the neighbouring folder as well.
std::string secondName(int number) {
    const int folder = number % 3 == 0 ? (number + kFilesPerFolder) % kFiles : number;
    return folderOf(folder) + "/renamed " + std::to_string(number) + ".wav";
}

// The system's queue is finite: a writer that is more than so many changes ahead waits. That isn't what is tested here.
constexpr std::size_t kAhead = 4'000;

class LoadedTree {
public:
    explicit LoadedTree(Recorder& recorder) : recorder_(recorder) {}

    // Runs the step for every file, in several threads, and waits until as many changes of the kind have been told.
    template <class Step>
    void run(ChangeKind kind, std::size_t expected, Step step) {
        std::vector<std::thread> writers;
        std::atomic<std::size_t> done = 0;
        const std::size_t before = recorder_.count(kind);
        for (int writer = 0; writer < kWriters; ++writer) {
            writers.emplace_back([&, writer] {
                for (int number = writer; number < kFiles; number += kWriters) {
                    step(number);
                    if (const std::size_t now = ++done; now % 500 == 0 && now > kAhead) {
                        recorder_.waitForCount(kind, before + now - kAhead);
                    }
                }
            });
        }
        for (std::thread& writer : writers) {
            writer.join();
        }
        EXPECT_TRUE(recorder_.waitForCount(kind, expected)) << recorder_.count(kind);
    }

private:
    Recorder& recorder_;
};

// While the worker looks after one new folder, the next ones come up beside it.
TEST(DirectoryWatcherLoad, NoFolderIsLostWhileItsNeighboursAreTakenIn) {
    const ScratchFolder scratch;
    DirectoryWatcher watcher;
    Recorder recorder(watcher, scratch.path());
    ASSERT_TRUE(watcher.watch(scratch.path().string()));
    LoadedTree tree(recorder);
    tree.run(ChangeKind::added, kFiles,
             [&](int number) { fs::create_directory(scratch.path() / std::to_string(number)); });
    EXPECT_EQ(recorder.count(ChangeKind::added), static_cast<std::size_t>(kFiles));
    watcher.stop();
}

TEST(DirectoryWatcherLoad, TenThousandFilesInFoldersMadeOnTheFly) {
    const ScratchFolder scratch;
    const std::size_t filesBefore = openFiles();
    DirectoryWatcher watcher;
    Recorder recorder(watcher, scratch.path());
    ASSERT_TRUE(watcher.watch(scratch.path().string()));
    LoadedTree tree(recorder);

    constexpr std::size_t kFolders = kFiles / kFilesPerFolder + kFiles / kFilesPerFolder / 10;
    tree.run(ChangeKind::added, kFiles + kFolders, [&](int number) { scratch.write(firstName(number), "x"); });
    tree.run(ChangeKind::renamed, kFiles,
             [&](int number) { fs::rename(scratch / firstName(number), scratch / secondName(number)); });
    tree.run(ChangeKind::removed, kFiles, [&](int number) { fs::remove(scratch / secondName(number)); });
    for (int group = 0; group < kFiles / kFilesPerFolder / 10; ++group) {
        fs::remove_all(scratch / ("group" + std::to_string(group)));
    }
    EXPECT_TRUE(recorder.waitForCount(ChangeKind::removed, kFiles + kFolders));

    EXPECT_EQ(recorder.count(ChangeKind::added), kFiles + kFolders);
    EXPECT_EQ(recorder.count(ChangeKind::renamed), static_cast<std::size_t>(kFiles));
    EXPECT_EQ(recorder.count(ChangeKind::removed), kFiles + kFolders);
    EXPECT_EQ(recorder.count(ChangeKind::other), 0u);

    // Per file, with what was written left out: that is told once per write that was seen.
    std::map<std::string, Events> lives;
    for (const ChangeEvent& event : recorder.events()) {
        if (event.kind == ChangeKind::modified) {
            continue;
        }
        lives[event.path].push_back(event);
        if (event.kind == ChangeKind::renamed) {
            lives[event.newPath].push_back(event);
        }
    }
    for (int number = 0; number < kFiles; ++number) {
        const std::string first = firstName(number);
        const std::string second = secondName(number);
        const ChangeEvent rename{ChangeKind::renamed, first, second};
        ASSERT_EQ(lives[first], (Events{{ChangeKind::added, first, ""}, rename})) << first;
        ASSERT_EQ(lives[second], (Events{rename, {ChangeKind::removed, second, ""}})) << second;
    }

    const auto start = std::chrono::steady_clock::now();
    watcher.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_EQ(openFiles(), filesBefore);
}

// Whatever folders do, afterwards each one that is there tells of what happens in it, once and under its right path.
TEST(DirectoryWatcherLoad, FoldersThatWanderAboutStayWatched) {
    const ScratchFolder scratch;
    const ScratchFolder elsewhere;
    DirectoryWatcher watcher;
    Recorder recorder(watcher, scratch.path());
    ASSERT_TRUE(watcher.watch(scratch.path().string()));
    std::mt19937 random(2001);
    const auto anyName = [&] { return std::string(1, static_cast<char>('a' + random() % 4)); };
    const auto anyFolder = [&] {
        fs::path path = scratch.path();
        while (random() % 3 != 0) {
            path /= anyName();
        }
        return path;
    };
    for (int i = 0; i < 3'000; ++i) {
        std::error_code refused; // most of it is impossible at the moment
        switch (random() % 6) {
        case 0:
        case 1:
            fs::create_directory(anyFolder() / anyName(), refused);
            break;
        case 2:
            fs::rename(anyFolder() / anyName(), anyFolder() / anyName(), refused);
            break;
        case 3:
            fs::rename(anyFolder() / anyName(), elsewhere / anyName(), refused);
            break;
        case 4:
            fs::rename(elsewhere / anyName(), anyFolder() / anyName(), refused);
            break;
        case 5:
            fs::remove(anyFolder() / anyName(), refused);
            break;
        }
    }
    scratch.write("quiet", "");
    ASSERT_TRUE(recorder.waitFor(ChangeKind::added, "quiet"));

    std::vector<std::string> probes{"probe"};
    for (const auto& entry : fs::recursive_directory_iterator(scratch.path())) {
        if (entry.is_directory()) {
            probes.push_back((entry.path().lexically_relative(scratch.path()) / "probe").string());
        }
    }
    for (const std::string& probe : probes) {
        scratch.write(probe, "");
    }
    for (const std::string& probe : probes) {
        EXPECT_TRUE(recorder.waitFor(ChangeKind::added, probe)) << probe;
        EXPECT_EQ(recorder.about(probe).size(), 1u) << probe;
    }
    EXPECT_GT(probes.size(), 50u);
}

} // namespace
} // namespace tessera::test
