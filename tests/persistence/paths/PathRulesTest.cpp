#include "persistence/paths/PathRules.h"

#include "foundation/text/FString.h"
#include "platform/NativePath.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

struct Row {
    const char16_t* text;
    bool answer;
};

TEST(PathRules, RootsAreDrivesSharesArchivesAndTheShortest) {
    const Row rows[] = {
        {u"", true},
        {u"\\", true},
        {u"a", true},
        {u"c:", true},
        {u"x:", true},
        {u"c:\\", true},
        {u"c:a", false},
        {u"c:\\a", false},
        {u"ab", false},
        {u"\\a", false},
        {u"a\\", false},
        {u"\\\\", true},
        {u"\\\\server", true},
        {u"\\\\server\\", true},
        {u"\\\\server\\share", true},
        {u"\\\\server\\share\\", true},
        // One component behind the share counts as a part of the root.
        {u"\\\\server\\share\\a", true},
        {u"\\\\server\\share\\a\\", false},
        {u"\\\\server\\share\\a\\b", false},
        {u"vfs:\\\\C:\\a.pak", true},
        {u"vfs:\\\\C:\\a.pak\\\\", true},
        {u"vfs:\\\\C:\\a.pak\\\\b", false},
        {u"vfs:\\\\\\\\server\\share\\a.pak", true},
        {u"vfs:\\\\\\\\server\\share\\a.pak\\\\", true},
        {u"vfs:\\\\\\\\server\\share\\a.pak\\\\b", false},
        {u"vfs:\\\\", false},
        {u"vfs:\\\\\\\\", false},
        {u"VFS:\\\\C:\\a.pak", false},
        {u"archive:\\\\C:\\a.pak", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(isRootPath(row.text), row.answer) << testing::PrintToString(std::u16string(row.text));
    }
}

TEST(PathRules, NullTextIsNoRoot) {
    EXPECT_FALSE(isRootPath(FStringRef()));
    EXPECT_FALSE(isRootPath(FString()));
}

TEST(PathRules, AbsoluteAreDrivesSharesUrlsAndTheRootOfTheTree) {
    const bool oneRoot = platform::hasSingleRoot();
    const Row rows[] = {
        {u"", false},         {u"a", false},
        {u"..", false},       {u"..\\a", false},
        {u"..a", false},      {u".\\a", false},
        {u"a\\b", false},     {u"c:", true},
        {u"c:a", true},       {u"c:\\a", true},
        {u"1:\\a", false},    {u"\\\\server\\share", true},
        {u"\\\\", true},      {u"http://host/file", true},
        {u"file:///a", true}, {u"vfs:\\\\C:\\a.pak", true},
        {u"vfs:a", false},    {u"\\", oneRoot},
        {u"\\a", oneRoot},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(isAbsolutePath(row.text), row.answer) << testing::PrintToString(std::u16string(row.text));
    }
    EXPECT_FALSE(isAbsolutePath(FStringRef()));
}

TEST(PathRules, EightBitTextIsUnderstood) {
    EXPECT_TRUE(isRootPath("c:\\"));
    EXPECT_TRUE(isAbsolutePath("c:\\a"));
    EXPECT_FALSE(isRootPath("ab"));
}

} // namespace
} // namespace tessera
