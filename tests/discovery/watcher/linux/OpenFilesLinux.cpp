#include "discovery/watcher/WatcherTest.h"

namespace tessera::test {

namespace {

std::size_t entriesOf(const char* folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

} // namespace

std::size_t openFiles() {
    return entriesOf("/proc/self/fd");
}

std::size_t runningThreads() {
    return entriesOf("/proc/self/task");
}

} // namespace tessera::test
