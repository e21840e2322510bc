#include "platform/Volumes.h"

#include "platform/windows/NoErrorBoxes.h"
#include "platform/windows/SystemPath.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <windows.h>

namespace tessera::platform {

namespace {

// 2953344, which asks for the number of the disk that holds a volume.
constexpr DWORD kGetDeviceNumber = 0x2D1080;

struct DeviceNumber {
    DWORD deviceType;
    DWORD deviceNumber;
    DWORD partitionNumber;
};

// With "/", and without a separator at the end but behind a drive.
std::string rootText(const std::wstring& root) {
    std::string text = utf8Of(root);
    std::replace(text.begin(), text.end(), '\\', '/');
    while (text.size() > 3 && text.back() == '/') {
        text.pop_back();
    }
    return text;
}

VolumeKind kindOf(UINT driveType) {
    switch (driveType) {
    case DRIVE_REMOVABLE:
        return VolumeKind::removable;
    case DRIVE_FIXED:
        return VolumeKind::fixed;
    case DRIVE_REMOTE:
        return VolumeKind::network;
    case DRIVE_CDROM:
        return VolumeKind::optical;
    case DRIVE_RAMDISK:
        return VolumeKind::memory;
    default:
        return VolumeKind::unknown;
    }
}

// Of a volume with a drive letter.
std::int32_t diskNumberOf(const std::wstring& root) {
    if (root.size() < 2 || root[1] != L':') {
        return -1;
    }
    const std::wstring device = L"\\\\.\\" + root.substr(0, 2);
    const File disk = fileOf(
        ::CreateFileW(device.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    DeviceNumber number = {};
    DWORD size = 0;
    const bool told = disk.isOpen() && ::DeviceIoControl(handleOf(disk), kGetDeviceNumber, nullptr, 0, &number,
                                                         sizeof number, &size, nullptr);
    return told ? static_cast<std::int32_t>(number.deviceNumber) : -1;
}

void readFormat(const std::wstring& root, VolumeInfo& info) {
    wchar_t label[MAX_PATH + 1] = {};
    wchar_t format[MAX_PATH + 1] = {};
    DWORD flags = 0;
    if (::GetVolumeInformationW(root.c_str(), label, MAX_PATH + 1, nullptr, nullptr, &flags, format, MAX_PATH + 1)) {
        info.label = utf8Of(std::wstring_view(label));
        info.fileSystem = utf8Of(std::wstring_view(format));
        info.readOnly = (flags & FILE_READ_ONLY_VOLUME) != 0;
    }
}

void readSizes(const std::wstring& root, VolumeInfo& info) {
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    if (::GetDiskFreeSpaceW(root.c_str(), &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters)) {
        const std::uint64_t cluster = std::uint64_t{sectorsPerCluster} * bytesPerSector;
        info.totalBytes = cluster * clusters;
        info.availableBytes = cluster * freeClusters;
    }
}

// A volume of the network has no such name; its root says where it is.
std::string deviceOf(const std::wstring& root) {
    wchar_t name[MAX_PATH] = {};
    return ::GetVolumeNameForVolumeMountPointW(root.c_str(), name, MAX_PATH) ? utf8Of(std::wstring_view(name))
                                                                             : utf8Of(root);
}

} // namespace

std::vector<std::string> volumeRoots() {
    std::wstring drives(::GetLogicalDriveStringsW(0, nullptr), L'\0');
    drives.resize(::GetLogicalDriveStringsW(static_cast<DWORD>(drives.size()), drives.data()));
    std::vector<std::string> roots;
    // Each ends in a NUL.
    for (std::size_t at = 0; at < drives.size();) {
        const std::wstring root(drives.c_str() + at);
        roots.push_back(rootText(root));
        at += root.size() + 1;
    }
    return roots;
}

std::optional<VolumeInfo> volumeInfo(const std::string& path) {
    const NoErrorBoxes quiet;
    const std::wstring name = systemPath(path);
    const std::wstring root = volumeRootOf(name);
    const UINT type = root.empty() ? DRIVE_NO_ROOT_DIR : ::GetDriveTypeW(root.c_str());
    // A drive is there even when nothing is in it.
    const bool isThere = name == root || ::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES;
    if (type == DRIVE_NO_ROOT_DIR || !isThere) {
        return std::nullopt;
    }
    VolumeInfo info;
    info.root = rootText(root);
    info.kind = kindOf(type);
    info.name = deviceOf(root);
    info.diskNumber = diskNumberOf(root);
    readFormat(root, info);
    readSizes(root, info);
    return info;
}

} // namespace tessera::platform
