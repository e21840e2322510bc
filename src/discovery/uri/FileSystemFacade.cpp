#include "discovery/uri/FileSystemFacade.h"

#include "discovery/uri/FileSystemRegistry.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

// The operation on the file system that serves the URI, or the error of the look-up.
template <class Operation>
auto forward(const FileSystemRegistry& registry, const Uri& uri, Operation operation)
    -> decltype(operation(std::declval<FileSystem&>())) {
    const Result<FileSystem*> found = registry.resolve(uri);
    if (!found) {
        return found.error();
    }
    return operation(*found.value());
}

template <class Operation>
Result<void> forwardPair(const FileSystemRegistry& registry, const Uri& from, const Uri& to, Operation operation) {
    const Result<FileSystem*> target = registry.resolve(to);
    if (!target) {
        return target.error();
    }
    return forward(registry, from, [&](FileSystem& source) -> Result<void> {
        if (&source != target.value()) {
            return Error(std::make_error_code(std::errc::cross_device_link));
        }
        return operation(source);
    });
}

} // namespace

FileSystem& fileSystem() {
    static auto& facade = *new FileSystemFacade(FileSystemRegistry::getInstance());
    return facade;
}

Result<Uri> FileSystemFacade::uriFromPath(std::string_view path) const {
    return forward(registry_, Uri(), [&](FileSystem& files) { return files.uriFromPath(path); });
}

bool FileSystemFacade::isCaseSensitive() const {
    const FileSystem* files = registry_.defaultFileSystem();
    return files == nullptr || files->isCaseSensitive();
}

Result<Uri> FileSystemFacade::currentDirectory() const {
    return forward(registry_, Uri(), [](FileSystem& files) { return files.currentDirectory(); });
}

Result<Uri> FileSystemFacade::temporaryDirectory() const {
    return forward(registry_, Uri(), [](FileSystem& files) { return files.temporaryDirectory(); });
}

std::string_view FileSystemFacade::forbiddenNameCharacters() const {
    const FileSystem* files = registry_.defaultFileSystem();
    return files != nullptr ? files->forbiddenNameCharacters() : std::string_view();
}

bool FileSystemFacade::isValidName(std::string_view name) const {
    const FileSystem* files = registry_.defaultFileSystem();
    return files != nullptr && files->isValidName(name);
}

std::string FileSystemFacade::sanitizeName(std::string name, char replacement) const {
    const FileSystem* files = registry_.defaultFileSystem();
    return files != nullptr ? files->sanitizeName(std::move(name), replacement) : name;
}

Result<Uri> FileSystemFacade::canonicalPath(const Uri& uri) const {
    return forward(registry_, uri, [&](FileSystem& files) { return files.canonicalPath(uri); });
}

Result<std::uint64_t> FileSystemFacade::fileSize(const Uri& uri) const {
    return forward(registry_, uri, [&](FileSystem& files) { return files.fileSize(uri); });
}

Result<FileSystem::Time> FileSystemFacade::lastWriteTime(const Uri& uri) const {
    return forward(registry_, uri, [&](FileSystem& files) { return files.lastWriteTime(uri); });
}

Result<EntryStatus> FileSystemFacade::status(const Uri& uri) const {
    return forward(registry_, uri, [&](FileSystem& files) { return files.status(uri); });
}

Result<void> FileSystemFacade::walk(const Uri& folder, const EntryVisitor& visit, std::uint32_t options) const {
    return forward(registry_, folder, [&](FileSystem& files) { return files.walk(folder, visit, options); });
}

bool FileSystemFacade::matchPattern(std::string_view name, std::string_view pattern) const {
    const FileSystem* files = registry_.defaultFileSystem();
    return files != nullptr && files->matchPattern(name, pattern);
}

Result<std::vector<Uri>> FileSystemFacade::roots() const {
    return forward(registry_, Uri(), [](FileSystem& files) { return files.roots(); });
}

Result<VolumeDetails> FileSystemFacade::volumeInfo(const Uri& uri) const {
    return forward(registry_, uri, [&](FileSystem& files) { return files.volumeInfo(uri); });
}

Result<std::shared_ptr<DirectoryWatcher>> FileSystemFacade::monitor(const Uri& folder) {
    return forward(registry_, folder, [&](FileSystem& files) { return files.monitor(folder); });
}

Result<void> FileSystemFacade::setCurrentDirectory(const Uri& folder) {
    return forward(registry_, folder, [&](FileSystem& files) { return files.setCurrentDirectory(folder); });
}

Result<FRefPtr<FStream>> FileSystemFacade::open(const Uri& uri, std::uint32_t mode) {
    return forward(registry_, uri, [&](FileSystem& files) { return files.open(uri, mode); });
}

Result<bool> FileSystemFacade::createDirectory(const Uri& folder) {
    return forward(registry_, folder, [&](FileSystem& files) { return files.createDirectory(folder); });
}

Result<bool> FileSystemFacade::createDirectories(const Uri& folder) {
    return forward(registry_, folder, [&](FileSystem& files) { return files.createDirectories(folder); });
}

Result<Uri> FileSystemFacade::createLink(const Uri& target, const Uri& link) {
    return forward(registry_, link, [&](FileSystem& files) { return files.createLink(target, link); });
}

Result<void> FileSystemFacade::copy(const Uri& from, const Uri& to) {
    return forwardPair(registry_, from, to, [&](FileSystem& files) { return files.copy(from, to); });
}

Result<void> FileSystemFacade::copy(const Uri& from, const Uri& to, Overwrite overwrite) {
    return forwardPair(registry_, from, to, [&](FileSystem& files) { return files.copy(from, to, overwrite); });
}

Result<void> FileSystemFacade::rename(const Uri& from, const Uri& to) {
    return forwardPair(registry_, from, to, [&](FileSystem& files) { return files.rename(from, to); });
}

Result<bool> FileSystemFacade::remove(const Uri& uri) {
    return forward(registry_, uri, [&](FileSystem& files) { return files.remove(uri); });
}

Result<std::uint64_t> FileSystemFacade::removeAll(const Uri& uri) {
    return forward(registry_, uri, [&](FileSystem& files) { return files.removeAll(uri); });
}

Result<void> FileSystemFacade::setLastWriteTime(const Uri& uri, Time time) {
    return forward(registry_, uri, [&](FileSystem& files) { return files.setLastWriteTime(uri, time); });
}

Result<void> FileSystemFacade::moveToTrash(const Uri& uri) {
    return forward(registry_, uri, [&](FileSystem& files) { return files.moveToTrash(uri); });
}

} // namespace tessera
