#include "platform/NativePath.h"

#include "platform/NativePathForms.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

TEST(NativePathWindows, BackslashesStayAndEndNoPath) {
    EXPECT_FALSE(hasSingleRoot());
    EXPECT_EQ(nativeSeparator(), u'\\');
    EXPECT_EQ(native(u"C:\\a\\b.txt"), "C:\\a\\b.txt");
    EXPECT_EQ(native(u"C:\\a\\"), "C:\\a");
    EXPECT_EQ(native(u"a\\b"), "a\\b");
    EXPECT_EQ(native(u"\\\\server\\share\\"), "\\\\server\\share");
    EXPECT_EQ(native(u"\\"), "\\");
}

// A bare one means the drive's present folder.
TEST(NativePathWindows, ADriveGetsItsSeparator) {
    EXPECT_EQ(native(u"C:"), "C:\\");
    EXPECT_EQ(native(u"c:\\"), "c:\\");
    EXPECT_EQ(native(u"C:\\\\"), "C:\\");
    EXPECT_EQ(native(u"1:"), "1:");
    EXPECT_EQ(native(u"C:a"), "C:a");
}

TEST(NativePathWindows, SlashesBecomeBackslashes) {
    EXPECT_EQ(ours("C:/a/b.txt"), u"C:\\a\\b.txt");
    EXPECT_EQ(ours("//server/share/"), u"\\\\server\\share\\");
    EXPECT_EQ(ours("a\\b"), u"a\\b");
    EXPECT_EQ(ours(""), u"");
}

TEST(NativePathWindows, TextOfAllPlanesGoesAsUtf8) {
    EXPECT_EQ(native(u"C:\\\u00e4\u20ac\U0001f3b5"), "C:\\\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xb5");
    EXPECT_EQ(ours("C:\\\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xb5"), u"C:\\\u00e4\u20ac\U0001f3b5");
}

TEST(NativePathWindows, SomeTextsHaveNoNativeForm) {
    const char16_t highAlone[] = {u'a', 0xd800, u'b'};
    EXPECT_EQ(native(u""), "none");
    EXPECT_EQ(native(std::u16string_view(u"a\0b", 3)), "none");
    EXPECT_EQ(native(std::u16string_view(highAlone, 3)), "none");
    EXPECT_EQ(ours("\xff"), u"none");
    EXPECT_EQ(ours(std::string_view("a\0b", 3)), u"none");
}

} // namespace
} // namespace tessera::platform
