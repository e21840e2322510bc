// FMemoryStream: a stream over a block of memory: its own, growing by pages of 4096 bytes, or a foreign one of fixed
// size.
//
// size is what can be read, allocated what the block holds; both in bytes, at most 2^31 - 1. A foreign block is neither
// written beyond its size nor freed: the attempt sets readOnly and fails, as an allocation that fails does; a read-only
// stream takes no byte any more. read() and write() of a whole stream as an object are a 32-bit count and the bytes.
#pragma once

#include "foundation/object/CmClass.h"
#include "persistence/streams/FStream.h"

#include <cstdint>

namespace tessera {

class FMemoryStream : public CmClass<FMemoryStream, FStream> {
public:
    static FMetaClass metaClass;
    static constexpr std::int32_t kPageSize = 4096;

    FMemoryStream() = default;
    // Works on the caller's memory, which has to outlive the stream.
    FMemoryStream(void* memory, std::int32_t size);
    // The same over memory that isn't to be written: read-only from the start.
    FMemoryStream(const void* memory, std::int32_t size);
    // Copies the bytes; the copy owns its block and stands at its start.
    FMemoryStream(const FMemoryStream& other);
    FMemoryStream(FMemoryStream&& other) noexcept;
    FMemoryStream& operator=(const FMemoryStream& other);
    // Takes the block and leaves the source empty and owning.
    FMemoryStream& operator=(FMemoryStream&& other) noexcept;
    ~FMemoryStream() override;

    CmObject* clone() const override;

    using FStream::read;
    using FStream::write;
    // At the end 0 comes back and the position is set to size.
    std::int32_t read(void* buffer, std::int32_t size) override;
    // A gap between size and position is filled with zeros.
    std::int32_t write(const void* buffer, std::int32_t size) override;
    // Unchecked from the start and from here; from the end a result beyond size stays at size.
    std::int64_t seek(std::int64_t offset, SeekMode mode) override;
    std::int64_t tell() override;
    std::int64_t copyFrom(FStream& other, std::int64_t size) override;

    // The object form: a 32-bit count, negative or short counting as failure, then the bytes. After reading the stream
    // owns its block and stands at its start.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // The bytes, under "Data". Afterwards as behind read.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

    const std::uint8_t* getData() const { return data_; }
    std::uint8_t* getData() { return data_; }
    std::int32_t getSize() const { return size_; }
    std::int32_t getAllocated() const { return allocated_; }
    bool ownsMemory() const { return ownsMemory_; }
    bool isReadOnly() const { return readOnly_; }
    void setReadOnly(bool readOnly) { readOnly_ = readOnly; }

    // Below 1: the block goes, and the position is 0. Otherwise exactly this size; new bytes are zero. False, and
    // read-only from then on, when the block is foreign or there is no memory.
    bool setSize(std::int32_t size);
    // Gives what is allocated beyond size back.
    void truncate();
    // The end is where the stream stands.
    void truncateToCursor();
    // The block now belongs to the caller, who gives it to free() if the stream owned it; the stream is empty and
    // owning. Null when there is none.
    [[nodiscard]] std::uint8_t* detach();

protected:
    std::string_view bytesAhead() const override;

private:
    // Makes size the new size without touching what the block holds.
    bool grow(std::int64_t size);
    bool reach(std::int64_t end);
    bool reallocate(std::int64_t bytes);
    void freeBlock();
    void takeBlock(FMemoryStream& other);
    void copyBlock(const FMemoryStream& other);

    std::uint8_t* data_ = nullptr;
    std::int32_t allocated_ = 0;
    std::int32_t size_ = 0;
    bool ownsMemory_ = true;
    bool readOnly_ = false;
    std::int64_t position_ = 0;
};

} // namespace tessera
