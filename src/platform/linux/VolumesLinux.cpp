#include "platform/Volumes.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <system_error>

namespace tessera::platform {

namespace {

struct KnownFormat {
    std::string_view name;
    VolumeKind kind;
};

constexpr KnownFormat kFormats[] = {
    {"9p", VolumeKind::network},    {"btrfs", VolumeKind::fixed},     {"cifs", VolumeKind::network},
    {"ext2", VolumeKind::fixed},    {"ext3", VolumeKind::fixed},      {"ext4", VolumeKind::fixed},
    {"exfat", VolumeKind::fixed},   {"f2fs", VolumeKind::fixed},      {"fuse.sshfs", VolumeKind::network},
    {"fuseblk", VolumeKind::fixed}, {"iso9660", VolumeKind::optical}, {"nfs", VolumeKind::network},
    {"nfs4", VolumeKind::network},  {"ntfs", VolumeKind::fixed},      {"ntfs3", VolumeKind::fixed},
    {"overlay", VolumeKind::fixed}, {"ramfs", VolumeKind::memory},    {"smb3", VolumeKind::network},
    {"tmpfs", VolumeKind::memory},  {"udf", VolumeKind::optical},     {"vfat", VolumeKind::fixed},
    {"xfs", VolumeKind::fixed},     {"zfs", VolumeKind::fixed},
};

VolumeKind kindOfFormat(std::string_view format) {
    const auto* known = std::find_if(std::begin(kFormats), std::end(kFormats),
                                     [&](const KnownFormat& row) { return row.name == format; });
    return known == std::end(kFormats) ? VolumeKind::unknown : known->kind;
}

struct Mount {
    std::string root;
    std::string format;
    std::string device;
    // "8:1": what the device's entry in /sys/dev/block is called.
    std::string deviceNumber;
};

// Undoes the "\040" by which the kernel writes blanks and line ends into its tables.
std::string unescapeOctal(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned value = 0;
        if (text.size() >= 4 && text[0] == '\\' &&
            std::from_chars(text.data() + 1, text.data() + 4, value, 8).ptr == text.data() + 4) {
            plain.push_back(static_cast<char>(value));
            text.remove_prefix(4);
        } else {
            plain.push_back(text[0]);
            text.remove_prefix(1);
        }
    }
    return plain;
}

std::vector<std::string_view> splitAtBlanks(std::string_view line) {
    std::vector<std::string_view> fields;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(' '), line.size());
        if (end > 0) {
            fields.push_back(line.substr(0, end));
        }
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return fields;
}

// "36 35 98:0 /inner /root rw,noatime master:1 - ext4 /dev/sda1 rw": the fields behind the hyphen are found through it,
// since there are any number of optional ones before it.
std::vector<Mount> readMounts() {
    std::vector<Mount> mounts;
    std::ifstream table("/proc/self/mountinfo");
    for (std::string line; std::getline(table, line);) {
        const std::vector<std::string_view> fields = splitAtBlanks(line);
        const auto hyphen = std::find(fields.begin(), fields.end(), "-");
        if (hyphen - fields.begin() < 6 || fields.end() - hyphen < 3) {
            continue;
        }
        mounts.push_back(
            {unescapeOctal(fields[4]), std::string(hyphen[1]), unescapeOctal(hyphen[2]), std::string(fields[2])});
    }
    return mounts;
}

bool holds(const std::string& root, const std::string& path) {
    return root == "/" || (path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/'));
}

// By the path's text alone: asking each root for its device would wait for network volumes that don't answer. Of two
// mounts on one folder the later one hides the earlier.
const Mount* mountOf(const std::vector<Mount>& mounts, const std::string& path) {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        if (holds(mount.root, path) && (best == nullptr || mount.root.size() >= best->root.size())) {
            best = &mount;
        }
    }
    return best;
}

bool saysOne(const std::string& file) {
    std::ifstream flag(file);
    return flag.get() == '1';
}

// A partition has no mark of its own; the disk that holds it is the folder above.
bool isRemovable(const Mount& mount) {
    const std::string device = "/sys/dev/block/" + mount.deviceNumber;
    return saysOne(device + "/removable") || saysOne(device + "/../removable");
}

VolumeKind kindOf(const Mount& mount) {
    const VolumeKind kind = kindOfFormat(mount.format);
    return kind == VolumeKind::fixed && isRemovable(mount) ? VolumeKind::removable : kind;
}

// The names in /dev/disk/by-label write what a file name can't hold as "\x20".
std::string unescapeHexadecimal(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned value = 0;
        if (text.size() >= 4 && text.starts_with("\\x") &&
            std::from_chars(text.data() + 2, text.data() + 4, value, 16).ptr == text.data() + 4) {
            plain.push_back(static_cast<char>(value));
            text.remove_prefix(4);
        } else {
            plain.push_back(text[0]);
            text.remove_prefix(1);
        }
    }
    return plain;
}

std::string labelOf(const std::string& deviceNumber) {
    const std::string folder = "/dev/disk/by-label";
    const std::unique_ptr<DIR, int (*)(DIR*)> labels(opendir(folder.c_str()), closedir);
    if (labels == nullptr) {
        return {};
    }
    while (const dirent* label = readdir(labels.get())) {
        struct stat status = {};
        if (stat((folder + "/" + label->d_name).c_str(), &status) == 0 && S_ISBLK(status.st_mode) &&
            std::to_string(major(status.st_rdev)) + ":" + std::to_string(minor(status.st_rdev)) == deviceNumber) {
            return unescapeHexadecimal(label->d_name);
        }
    }
    return {};
}

} // namespace

std::vector<std::string> volumeRoots() {
    std::vector<std::string> roots;
    for (const Mount& mount : readMounts()) {
        const bool forFiles = mount.root == "/" || kindOfFormat(mount.format) != VolumeKind::unknown;
        if (forFiles && std::find(roots.begin(), roots.end(), mount.root) == roots.end()) {
            roots.push_back(mount.root);
        }
    }
    return roots;
}

std::optional<VolumeInfo> volumeInfo(const std::string& path) {
    struct statvfs numbers = {};
    const std::unique_ptr<char, decltype(&std::free)> whole(realpath(path.c_str(), nullptr), std::free);
    if (whole == nullptr || statvfs(whole.get(), &numbers) != 0) {
        return std::nullopt;
    }
    VolumeInfo info;
    info.totalBytes = static_cast<std::uint64_t>(numbers.f_blocks) * numbers.f_frsize;
    info.availableBytes = static_cast<std::uint64_t>(numbers.f_bavail) * numbers.f_frsize;
    info.readOnly = (numbers.f_flag & ST_RDONLY) != 0;
    const std::vector<Mount> mounts = readMounts();
    if (const Mount* mount = mountOf(mounts, whole.get())) {
        info.root = mount->root;
        info.fileSystem = mount->format;
        info.name = mount->device;
        info.kind = kindOf(*mount);
        info.label = labelOf(mount->deviceNumber);
    }
    return info;
}

} // namespace tessera::platform
