#include "shell/HostAdmission.h"

#include "exportscripts/AppVersion.h"
#include "shell/hostapi/IHostApplicationInfo.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tessera {

namespace {

struct AdmittedHosts {
    std::array<std::string_view, 4> names;
    AppVersion minimum;
};

constexpr AppVersion version(std::uint32_t major, std::uint32_t minor, std::uint32_t patch) {
    return {0, patch, minor, major};
}

constexpr AdmittedHosts kTable[] = {
    {{"Harrow", "Harrow Max", "Harrow Mid", "Harrow Lite"}, version(8, 5, 10)},
    {{"Ostrey"}, version(7, 1, 20)},
    {{"Tessera Max", "Tessera Lite"}, version(9, 0, 0)},
};

std::string_view viewOf(const char* text) {
    return text == nullptr ? std::string_view() : text;
}

bool isAdmittedBy(const AdmittedHosts& row, IHostApplicationInfo& host) {
    const std::string_view name = viewOf(host.name());
    if (name.empty() || std::ranges::find(row.names, name) == row.names.end()) {
        return false;
    }
    return parseVersion(viewOf(host.version())) >= row.minimum;
}

} // namespace

bool isHostAdmitted(IHostApplicationInfo* host) {
    if (host == nullptr) {
        return false;
    }
    bool admitted = false;
    // Every row asks, also behind one that has admitted: hosts count on being asked for their name by each.
    for (const AdmittedHosts& row : kTable) {
        admitted |= isAdmittedBy(row, *host);
    }
    return admitted;
}

} // namespace tessera
