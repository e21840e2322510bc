// The code in docs/framework.md is code of this folder, word for word, so what the page shows is what runs here.
//
// A block of the page stands behind a mark, "<!-- example: NAME -->"; the source has the same lines between two lines
// "// [NAME]".
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tessera::test {
namespace {

using Blocks = std::map<std::string, std::string>;

constexpr std::string_view kPageMark = "<!-- example: ";
constexpr std::string_view kPageMarkEnd = " -->";
constexpr std::string_view kSourceMark = "// [";

std::vector<std::string> linesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

void addBlock(Blocks& blocks, const std::string& name, const std::string& text) {
    EXPECT_TRUE(blocks.emplace(name, text).second) << "two examples are called " << name;
}

// The blocks of C++; each has to have a name.
Blocks blocksOfPage() {
    Blocks blocks;
    const std::vector<std::string> lines = linesOf(FRAMEWORK_PAGE);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] != "```cpp") {
            continue;
        }
        const std::string mark = i > 0 ? lines[i - 1] : std::string();
        const bool named = mark.starts_with(kPageMark) && mark.ends_with(kPageMarkEnd);
        EXPECT_TRUE(named) << "line " << i + 1 << ": code without a mark";
        std::string text;
        while (++i < lines.size() && lines[i] != "```") {
            text += lines[i] + "\n";
        }
        if (named) {
            addBlock(blocks, mark.substr(kPageMark.size(), mark.size() - kPageMark.size() - kPageMarkEnd.size()), text);
        }
    }
    return blocks;
}

void addBlocksOfSource(Blocks& blocks, const std::filesystem::path& path) {
    std::string open;
    std::string text;
    for (const std::string& line : linesOf(path)) {
        if (line.starts_with(kSourceMark) && line.ends_with("]")) {
            const std::string name = line.substr(kSourceMark.size(), line.size() - kSourceMark.size() - 1);
            if (open.empty()) {
                open = name;
                text.clear();
            } else {
                EXPECT_EQ(name, open) << path << ": another example begins before this one ends";
                addBlock(blocks, open, text);
                open.clear();
            }
        } else {
            text += line + "\n";
        }
    }
    EXPECT_EQ(open, "") << path << ": no end";
}

Blocks blocksOfSources() {
    Blocks blocks;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLES)) {
        if (const auto extension = entry.path().extension(); extension == ".cpp" || extension == ".h") {
            addBlocksOfSource(blocks, entry.path());
        }
    }
    return blocks;
}

TEST(FrameworkPage, ShowsTheExamplesThatRunHereWordForWord) {
    const Blocks page = blocksOfPage();
    const Blocks sources = blocksOfSources();
    EXPECT_GE(page.size(), 20u);
    for (const auto& [name, text] : page) {
        const auto found = sources.find(name);
        ASSERT_NE(found, sources.end()) << "no source has an example " << name;
        EXPECT_EQ(text, found->second) << name;
    }
}

TEST(FrameworkPage, LeavesNoExampleOut) {
    const Blocks page = blocksOfPage();
    for (const auto& [name, text] : blocksOfSources()) {
        EXPECT_TRUE(page.contains(name)) << name;
    }
}

} // namespace
} // namespace tessera::test
