// FrameBlock: the one buffer through which frames go from a stream to another, and the loop that carries them.
//
// Frames travel as the bytes that the host's streams exchange; no sample is looked at. The buffer holds 16,384 frames,
// zeroed once, so memory is bounded however long the audio is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tessera {

struct IAudioStream;

class FrameBlock {
public:
    static constexpr std::int64_t kFrames = 16384;

    // Reads count frames from where source stands and writes them to target. False when source gives out before: what
    // it gave is written then. A count of 0 is a success.
    bool copy(IAudioStream& source, IAudioStream& target, std::int64_t count);

private:
    void ensure(std::size_t bytesPerFrame);

    std::unique_ptr<std::byte[]> bytes_;
    std::size_t size_ = 0;
};

} // namespace tessera
