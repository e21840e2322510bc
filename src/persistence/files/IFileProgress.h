// IFileProgress: what shows how far the copy of a file is, and may stop it. Called on the thread that copies.
#pragma once

#include <cstdint>

namespace tessera {

class FStringRef;

struct IFileProgress {
    // A file begins. total is in units that keep it inside 31 bits: bytes, for files below 2 GB.
    virtual void begin(const FStringRef& text, std::int32_t total) = 0;
    // So many units are done. False cancels: what has been written goes.
    virtual bool advance(std::int32_t done) = 0;
    // The file is done, cancelled or failed. Once for each begin.
    virtual void end() = 0;

protected:
    ~IFileProgress() = default;
};

} // namespace tessera
