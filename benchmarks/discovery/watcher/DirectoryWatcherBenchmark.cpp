// From a change in a folder to the listener's call, beside an inotify instance that a thread polls.
#include "discovery/watcher/DirectoryWatcher.h"
#include "platform/Semaphore.h"
#include "support/OneProcessor.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <string>
#include <sys/inotify.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// A folder with as many sub-folders as the size says; the change happens in the last one.
class Tree {
public:
    explicit Tree(std::int64_t subFolders) {
        std::string pattern = (fs::temp_directory_path() / "benchmark-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
        for (std::int64_t i = 0; i < subFolders; ++i) {
            last_ = path_ / std::to_string(i);
            fs::create_directory(last_);
        }
        file_ = (last_ / "file").string();
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() { fs::remove_all(path_); }

    void makeFile() const { close(open(file_.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600)); }
    void removeFile() const { unlink(file_.c_str()); }
    const fs::path& path() const { return path_; }
    const fs::path& last() const { return last_; }

private:
    fs::path path_;
    fs::path last_;
    std::string file_;
};

// The thread that makes the change gives the processor up only when it waits for the answer, on either side.
template <class WaitForAnswer>
void measure(benchmark::State& state, const Tree& tree, const Clock::time_point& told, WaitForAnswer waitForAnswer) {
    for (auto step : state) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the other side sleeps by then
        const auto start = Clock::now();
        tree.makeFile();
        waitForAnswer();
        state.SetIterationTime(std::chrono::duration<double>(told - start).count());
        tree.removeFile();
        waitForAnswer();
    }
}

void ours(benchmark::State& state) {
    const tessera::benchmarks::OneProcessor pinned;
    const Tree tree(state.range(0));
    tessera::platform::Semaphore answer(0);
    Clock::time_point told;
    tessera::DirectoryWatcher watcher;
    watcher.addListener([&](const tessera::ChangeBatch& batch) {
        told = Clock::now();
        for (std::size_t i = 0; i < batch.events.size(); ++i) {
            answer.release(1);
        }
    });
    watcher.watch(tree.path().string());
    measure(state, tree, told, [&] { answer.wait(tessera::platform::kNoTimeLimit); });
}

void bare(benchmark::State& state) {
    const tessera::benchmarks::OneProcessor pinned;
    const Tree tree(state.range(0));
    tessera::platform::Semaphore answer(0);
    Clock::time_point told;
    const int file = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    for (const auto& entry : fs::directory_iterator(tree.path())) {
        inotify_add_watch(file, entry.path().c_str(), IN_CREATE | IN_DELETE | IN_MODIFY | IN_MOVED_FROM | IN_MOVED_TO);
    }
    int stop[2];
    if (pipe(stop) != 0) {
        return;
    }
    std::thread watcher([&] {
        alignas(inotify_event) char buffer[4096];
        pollfd asked[] = {{file, POLLIN, 0}, {stop[0], POLLIN, 0}};
        while (poll(asked, 2, -1) > 0 && asked[1].revents == 0) {
            const ssize_t count = read(file, buffer, sizeof buffer);
            told = Clock::now();
            for (ssize_t at = 0; at < count;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
                answer.release(1);
            }
        }
    });
    measure(state, tree, told, [&] { answer.wait(tessera::platform::kNoTimeLimit); });
    close(stop[1]);
    watcher.join();
    close(stop[0]);
    close(file);
}

BENCHMARK(ours)->Name("watcher.change/ours")->Arg(1)->Arg(1000)->UseManualTime()->Iterations(1000);
BENCHMARK(bare)->Name("watcher.change/inotify")->Arg(1)->Arg(1000)->UseManualTime()->Iterations(1000);

} // namespace
