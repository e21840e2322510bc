// What this process holds of the system.
#pragma once

#include <cstddef>

namespace tessera::testing_support {

// The number of its open handles. Asked of the list of all handles, since not every system that runs these programs
// answers the call for a single process.
std::size_t openHandles();

} // namespace tessera::testing_support
