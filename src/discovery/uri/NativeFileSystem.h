// NativeFileSystem: the machine's files under URIs. Names are compared without regard to case, as on the platform that
// these rules come from.
#pragma once

#include "discovery/uri/FileSystem.h"

namespace tessera {

class NativeFileSystem : public FileSystem {
public:
    // The path as the platform takes it: without a "/" in front of a drive letter, and without "//?/".
    static std::string nativePath(const Uri& uri);

    Result<Uri> uriFromPath(std::string_view path) const override;
    bool isCaseSensitive() const override { return false; }
    Result<Uri> currentDirectory() const override;
    Result<Uri> temporaryDirectory() const override;
    std::string_view forbiddenNameCharacters() const override;
    bool isValidName(std::string_view name) const override;
    std::string sanitizeName(std::string name, char replacement) const override;
    Result<Uri> canonicalPath(const Uri& uri) const override;
    Result<std::uint64_t> fileSize(const Uri& uri) const override;
    Result<Time> lastWriteTime(const Uri& uri) const override;
    Result<EntryStatus> status(const Uri& uri) const override;
    Result<void> walk(const Uri& folder, const EntryVisitor& visit, std::uint32_t options) const override;
    bool matchPattern(std::string_view name, std::string_view pattern) const override;
    Result<std::vector<Uri>> roots() const override;
    Result<VolumeDetails> volumeInfo(const Uri& uri) const override;
    // A new watcher each time, which watches nothing yet.
    Result<std::shared_ptr<DirectoryWatcher>> monitor(const Uri& folder) override;
    Result<void> setCurrentDirectory(const Uri& folder) override;
    Result<FRefPtr<FStream>> open(const Uri& uri, std::uint32_t mode) override;
    Result<bool> createDirectory(const Uri& folder) override;
    Result<bool> createDirectories(const Uri& folder) override;
    Result<Uri> createLink(const Uri& target, const Uri& link) override;
    Result<void> copy(const Uri& from, const Uri& to) override;
    Result<void> copy(const Uri& from, const Uri& to, Overwrite overwrite) override;
    Result<void> rename(const Uri& from, const Uri& to) override;
    Result<bool> remove(const Uri& uri) override;
    Result<std::uint64_t> removeAll(const Uri& uri) override;
    Result<void> setLastWriteTime(const Uri& uri, Time time) override;
    Result<void> moveToTrash(const Uri& uri) override;
};

} // namespace tessera
