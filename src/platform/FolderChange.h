// FolderChange: one change below a folder, as the system tells it.
#pragma once

#include <cstdint>
#include <string>

namespace tessera::platform {

struct FolderChange {
    // The numbers are those of the record form in FolderRecords.h.
    enum Action : std::uint32_t {
        kOther = 0, // look at the folder anew: changes below it have been lost
        kAdded = 1,
        kRemoved = 2,
        kModified = 3,
        kRenamedFrom = 4, // directly followed by its other half, unless that is missing
        kRenamedTo = 5,
    };
    static constexpr std::uint32_t kLastAction = kRenamedTo;

    std::uint32_t action = kOther;
    // Relative to the folder, in UTF-8 (or the bytes that the system keeps), with "/" between its parts. Empty for the
    // folder itself.
    std::string name;

    friend bool operator==(const FolderChange&, const FolderChange&) = default;
};

} // namespace tessera::platform
