// FileChangeKind: what happened to the path of a change notice.
#pragma once

#include <cstdint>

namespace tessera {

enum class FileChangeKind : std::int32_t {
    written = 1,
    deleted = 2,
    renamed = 4,
};

} // namespace tessera
