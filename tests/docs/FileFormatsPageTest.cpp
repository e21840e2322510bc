// Each block of docs/file-formats.md is an example with a name, and some test asks for it by that name.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

namespace tessera::test {
namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::set<std::string> examplesOfPage() {
    const std::string start = "<!-- example: ";
    const std::string end = " -->";
    std::istringstream lines(contentOf(FILE_FORMATS));
    std::set<std::string> names;
    std::string before;
    bool inBlock = false;
    for (std::string line; std::getline(lines, line); before = line) {
        if (!line.starts_with("```")) {
            continue;
        }
        inBlock = !inBlock;
        if (!inBlock) {
            continue;
        }
        if (before.starts_with(start) && before.ends_with(end)) {
            const std::string name = before.substr(start.size(), before.size() - start.size() - end.size());
            EXPECT_TRUE(names.insert(name).second) << "two examples are called " << name;
        } else {
            ADD_FAILURE() << "a block without a mark, behind: " << before;
        }
    }
    return names;
}

// The tests that know the page, as one text.
std::string testsOfPage() {
    std::string all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(TESTS)) {
        if (entry.path().extension() == ".cpp") {
            const std::string text = contentOf(entry.path());
            if (text.find("support/PageExample.h") != std::string::npos) {
                all += text;
            }
        }
    }
    return all;
}

TEST(FileFormatsPage, EachExampleIsReadByATest) {
    const std::set<std::string> names = examplesOfPage();
    EXPECT_GE(names.size(), 15u);
    const std::string tests = testsOfPage();
    for (const std::string& name : names) {
        EXPECT_NE(tests.find("(\"" + name + "\")"), std::string::npos) << "no test reads " << name;
    }
}

} // namespace
} // namespace tessera::test
