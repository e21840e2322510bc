// IVirtualFileSystem: what a component of the category "VirtualFileSystem" offers: it understands one archive format.
//
// A component is made per mounted archive, initialised once, and asked from one thread at a time. Results are status
// codes, kResultOk for success. Paths are 16-bit text ended by NUL, relative to the archive's root, with backslashes
// between their parts; the root itself is the empty text. What comes out as an interface carries one reference for the
// caller.
#pragma once

#include "foundation/object/IBaseUnknown.h"
#include "persistence/paths/HostTypeRecord.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct IHostStream;

// What an operation answers that the component has no code for.
inline constexpr FResult kResultNotProvided = static_cast<FResult>(0x80004001);

// One entry of a folder within the archive.
struct VirtualEntry {
    // Without the folder; cut at 259 characters, with a NUL.
    char16_t name[260];
    // As PathKind.
    std::int16_t kind;
    std::int64_t size;
};

static_assert(offsetof(VirtualEntry, name) == 0);
static_assert(offsetof(VirtualEntry, kind) == 520);
static_assert(offsetof(VirtualEntry, size) == 528);
static_assert(sizeof(VirtualEntry) == 536);
static_assert(std::is_standard_layout_v<VirtualEntry> && std::is_trivial_v<VirtualEntry>);

struct IVirtualIterator : IBaseUnknown {
    static constexpr FUIDBytes iid = "{5E0C9A47-1B7D-4F62-A3C8-90D2E6B1745F}"_uid;

    // kResultFalse behind the last entry.
    virtual FResult next(VirtualEntry* entry) = 0;
    virtual FResult reset() = 0;

protected:
    ~IVirtualIterator() = default;
};

// An opened archive.
struct IVirtualVolume : IBaseUnknown {
    static constexpr FUIDBytes iid = "{B7A1D6E2-4C39-4D0B-8E15-6F2A83C9D071}"_uid;

    // mode is a word of FileOpenMode.
    virtual FResult openFile(const char16_t* path, std::uint32_t mode, IHostStream** out) = 0;
    // kResultOk when it is there. The last two take the kind (as PathKind) and the time of the last change, in seconds
    // since 1970; either may be null.
    virtual FResult exists(const char16_t* path, std::int16_t* kind, std::int64_t* modified) = 0;
    virtual FResult getSize(const char16_t* path, std::int64_t* size) = 0;
    // The entries of a folder; null for none. With recursive those of its sub-folders as well, each behind its folder,
    // with names that are relative to the folder.
    virtual IVirtualIterator* iterate(bool recursive, const char16_t* path) = 0;
    virtual FResult createFile(const char16_t* path, std::uint32_t mode, IHostStream** out) = 0;
    virtual FResult deleteFile(const char16_t* path) = 0;
    virtual FResult createFolder(const char16_t* path) = 0;
    // With all that it holds.
    virtual FResult deleteFolder(const char16_t* path) = 0;
    // newPath is relative to the root as well.
    virtual FResult rename(const char16_t* path, const char16_t* newPath) = 0;

protected:
    ~IVirtualVolume() = default;
};

struct IVirtualFileSystem : IBaseUnknown {
    static constexpr FUIDBytes iid = "{296329B0-CE4E-4634-B7CF-71B38C1E9FCF}"_uid;

    // context is the program's, and may be null.
    virtual FResult initialize(IBaseUnknown* context) = 0;
    // The type of the archives that it understands.
    virtual FResult getFileType(HostTypeRecord* record) = 0;
    // kResultOk means yes; keys "CanRead", "CanWrite", "CanIterate".
    virtual FResult isSupported(const char* key) = 0;
    // The stream stands at its start; the volume may keep a reference of it. Null when it holds no such archive.
    virtual IVirtualVolume* openVolume(IHostStream* stream) = 0;

protected:
    ~IVirtualFileSystem() = default;
};

} // namespace tessera
