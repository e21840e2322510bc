// IHostFile: a path of the host: a file, or a folder until a name is appended to it. Texts are 16-bit, zero-
// terminated, in the platform's own form. A caller's buffer has room for kHostPathUnits units; a longer path gives
// the empty text. No file is touched but by makeUnique, which looks.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

// Units of the buffers that hosts write paths and names into, the closing zero included.
inline constexpr std::int32_t kHostPathUnits = 1024;

struct IHostFile : IBaseUnknown {
    // Slot 3. Main thread. Writes the full path.
    virtual void path(char16_t* buffer) = 0;

    // Slot 4. Main thread. Takes over a copy of the path. kInvalidArgument for a null or empty one.
    virtual FResult setPath(const char16_t* path, std::int32_t isFolder) = 0;

    virtual void reserved5() = 0;

    // Slot 6. Main thread. Writes the last component, with its extension.
    virtual void name(char16_t* buffer) = 0;

    virtual void reserved7() = 0;
    virtual void reserved8() = 0;

    // Slot 9. Main thread. Goes down to a file or folder of that name. kResultFalse if this is a file,
    // kInvalidArgument for a null or empty name.
    virtual FResult append(const char16_t* name, std::int32_t isFolder) = 0;

    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;

    // Slot 13. Main thread. Changes the name, where needed, to one that no existing file has; the extension stays.
    // Anything but kResultOk: no such name, and the path is as it was.
    virtual FResult makeUnique() = 0;

    // Slot 14. Main thread. An independent IHostFile of the same path in *out, with one reference that belongs to the
    // caller.
    virtual FResult clone(void** out) = 0;

protected:
    ~IHostFile() = default;
};

} // namespace tessera
