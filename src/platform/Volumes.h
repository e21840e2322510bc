// Volumes: the mounted volumes of this machine. Paths are UTF-8 with "/" as the separator. From any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessera::platform {

enum class VolumeKind { unknown, fixed, removable, network, memory, optical };

struct VolumeInfo {
    std::string root;
    // Of the format, as the system calls it: "ext4", "NTFS".
    std::string fileSystem;
    // The device by which the system names it.
    std::string name;
    // What the user called the volume; may be empty.
    std::string label;
    VolumeKind kind = VolumeKind::unknown;
    // -1 where the system doesn't number its disks.
    std::int32_t diskNumber = -1;
    bool readOnly = false;
    std::uint64_t totalBytes = 0;
    // What this user may still write.
    std::uint64_t availableBytes = 0;
};

// The roots under which users find files; what the kernel mounts for itself isn't among them.
std::vector<std::string> volumeRoots();

// Of the volume that holds the path; nothing when there is no such path.
std::optional<VolumeInfo> volumeInfo(const std::string& path);

} // namespace tessera::platform
