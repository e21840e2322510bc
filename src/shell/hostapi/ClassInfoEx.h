// ClassInfoEx: one class of a module with all that is known of it, 440 bytes. It starts with the fields of ClassInfo.
// Texts are 8-bit and zero-padded; one that fills its field has no zero.
#pragma once

#include "foundation/object/FUIDBytes.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct ClassInfoEx {
    FUIDBytes classId;
    std::int32_t cardinality = 0;
    char category[32] = {};
    char name[64] = {};
    std::uint32_t classFlags = 0;
    char subcategories[128] = {};
    char vendor[64] = {};
    char version[64] = {};
    char sdkVersion[64] = {};
};

static_assert(sizeof(ClassInfoEx) == 440 && alignof(ClassInfoEx) == 4);
static_assert(offsetof(ClassInfoEx, cardinality) == 16 && offsetof(ClassInfoEx, category) == 20);
static_assert(offsetof(ClassInfoEx, name) == 52 && offsetof(ClassInfoEx, classFlags) == 116);
static_assert(offsetof(ClassInfoEx, subcategories) == 120 && offsetof(ClassInfoEx, vendor) == 248);
static_assert(offsetof(ClassInfoEx, version) == 312 && offsetof(ClassInfoEx, sdkVersion) == 376);
static_assert(std::is_standard_layout_v<ClassInfoEx> && std::is_trivially_copyable_v<ClassInfoEx>);

} // namespace tessera
