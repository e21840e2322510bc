// FByteBuffer: a growing block of bytes.
//
// size is what is allocated, fill the part in use, from the front. Appending grows the block to the next multiple of
// delta. Sizes are in bytes, signed, 32 bits. Operations that need memory answer false without it and change nothing.
#pragma once

#include <cstdint>

namespace tessera {

class FByteBuffer {
public:
    static constexpr std::int32_t kDefaultDelta = 4096;

    explicit FByteBuffer(std::int32_t delta = kDefaultDelta) : delta_(delta) {}
    FByteBuffer(const FByteBuffer& other);
    FByteBuffer& operator=(const FByteBuffer& other);
    ~FByteBuffer();

    std::uint8_t* getData() { return data_; }
    const std::uint8_t* getData() const { return data_; }
    std::int32_t getSize() const { return size_; }
    std::int32_t getFill() const { return fill_; }
    std::int32_t getDelta() const { return delta_; }
    void setDelta(std::int32_t delta) { delta_ = delta; }

    // Exactly this size; new bytes are zero, and fill is cut to it. False for a negative one.
    bool setSize(std::int32_t size);
    // False, and unchanged, when negative or beyond size.
    bool setFill(std::int32_t fill);
    // Behind the used part. False for a negative count or null bytes.
    bool append(const void* bytes, std::int32_t count);
    // Frees the block.
    void clear();

private:
    std::int32_t roundedUp(std::int32_t size) const;

    std::uint8_t* data_ = nullptr;
    std::int32_t size_ = 0;
    std::int32_t fill_ = 0;
    std::int32_t delta_;
};

} // namespace tessera
