#include "persistence/streams/FMemoryStream.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

namespace tessera {

namespace {

constexpr std::int64_t kLargestSize = std::numeric_limits<std::int32_t>::max();
// How far reading runs ahead of what the stream has proved to hold, whatever count it announces.
constexpr std::int32_t kTrustedBlock = 64 * 1024;

// Positions are unchecked, and may wrap like any other number.
std::int64_t wrappingSum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

// Single values are what mostly travels, and known sizes copy without a call.
void copyBytes(void* target, const void* source, std::int32_t size) {
    switch (size) {
    case 1:
        std::memcpy(target, source, 1);
        break;
    case 2:
        std::memcpy(target, source, 2);
        break;
    case 4:
        std::memcpy(target, source, 4);
        break;
    case 8:
        std::memcpy(target, source, 8);
        break;
    default:
        std::memcpy(target, source, static_cast<std::size_t>(size));
    }
}

} // namespace

FMemoryStream::FMemoryStream(void* memory, std::int32_t size)
    : data_(static_cast<std::uint8_t*>(memory)), allocated_(size), size_(size), ownsMemory_(false) {}

FMemoryStream::FMemoryStream(const void* memory, std::int32_t size) : FMemoryStream(const_cast<void*>(memory), size) {
    readOnly_ = true;
}

FMemoryStream::FMemoryStream(const FMemoryStream& other) : CmClass(other) {
    copyBlock(other);
}

FMemoryStream::FMemoryStream(FMemoryStream&& other) noexcept : CmClass(other) {
    takeBlock(other);
}

FMemoryStream& FMemoryStream::operator=(const FMemoryStream& other) {
    if (this != &other) {
        FStream::operator=(other);
        freeBlock();
        copyBlock(other);
    }
    return *this;
}

FMemoryStream& FMemoryStream::operator=(FMemoryStream&& other) noexcept {
    if (this != &other) {
        FStream::operator=(other);
        freeBlock();
        takeBlock(other);
    }
    return *this;
}

FMemoryStream::~FMemoryStream() {
    freeBlock();
}

CmObject* FMemoryStream::clone() const {
    return new FMemoryStream(*this);
}

std::int32_t FMemoryStream::read(void* buffer, std::int32_t size) {
    if (position_ < 0) {
        return 0;
    }
    const std::int64_t left = size_ - position_;
    if (left <= 0) {
        position_ = size_;
        return 0;
    }
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    const auto count = static_cast<std::int32_t>(std::min<std::int64_t>(size, left));
    copyBytes(buffer, data_ + position_, count);
    position_ += count;
    return count;
}

std::int32_t FMemoryStream::write(const void* buffer, std::int32_t size) {
    if (readOnly_ || buffer == nullptr || size <= 0 || position_ < 0 || position_ > kLargestSize) {
        return 0;
    }
    const std::int64_t end = position_ + size;
    if ((end > allocated_ || position_ > size_) && !reach(end)) {
        return 0;
    }
    size_ = std::max(size_, static_cast<std::int32_t>(end));
    copyBytes(data_ + position_, buffer, size);
    position_ = end;
    return size;
}

// Room up to the end of a write that doesn't fit what is there; what lies between the old end and the write is zero.
bool FMemoryStream::reach(std::int64_t end) {
    const std::int32_t oldSize = size_;
    if (!grow(end)) {
        return false;
    }
    if (position_ > oldSize) {
        std::memset(data_ + oldSize, 0, static_cast<std::size_t>(position_ - oldSize));
    }
    return true;
}

std::int64_t FMemoryStream::seek(std::int64_t offset, SeekMode mode) {
    switch (mode) {
    case SeekMode::fromStart:
        position_ = offset;
        break;
    case SeekMode::fromHere:
        position_ = wrappingSum(position_, offset);
        break;
    case SeekMode::fromEnd:
        position_ = offset > 0 ? size_ : size_ + offset;
        break;
    }
    return position_;
}

std::int64_t FMemoryStream::tell() {
    return position_;
}

std::int64_t FMemoryStream::copyFrom(FStream& other, std::int64_t size) {
    auto* source = cmCast<FMemoryStream>(static_cast<CmObject*>(&other));
    // Within one stream the block could move in the middle of the copy, and positions would meet.
    if (source == nullptr || source == this || source->position_ < 0) {
        return FStream::copyFrom(other, size);
    }
    const std::int64_t left = source->size_ - source->position_;
    const std::int64_t count = std::min(size, left);
    if (count <= 0) {
        return 0;
    }
    const std::int32_t taken = write(source->data_ + source->position_, static_cast<std::int32_t>(count));
    source->position_ += taken;
    return taken;
}

bool FMemoryStream::read(FStream& stream) {
    freeBlock();
    readOnly_ = false;
    std::int32_t count = 0;
    if (!stream.readInt32(count) || count < 0) {
        return false;
    }
    while (size_ < count) {
        const std::int32_t done = size_;
        const std::int32_t step = std::min(count - done, kTrustedBlock);
        if (!grow(done + step) || stream.read(data_ + done, step) != step) {
            freeBlock();
            return false;
        }
    }
    return true;
}

bool FMemoryStream::write(FStream& stream) const {
    const std::int32_t count = data_ != nullptr ? size_ : 0;
    return stream.writeInt32(count) && (count == 0 || stream.write(data_, count) == count);
}

bool FMemoryStream::setSize(std::int32_t size) {
    if (size < 1) {
        freeBlock();
        return true;
    }
    const std::int32_t oldSize = size_;
    if (size == oldSize) {
        return true;
    }
    if (!grow(size)) {
        return false;
    }
    if (size > oldSize) {
        std::memset(data_ + oldSize, 0, static_cast<std::size_t>(size - oldSize));
    }
    return true;
}

void FMemoryStream::truncate() {
    if (!ownsMemory_ || allocated_ == size_) {
        return;
    }
    if (size_ == 0) {
        std::free(std::exchange(data_, nullptr));
        allocated_ = 0;
        return;
    }
    // A block that can't be made smaller stays as it is.
    if (reallocate(size_)) {
        allocated_ = size_;
    }
}

void FMemoryStream::truncateToCursor() {
    if (position_ <= kLargestSize && setSize(static_cast<std::int32_t>(std::max<std::int64_t>(position_, 0)))) {
        truncate();
    }
}

std::uint8_t* FMemoryStream::detach() {
    allocated_ = 0;
    size_ = 0;
    position_ = 0;
    ownsMemory_ = true;
    return std::exchange(data_, nullptr);
}

std::string_view FMemoryStream::bytesAhead() const {
    if (position_ < 0 || position_ >= size_) {
        return {};
    }
    return {reinterpret_cast<const char*>(data_) + position_, static_cast<std::size_t>(size_ - position_)};
}

bool FMemoryStream::grow(std::int64_t size) {
    if (size > kLargestSize) {
        return false;
    }
    if (!ownsMemory_) {
        readOnly_ = true;
        return false;
    }
    if (size > allocated_) {
        // The last page below 2^31 would round up to it.
        const std::int64_t pages = ((size - 1) / kPageSize + 1) * kPageSize;
        const std::int64_t bytes = std::min(pages, kLargestSize);
        if (!reallocate(bytes)) {
            readOnly_ = true;
            return false;
        }
        allocated_ = static_cast<std::int32_t>(bytes);
    }
    size_ = static_cast<std::int32_t>(size);
    return true;
}

bool FMemoryStream::reallocate(std::int64_t bytes) {
    void* block = std::realloc(data_, static_cast<std::size_t>(bytes));
    if (block == nullptr) {
        return false;
    }
    data_ = static_cast<std::uint8_t*>(block);
    return true;
}

// Foreign memory is let go, and the stream owns what it gets from here on.
void FMemoryStream::freeBlock() {
    const bool owned = ownsMemory_;
    std::uint8_t* block = detach();
    if (owned) {
        std::free(block);
    }
}

void FMemoryStream::takeBlock(FMemoryStream& other) {
    ownsMemory_ = other.ownsMemory_;
    readOnly_ = other.readOnly_;
    allocated_ = other.allocated_;
    size_ = other.size_;
    position_ = other.position_;
    data_ = other.detach();
    other.readOnly_ = false;
}

void FMemoryStream::copyBlock(const FMemoryStream& other) {
    readOnly_ = false;
    if (other.size_ > 0 && grow(other.size_)) {
        std::memcpy(data_, other.data_, static_cast<std::size_t>(other.size_));
    }
}

} // namespace tessera
