#include "platform/Languages.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tessera::platform {
namespace {

TEST(LanguagesWindows, AreThePrimaryOnesOfTheSystem) {
    EXPECT_EQ(systemLanguage(), PRIMARYLANGID(::GetSystemDefaultLangID()));
    EXPECT_EQ(userLanguage(), PRIMARYLANGID(::GetUserDefaultUILanguage()));
    EXPECT_NE(systemLanguage(), 0);
}

TEST(LanguagesWindows, MeasuresAreThoseOfTheUsersRegion) {
    wchar_t value[8] = {};
    ASSERT_GT(::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, value, 8), 0);
    EXPECT_EQ(usualMeasures(), value[0] == L'0' ? Measures::metric : Measures::american);
}

} // namespace
} // namespace tessera::platform
