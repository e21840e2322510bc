#include "persistence/paths/FPath.h"

#include "persistence/paths/FNPath.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FPath, SetSplitsAtTheLastSeparator) {
    struct Row {
        const char16_t* text;
        const char16_t* folder;
        const char16_t* name;
        PathKind kind;
    };
    const Row rows[] = {
        {u"a\\b\\c", u"a\\b\\", u"c", PathKind::file},
        {u"a\\b\\", u"a\\", u"b", PathKind::file},
        // Without a separator the text stays in the folder, and the name as it was.
        {u"abc", u"abc", u"old", PathKind::file},
        {u"\\", u"\\", u"old", PathKind::folder},
    };
    for (const Row& row : rows) {
        FPath path;
        path.setName(u"old");
        path.set(row.text, PathKind::file);
        EXPECT_EQ(folderOf(path), row.folder);
        EXPECT_EQ(nameOf(path), row.name);
        EXPECT_EQ(path.getKind(), row.kind);
    }
}

TEST(FPath, OnlyALoneSeparatorIsARoot) {
    const FPath path;
    EXPECT_TRUE(path.isRootPath(u"\\"));
    EXPECT_FALSE(path.isRootPath(u""));
    EXPECT_FALSE(path.isRootPath(u"c:"));
}

TEST(FPath, KindsAnswerTheirTests) {
    struct Row {
        PathKind kind;
        bool file, folder, link, container;
    };
    const Row rows[] = {
        {PathKind::file, true, false, false, false},
        {PathKind::folder, false, true, false, false},
        {PathKind::link, false, false, true, false},
        {PathKind::container, false, true, false, true},
    };
    for (const Row& row : rows) {
        for (const bool mark : {false, true}) {
            FPath path(row.kind);
            path.setKindMark(mark);
            EXPECT_EQ(path.hasKindMark(), mark);
            EXPECT_EQ(path.isFile(), row.file);
            EXPECT_EQ(path.isFolder(), row.folder);
            EXPECT_EQ(path.isLink(), row.link);
            EXPECT_EQ(path.isContainer(), row.container);
            EXPECT_EQ(path.getKind(), row.kind);
        }
    }
}

TEST(FPath, HiddenFlagMakesItInvisible) {
    FPath path;
    path.setFlags(0x103);
    EXPECT_FALSE(path.isVisible());
    path.setVisible(true);
    EXPECT_EQ(path.getFlags(), 3);
    EXPECT_TRUE(path.isVisible());
}

TEST(FPath, SetPathClosesTheFolder) {
    FPath path;
    path.setPath(u"C:\\a");
    EXPECT_EQ(folderOf(path), u"C:\\a\\");
    path.setPath(u"C:\\b\\");
    EXPECT_EQ(folderOf(path), u"C:\\b\\");
    path.setPath(u"");
    EXPECT_EQ(folderOf(path), u"");
}

TEST(FPath, FullPathJoinsWithOneSeparator) {
    FNPath path(u"C:\\", PathKind::folder);
    EXPECT_EQ(fullOf(path), u"C:");
    path.setName(u"a");
    EXPECT_EQ(fullOf(path), u"C:\\a");
    path.setPath(u"C:\\b");
    FString out;
    path.FPath::getFullPath(out);
    EXPECT_EQ(text(out), u"C:\\b\\a");
    path.setPath(u"");
    EXPECT_EQ(fullOf(path), u"a");
}

TEST(FPath, ExtensionIsBehindTheLastDot) {
    struct Row {
        const char16_t* name;
        bool found;
        const char16_t* extension;
        const char16_t* base;
    };
    const Row rows[] = {
        {u"a.txt", true, u"txt", u"a"},
        {u"a.b.txt", true, u"txt", u"a.b"},
        {u"a.b c", false, u"kept", u"a.b c"},
        {u"Take 1.final mix", false, u"kept", u"Take 1.final mix"},
        {u"Take 1.wav", true, u"wav", u"Take 1"},
        {u"plain", false, u"kept", u"plain"},
        {u".bashrc", true, u"bashrc", u""},
        {u"a.", true, u"", u"a"},
        {u"", false, u"kept", u""},
    };
    for (const Row& row : rows) {
        FNPath path(PathKind::file);
        path.setName(row.name);
        FString extension(u"kept");
        FString base;
        EXPECT_EQ(path.getExtension(extension), row.found) << testing::PrintToString(std::u16string(row.name));
        EXPECT_EQ(text(extension), row.extension) << testing::PrintToString(std::u16string(row.name));
        EXPECT_TRUE(path.getBaseName(base, false));
        EXPECT_EQ(text(base), row.base) << testing::PrintToString(std::u16string(row.name));
    }
}

