#include "foundation/containers/CmBuffer.h"
#include "persistence/streams/FStream.h"

#include <algorithm>

// The 32-bit size, the 32-bit fill, then size bytes.
namespace tessera {

namespace {

// No more memory than this ahead of what has really come: the size in a broken stream may be anything.
constexpr std::int32_t kReadAhead = 64 * 1024;

bool writeZeros(FStream& stream, std::int32_t count) {
    constexpr std::uint8_t zeros[1024] = {};
    while (count > 0) {
        const std::int32_t block = std::min<std::int32_t>(count, sizeof zeros);
        if (stream.write(zeros, block) != block) {
            return false;
        }
        count -= block;
    }
    return true;
}

bool readBytes(FStream& stream, FByteBuffer& buffer, std::int32_t size) {
    for (std::int32_t done = 0; done < size;) {
        const std::int32_t block = std::min(size - done, kReadAhead);
        if (!buffer.setSize(done + block) || stream.read(buffer.getData() + done, block) != block) {
            return false;
        }
        done += block;
    }
    return true;
}

} // namespace

bool CmBuffer::read(FStream& stream) {
    clear();
    std::int32_t size = 0;
    std::int32_t fill = 0;
    if (!stream.readInt32(size) || !stream.readInt32(fill) || size < 0 || fill < 0 || fill > size) {
        return false;
    }
    if (!readBytes(stream, *this, size)) {
        clear();
        return false;
    }
    return setFill(fill);
}

bool CmBuffer::write(FStream& stream) const {
    // Behind the used part may stand what the buffer held before: it stays in the process.
    return stream.writeInt32(getSize()) && stream.writeInt32(getFill()) &&
           (getFill() == 0 || stream.write(getData(), getFill()) == getFill()) &&
           writeZeros(stream, getSize() - getFill());
}

} // namespace tessera
