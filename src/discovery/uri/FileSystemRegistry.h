// FileSystemRegistry: which file system serves a URI, by its scheme.
//
// The process's own one is made, race-free, at its first use, with the native file system under the empty scheme and
// under "file". There is no lock: further providers are to be registered before other threads use it. Providers and
// file systems are borrowed and have to outlive their registration.
#pragma once

#include "discovery/uri/Result.h"

#include <map>
#include <string>
#include <string_view>

namespace tessera {

class FileSystem;
class FileSystemProvider;
struct Uri;

class FileSystemRegistry {
public:
    static FileSystemRegistry& getInstance();

    FileSystemRegistry() = default;
    FileSystemRegistry(const FileSystemRegistry&) = delete;
    FileSystemRegistry& operator=(const FileSystemRegistry&) = delete;
    virtual ~FileSystemRegistry() = default;

    // Fails with "no filesystem registered to handle URI".
    virtual Result<FileSystem*> resolve(std::string_view path) const;
    virtual Result<FileSystem*> resolve(const Uri& uri) const;
    // Null when there is none.
    virtual FileSystem* fileSystemForScheme(const std::string& scheme) const;
    // The one of the empty URI, or null.
    virtual FileSystem* defaultFileSystem() const;
    // Replaces what the scheme led to before.
    virtual void registerProvider(const std::string& scheme, FileSystemProvider& provider);
    // Takes out every scheme that leads to it.
    virtual void unregisterProvider(const FileSystemProvider& provider);

private:
    std::map<std::string, FileSystemProvider*> providers_;
};

// Of the process's registry.
FileSystem* defaultFileSystem();

} // namespace tessera
