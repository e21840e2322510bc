// The main of every test program. It moves everything that the environment can move into a folder of this run, before
// anything of ours asks for it, and removes the folder again: no test meets the user's own files or another test's.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

std::filesystem::path makeRunFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tesx-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        std::perror("cannot make the folder of this test run");
        std::exit(2);
    }
    return pattern;
}

void pointAt(const char* variable, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    setenv(variable, folder.c_str(), 1);
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const std::filesystem::path run = makeRunFolder();
    pointAt("TMPDIR", run / "tmp");
    pointAt("XDG_DATA_DIRS", run / "share");
    pointAt("XDG_CONFIG_HOME", run / "config");
    pointAt("XDG_DATA_HOME", run / "data");
    const int result = RUN_ALL_TESTS();
    std::error_code ignored;
    std::filesystem::remove_all(run, ignored);
    return result;
}
