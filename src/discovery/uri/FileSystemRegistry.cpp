#include "discovery/uri/FileSystemRegistry.h"

#include "discovery/uri/FileSystemProvider.h"
#include "discovery/uri/NativeFileSystem.h"

namespace tessera {

namespace {

class NativeFileSystemProvider : public FileSystemProvider {
public:
    FileSystem* fileSystem(const Uri&) override { return &fileSystem_; }

private:
    NativeFileSystem fileSystem_;
};

// Never destroyed: exit handlers of others may still have files to remove.
struct ProcessRegistry {
    ProcessRegistry() {
        registry.registerProvider("", provider);
        registry.registerProvider("file", provider);
    }

    NativeFileSystemProvider provider;
    FileSystemRegistry registry;
};

} // namespace

FileSystemRegistry& FileSystemRegistry::getInstance() {
    static auto& process = *new ProcessRegistry;
    return process.registry;
}

Result<FileSystem*> FileSystemRegistry::resolve(std::string_view path) const {
    return resolve(Uri::fromPath(path));
}

Result<FileSystem*> FileSystemRegistry::resolve(const Uri& uri) const {
    const auto found = providers_.find(uri.scheme);
    FileSystem* fileSystem = found != providers_.end() ? found->second->fileSystem(uri) : nullptr;
    if (fileSystem == nullptr) {
        return Error("no filesystem registered to handle URI");
    }
    return fileSystem;
}

FileSystem* FileSystemRegistry::fileSystemForScheme(const std::string& scheme) const {
    Uri uri;
    uri.scheme = scheme;
    return resolve(uri).valueOr(nullptr);
}

FileSystem* FileSystemRegistry::defaultFileSystem() const {
    return resolve(Uri()).valueOr(nullptr);
}

void FileSystemRegistry::registerProvider(const std::string& scheme, FileSystemProvider& provider) {
    providers_[scheme] = &provider;
}

void FileSystemRegistry::unregisterProvider(const FileSystemProvider& provider) {
    std::erase_if(providers_, [&provider](const auto& entry) { return entry.second == &provider; });
}

FileSystem* defaultFileSystem() {
    return FileSystemRegistry::getInstance().defaultFileSystem();
}

} // namespace tessera
