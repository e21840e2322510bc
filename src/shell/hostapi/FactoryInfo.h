// FactoryInfo: who made a module, 452 bytes. Texts are 8-bit and zero-padded; one that fills its field has no zero.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct FactoryInfo {
    // In flags: the class records can be had with 16-bit texts as well.
    static constexpr std::int32_t kHasWideRecords = 0x10;

    char vendor[64] = {};
    char url[256] = {};
    char email[128] = {};
    std::int32_t flags = 0;
};

static_assert(sizeof(FactoryInfo) == 452 && alignof(FactoryInfo) == 4);
static_assert(offsetof(FactoryInfo, url) == 64 && offsetof(FactoryInfo, email) == 320);
static_assert(offsetof(FactoryInfo, flags) == 448);
static_assert(std::is_standard_layout_v<FactoryInfo> && std::is_trivially_copyable_v<FactoryInfo>);

} // namespace tessera
