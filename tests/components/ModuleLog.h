// ModuleLog: what the test modules have noted since it was made, line by line; see TestModule.cpp.
#pragma once

#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <fstream>
#include <string>
#include <vector>

namespace tessera::test {

class ModuleLog {
public:
    std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        std::ifstream file(path_);
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    // Empties it.
    void forget() { std::ofstream(path_, std::ios::trunc); }

private:
    testing_support::ScratchFolder folder_;
    std::string path_ = (folder_.path() / "log").string();
    testing_support::ScopedEnvironment variable_{"TESX_TEST_MODULE_LOG", path_.c_str()};
};

} // namespace tessera::test
