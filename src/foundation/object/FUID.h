// FUID: the 16-byte identifier as a value, with its text forms.
//
// The bytes stand in the order of a Windows GUID (see FUIDBytes, which is what crosses a binary interface). An all-zero
// identifier is "not valid". The parsers leave the value as it was when they give false.
#pragma once

#include "foundation/object/FUIDBytes.h"

#include <cstddef>

namespace tessera {

class FUID {
public:
    // Text forms with their closing zero.
    static constexpr std::size_t kTextSize = 33;
    static constexpr std::size_t kRegistryTextSize = 39;
    static constexpr std::size_t kPrintSize = 96;

    FUID() = default;
    FUID(const FUIDBytes& bytes) : bytes_(bytes) {}
    FUID(std::uint32_t l1, std::uint32_t l2, std::uint32_t l3, std::uint32_t l4) { fromLongs(l1, l2, l3, l4); }
    FUID(const FUID&) = default;
    FUID& operator=(const FUID&) = default;
    virtual ~FUID() = default;

    const FUIDBytes& bytes() const { return bytes_; }
    operator const FUIDBytes&() const { return bytes_; }

    // A fresh random identifier; false, and the value unchanged, when the platform has none to give.
    bool generate();
    bool isValid() const;

    void setBytes(const FUIDBytes& bytes) { bytes_ = bytes; }

    // The four words as they are written in source texts: l1 is the first word, l2 the two 16-bit words with the first
    // one high, l3 and l4 the last eight bytes, highest first.
    void getLongs(std::uint32_t& l1, std::uint32_t& l2, std::uint32_t& l3, std::uint32_t& l4) const;
    void fromLongs(std::uint32_t l1, std::uint32_t l2, std::uint32_t l3, std::uint32_t l4);

    // 32 hexadecimal digits, the words as numbers. fromString looks at nothing but the length: a group that can't be
    // read is 0.
    void toString(char* buffer) const;
    bool fromString(const char* text);
    // {xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}. fromRegistryString never looks at braces and dashes, and accepts any 38
    // characters.
    void toRegistryString(char* buffer) const;
    bool fromRegistryString(const char* text);

    enum class PrintFormat : int { inlineUid = 0, declareUid = 1, constructor = 2, declareClassIid = 3 };
    // The four words as a line of source text. A null buffer sends the line, with a line feed, to the debug output.
    void print(PrintFormat format, char* buffer) const;

    friend bool operator==(const FUID& a, const FUID& b) { return a.bytes_ == b.bytes_; }
    friend bool operator==(const FUID& a, const FUIDBytes& b) { return a.bytes_ == b; }

private:
    FUIDBytes bytes_;
};

} // namespace tessera
