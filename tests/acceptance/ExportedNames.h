// exportedNames: what a library lets others find in it, by other means than looking for it.
#pragma once

#include <set>
#include <string>

namespace tessera::acceptance {

// Empty, with a failure of the test, when the file can't be looked into.
std::set<std::string> exportedNames(const std::string& utf8Path);

} // namespace tessera::acceptance
