// AttributeValue: a tagged value as it crosses to the host's attribute lists, 16 bytes: 32-bit flags at 0, the payload
// at
// 8. What a pointer in it points at stays the property of whoever passes the value, unless kOwned is set.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct AttributeValue {
    static constexpr std::uint32_t kDouble = 2;
    static constexpr std::uint32_t kText8 = 4;
    static constexpr std::uint32_t kObject = 8;
    // With kText8, kObject or kText16: the value owns what it points at.
    static constexpr std::uint32_t kOwned = 16;
    static constexpr std::uint32_t kText16 = 32;

    std::uint32_t flags = 0;
    std::uint32_t padding = 0;
    union {
        double number = 0;
        const char* text8;
        const char16_t* text16;
        IBaseUnknown* object;
    };
};

static_assert(sizeof(AttributeValue) == 16 && alignof(AttributeValue) == 8);
static_assert(offsetof(AttributeValue, flags) == 0 && offsetof(AttributeValue, number) == 8);
static_assert(offsetof(AttributeValue, text8) == 8 && offsetof(AttributeValue, text16) == 8);
static_assert(offsetof(AttributeValue, object) == 8);
static_assert(std::is_standard_layout_v<AttributeValue> && std::is_trivially_copyable_v<AttributeValue>);

} // namespace tessera
