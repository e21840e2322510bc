// What a process has got from the one that started it and no argument tells of; for the helper of the tests.
#pragma once

#include <iosfwd>

namespace tessera::platform {

// In lines "name=value"; which ones, each side's tests know.
void reportInheritedThings(std::ostream& out);

} // namespace tessera::platform
