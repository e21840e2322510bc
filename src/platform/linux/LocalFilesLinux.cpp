#include "platform/LocalFiles.h"

#include <filesystem>

// The standard library does all of this here by the system's own calls and reports their numbers, if under another
// category.
namespace tessera::platform {

namespace fs = std::filesystem;

namespace {

EntryType typeOf(fs::file_type type) {
    switch (type) {
    case fs::file_type::not_found:
    case fs::file_type::none:
        return EntryType::missing;
    case fs::file_type::regular:
        return EntryType::file;
    case fs::file_type::directory:
        return EntryType::folder;
    default:
        return EntryType::other;
    }
}

// A status that says "missing" comes with a number; only one that says nothing has failed.
EntryType typeOf(const fs::file_status& status, std::error_code& error) {
    if (status.type() != fs::file_type::none) {
        error.clear();
    }
    return typeOf(status.type());
}

} // namespace

std::string currentFolder(std::error_code& error) {
    return fs::current_path(error).string();
}

void setCurrentFolder(const std::string& path, std::error_code& error) {
    fs::current_path(path, error);
}

std::string absolutePath(const std::string& path, std::error_code& error) {
    return fs::absolute(path, error).string();
}

std::string canonicalName(const std::string& path, std::error_code& error) {
    return fs::canonical(path, error).string();
}

EntryType entryType(const std::string& path, std::error_code& error) {
    return typeOf(fs::status(path, error), error);
}

EntryType ownEntryType(const std::string& path, std::error_code& error) {
    return typeOf(fs::symlink_status(path, error), error);
}

bool isOneEntry(const std::string& a, const std::string& b, std::error_code& error) {
    return fs::equivalent(a, b, error);
}

std::uint64_t fileLength(const std::string& path, std::error_code& error) {
    return fs::file_size(path, error);
}

FileTime changeTime(const std::string& path, std::error_code& error) {
    const fs::file_time_type time = fs::last_write_time(path, error);
    return error ? FileTime() : std::chrono::time_point_cast<FileTime::duration>(std::chrono::file_clock::to_sys(time));
}

void setChangeTime(const std::string& path, FileTime time, std::error_code& error) {
    fs::last_write_time(path, std::chrono::file_clock::from_sys(time), error);
}

std::vector<NamedEntry> entriesOf(const std::string& folder, std::error_code& error) {
    std::vector<NamedEntry> entries;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        const bool isFolder = !entry->is_symlink(ignored) && entry->is_directory(ignored);
        entries.push_back({entry->path().filename().string(), isFolder});
    }
    return entries;
}

bool makeFolder(const std::string& path, std::error_code& error) {
    return fs::create_directory(path, error);
}

bool makeFolders(const std::string& path, std::error_code& error) {
    return fs::create_directories(path, error);
}

bool makeFolderLike(const std::string& path, const std::string& model, std::error_code& error) {
    return fs::create_directory(path, model, error);
}

void copyEntry(const std::string& from, const std::string& to, std::error_code& error) {
    fs::copy(from, to, fs::copy_options::copy_symlinks, error);
}

void renameEntry(const std::string& from, const std::string& to, std::error_code& error) {
    fs::rename(from, to, error);
}

bool removeEntry(const std::string& path, std::error_code& error) {
    return fs::remove(path, error);
}

std::uint64_t removeTree(const std::string& path, std::error_code& error) {
    const std::uintmax_t count = fs::remove_all(path, error);
    return error ? 0 : count;
}

} // namespace tessera::platform
