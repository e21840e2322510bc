// The main of every test program. It moves everything that the environment can move into a folder of this run, before
// anything of ours asks for it, and removes the folder again: no test meets the user's own files or another test's.
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace tessera::testing_support;

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const std::filesystem::path run = makeTemporaryFolder("tesx-test-");
    moveSystemFolders(run);
    const int result = RUN_ALL_TESTS();
    std::error_code ignored;
    std::filesystem::remove_all(run, ignored);
    return result;
}
