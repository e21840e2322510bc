#include "discovery/watcher/WatcherTest.h"

#include "platform/windows/WindowsHandle.h"
#include "support/windows/OpenHandles.h"

#include <tlhelp32.h>

namespace tessera::test {

std::size_t openFiles() {
    auto kinds = testing_support::openHandlesByKind();
    return kinds["File"] + kinds["IoCompletion"];
}

std::size_t runningThreads() {
    const platform::WindowsHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    std::size_t count = 0;
    for (BOOL more = Thread32First(snapshot.get(), &entry); more != 0; more = Thread32Next(snapshot.get(), &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1u : 0u;
    }
    return count;
}

} // namespace tessera::test
