#include "support/Environment.h"

#include <cstdio>
#include <cstdlib>
#include <random>

namespace tessera::testing_support {

std::filesystem::path makeTemporaryFolder(const std::string& beginning) {
    std::random_device random;
    for (;;) {
        const std::filesystem::path folder =
            std::filesystem::temp_directory_path() / (beginning + std::to_string(random()));
        std::error_code error;
        if (std::filesystem::create_directory(folder, error)) {
            return folder;
        }
        if (error) {
            std::fprintf(stderr, "cannot make a folder for tests: %s\n", error.message().c_str());
            std::exit(2);
        }
    }
}

} // namespace tessera::testing_support
