#include "acceptance/ExportedNames.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace tessera::acceptance {

std::set<std::string> exportedNames(const std::string& utf8Path) {
    std::set<std::string> names;
    FILE* const list = popen(("nm --dynamic --defined-only --format=posix \"" + utf8Path + "\"").c_str(), "r");
    if (list == nullptr) {
        ADD_FAILURE() << "nm can't be started";
        return names;
    }
    char line[512];
    while (std::fgets(line, sizeof line, list) != nullptr) {
        names.insert(std::string(line, std::strcspn(line, " \n")));
    }
    EXPECT_EQ(pclose(list), 0);
    return names;
}

} // namespace tessera::acceptance
