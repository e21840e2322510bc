#include "persistence/paths/FNPath.h"

#include "foundation/object/FRefPtr.h"
#include "platform/NativePath.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

struct Row {
    const char16_t* base;
    const char16_t* relative;
    const char16_t* absolute;
};

constexpr Row kBothWays[] = {
    {u"C:\\a\\b", u"c.txt", u"C:\\a\\b\\c.txt"},
    {u"C:\\a\\b", u"c\\d.txt", u"C:\\a\\b\\c\\d.txt"},
    {u"C:\\a\\b", u"..\\c.txt", u"C:\\a\\c.txt"},
    {u"C:\\a\\b", u"..\\..\\c\\d.txt", u"C:\\c\\d.txt"},
    {u"C:\\a\\b", u"..\\x\\y\\z.txt", u"C:\\a\\x\\y\\z.txt"},
    {u"C:\\a\\b", u".", u"C:\\a\\b"},
    {u"C:", u"a", u"C:\\a"},
    {u"C:", u"a\\b", u"C:\\a\\b"},
    {u"\\a\\b", u"c", u"\\a\\b\\c"},
    {u"\\a\\b", u"..\\..\\c", u"\\c"},
    {u"\\", u"a\\b", u"\\a\\b"},
    {u"\\a", u".", u"\\a"},
};

TEST(FPathRelative, ResolvesUnderTheBase) {
    for (const Row& row : kBothWays) {
        const FNPath base(row.base, PathKind::folder);
        const FNPath relative(row.relative, PathKind::file);
        const auto absolute = FRefPtr<FPath>::adopt(relative.resolveRelative(base));
        ASSERT_TRUE(absolute) << testing::PrintToString(std::u16string(row.relative));
        EXPECT_EQ(fullOf(*absolute), row.absolute);
        EXPECT_TRUE(absolute->isA("FNPath"));
    }
}

TEST(FPathRelative, MakesTheWayFromTheBase) {
    for (const Row& row : kBothWays) {
        const FNPath base(row.base, PathKind::folder);
        FNPath path(row.absolute, PathKind::file);
        // A single separator begins an absolute path where there are no drives.
        const bool isAbsolute = row.absolute[0] != u'\\' || platform::hasSingleRoot();
        EXPECT_EQ(path.makeRelative(&base), isAbsolute) << testing::PrintToString(std::u16string(row.absolute));
        EXPECT_EQ(fullOf(path), isAbsolute ? row.relative : row.absolute);
    }
}

TEST(FPathRelative, TwoDotsAloneAscend) {
    const FNPath base(u"C:\\a\\b\\c", PathKind::folder);
    const auto up = FRefPtr<FPath>::adopt(FNPath(u"..", PathKind::folder).resolveRelative(base));
    EXPECT_EQ(fullOf(*up), u"C:\\a\\b");
    const auto twice = FRefPtr<FPath>::adopt(FNPath(u"..\\..", PathKind::folder).resolveRelative(base));
    EXPECT_EQ(fullOf(*twice), u"C:\\a");
    const auto here = FRefPtr<FPath>::adopt(FNPath(u"..\\.", PathKind::folder).resolveRelative(base));
    EXPECT_EQ(fullOf(*here), u"C:\\a\\b");
}

TEST(FPathRelative, ResolvingTakesKindAndTypeAlong) {
    const FNPath base(u"C:\\a", PathKind::folder);
    FNPath relative(u"b.wav", PathKind::container);
    relative.setFileType(FFileType("Wave", "wav"));
    const auto absolute = FRefPtr<FPath>::adopt(relative.resolveRelative(base));
    EXPECT_TRUE(absolute->isContainer());
    EXPECT_EQ(text(absolute->fileType().getDosType()), u"wav");
    EXPECT_TRUE(relative.resolve(base));
    EXPECT_EQ(fullOf(relative), u"C:\\a\\b.wav");
    EXPECT_FALSE(relative.resolve(base));
    EXPECT_EQ(relative.resolveRelative(base), nullptr);
}

TEST(FPathRelative, AscendingBeyondTheRootStaysThere) {
    const FNPath base(u"C:\\a", PathKind::folder);
    const auto path = FRefPtr<FPath>::adopt(FNPath(u"..\\..\\..\\b", PathKind::file).resolveRelative(base));
    EXPECT_EQ(fullOf(*path), u"C:\\b");
}

TEST(FPathRelative, WayNeedsAFolderAndAnAbsoluteTarget) {
    const FNPath file(u"C:\\a", PathKind::file);
    const FNPath folder(u"C:\\a", PathKind::folder);
    FNPath path(u"C:\\a\\b", PathKind::file);
    EXPECT_FALSE(path.makeRelative(&file));
    EXPECT_FALSE(path.makeRelative(nullptr));
    EXPECT_EQ(fullOf(path), u"C:\\a\\b");
    FNPath relative(u"b", PathKind::file);
    EXPECT_FALSE(relative.makeRelative(&folder));
    EXPECT_EQ(fullOf(relative), u"b");
}

TEST(FPathRelative, AnotherRootGivesTheTargetItself) {
    const FNPath base(u"C:\\a", PathKind::folder);
    FNPath path(u"D:\\x\\y", PathKind::file);
    EXPECT_TRUE(path.makeRelative(&base));
    EXPECT_EQ(fullOf(path), u"D:\\x\\y");
}

TEST(FPathRelative, WayToAFolderAboveGoesThroughItsParent) {
    const FNPath base(u"C:\\a\\b\\c", PathKind::folder);
    FNPath path(u"C:\\a", PathKind::folder);
    EXPECT_TRUE(path.makeRelative(&base));
    EXPECT_EQ(fullOf(path), u"..\\..\\..\\a");
    EXPECT_TRUE(path.resolve(base));
    EXPECT_EQ(fullOf(path), u"C:\\a");
}

TEST(FPathRelative, TakesKindAndTypeOfTheTarget) {
    const FNPath base(u"C:\\a", PathKind::folder);
    FNPath target(u"C:\\b.wav", PathKind::container);
    target.setFileType(FFileType("Wave", "wav"));
    FNPath path(u"old", PathKind::file);
    EXPECT_TRUE(path.makeRelative(&base, target));
    EXPECT_EQ(fullOf(path), u"..\\b.wav");
    EXPECT_TRUE(path.isContainer());
    EXPECT_EQ(text(path.fileType().getDosType()), u"wav");
    EXPECT_EQ(fullOf(target), u"C:\\b.wav");
}

TEST(FPathRelative, AWayBeyondTheBufferIsTheTargetItself) {
    const std::u16string component(100, u'x');
    const FNPath base(u"C:\\a", PathKind::folder);
    const std::u16string fits = u"C:\\a\\" + component + u"\\" + component + u"\\b";
    const std::u16string tooLong = u"C:\\a\\" + component + u"\\" + component + u"\\" + component + u"\\b";
    FNPath path(fits.c_str(), PathKind::file);
    EXPECT_TRUE(path.makeRelative(&base));
    EXPECT_EQ(folderOf(path).size(), 202u);
    FNPath longPath(tooLong.c_str(), PathKind::file);
    EXPECT_TRUE(longPath.makeRelative(&base));
    EXPECT_EQ(fullOf(longPath), tooLong);
}

} // namespace
} // namespace tessera
