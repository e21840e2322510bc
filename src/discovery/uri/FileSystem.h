// FileSystem: the operations on whatever a URI names. NativeFileSystem serves the machine's files; FileSystemFacade,
// which users hold, finds the file system for each URI.
//
// Failures come back in the Result, with the platform's number where there is one. Paths are UTF-8 with "/" as the
// separator. One thread at a time for one file; the objects themselves hold no state.
#pragma once

#include "discovery/uri/Result.h"
#include "discovery/uri/Uri.h"
#include "foundation/object/FRefPtr.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessera {

class DirectoryWatcher;
class FStream;

enum class EntryKind { missing, file, folder, other };

struct EntryStatus {
    EntryKind kind = EntryKind::missing;

    bool exists() const { return kind != EntryKind::missing; }
};

struct VolumeDetails {
    enum class Kind { unknown, fixed, removable, network, memory, optical };

    Uri root;
    std::string name;
    std::string fileSystem;
    Kind kind = Kind::unknown;
    bool readOnly = false;
    std::uint64_t totalBytes = 0;
    std::uint64_t availableBytes = 0;
};

// Bits of walk's options.
enum WalkOptions : std::uint32_t {
    kWalkFolderAlone = 0,
    // Into the folders that it meets, behind their own entry; never through a link.
    kWalkSubfolders = 1,
};

class FileSystem {
public:
    using Time = std::chrono::system_clock::time_point;
    // True goes on.
    using EntryVisitor = std::function<bool(const Uri& entry)>;

    virtual ~FileSystem() = default;

    virtual Result<Uri> uriFromPath(std::string_view path) const = 0;
    virtual bool isCaseSensitive() const = 0;
    virtual Result<Uri> currentDirectory() const = 0;
    virtual Result<Uri> temporaryDirectory() const = 0;
    virtual std::string_view forbiddenNameCharacters() const = 0;
    virtual bool isValidName(std::string_view name) const = 0;
    virtual std::string sanitizeName(std::string name, char replacement) const = 0;
    // Absolute, without dots, by the names as they are stored; where links are common, without them. Of something that
    // exists.
    virtual Result<Uri> canonicalPath(const Uri& uri) const = 0;
    virtual Result<std::uint64_t> fileSize(const Uri& uri) const = 0;
    virtual Result<Time> lastWriteTime(const Uri& uri) const = 0;
    // What isn't there is no error: its kind is missing.
    virtual Result<EntryStatus> status(const Uri& uri) const = 0;
    // Once for each entry of the folder, in no particular order.
    virtual Result<void> walk(const Uri& folder, const EntryVisitor& visit, std::uint32_t options) const = 0;
    virtual bool matchPattern(std::string_view name, std::string_view pattern) const = 0;
    virtual Result<std::vector<Uri>> roots() const = 0;
    // Of the volume that holds what the URI names.
    virtual Result<VolumeDetails> volumeInfo(const Uri& uri) const = 0;
    // "no monitor available" unless a file system has one.
    virtual Result<std::shared_ptr<DirectoryWatcher>> monitor(const Uri& folder);
    virtual Result<void> setCurrentDirectory(const Uri& folder) = 0;
    // The mode bits are those of FFileStream. "unable to open file" otherwise.
    virtual Result<FRefPtr<FStream>> open(const Uri& uri, std::uint32_t mode) = 0;
    // True when there was none before.
    virtual Result<bool> createDirectory(const Uri& folder) = 0;
    virtual Result<bool> createDirectories(const Uri& folder) = 0;
    // A shortcut file beside others; it gets the extension ".lnk" if it has another. Gives its URI.
    virtual Result<Uri> createLink(const Uri& target, const Uri& link) = 0;
    // A file, or a folder with its content; a copy within the folder doesn't take itself along. The first form fails
    // when a target file is there.
    virtual Result<void> copy(const Uri& from, const Uri& to) = 0;
    enum class Overwrite { no, yes };
    virtual Result<void> copy(const Uri& from, const Uri& to, Overwrite overwrite) = 0;
    virtual Result<void> rename(const Uri& from, const Uri& to) = 0;
    // A file or an empty folder; false when there was nothing.
    virtual Result<bool> remove(const Uri& uri) = 0;
    // With all that is in it; how many entries went.
    virtual Result<std::uint64_t> removeAll(const Uri& uri) = 0;
    virtual Result<void> setLastWriteTime(const Uri& uri, Time time) = 0;
    virtual Result<void> moveToTrash(const Uri& uri) = 0;

protected:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
};

} // namespace tessera
