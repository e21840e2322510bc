// FTypedStream: values and texts over the raw table, written once for every format.
//
// Values go as they stand in memory (little endian), or byte-reversed when the stream's swap word isn't 0. Each value
// is one raw call. Every operation tells success as a boolean; a read that falls short clears its target. The array
// forms go element by element, stop at the first failure, and a read clears the element that failed, leaving those
// behind it.
#pragma once

#include "persistence/streams/IRawStream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace tessera {

class FString;
class FStringRef;

class FTypedStream : public IRawStream {
public:
    // The longest block that readStr8 takes, its NUL included.
    static constexpr std::int32_t kMaximumStr8Length = 0x40000;

    // 0 for little endian. It belongs to the format of the stream's content and stays for the stream's life.
    std::uint16_t getSwap() const { return swap_; }
    void setSwap(std::uint16_t swap) { swap_ = swap; }

    bool writeChar8(char value) { return put(value); }
    bool readChar8(char& value) { return get(value); }
    bool writeInt8(std::int8_t value) { return put(value); }
    bool readInt8(std::int8_t& value) { return get(value); }
    bool writeUInt8(std::uint8_t value) { return put(value); }
    bool readUInt8(std::uint8_t& value) { return get(value); }
    bool writeInt16(std::int16_t value) { return put(value); }
    bool readInt16(std::int16_t& value) { return get(value); }
    bool writeUInt16(std::uint16_t value) { return put(value); }
    bool readUInt16(std::uint16_t& value) { return get(value); }
    bool writeInt32(std::int32_t value) { return put(value); }
    bool readInt32(std::int32_t& value) { return get(value); }
    bool writeUInt32(std::uint32_t value) { return put(value); }
    bool readUInt32(std::uint32_t& value) { return get(value); }
    bool writeInt64(std::int64_t value) { return put(value); }
    bool readInt64(std::int64_t& value) { return get(value); }
    bool writeUInt64(std::uint64_t value) { return put(value); }
    bool readUInt64(std::uint64_t& value) { return get(value); }
    bool writeFloat(float value) { return put(value); }
    bool readFloat(float& value) { return get(value); }
    bool writeDouble(double value) { return put(value); }
    bool readDouble(double& value) { return get(value); }
    // A 16-bit word, 0 or 1 on the way out; any other word than 0 is true.
    bool writeBool(bool value) { return put<std::uint16_t>(value ? 1 : 0); }
    bool readBool(bool& value);

    bool writeInt16Array(const std::int16_t* values, std::int32_t count) { return putAll(values, count); }
    bool readInt16Array(std::int16_t* values, std::int32_t count) { return getAll(values, count); }
    bool writeUInt16Array(const std::uint16_t* values, std::int32_t count) { return putAll(values, count); }
    bool readUInt16Array(std::uint16_t* values, std::int32_t count) { return getAll(values, count); }
    bool writeInt32Array(const std::int32_t* values, std::int32_t count) { return putAll(values, count); }
    bool readInt32Array(std::int32_t* values, std::int32_t count) { return getAll(values, count); }
    bool writeUInt32Array(const std::uint32_t* values, std::int32_t count) { return putAll(values, count); }
    bool readUInt32Array(std::uint32_t* values, std::int32_t count) { return getAll(values, count); }
    bool writeInt64Array(const std::int64_t* values, std::int32_t count) { return putAll(values, count); }
    bool readInt64Array(std::int64_t* values, std::int32_t count) { return getAll(values, count); }
    bool writeUInt64Array(const std::uint64_t* values, std::int32_t count) { return putAll(values, count); }
    bool readUInt64Array(std::uint64_t* values, std::int32_t count) { return getAll(values, count); }
    bool writeFloatArray(const float* values, std::int32_t count) { return putAll(values, count); }
    bool readFloatArray(float* values, std::int32_t count) { return getAll(values, count); }
    bool writeDoubleArray(const double* values, std::int32_t count) { return putAll(values, count); }
    bool readDoubleArray(double* values, std::int32_t count) { return getAll(values, count); }

    // The bytes of the text, with a NUL behind them if asked. False for a null text.
    bool writeString8(const char* text, bool terminate);
    // The 16-bit units of the text, each reversed under swap, with the terminator if asked. False for a null text.
    bool writeWide(const char16_t* text, bool terminate);

    // A 32-bit length that counts the NUL, the bytes, the NUL. A null text is the length 0 and nothing else.
    bool writeStr8(const char* text);
    // Null when the length is below 1 or above kMaximumStr8Length, or when the text comes short. The block has a NUL of
    // its own behind the bytes that were read.
    std::unique_ptr<char[]> readStr8();

    // Reads up to a line feed or a NUL, which is taken off the stream and not delivered, nor is a carriage return
    // before the line feed. A stream whose bytes don't lie in memory is asked for one at a time: read a file by line
    // through an FMemoryStream. At most size - 1 characters; what doesn't fit is left for the next call. The buffer is
    // always terminated. Gives the length; an empty line and the end of the stream are both 0.
    std::int32_t readLine(char* buffer, std::int32_t size);

    // One text with a closing NUL: ASCII as it is, anything else as UTF-8 behind the bytes EF BB BF.
    bool writeTextLine(const FStringRef& text);
    // A line up to a NUL, a line feed or the end. Text behind EF BB BF comes out as 16-bit text, all other stays 8-bit.
    // False, and an empty text, when the stream has nothing left.
    bool readTextLine(FString& text);

protected:
    // What comes next, as far as it lies in memory: lines are found in it without a call per byte. Empty for streams
    // that have to be read.
    virtual std::string_view bytesAhead() const { return {}; }

    FTypedStream() = default;
    FTypedStream(const FTypedStream&) = default;
    FTypedStream& operator=(const FTypedStream&) = default;
    ~FTypedStream() = default;

private:
    struct LinePart;

    LinePart takeLinePart(std::int32_t room, char* byte);
    template <class T>
    bool put(T value);
    template <class T>
    bool get(T& value);
    template <class T>
    bool putAll(const T* values, std::int32_t count);
    template <class T>
    bool getAll(T* values, std::int32_t count);

    // Right behind the table of the raw operations.
    std::uint16_t swap_ = 0;
};

namespace detail {

template <class T>
T bytesReversed(T value) {
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    std::reverse(bytes, bytes + sizeof(T));
    std::memcpy(&value, bytes, sizeof(T));
    return value;
}

} // namespace detail

template <class T>
bool FTypedStream::put(T value) {
    if (swap_ != 0) {
        value = detail::bytesReversed(value);
    }
    return write(&value, sizeof(T)) == sizeof(T);
}

template <class T>
bool FTypedStream::get(T& value) {
    T raw;
    if (read(&raw, sizeof(T)) != sizeof(T)) {
        value = T();
        return false;
    }
    value = swap_ != 0 ? detail::bytesReversed(raw) : raw;
    return true;
}

template <class T>
bool FTypedStream::putAll(const T* values, std::int32_t count) {
    return std::all_of(values, values + std::max(count, 0), [this](T value) { return put(value); });
}

template <class T>
bool FTypedStream::getAll(T* values, std::int32_t count) {
    return std::all_of(values, values + std::max(count, 0), [this](T& value) { return get(value); });
}

} // namespace tessera
