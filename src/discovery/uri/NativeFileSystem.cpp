#include "discovery/uri/NativeFileSystem.h"

#include "discovery/uri/FileNames.h"
#include "discovery/watcher/DirectoryWatcher.h"
#include "foundation/text/FString.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "platform/DesktopFiles.h"
#include "platform/LocalFiles.h"
#include "platform/TemporaryFolder.h"
#include "platform/Volumes.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace tessera {

namespace {

constexpr std::string_view kLinkExtension = ".lnk";
constexpr const char* kUnfinishedExtension = ".unfinished";

template <class T>
Result<T> resultOf(T value, const std::error_code& error) {
    if (error) {
        return Error(error);
    }
    return value;
}

Result<void> resultOf(const std::error_code& error) {
    return error ? Result<void>(Error(error)) : Result<void>();
}

EntryKind kindOf(platform::EntryType type) {
    switch (type) {
    case platform::EntryType::missing:
        return EntryKind::missing;
    case platform::EntryType::file:
        return EntryKind::file;
    case platform::EntryType::folder:
        return EntryKind::folder;
    case platform::EntryType::other:
        break;
    }
    return EntryKind::other;
}

VolumeDetails::Kind kindOf(platform::VolumeKind kind) {
    switch (kind) {
    case platform::VolumeKind::fixed:
        return VolumeDetails::Kind::fixed;
    case platform::VolumeKind::removable:
        return VolumeDetails::Kind::removable;
    case platform::VolumeKind::network:
        return VolumeDetails::Kind::network;
    case platform::VolumeKind::memory:
        return VolumeDetails::Kind::memory;
    case platform::VolumeKind::optical:
        return VolumeDetails::Kind::optical;
    case platform::VolumeKind::unknown:
        break;
    }
    return VolumeDetails::Kind::unknown;
}

std::string joined(const std::string& folder, const std::string& name) {
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path = folder;
    if (!path.empty() && path.back() != '/') {
        path += '/';
    }
    return path += name;
}

// False when the visitor has had enough.
bool walkFolder(const Uri& folder, const FileSystem::EntryVisitor& visit, std::uint32_t options,
                std::error_code& error) {
    for (const platform::NamedEntry& entry : platform::entriesOf(NativeFileSystem::nativePath(folder), error)) {
        // The folder's own form of the path, so that entries are named as the caller names the folder.
        Uri uri = folder;
        uri.path = joined(folder.path, entry.name);
        if (!visit(uri)) {
            return false;
        }
        std::error_code inner;
        const bool deeper = (options & kWalkSubfolders) != 0 && entry.isFolder;
        if (deeper && !walkFolder(uri, visit, options, inner)) {
            return false;
        }
        if (inner) {
            error = inner;
            break;
        }
    }
    return true;
}

// A name beside the file that nothing bears, for a copy that isn't whole yet.
std::string unusedNameBeside(const std::string& file, std::error_code& error) {
    std::string name = file + kUnfinishedExtension;
    for (int number = 2; platform::ownEntryType(name, error) != platform::EntryType::missing && !error; ++number) {
        name = file + kUnfinishedExtension + std::to_string(number);
    }
    return name;
}

// The copy takes the old one's name once it's whole.
void replaceFile(const std::string& from, const std::string& to, std::error_code& error) {
    const bool isItself = platform::isOneEntry(from, to, error);
    if (error) {
        return;
    }
    if (isItself) {
        // Fails, with the system's reason.
        platform::copyEntry(from, to, error);
        return;
    }
    const std::string whole = unusedNameBeside(to, error);
    if (error) {
        return;
    }
    platform::copyEntry(from, whole, error);
    if (error == std::errc::file_exists) {
        // Somebody was quicker; that one isn't ours to remove.
        return;
    }
    if (!error) {
        platform::renameEntry(whole, to, error);
    }
    if (error) {
        std::error_code ignored;
        platform::removeEntry(whole, ignored);
    }
}

class TreeCopy {
public:
    TreeCopy(std::string target, FileSystem::Overwrite overwrite) : target_(std::move(target)), overwrite_(overwrite) {}

