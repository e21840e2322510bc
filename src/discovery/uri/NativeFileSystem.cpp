#include "discovery/uri/NativeFileSystem.h"

#include "discovery/uri/FileNames.h"
#include "discovery/watcher/DirectoryWatcher.h"
#include "foundation/text/FString.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "platform/DesktopFiles.h"
#include "platform/TemporaryFolder.h"
#include "platform/Volumes.h"

#include <filesystem>

namespace tessera {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kLinkExtension = ".lnk";
constexpr const char* kUnfinishedExtension = ".unfinished";

// Through UTF-8 both ways, whatever the platform's narrow text is.
fs::path toPath(const Uri& uri) {
    const std::string native = NativeFileSystem::nativePath(uri);
    return fs::path(std::u8string(native.begin(), native.end()));
}

std::string toText(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

Uri toUri(const fs::path& path) {
    return Uri::fromPath(toText(path));
}

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

EntryKind kindOf(fs::file_type type) {
    switch (type) {
    case fs::file_type::not_found:
    case fs::file_type::none:
        return EntryKind::missing;
    case fs::file_type::regular:
        return EntryKind::file;
    case fs::file_type::directory:
        return EntryKind::folder;
    default:
        return EntryKind::other;
    }
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
    fs::directory_iterator entry(toPath(folder), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        // The folder's own form of the path, so that entries are named as the caller names the folder.
        Uri uri = folder;
        uri.path = joined(folder.path, toText(entry->path().filename()));
        if (!visit(uri)) {
            return false;
        }
        std::error_code ignored;
        const bool deeper =
            (options & kWalkSubfolders) != 0 && !entry->is_symlink(ignored) && entry->is_directory(ignored);
        if (deeper && !walkFolder(uri, visit, options, error)) {
            return false;
        }
    }
    return true;
}

// The standard's own copy doesn't replace files on every system, so the copy takes the old one's name once it's whole.
void replaceFile(const fs::path& from, const fs::path& to, std::error_code& error) {
    if (fs::equivalent(from, to, error)) {
        error = std::make_error_code(std::errc::file_exists);
    }
    if (error) {
        return;
    }
    fs::path whole = to;
    whole += kUnfinishedExtension;
    std::error_code ignored;
    fs::remove(whole, ignored);
    if (fs::copy_file(from, whole, error)) {
        fs::rename(whole, to, error);
    }
    if (error) {
        fs::remove(whole, ignored);
    }
}

void copyTree(const fs::path& from, const fs::path& to, FileSystem::Overwrite overwrite, std::error_code& error) {
    const fs::file_status source = fs::symlink_status(from, error);
    if (error || source.type() != fs::file_type::directory) {
        const bool replaces = overwrite == FileSystem::Overwrite::yes && source.type() == fs::file_type::regular;
        if (!error && replaces && fs::is_regular_file(to, error)) {
            replaceFile(from, to, error);
        } else {
            fs::copy(from, to, fs::copy_options::copy_symlinks, error);
        }
        return;
    }
    if (!fs::is_directory(to, error) && !fs::create_directory(to, from, error)) {
        return;
    }
    error.clear();
    for (fs::directory_iterator entry(from, error); !error && entry != fs::directory_iterator();) {
        copyTree(entry->path(), to / entry->path().filename(), overwrite, error);
        if (!error) {
            entry.increment(error);
        }
    }
}

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
    const fs::path path = fs::current_path(error);
    return resultOf(toUri(path), error);
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
    const fs::path path = fs::canonical(toPath(uri), error);
    return resultOf(toUri(path), error);
}

Result<std::uint64_t> NativeFileSystem::fileSize(const Uri& uri) const {
    std::error_code error;
    const std::uint64_t size = fs::file_size(toPath(uri), error);
    return resultOf(size, error);
}

Result<FileSystem::Time> NativeFileSystem::lastWriteTime(const Uri& uri) const {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(toPath(uri), error);
    if (error) {
        return Error(error);
    }
    return std::chrono::time_point_cast<Time::duration>(std::chrono::file_clock::to_sys(time));
}

Result<EntryStatus> NativeFileSystem::status(const Uri& uri) const {
    std::error_code error;
    const fs::file_status found = fs::status(toPath(uri), error);
    if (found.type() == fs::file_type::none) {
        return Error(error);
    }
    return EntryStatus{kindOf(found.type())};
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
    fs::current_path(toPath(folder), error);
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
    const bool made = fs::create_directory(toPath(folder), error);
    return resultOf(made, error);
}

Result<bool> NativeFileSystem::createDirectories(const Uri& folder) {
    std::error_code error;
    const bool made = fs::create_directories(toPath(folder), error);
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
    copyTree(toPath(from), toPath(to), overwrite, error);
    return resultOf(error);
}

Result<void> NativeFileSystem::rename(const Uri& from, const Uri& to) {
    std::error_code error;
    fs::rename(toPath(from), toPath(to), error);
    return resultOf(error);
}

Result<bool> NativeFileSystem::remove(const Uri& uri) {
    std::error_code error;
    const bool removed = fs::remove(toPath(uri), error);
    return resultOf(removed, error);
}

Result<std::uint64_t> NativeFileSystem::removeAll(const Uri& uri) {
    std::error_code error;
    const std::uint64_t count = fs::remove_all(toPath(uri), error);
    return resultOf(count, error);
}

Result<void> NativeFileSystem::setLastWriteTime(const Uri& uri, Time time) {
    std::error_code error;
    fs::last_write_time(toPath(uri), std::chrono::file_clock::from_sys(time), error);
    return resultOf(error);
}

Result<void> NativeFileSystem::moveToTrash(const Uri& uri) {
    const Result<Uri> folder = uriFromPath(nativePath(uri));
    std::error_code error;
    const fs::path whole = fs::absolute(toPath(folder.value()), error);
    return resultOf(error ? error : platform::moveToTrash(toText(whole)));
}

} // namespace tessera
