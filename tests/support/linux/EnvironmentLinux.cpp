#include "support/Environment.h"

#include <cstdlib>

namespace tessera::testing_support {

namespace {

void pointAt(const char* variable, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    setVariable(variable, folder.string());
}

} // namespace

void setVariable(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void unsetVariable(const std::string& name) {
    unsetenv(name.c_str());
}

void moveSystemFolders(const std::filesystem::path& folder) {
    pointAt("TMPDIR", folder / "tmp");
    pointAt("XDG_DATA_DIRS", folder / "share");
    pointAt("XDG_CONFIG_HOME", folder / "config");
    pointAt("XDG_DATA_HOME", folder / "data");
}

} // namespace tessera::testing_support
