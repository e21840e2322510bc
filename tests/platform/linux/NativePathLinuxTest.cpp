#include "platform/NativePath.h"

#include "platform/NativePathForms.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

TEST(NativePath, BackslashesBecomeSlashes) {
    EXPECT_TRUE(hasSingleRoot());
    EXPECT_EQ(nativeSeparator(), u'/');
    EXPECT_EQ(native(u"\\a\\b.txt"), "/a/b.txt");
    EXPECT_EQ(native(u"a\\b"), "a/b");
    EXPECT_EQ(native(u"\\"), "/");
    EXPECT_EQ(native(u"\\a\\"), "/a");
    EXPECT_EQ(native(u"\\\\"), "/");
}

TEST(NativePath, SlashesBecomeBackslashes) {
    EXPECT_EQ(ours("/a/b.txt"), u"\\a\\b.txt");
    EXPECT_EQ(ours("a"), u"a");
    EXPECT_EQ(ours("/a/"), u"\\a\\");
    EXPECT_EQ(ours(""), u"");
}

TEST(NativePath, TextOfAllPlanesGoesAsUtf8) {
    EXPECT_EQ(native(u"\\\u00e4\u20ac\U0001f3b5"), "/\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xb5");
    EXPECT_EQ(ours("/\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xb5"), u"\\\u00e4\u20ac\U0001f3b5");
    EXPECT_EQ(native(u"\U00010000\U0010ffff"), "\xf0\x90\x80\x80\xf4\x8f\xbf\xbf");
    EXPECT_EQ(ours("\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"), u"\U00010000\U0010ffff");
    EXPECT_EQ(ours("\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf"), u"\x7f\u0080\u07ff\u0800\uffff");
}

TEST(NativePath, SomeTextsHaveNoNativeForm) {
    const char16_t highAlone[] = {u'a', 0xd800, u'b'};
    const char16_t lowAlone[] = {0xdc00};
    const char16_t highLast[] = {u'a', 0xd800};
    EXPECT_EQ(native(u""), "none");
    EXPECT_EQ(native(std::u16string_view(u"a\0b", 3)), "none");
    EXPECT_EQ(native(std::u16string_view(highAlone, 3)), "none");
    EXPECT_EQ(native(std::u16string_view(lowAlone, 1)), "none");
    EXPECT_EQ(native(std::u16string_view(highLast, 2)), "none");
}

TEST(NativePath, DrivePathsHaveNoNativeForm) {
    EXPECT_EQ(native(u"C:"), "none");
    EXPECT_EQ(native(u"c:\\"), "none");
    EXPECT_EQ(native(u"C:\\a\\b"), "none");
    EXPECT_EQ(native(u"a:b"), "a:b");
    EXPECT_EQ(native(u"1:\\a"), "1:/a");
    EXPECT_EQ(native(u"\\C:\\a"), "/C:/a");
}

TEST(NativePath, NamesThatAreNoUtf8OrHoldABackslashHaveNoForm) {
    for (const char* name : {"a\\b", "\x80", "\xc3", "\xc3(", "\xc0\xaf", "\xe0\x80\xaf", "\xed\xa0\x80",
                             "\xf4\x90\x80\x80", "\xf8\x88\x80\x80\x80", "\xf0\x9f\x8e", "\xff"}) {
        EXPECT_EQ(ours(name), u"none") << testing::PrintToString(std::string(name));
    }
    EXPECT_EQ(ours(std::string_view("a\0b", 3)), u"none");
}

} // namespace
} // namespace tessera::platform
