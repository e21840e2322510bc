#include "persistence/files/FFileSystem.h"

#include "foundation/object/FSingletonList.h"
#include "persistence/files/FNFileSystem.h"
#include "persistence/files/FileSystemPointer.h"
#include "persistence/objects/PersistenceHooks.h"

#include <iterator>

namespace tessera {

namespace {

constinit FSingleton<FNFileSystem> ownInstance([] { return new FNFileSystem; });

constexpr double kUnit = 1.0 / 1024;
constexpr const char* kUnitNames[] = {"Bytes", "KB", "MB", "GB"};
constexpr std::int32_t kHighestLevel = static_cast<std::int32_t>(std::size(kUnitNames));

} // namespace

std::atomic<FFileSystem*> fileSystemPointer{nullptr};

FFileSystem* FFileSystem::getInstance() {
    FFileSystem* present = fileSystemPointer.load(std::memory_order_acquire);
    return present != nullptr ? present : ownInstance.get(true);
}

FStream* FFileSystem::createFile(FPath&, std::uint32_t, std::int32_t*) {
    return nullptr;
}

FStream* FFileSystem::openFile(FPath&, std::uint32_t, std::int32_t*) {
    return nullptr;
}

void FFileSystem::closeStream(FStream*) {}

bool FFileSystem::deleteFile(const FPath&) {
    return false;
}

bool FFileSystem::fileExists(const FPath&) {
    return false;
}

bool FFileSystem::rename(FPath&, const FStringRef&) {
    return false;
}

bool FFileSystem::move(FPath&, const FPath&) {
    return false;
}

bool FFileSystem::copyFile(const FPath&, const FPath&, IFileProgress*) {
    return false;
}

bool FFileSystem::createFolder(const FPath&) {
    return false;
}

bool FFileSystem::getVolumeName(const FPath&, FString&) {
    return false;
}

bool FFileSystem::deleteFolderContent(const FPath&, bool) {
    return false;
}

bool FFileSystem::getFileTimes(const FPath&, std::int64_t&, std::int64_t&) {
    return false;
}

std::int64_t FFileSystem::getFileSize(const FPath&) {
    return -1;
}

bool FFileSystem::sanitizeName(FString&, char16_t, bool) {
    return false;
}

FFileIterator* FFileSystem::newIterator(const FPath&, bool) {
    return nullptr;
}

std::int64_t FFileSystem::countFiles(const FPath&, bool, bool, std::int64_t*) {
    return 0;
}

bool FFileSystem::copyFolder(const FPath&, const FPath&, IFileProgress*) {
    return false;
}

bool FFileSystem::deleteFolder(const FPath&) {
    return false;
}

bool FFileSystem::folderExists(const FPath&) {
    return false;
}

bool FFileSystem::openUrl(const FStringRef&) {
    return false;
}

bool FFileSystem::isAbsolute(const FPath&) {
    return false;
}

bool FFileSystem::isRootPath(const FStringRef&) {
    return false;
}

void FFileSystem::notifyChange(FileChangeKind, const FPath&, const FPath*) {}

bool FFileSystem::sanitizePath(FString&, char16_t) {
    return false;
}

bool FFileSystem::formatSize(const FPath&, FString&, std::int32_t) {
    return false;
}

bool FFileSystem::revealInShell(const FPath&) {
    return false;
}

bool FFileSystem::openDocument(const FPath&) {
    return false;
}

bool FFileSystem::resolveLink(FPath&) {
    return false;
}

bool FFileSystem::createLink(FPath&, const FPath&) {
    return false;
}

VolumeKind FFileSystem::getVolumeKind(const FPath&) {
    return VolumeKind::unknown;
}

bool FFileSystem::getDiskNumber(const FPath&, FString&) {
    return false;
}

std::int64_t FFileSystem::getFreeSpace(const FPath&) {
    return -1;
}

bool FFileSystem::isSameFile(const FPath&, const FPath&) {
    return false;
}

bool FFileSystem::setVolumeMessages(bool) {
    return false;
}

void FFileSystem::addVolumeListener(IBaseUnknown*) {}

void FFileSystem::removeVolumeListener(IBaseUnknown*) {}

bool formatByteCount(std::int64_t size, FString& text, std::int32_t maxLevel) {
    if (size <= 0) {
        return false;
    }
    double value = static_cast<double>(size);
    std::int32_t level = 1;
    while (value > 1024 && level != maxLevel && level < kHighestLevel) {
        value *= kUnit;
        ++level;
    }
    // The lowest level has always been shown so, in files and in windows: 512 is "0.512 Bytes".
    if (level == 1) {
        value /= 1000;
    }
    text.printf("%.3f ", value);
    text.append(translateText(kUnitNames[level - 1]));
    return true;
}

} // namespace tessera