TEST(FPath, DefinedTypeDecidesWhatIsItsExtension) {
    FNPath path(u"a.txt", PathKind::file);
    path.setFileType(FFileType("Wave", "wav", 0u, "wave"));
    FString text8(u"kept");
    EXPECT_FALSE(path.getExtension(text8));
    EXPECT_EQ(text(text8), u"kept");
    FString base;
    EXPECT_TRUE(path.getBaseName(base, true));
    EXPECT_EQ(text(base), u"a.txt");
    EXPECT_TRUE(path.getBaseName(base, false));
    EXPECT_EQ(text(base), u"a");
    EXPECT_EQ(path.findExtension(false), 2);
    path.setName(u"a.WAV");
    EXPECT_EQ(path.findExtension(true), 2);
    path.setName(u"a.Wave");
    EXPECT_EQ(path.findExtension(true), 2);
}

TEST(FPath, ADotAtTheEndIsNoExtensionOfAType) {
    FNPath path(u"Song 1.", PathKind::file);
    path.setFileType(FFileType("Wave", "wav"));
    EXPECT_EQ(path.findExtension(true), -1) << "though the type has no second extension";
    FString base;
    EXPECT_TRUE(path.getBaseName(base, true));
    EXPECT_EQ(text(base), u"Song 1.");
    EXPECT_EQ(path.findExtension(false), 7);
}

TEST(FPath, BasePathFillsItsTypeFromTheExtension) {
    FPath path;
    path.setName(u"a.TXT");
    path.updateFileType(true);
    EXPECT_EQ(text(path.fileType().getDosType()), u"txt");
    path.setName(u"a");
    path.updateFileType(true);
    EXPECT_EQ(text(path.fileType().getDosType()), u"???");
    EXPECT_EQ(text(path.fileType().getUnixType()), u"???");
}

TEST(FPath, DescendMovesTheNameIntoTheFolder) {
    FNPath path(u"C:", PathKind::folder);
    path.descend(u"a", PathKind::folder);
    EXPECT_EQ(folderOf(path), u"C:\\");
    EXPECT_EQ(nameOf(path), u"a");
    path.descend(u"b.txt", PathKind::file);
    EXPECT_EQ(folderOf(path), u"C:\\a\\");
    EXPECT_EQ(nameOf(path), u"b.txt");
    EXPECT_TRUE(path.isFile());

    FNPath relative(PathKind::folder);
    relative.descend(u"a", PathKind::folder);
    EXPECT_EQ(fullOf(relative), u"a");
    relative.descend(relative.getName(), PathKind::file);
    EXPECT_EQ(fullOf(relative), u"a\\a");

    FNPath root(u"\\", PathKind::folder);
    root.descend(u"a", PathKind::file);
    EXPECT_EQ(fullOf(root), u"\\a");
}

TEST(FPath, AscendGoesToTheFolderThatHoldsIt) {
    FNPath path(u"C:\\a\\b\\c.txt", PathKind::file);
    EXPECT_TRUE(path.ascend());
    EXPECT_EQ(fullOf(path), u"C:\\a\\b");
    EXPECT_EQ(nameOf(path), u"b");
    EXPECT_TRUE(path.isFolder());
    EXPECT_TRUE(path.ascend());
    EXPECT_EQ(fullOf(path), u"C:\\a");
    EXPECT_TRUE(path.ascend());
    EXPECT_EQ(fullOf(path), u"C:");
    EXPECT_EQ(nameOf(path), u"");
}

