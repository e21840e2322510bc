#include "platform/InheritedThings.h"

#include "platform/windows/WideText.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <ostream>

namespace tessera::platform {

void reportInheritedThings(std::ostream& out) {
    out << "command line=" << utf8Of(GetCommandLineW()) << "\n";
    out << "priority class=" << GetPriorityClass(GetCurrentProcess()) << "\n";
    // A handle's number is the same in a child that inherits it, so the test can ask for it by its own.
    if (const char* asked = std::getenv("TESX_TEST_HANDLE"); asked != nullptr) {
        const auto number = static_cast<std::uintptr_t>(std::strtoull(asked, nullptr, 10));
        DWORD flags = 0;
        out << "handle open=" << (GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != 0) << "\n";
    }
}

} // namespace tessera::platform
