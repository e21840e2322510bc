// FileSystemFacade: what users hold: the same operations as any file system, each of which goes to the one that serves
// its URI; the error of the look-up comes back when none does. Operations without a URI go to the default one.
#pragma once

#include "discovery/uri/FileSystem.h"

namespace tessera {

class FileSystemRegistry;

class FileSystemFacade : public FileSystem {
public:
    // The registry is borrowed.
    explicit FileSystemFacade(const FileSystemRegistry& registry) : registry_(registry) {}

    Result<Uri> uriFromPath(std::string_view path) const override;
    // Without a default file system names are taken for case sensitive, and none is valid.
    bool isCaseSensitive() const override;
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
    Result<std::shared_ptr<DirectoryWatcher>> monitor(const Uri& folder) override;
    Result<void> setCurrentDirectory(const Uri& folder) override;
    Result<FRefPtr<FStream>> open(const Uri& uri, std::uint32_t mode) override;
    Result<bool> createDirectory(const Uri& folder) override;
    Result<bool> createDirectories(const Uri& folder) override;
    Result<Uri> createLink(const Uri& target, const Uri& link) override;
    // Two URIs have to lead to the same file system.
    Result<void> copy(const Uri& from, const Uri& to) override;
    Result<void> copy(const Uri& from, const Uri& to, Overwrite overwrite) override;
    Result<void> rename(const Uri& from, const Uri& to) override;
    Result<bool> remove(const Uri& uri) override;
    Result<std::uint64_t> removeAll(const Uri& uri) override;
    Result<void> setLastWriteTime(const Uri& uri, Time time) override;
    Result<void> moveToTrash(const Uri& uri) override;

private:
    const FileSystemRegistry& registry_;
};

// Over the process's registry.
FileSystem& fileSystem();

} // namespace tessera