TEST(FPath, AscendAtARootIsTrueEachTime) {
    for (const char16_t* start : {u"C:\\a", u"\\a", u"\\\\server\\share\\a\\b"}) {
        FNPath path(start, PathKind::file);
        EXPECT_TRUE(path.ascend());
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(path.ascend());
        }
        EXPECT_TRUE(path.parentIsRoot());
    }
}

TEST(FPath, AscendKeepsTheSeparatorOfTheFileTree) {
    FNPath path(u"\\a", PathKind::file);
    EXPECT_TRUE(path.ascend());
    EXPECT_EQ(folderOf(path), u"\\");
    EXPECT_EQ(nameOf(path), u"");
}

TEST(FPath, AscendFromARelativePathFailsAndLeavesItTrimmed) {
    FNPath path(u"a\\b", PathKind::file);
    EXPECT_FALSE(path.ascend());
    EXPECT_EQ(folderOf(path), u"a");
    EXPECT_EQ(nameOf(path), u"b");
    EXPECT_TRUE(path.isFolder());

    FNPath name(u"a", PathKind::file);
    EXPECT_FALSE(name.ascend());
    EXPECT_EQ(nameOf(name), u"a");

    FNPath deep(u"a\\b\\c", PathKind::file);
    EXPECT_TRUE(deep.ascend());
    EXPECT_EQ(fullOf(deep), u"a\\b");
}

TEST(FPath, LoopsUpwardsEndAtTheRoot) {
    for (const char16_t* start : {u"C:\\a\\b\\c", u"\\a\\b\\c"}) {
        FNPath path(start, PathKind::file);
        int steps = 0;
        while (!path.parentIsRoot()) {
            ASSERT_TRUE(path.ascend());
            ASSERT_LT(++steps, 10);
        }
        EXPECT_EQ(steps, 3);
    }
}

TEST(FPath, IsAbsoluteByItsFullText) {
    EXPECT_TRUE(FNPath(u"C:\\a\\b", PathKind::file).isAbsolute());
    EXPECT_TRUE(FNPath(u"C:", PathKind::folder).isAbsolute());
    EXPECT_FALSE(FNPath(u"a\\b", PathKind::file).isAbsolute());
    EXPECT_FALSE(FNPath(u"..\\b", PathKind::file).isAbsolute());
    EXPECT_FALSE(FNPath(PathKind::file).isAbsolute());
}

TEST(FPath, WrapsBehindSeparators) {
    struct Row {
        const char* name;
        const char16_t* text;
        int minLine, maxLine, minTail;
        const char16_t* result;
    };
    const Row rows[] = {
        {"short enough", u"C:\\abc\\def", 0, 10, 0, u"C:\\abc\\def"},
        {"as late as possible", u"C:\\abc\\def\\ghi", 0, 8, 0, u"C:\\abc\\\ndef\\ghi"},
        {"several lines", u"C:\\abc\\def\\ghi", 0, 4, 0, u"C:\\\nabc\\\ndef\\\nghi"},
        {"a long component", u"C:\\abcdefghij\\k", 0, 5, 0, u"C:\\\nabcdefghij\\\nk"},
        {"no line below the least", u"C:\\abcdefghij\\k", 4, 5, 0, u"C:\\abcdefghij\\\nk"},
        {"a short rest", u"C:\\abc\\def\\ghi", 0, 4, 8, u"C:\\\nabc\\\ndef\\ghi"},
        {"no separator", u"abcdefgh", 0, 4, 0, u"abcdefgh"},
        {"nothing behind the last", u"abcdefgh\\", 0, 4, 0, u"abcdefgh\\"},
        {"empty", u"", 0, 4, 0, u""},
        {"senseless lengths", u"a\\b", -1, -1, -1, u"a\\\nb"},
    };
    for (const Row& row : rows) {
        FString string(row.text);
        FPath::wrapForDisplay(string, row.minLine, row.maxLine, row.minTail);
        EXPECT_EQ(text(string), row.result) << row.name;
    }
}

} // namespace
} // namespace tessera
