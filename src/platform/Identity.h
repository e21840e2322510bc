// Identity: who runs this process, on which machine, and under which operating system.
//
// All texts are UTF-8. Every operation may be called from any thread. A question that the system doesn't answer gives
// the empty text, or zeros for the numbers; nothing else fails.
#pragma once

#include <cstdint>
#include <string>

namespace tessera::platform {

enum class SystemFamily { windows, linux };

struct OperatingSystem {
    SystemFamily family = SystemFamily::linux;
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
};

// The login name of the user whose rights the process has, as the system's list of users spells it. The environment
// isn't asked: it differs between a host and a peer that were started in different ways.
std::string userName();

std::string computerName();

// The version that the system tells: of the kernel on Linux, where the third number stands for the build.
OperatingSystem operatingSystem();

// The file that this code was loaded from: the module in a host, else the program. 16-bit text with backslashes. Asked
// for while the module is loaded, so it may be looked up once: a name that the loader was given relative to the folder
// of that moment means something else later.
std::u16string modulePath();

// What the system knows that file by in this process: the address it is loaded at. Never null.
void* moduleHandle();

} // namespace tessera::platform
