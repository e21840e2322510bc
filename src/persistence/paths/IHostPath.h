// IHostPath: a path as a host or a plug-in sees it: a view on the same data as FPath.
//
// Slots 3, 4, 6, 9, 13 and 14 are those of the hosts' file objects. Buffers are of 16-bit units, the NUL included; a
// text that doesn't fit gives kResultFalse and an empty buffer. Paths go in the platform's own form. All else that is
// given what it needs is kResultOk. Main thread.
#pragma once

#include "foundation/object/IBaseUnknown.h"
#include "persistence/paths/HostTypeRecord.h"

#include <cstdint>

namespace tessera {

struct IHostPath : IBaseUnknown {
    static constexpr FUIDBytes iid = "{0AF38EA1-40F2-4B14-965B-F97CA4FF94D1}"_uid;
    // Answered with the same table.
    static constexpr FUIDBytes secondIid = "{ABB7F02D-FB4C-40CC-818F-7450366BE173}"_uid;

    static constexpr int kPathLength = 1024;
    static constexpr int kNameLength = 260;
    static constexpr int kExtensionLength = 32;

    virtual FResult path(char16_t* buffer) = 0;
    virtual FResult setPath(const char16_t* text, std::int32_t isFolder) = 0;
    virtual FResult setName(const char16_t* text) = 0;
    virtual FResult name(char16_t* buffer) = 0;
    // Without its dot; empty where there is none. It doesn't fit from 32 characters on.
    virtual FResult extension(char16_t* buffer) = 0;
    // 0 file, 1 folder, 2 link, 3 container.
    virtual FResult kind(std::int32_t* kind) = 0;
    virtual FResult append(const char16_t* name, std::int32_t isFolder) = 0;
    // A negative kind is found out from the system; a file where nothing is there.
    virtual FResult setKind(std::int32_t kind) = 0;
    // To the folder that holds it, as far as one is known; see FPath.
    virtual FResult ascend() = 0;
    virtual FResult fileType(HostTypeRecord* record) = 0;
    virtual FResult makeUnique() = 0; // kResultFalse when no free name was found
    // One reference for the caller.
    virtual FResult clone(IHostPath** out) = 0;
    virtual FResult setFileType(const HostTypeRecord* record) = 0;

protected:
    ~IHostPath() = default;
};

} // namespace tessera
