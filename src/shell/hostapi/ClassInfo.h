// ClassInfo: one class of a module, 116 bytes. Texts are 8-bit and zero-padded; one that fills its field has no zero.
#pragma once

#include "foundation/object/FUIDBytes.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct ClassInfo {
    FUIDBytes classId;
    std::int32_t cardinality = 0;
    char category[32] = {};
    char name[64] = {};
};

static_assert(sizeof(ClassInfo) == 116 && alignof(ClassInfo) == 4);
static_assert(offsetof(ClassInfo, cardinality) == 16 && offsetof(ClassInfo, category) == 20);
static_assert(offsetof(ClassInfo, name) == 52);
static_assert(std::is_standard_layout_v<ClassInfo> && std::is_trivially_copyable_v<ClassInfo>);

} // namespace tessera
