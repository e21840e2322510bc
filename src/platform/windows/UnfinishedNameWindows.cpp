#include "platform/windows/UnfinishedName.h"

#include <atomic>
#include <windows.h>

namespace tessera::platform {

std::u16string unfinishedName() {
    static std::atomic<unsigned> counter{0};
    return utf16Of(".tesx-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(counter.fetch_add(1)) +
                   ".part");
}

} // namespace tessera::platform
