#include "persistence/paths/FNPath.h"

#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace tessera {
namespace {

int compareTexts(const char16_t* a, const char16_t* b, bool caseSensitive = false) {
    const FNPath left(a, PathKind::file);
    const FNPath right(b, PathKind::file);
    return FPath::comparePaths(&left, &right, caseSensitive);
}

TEST(FPathOrder, NullComesFirst) {
    const FNPath path(u"a", PathKind::file);
    EXPECT_EQ(FPath::comparePaths(nullptr, nullptr, false), 0);
    EXPECT_LT(FPath::comparePaths(nullptr, &path, false), 0);
    EXPECT_GT(FPath::comparePaths(&path, nullptr, false), 0);
}

TEST(FPathOrder, ComparesTheJoinedTexts) {
    EXPECT_EQ(compareTexts(u"C:\\a\\b", u"c:/A/B"), 0);
    EXPECT_LT(compareTexts(u"C:\\a", u"C:\\b"), 0);
    EXPECT_GT(compareTexts(u"C:\\b", u"C:\\a"), 0);
    EXPECT_LT(compareTexts(u"C:\\a", u"C:\\ab"), 0);
    EXPECT_GT(compareTexts(u"C:\\ab", u"C:\\a"), 0);
    EXPECT_EQ(compareTexts(u"\\\u00e4", u"\\\u00c4"), 0);
    // Split differently, and yet the same text.
    FNPath joined(PathKind::file);
    joined.setName(u"C:\\a\\b");
    const FNPath split(u"C:\\a\\b", PathKind::file);
    EXPECT_EQ(FPath::comparePaths(&joined, &split, true), 0);
}

TEST(FPathOrder, CaseDecidesIfAsked) {
    EXPECT_LT(compareTexts(u"A", u"a", true), 0);
    EXPECT_GT(compareTexts(u"a", u"A", true), 0);
    EXPECT_EQ(compareTexts(u"a", u"A", false), 0);
    // An equal fold goes on: the difference further behind decides.
    EXPECT_LT(compareTexts(u"aX", u"AY", false), 0);
}

TEST(FPathOrder, SeparatorSortsFirst) {
    EXPECT_LT(compareTexts(u"a\\b", u"a b"), 0);
    EXPECT_LT(compareTexts(u"a\\b", u"a-b"), 0);
    EXPECT_GT(compareTexts(u"a b", u"a\\b"), 0);
    EXPECT_LT(compareTexts(u"a\\b", u"a-b", true), 0);
}

TEST(FPathOrder, ContentFollowsItsFolderDirectly) {
    std::vector<std::unique_ptr<FNPath>> paths;
    for (const char16_t* path : {u"C:\\a-b", u"C:\\a\\z", u"C:\\a b", u"C:\\a", u"C:\\ab", u"C:\\a\\b"}) {
        paths.push_back(std::make_unique<FNPath>(path, PathKind::file));
    }
    std::sort(paths.begin(), paths.end(), [](const auto& a, const auto& b) { return a->compare(b.get()) < 0; });
    std::vector<std::u16string> sorted;
    for (const auto& path : paths) {
        sorted.push_back(fullOf(*path));
    }
    EXPECT_EQ(sorted,
              (std::vector<std::u16string>{u"C:\\a", u"C:\\a\\b", u"C:\\a\\z", u"C:\\a b", u"C:\\a-b", u"C:\\ab"}));
}

TEST(FPathOrder, ObjectsCompareWithoutCase) {
    const FNPath a(u"C:\\A", PathKind::file);
    const FNPath b(u"C:\\a", PathKind::folder);
    const CmObject other;
    EXPECT_EQ(a.compare(&b), 0);
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_EQ(a.compare(&other), -1);
    EXPECT_FALSE(a.isEqual(&other));
    EXPECT_FALSE(a.isEqual(nullptr));
}

TEST(FPathOrder, HashRunsOverFolderAndName) {
    // 67 for "C", then (58 + 67 * 64) % 97 = 78 for ":", (92 + 78 * 64) % 97 = 40 for the separator, 38 for "a", 8 for
    // "b".
    const FNPath path(u"C:\\ab", PathKind::file);
    EXPECT_EQ(path.hash(97), 8u);
    EXPECT_EQ(path.hash(1), 0u);
    EXPECT_EQ(path.hash(0), 0u);
    EXPECT_EQ(FNPath(PathKind::file).hash(97), 0u);
}

TEST(FPathOrder, ParentIsAProperPrefixOfWholeComponents) {
    struct Row {
        const char16_t* parent;
        const char16_t* child;
        bool answer;
    };
    const Row rows[] = {
        {u"C:\\a", u"C:\\a\\b", true},  {u"C:\\a", u"C:\\A\\b\\c", true},
        {u"C:\\a", u"C:\\ab", false},   {u"C:\\a", u"C:\\a", false},
        {u"C:\\a\\b", u"C:\\a", false}, {u"C:", u"C:\\a", true},
        {u"C:", u"D:\\a", false},       {u"\\", u"\\a", true},
        {u"\\", u"\\a\\b", true},       {u"\\", u"a", false},
        {u"\\a", u"\\a\\b", true},      {u"a", u"a\\b", true},
    };
    for (const Row& row : rows) {
        const FNPath parent(row.parent, PathKind::folder);
        const FNPath child(row.child, PathKind::file);
        EXPECT_EQ(parent.isParentOf(&child), row.answer) << testing::PrintToString(std::u16string(row.parent)) << " "
                                                         << testing::PrintToString(std::u16string(row.child));
    }
    const FNPath path(u"C:\\a", PathKind::folder);
    EXPECT_FALSE(path.isParentOf(nullptr));
    EXPECT_FALSE(FNPath(PathKind::folder).isParentOf(&path));
}

} // namespace
} // namespace tessera
