// Version texts come from hosts and script files. A version that was read, written plainly and read again is the same,
// and what stands in front of a blank or behind the last digit has no influence.
#include "exportscripts/AppVersion.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::string written(const tessera::AppVersion& version) {
    return std::to_string(version.major) + "." + std::to_string(version.minor) + "." + std::to_string(version.patch) +
           "." + std::to_string(version.build);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const tessera::AppVersion version = tessera::parseVersion(text);
    require(tessera::parseVersion(written(version)) == version);
    require(tessera::parseVersion("Host 3.1 " + text) == version || text.find_first_of("0123456789") == text.npos);
    require(tessera::parseVersion(text + " beta") == version);
    return 0;
}
