// FVariant: one value of a few kinds, as strings, attributes and bound values hand it around.
//
// The type word says what the value is; its owner bit says who frees it. Text with the owner bit lies in a block of the
// C allocator and is freed with the variant, an object with it is released. Without it text and object belong to
// somebody else and must outlive the variant. The bit is the caller's to set; nothing here sets it alone. A variant
// moves and isn't copied. Not synchronised.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

class FVariant {
public:
    static constexpr std::uint16_t kEmpty = 0;
    static constexpr std::uint16_t kInteger = 1;
    static constexpr std::uint16_t kFloat = 2;
    static constexpr std::uint16_t kText8 = 4;
    static constexpr std::uint16_t kObject = 8;
    static constexpr std::uint16_t kOwner = 16;
    static constexpr std::uint16_t kText16 = 32;
    // Questions for the type leave the owner bit out.
    static constexpr std::uint16_t kTypeMask = 0xffef;

    FVariant() = default;
    explicit FVariant(std::int64_t value) { setInteger(value); }
    explicit FVariant(double value) { setFloat(value); }
    explicit FVariant(const char* text) { setText8(text, 0); }
    explicit FVariant(const char16_t* text) { setText16(text, 0); }
    explicit FVariant(IBaseUnknown* object) { setObject(object, 0); }
    FVariant(const FVariant&) = delete;
    FVariant& operator=(const FVariant&) = delete;
    FVariant(FVariant&& other) noexcept;
    FVariant& operator=(FVariant&& other) noexcept;
    ~FVariant() { clear(); }

    std::uint16_t typeWord() const { return type_; }
    std::uint16_t type() const { return type_ & kTypeMask; }
    bool isOwner() const { return (type_ & kOwner) != 0; }

    // The value as it stands when it is of that type, otherwise 0 or null.
    std::int64_t integer() const { return type() == kInteger ? value_.integer : 0; }
    double real() const { return type() == kFloat ? value_.real : 0.0; }
    const char* text8() const { return type() == kText8 ? value_.text8 : nullptr; }
    const char16_t* text16() const { return type() == kText16 ? value_.text16 : nullptr; }
    IBaseUnknown* object() const { return type() == kObject ? value_.object : nullptr; }

    // Each clears first. ownerBit is 0 or kOwner; with kOwner the variant takes the block or the reference over.
    void setInteger(std::int64_t value);
    void setFloat(double value);
    void setText8(const char* text, std::uint16_t ownerBit);
    void setText16(const char16_t* text, std::uint16_t ownerBit);
    void setObject(IBaseUnknown* object, std::uint16_t ownerBit);

    // Frees or releases what the variant owns and leaves it empty, all bytes zero.
    void clear();

private:
    union Value {
        std::int64_t integer;
        double real;
        const char* text8;
        const char16_t* text16;
        IBaseUnknown* object;
    };

    std::uint16_t type_ = kEmpty;
    Value value_ = {0};
};

static_assert(sizeof(FVariant) == 16 && std::is_standard_layout_v<FVariant>);

} // namespace tessera