    void take(const std::string& from, std::error_code& error) const { copy(from, target_, error); }

private:
    void copy(const std::string& from, const std::string& to, std::error_code& error) const {
        const platform::EntryType source = platform::ownEntryType(from, error);
        if (error) {
            return;
        }
        if (source == platform::EntryType::folder) {
            copyFolder(from, to, error);
        } else {
            copyOne(from, to, source, error);
        }
    }

    void copyOne(const std::string& from, const std::string& to, platform::EntryType source,
                 std::error_code& error) const {
        const bool replaces = overwrite_ == FileSystem::Overwrite::yes && source == platform::EntryType::file;
        if (replaces && platform::entryType(to, error) == platform::EntryType::file) {
            replaceFile(from, to, error);
        } else if (!error) {
            platform::copyEntry(from, to, error);
        }
    }

    void copyFolder(const std::string& from, const std::string& to, std::error_code& error) const {
        if (platform::entryType(to, error) != platform::EntryType::folder &&
            !platform::makeFolderLike(to, from, error)) {
            return;
        }
        for (const platform::NamedEntry& entry : platform::entriesOf(from, error)) {
            const std::string inner = joined(from, entry.name);
            // A folder may be copied to a place within it. The copy doesn't take itself along: that would never end.
            if (entry.isFolder && platform::isOneEntry(inner, target_, error)) {
                continue;
            }
            if (!error) {
                copy(inner, joined(to, entry.name), error);
            }
            if (error) {
                return;
            }
        }
    }

    std::string target_;
    FileSystem::Overwrite overwrite_;
};

FStream* openStream(FNPath& path, std::uint32_t mode, std::int32_t& error) {
    FFileSystem* files = FFileSystem::getInstance();
    if (files == nullptr) {
        return nullptr;
    }
    FStream* stream = files->openFile(path, mode, &error);
    if (stream == nullptr && (mode & FileOpenMode::write) != 0 && !files->fileExists(path)) {
        stream = files->createFile(path, mode, &error);
    }
    return stream;
}

} // namespace

std::string NativeFileSystem::nativePath(const Uri& uri) {
    std::string_view path = uri.path;
    if (path.starts_with("//?/")) {
        path.remove_prefix(4);
    }
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (path.size() >= 3 && path[0] == '/' && isLetter(path[1]) && path[2] == ':') {
        path.remove_prefix(1);
    }
    return std::string(path);
}

Result<Uri> NativeFileSystem::uriFromPath(std::string_view path) const {
    return Uri::fromPath(path);
}

Result<Uri> NativeFileSystem::currentDirectory() const {
    std::error_code error;
    const std::string path = platform::currentFolder(error);
    return resultOf(Uri::fromPath(path), error);
}

Result<Uri> NativeFileSystem::temporaryDirectory() const {
    const std::string folder = platform::temporaryFolder();
    if (folder.empty()) {
        return Error(std::make_error_code(std::errc::permission_denied));
    }
    return Uri::fromPath(folder);
}

std::string_view NativeFileSystem::forbiddenNameCharacters() const {
    return kForbiddenNameCharacters;
}

bool NativeFileSystem::isValidName(std::string_view name) const {
    return isValidFileName(name);
}

std::string NativeFileSystem::sanitizeName(std::string name, char replacement) const {
    return sanitizeFileName(std::move(name), replacement);
}

Result<Uri> NativeFileSystem::canonicalPath(const Uri& uri) const {
    std::error_code error;
    const std::string path = platform::canonicalName(nativePath(uri), error);
    return resultOf(Uri::fromPath(path), error);
}

Result<std::uint64_t> NativeFileSystem::fileSize(const Uri& uri) const {
    std::error_code error;
    const std::uint64_t size = platform::fileLength(nativePath(uri), error);
    return resultOf(size, error);
}

Result<FileSystem::Time> NativeFileSystem::lastWriteTime(const Uri& uri) const {
    std::error_code error;
    const Time time = platform::changeTime(nativePath(uri), error);
    return resultOf(time, error);
}

Result<EntryStatus> NativeFileSystem::status(const Uri& uri) const {
    std::error_code error;
    const platform::EntryType type = platform::entryType(nativePath(uri), error);
    return resultOf(EntryStatus{kindOf(type)}, error);
}

