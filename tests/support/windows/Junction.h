// makeJunction: a folder that stands for another one.
#pragma once

#include <filesystem>

namespace tessera::testing_support {

// Null, or why there is none: the system has no such folders, or the volume hasn't.
const char* makeJunction(const std::filesystem::path& path, const std::filesystem::path& target);

} // namespace tessera::testing_support
