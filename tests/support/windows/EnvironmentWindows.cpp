#include "support/Environment.h"

#include <cstdlib>

namespace tessera::testing_support {

void setVariable(const std::string& name, const std::string& value) {
    _putenv_s(name.c_str(), value.c_str());
}

void unsetVariable(const std::string& name) {
    _putenv_s(name.c_str(), "");
}

// The folders for settings and data are the user's profile, which no variable moves.
void moveSystemFolders(const std::filesystem::path& folder) {
    const std::filesystem::path temporary = folder / "tmp";
    std::filesystem::create_directories(temporary);
    _wputenv_s(L"TMP", temporary.c_str());
    _wputenv_s(L"TEMP", temporary.c_str());
}

} // namespace tessera::testing_support
