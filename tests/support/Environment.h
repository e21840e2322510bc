// Environment: the variables of this process, and what they move. Not for use while other threads read them.
#pragma once

#include <filesystem>
#include <string>

namespace tessera::testing_support {

void setVariable(const std::string& name, const std::string& value);
void unsetVariable(const std::string& name);

// From now on the system's folders that the environment can move lie in this one: that for temporary files on every
// system, those for settings and data on some.
void moveSystemFolders(const std::filesystem::path& folder);

// A new folder among the temporary files, by a name that begins so.
std::filesystem::path makeTemporaryFolder(const std::string& beginning);

} // namespace tessera::testing_support
