#include "workflow/FrameBlock.h"

#include "shell/hostapi/IAudioStream.h"

#include <algorithm>

namespace tessera {

bool FrameBlock::copy(IAudioStream& source, IAudioStream& target, std::int64_t count) {
    const std::int32_t bytesPerFrame = source.bytesPerFrame();
    if (count > 0 && bytesPerFrame < 1) {
        return false;
    }
    std::int64_t remaining = count;
    while (remaining > 0) {
        ensure(static_cast<std::size_t>(bytesPerFrame));
        const bool isLast = remaining <= kFrames;
        const std::int32_t read = source.read(static_cast<std::int32_t>(std::min(remaining, kFrames)), bytes_.get());
        if (read < 1) {
            return false;
        }
        target.write(read, bytes_.get(), isLast);
        remaining -= read;
    }
    return true;
}

void FrameBlock::ensure(std::size_t bytesPerFrame) {
    const std::size_t needed = bytesPerFrame * static_cast<std::size_t>(kFrames);
    if (size_ < needed) {
        bytes_ = std::make_unique<std::byte[]>(needed);
        size_ = needed;
    }
}

} // namespace tessera
