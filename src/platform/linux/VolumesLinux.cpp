#include "platform/Volumes.h"

#include <algorithm>
#include <memory>
#include <mntent.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace tessera::platform {

namespace {

struct KnownFormat {
    std::string_view name;
    VolumeKind kind;
};

constexpr KnownFormat kFormats[] = {
    {"btrfs", VolumeKind::fixed},   {"cifs", VolumeKind::network},      {"ext2", VolumeKind::fixed},
    {"ext3", VolumeKind::fixed},    {"ext4", VolumeKind::fixed},        {"exfat", VolumeKind::removable},
    {"f2fs", VolumeKind::fixed},    {"iso9660", VolumeKind::removable}, {"nfs", VolumeKind::network},
    {"nfs4", VolumeKind::network},  {"ntfs", VolumeKind::fixed},        {"ntfs3", VolumeKind::fixed},
    {"overlay", VolumeKind::fixed}, {"ramfs", VolumeKind::memory},      {"smb3", VolumeKind::network},
    {"tmpfs", VolumeKind::memory},  {"udf", VolumeKind::removable},     {"vfat", VolumeKind::removable},
    {"xfs", VolumeKind::fixed},     {"zfs", VolumeKind::fixed},
};

VolumeKind kindOf(std::string_view format) {
    const auto* known = std::find_if(std::begin(kFormats), std::end(kFormats),
                                     [&](const KnownFormat& row) { return row.name == format; });
    return known == std::end(kFormats) ? VolumeKind::unknown : known->kind;
}

struct Mount {
    std::string root;
    std::string format;
    std::string device;
};

std::vector<Mount> readMounts() {
    std::vector<Mount> mounts;
    const std::unique_ptr<FILE, int (*)(FILE*)> table(setmntent("/proc/self/mounts", "re"), endmntent);
    if (table == nullptr) {
        return mounts;
    }
    mntent entry = {};
    char text[4096];
    while (getmntent_r(table.get(), &entry, text, sizeof text) != nullptr) {
        mounts.push_back({entry.mnt_dir, entry.mnt_type, entry.mnt_fsname});
    }
    return mounts;
}

dev_t deviceOf(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? status.st_dev : 0;
}

} // namespace

std::vector<std::string> volumeRoots() {
    std::vector<std::string> roots;
    for (const Mount& mount : readMounts()) {
        const bool forFiles = mount.root == "/" || kindOf(mount.format) != VolumeKind::unknown;
        if (forFiles && std::find(roots.begin(), roots.end(), mount.root) == roots.end()) {
            roots.push_back(mount.root);
        }
    }
    return roots;
}

std::optional<VolumeInfo> volumeInfo(const std::string& path) {
    struct statvfs numbers = {};
    struct stat status = {};
    if (statvfs(path.c_str(), &numbers) != 0 || stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    VolumeInfo info;
    info.totalBytes = static_cast<std::uint64_t>(numbers.f_blocks) * numbers.f_frsize;
    info.availableBytes = static_cast<std::uint64_t>(numbers.f_bavail) * numbers.f_frsize;
    info.readOnly = (numbers.f_flag & ST_RDONLY) != 0;
    // The last one counts: a later mount hides an earlier one on the same folder.
    for (const Mount& mount : readMounts()) {
        if (deviceOf(mount.root) == status.st_dev) {
            info.root = mount.root;
            info.fileSystem = mount.format;
            info.name = mount.device;
            info.kind = kindOf(mount.format);
        }
    }
    return info;
}

} // namespace tessera::platform
