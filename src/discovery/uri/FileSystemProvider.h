// FileSystemProvider: gives the file system for the URIs of the schemes that it is registered under.
#pragma once

namespace tessera {

class FileSystem;
struct Uri;

class FileSystemProvider {
public:
    virtual ~FileSystemProvider() = default;

    // Borrowed; lives as long as the provider. Null when it has none for this URI.
    virtual FileSystem* fileSystem(const Uri& uri) = 0;
};

} // namespace tessera
