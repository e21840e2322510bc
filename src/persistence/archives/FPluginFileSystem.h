// FPluginFileSystem: a mounted archive: the volume that a component has opened, as a file system.
//
// Paths are virtual paths in full. What the component can't do, by its own word or because the archive's file is
// read-only, is answered with null, false or -1. Files are opened for reading alone. Answers to the class name
// "FRemovableFileSystem".
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/archives/FRemovableFileSystem.h"
#include "persistence/archives/OpenedArchive.h"

namespace tessera {

class FPluginFileSystem : public FRemovableFileSystem {
public:
    enum Capability : std::uint32_t { canRead = 1, canWrite = 2, canIterate = 4 };
    enum class Access { asTheComponentCan, readOnly };

    // Takes references of all three. The stream is the archive's file, held open for as long as the mount stands.
    FPluginFileSystem(IVirtualVolume& volume, ArchiveComponent& component, FStream* stream, Access access);
    ~FPluginFileSystem() override;

    void close() override;
    std::uint32_t getCapabilities() const { return capabilities_; }

    FStream* createFile(FPath& path, std::uint32_t mode, std::int32_t* error) override;
    FStream* openFile(FPath& path, std::uint32_t mode, std::int32_t* error) override;
    void closeStream(FStream* stream) override;
    bool deleteFile(const FPath& path) override;
    // True as well when the component can't answer.
    bool fileExists(const FPath& path) override;
    // newName is a name in the same folder, or a virtual path into this mount; false for any other text.
    bool rename(FPath& path, const FStringRef& newName) override;
    bool createFolder(const FPath& path) override;
    bool getFileTimes(const FPath& path, std::int64_t& created, std::int64_t& modified) override;
    std::int64_t getFileSize(const FPath& path) override;
    FFileIterator* newIterator(const FPath& folder, bool resolveLinks) override;
    std::int64_t countFiles(const FPath& folder, bool folders, bool recursive, std::int64_t* size) override;
    bool deleteFolder(const FPath& path) override;
    bool folderExists(const FPath& path) override;

private:
    class CountedStream;

    // Whether the mount stands and has the bit.
    bool can(Capability capability) const { return archive_ && (capabilities_ & capability) != 0; }
    FStream* handOut(IHostStream* stream);
    bool change(const FPath& path, FResult (IVirtualVolume::*operation)(const char16_t*));

    FRefPtr<OpenedArchive> archive_;
    std::uint32_t capabilities_ = 0;
};

} // namespace tessera
