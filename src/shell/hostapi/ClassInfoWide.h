// ClassInfoWide: ClassInfoEx with 16-bit name, vendor and versions, 696 bytes. Texts are zero-padded; one that fills
// its field has no zero.
#pragma once

#include "foundation/object/FUIDBytes.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct ClassInfoWide {
    FUIDBytes classId;
    std::int32_t cardinality = 0;
    char category[32] = {};
    char16_t name[64] = {};
    std::uint32_t classFlags = 0;
    char subcategories[128] = {};
    char16_t vendor[64] = {};
    char16_t version[64] = {};
    char16_t sdkVersion[64] = {};
};

static_assert(sizeof(ClassInfoWide) == 696 && alignof(ClassInfoWide) == 4);
static_assert(offsetof(ClassInfoWide, cardinality) == 16 && offsetof(ClassInfoWide, category) == 20);
static_assert(offsetof(ClassInfoWide, name) == 52 && offsetof(ClassInfoWide, classFlags) == 180);
static_assert(offsetof(ClassInfoWide, subcategories) == 184 && offsetof(ClassInfoWide, vendor) == 312);
static_assert(offsetof(ClassInfoWide, version) == 440 && offsetof(ClassInfoWide, sdkVersion) == 568);
static_assert(std::is_standard_layout_v<ClassInfoWide> && std::is_trivially_copyable_v<ClassInfoWide>);

} // namespace tessera
