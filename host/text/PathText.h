// pathText: a path of the framework as the host shows it: in the system's own form, as UTF-8.
// Empty where it has none.
#pragma once

#include <string>

namespace tessera {
class FNPath;
}

namespace tessera::host {

std::string pathText(const FNPath& path);

} // namespace tessera::host
