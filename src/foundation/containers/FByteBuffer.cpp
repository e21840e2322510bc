#include "foundation/containers/FByteBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>

namespace tessera {

FByteBuffer::FByteBuffer(const FByteBuffer& other) : delta_(other.delta_) {
    *this = other;
}

FByteBuffer& FByteBuffer::operator=(const FByteBuffer& other) {
    if (this == &other) {
        return *this;
    }
    clear();
    delta_ = other.delta_;
    if (other.size_ > 0 && setSize(other.size_)) {
        std::memcpy(data_, other.data_, static_cast<std::size_t>(size_));
        fill_ = other.fill_;
    }
    return *this;
}

FByteBuffer::~FByteBuffer() {
    std::free(data_);
}

bool FByteBuffer::setSize(std::int32_t size) {
    if (size <= 0) {
        if (size == 0) {
            clear();
        }
        return size == 0;
    }
    void* block = std::realloc(data_, static_cast<std::size_t>(size));
    if (block == nullptr) {
        return false;
    }
    data_ = static_cast<std::uint8_t*>(block);
    if (size > size_) {
        // What the heap left in there must not be mistaken for data.
        std::memset(data_ + size_, 0, static_cast<std::size_t>(size - size_));
    }
    size_ = size;
    fill_ = std::min(fill_, size);
    return true;
}

bool FByteBuffer::setFill(std::int32_t fill) {
    if (fill < 0 || fill > size_) {
        return false;
    }
    fill_ = fill;
    return true;
}

bool FByteBuffer::append(const void* bytes, std::int32_t count) {
    if (count < 0 || bytes == nullptr || count > std::numeric_limits<std::int32_t>::max() - fill_) {
        return false;
    }
    const auto* source = static_cast<const std::uint8_t*>(bytes);
    const bool own = data_ != nullptr && std::less_equal<>()(data_, source) && std::less<>()(source, data_ + size_);
    const std::ptrdiff_t offset = own ? source - data_ : 0;
    const std::int32_t needed = fill_ + count;
    if (needed > size_ && !setSize(roundedUp(needed))) {
        return false;
    }
    if (count > 0) {
        // A piece of this very buffer has moved along with it.
        std::memmove(data_ + fill_, own ? data_ + offset : source, static_cast<std::size_t>(count));
    }
    fill_ = needed;
    return true;
}

void FByteBuffer::clear() {
    std::free(data_);
    data_ = nullptr;
    size_ = 0;
    fill_ = 0;
}

std::int32_t FByteBuffer::roundedUp(std::int32_t size) const {
    if (delta_ <= 0) {
        return size;
    }
    const std::int64_t rounded = (static_cast<std::int64_t>(size) + delta_ - 1) / delta_ * delta_;
    return rounded <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(rounded) : size;
}

} // namespace tessera
