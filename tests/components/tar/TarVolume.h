// TarVolume: a tar archive, read through libarchive, as a volume.
//
// Its table of contents is read once, when it is opened: memory grows with the number of entries and the length of
// their names alone. A file's bytes are read when it is opened, up to kLargestFile. Entries that are neither file nor
// folder, and names that lead out of the archive or have no 16-bit form, are left out. A later entry of the same name
// takes the place of an earlier one, as in any tar. Nothing can be changed.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/archives/IVirtualFileSystem.h"
#include "persistence/streams/IHostStream.h"
#include "support/Counted.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace tessera::tar {

class TarVolume final : public test::Counted<IVirtualVolume> {
public:
    static constexpr std::int64_t kLargestFile = std::int64_t(1) << 30;

    // Null when the stream holds no tar.
    static TarVolume* open(IHostStream* stream);

    FResult openFile(const char16_t* path, std::uint32_t mode, IHostStream** out) override;
    FResult exists(const char16_t* path, std::int16_t* kind, std::int64_t* modified) override;
    FResult getSize(const char16_t* path, std::int64_t* size) override;
    IVirtualIterator* iterate(bool recursive, const char16_t* path) override;
    FResult createFile(const char16_t* path, std::uint32_t mode, IHostStream** out) override;
    FResult deleteFile(const char16_t* path) override;
    FResult createFolder(const char16_t* path) override;
    FResult deleteFolder(const char16_t* path) override;
    FResult rename(const char16_t* path, const char16_t* newPath) override;

private:
    struct Entry {
        bool isFolder = false;
        std::int64_t size = 0;
        std::int64_t modified = 0;
        std::int64_t ordinal = -1; // among all that the archive holds; -1 for a folder that only names imply
    };

    explicit TarVolume(IHostStream* stream) : stream_(stream) {}
    bool readContents();
    void enter(const std::u16string& path, const Entry& entry);
    const Entry* find(const char16_t* path) const;

    FRefPtr<IHostStream> stream_;
    std::map<std::u16string, Entry> entries_; // by path, without the root
};

} // namespace tessera::tar
