// IStreamWatcher: sees every read and write of a stream before it happens, to count or to refuse.
//
// The stream holds a bare pointer: whoever sets a watcher takes it off before it goes. Called on the stream's thread.
#pragma once

#include <cstdint>

namespace tessera {

struct IStreamWatcher {
    // False refuses the transfer, whose result is then -1.
    virtual bool mayTransfer(std::int32_t size) = 0;
    // An admitted transfer of that size is about to be made.
    virtual void advance(std::int32_t size) = 0;

protected:
    ~IStreamWatcher() = default;
};

} // namespace tessera
