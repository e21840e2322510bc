#include "discovery/identity/SystemInfo.h"

#include <iterator>
#include <utility>

namespace tessera {

namespace {

struct Platform {
    const char* text;
    std::int32_t kind;
};

constexpr Platform platformOf(platform::SystemFamily family) {
    return family == platform::SystemFamily::windows ? Platform{"Win64", 2} : Platform{"Linux64", 3};
}

// The names end with 6.2: the system tells that number to programs that don't declare themselves made for a newer one,
// and what it tells to the others is plainly "Windows".
const char* windowsName(std::uint32_t major, std::uint32_t minor) {
    constexpr const char* kNamesOfSix[] = {"Windows Vista", "Windows 7", "Windows 8"};
    return major == 6 && minor < std::size(kNamesOfSix) ? kNamesOfSix[minor] : "Windows";
}

} // namespace

SystemInfo describeSystem(std::string userName, std::string computerName, const platform::OperatingSystem& system) {
    const Platform known = platformOf(system.family);
    SystemInfo info;
    info.userName = std::move(userName);
    info.computerName = std::move(computerName);
    info.platform = known.text;
    info.osName = system.family == platform::SystemFamily::windows ? windowsName(system.major, system.minor) : "Linux";
    info.platformKind = known.kind;
    info.osMajor = system.major;
    info.osMinor = system.minor;
    info.osBuild = system.build;
    return info;
}

const SystemInfo& systemInfo() {
    // Never destroyed: the link may still ask for the address while the process goes down.
    static const SystemInfo& info =
        *new SystemInfo(describeSystem(platform::userName(), platform::computerName(), platform::operatingSystem()));
    return info;
}

} // namespace tessera
