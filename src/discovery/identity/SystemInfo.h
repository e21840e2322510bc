// SystemInfo: the user, the machine and the operating system that the program runs on.
//
// All texts are UTF-8. The record of this process is gathered at the first call of systemInfo(), from whatever thread,
// and never changes: the link's address, which is made of userName, stays the same for the life of the process. What
// the system doesn't tell is the empty text or 0.
#pragma once

#include "platform/Identity.h"

#include <cstdint>
#include <string>

namespace tessera {

struct SystemInfo {
    std::string userName;
    std::string computerName;
    // "Win64" and "Linux64".
    std::string platform;
    std::string osName;
    // 2 on Windows, 3 on Linux.
    std::int32_t platformKind = 0;
    std::uint32_t osMajor = 0;
    std::uint32_t osMinor = 0;
    std::uint32_t osBuild = 0;
};

// The record for what the platform told.
SystemInfo describeSystem(std::string userName, std::string computerName, const platform::OperatingSystem& system);

// The one of this process.
const SystemInfo& systemInfo();

} // namespace tessera
