// Both forms of a path as the tests write them, "none" where there is none.
#pragma once

#include "platform/NativePath.h"

#include <string>
#include <string_view>

namespace tessera::platform {

inline std::string native(std::u16string_view path) {
    return toNativePath(path).value_or("none");
}

inline std::u16string ours(std::string_view path) {
    return fromNativePath(path).value_or(u"none");
}

} // namespace tessera::platform
