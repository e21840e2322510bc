#include "persistence/streams/FStream.h"

#include <algorithm>
#include <cstring>

namespace tessera {

FStream::FStream() : hostView_(*this) {}

FStream::FStream(const FStream& other)
    : CmClass(other), FTypedStream(other), fileType_(other.fileType_), hostView_(*this) {}

FStream& FStream::operator=(const FStream& other) {
    FTypedStream::operator=(other);
    fileType_ = other.fileType_;
    return *this;
}

FStream::~FStream() = default;

FResult FStream::queryInterface(const FUIDBytes& uid, void** out) {
    if (uid == IHostStream::iid) {
        addRef();
        *out = static_cast<IHostStream*>(&hostView_);
        return kResultOk;
    }
    return CmClass::queryInterface(uid, out);
}

void FStream::rewind() {
    seek(0, SeekMode::fromStart);
}

bool FStream::flush() {
    return true;
}

void FStream::setWatcher(IStreamWatcher*) {}

std::int64_t FStream::copyFrom(FStream& other, std::int64_t size) {
    char block[kCopyBlockSize];
    std::int64_t done = 0;
    while (done < size) {
        const auto step = static_cast<std::int32_t>(std::min<std::int64_t>(size - done, kCopyBlockSize));
        const std::int32_t count = other.read(block, step);
        if (count <= 0) {
            break;
        }
        const std::int32_t taken = write(block, count);
        done += std::max(taken, 0);
        if (taken < count || count < step) {
            break;
        }
    }
    return done;
}

bool FStream::writeTo(FStream& other) {
    if (tell() != 0) {
        rewind();
    }
    char block[kCopyBlockSize];
    std::int32_t count = kCopyBlockSize;
    while (count == kCopyBlockSize) {
        count = read(block, kCopyBlockSize);
        if (count > 0 && other.write(block, count) < count) {
            return false;
        }
    }
    return true;
}

bool FStream::compareStreams(FStream& a, FStream& b) {
    // One stream has one position: it can't be walked twice at once.
    if (&a == &b) {
        return true;
    }
    a.rewind();
    b.rewind();
    char blockA[kCopyBlockSize];
    char blockB[kCopyBlockSize];
    while (true) {
        const std::int32_t countA = std::max(a.read(blockA, kCopyBlockSize), 0);
        const std::int32_t countB = std::max(b.read(blockB, kCopyBlockSize), 0);
        if (countA != countB || std::memcmp(blockA, blockB, static_cast<std::size_t>(countA)) != 0) {
            return false;
        }
        if (countA == 0) {
            return true;
        }
    }
}

} // namespace tessera
