// IHostStream: a stream as a host or a plug-in sees it, with result codes.
//
// read: kResultOk with the count in *count (0 at the end), kResultFalse for a size below 1. write: kResultOk only when
// the whole block was taken, kResultFalse for a negative size or a short write. seek: modes as in SeekMode;
// kResultFalse for another mode or a negative position. tell: kInvalidArgument for a null position. count and the
// position of seek may be null. A stream is used by one thread at a time.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IHostStream : IBaseUnknown {
    static constexpr FUIDBytes iid = "{5B7D1F6A-3C52-4E0B-9E64-8A1D27C0F3B9}"_uid;

    virtual FResult read(void* buffer, std::int32_t size, std::int32_t* count) = 0;
    virtual FResult write(const void* buffer, std::int32_t size, std::int32_t* count) = 0;
    virtual FResult seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) = 0;
    virtual FResult tell(std::int64_t* position) = 0;

protected:
    ~IHostStream() = default;
};

} // namespace tessera
