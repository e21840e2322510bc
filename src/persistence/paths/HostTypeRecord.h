// HostTypeRecord: a file type as hosts and plug-ins pass it: 76 bytes, texts terminated by NUL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessera {

struct HostTypeRecord {
    // Four characters, the first one in the highest byte.
    std::uint32_t macType;
    // Without the dot.
    char extension[8];
    char name[64];
};

static_assert(sizeof(HostTypeRecord) == 76);
static_assert(offsetof(HostTypeRecord, macType) == 0);
static_assert(offsetof(HostTypeRecord, extension) == 4);
static_assert(offsetof(HostTypeRecord, name) == 12);
static_assert(std::is_standard_layout_v<HostTypeRecord> && std::is_trivial_v<HostTypeRecord>);

} // namespace tessera
