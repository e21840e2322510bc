// SystemInfoTexts: what SystemInfo tells, with the framework's strings.
//
// Made from SystemInfo at the first call and kept to the end of the process. The strings are 16-bit; reading them in
// that width changes nothing, so any thread may.
#pragma once

#include "discovery/identity/SystemInfo.h"
#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

struct SystemInfoTexts {
    explicit SystemInfoTexts(const SystemInfo& info);

    FString userName;
    FString computerName;
    FString platform;
    FString osName;
    std::uint32_t osMajor;
    std::uint32_t osMinor;
    std::uint32_t osBuild;
};

const SystemInfoTexts& systemInfoTexts();

} // namespace tessera
