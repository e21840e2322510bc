// Volumes: the mounted volumes of this machine. Paths are UTF-8 with "/" as the separator. From any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessera::platform {

enum class VolumeKind { unknown, fixed, removable, network, memory };

struct VolumeInfo {
    std::string root;
    // Of the format, as the system calls it: "ext4", "NTFS".
    std::string fileSystem;
    // The device or label by which the system names it.
    std::string name;
    VolumeKind kind = VolumeKind::unknown;
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