Result<void> NativeFileSystem::walk(const Uri& folder, const EntryVisitor& visit, std::uint32_t options) const {
    std::error_code error;
    walkFolder(folder, visit, options, error);
    return resultOf(error);
}

bool NativeFileSystem::matchPattern(std::string_view name, std::string_view pattern) const {
    return matchesPattern(name, pattern, isCaseSensitive() ? NameCase::exact : NameCase::ignored);
}

Result<std::vector<Uri>> NativeFileSystem::roots() const {
    std::vector<Uri> uris;
    for (const std::string& root : platform::volumeRoots()) {
        uris.push_back(Uri::fromPath(root));
    }
    return uris;
}

Result<VolumeDetails> NativeFileSystem::volumeInfo(const Uri& uri) const {
    const auto info = platform::volumeInfo(nativePath(uri));
    if (!info) {
        return Error(std::make_error_code(std::errc::no_such_file_or_directory));
    }
    return VolumeDetails{Uri::fromPath(info->root), info->name,     info->fileSystem,
                         kindOf(info->kind),        info->readOnly, info->totalBytes,
                         info->availableBytes};
}

Result<std::shared_ptr<DirectoryWatcher>> NativeFileSystem::monitor(const Uri&) {
    return std::make_shared<DirectoryWatcher>();
}

Result<void> NativeFileSystem::setCurrentDirectory(const Uri& folder) {
    std::error_code error;
    platform::setCurrentFolder(nativePath(folder), error);
    return resultOf(error);
}

Result<FRefPtr<FStream>> NativeFileSystem::open(const Uri& uri, std::uint32_t mode) {
    FString text;
    std::int32_t error = 0;
    if (text.assignUtf8(nativePath(uri).c_str())) {
        FNPath path;
        path.setNativePath(text);
        if (FStream* stream = openStream(path, mode, error)) {
            return FRefPtr<FStream>::adopt(stream);
        }
    }
    Error failure("unable to open file");
    failure.code = error;
    return failure;
}

Result<bool> NativeFileSystem::createDirectory(const Uri& folder) {
    std::error_code error;
    const bool made = platform::makeFolder(nativePath(folder), error);
    return resultOf(made, error);
}

Result<bool> NativeFileSystem::createDirectories(const Uri& folder) {
    std::error_code error;
    const bool made = platform::makeFolders(nativePath(folder), error);
    return resultOf(made, error);
}

Result<Uri> NativeFileSystem::createLink(const Uri& target, const Uri& link) {
    Uri shortcut = link;
    if (!shortcut.path.ends_with(kLinkExtension)) {
        shortcut.path += kLinkExtension;
    }
    return resultOf(shortcut, platform::createShortcut(nativePath(target), nativePath(shortcut)));
}

Result<void> NativeFileSystem::copy(const Uri& from, const Uri& to) {
    return copy(from, to, Overwrite::no);
}

Result<void> NativeFileSystem::copy(const Uri& from, const Uri& to, Overwrite overwrite) {
    std::error_code error;
    TreeCopy(nativePath(to), overwrite).take(nativePath(from), error);
    return resultOf(error);
}

Result<void> NativeFileSystem::rename(const Uri& from, const Uri& to) {
    std::error_code error;
    platform::renameEntry(nativePath(from), nativePath(to), error);
    return resultOf(error);
}

Result<bool> NativeFileSystem::remove(const Uri& uri) {
    std::error_code error;
    const bool removed = platform::removeEntry(nativePath(uri), error);
    return resultOf(removed, error);
}

Result<std::uint64_t> NativeFileSystem::removeAll(const Uri& uri) {
    std::error_code error;
    const std::uint64_t count = platform::removeTree(nativePath(uri), error);
    return resultOf(count, error);
}

Result<void> NativeFileSystem::setLastWriteTime(const Uri& uri, Time time) {
    std::error_code error;
    platform::setChangeTime(nativePath(uri), time, error);
    return resultOf(error);
}

Result<void> NativeFileSystem::moveToTrash(const Uri& uri) {
    const Result<Uri> folder = uriFromPath(nativePath(uri));
    std::error_code error;
    const std::string whole = platform::absolutePath(nativePath(folder.value()), error);
    return resultOf(error ? error : platform::moveToTrash(whole));
}

} // namespace tessera
