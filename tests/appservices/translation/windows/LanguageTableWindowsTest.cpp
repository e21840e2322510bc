// The language of the machine and its user, asked of the system by other means.
#include "appservices/translation/LanguageTable.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <windows.h>

namespace tessera {
namespace {

std::int32_t indexOfLanguage(unsigned long id) {
    return LanguageTable::indexOfId(static_cast<std::uint16_t>(id & 0x3ff));
}

TEST(LanguageTableWindows, AnswersForTheMachineAndItsUser) {
    LanguageTable table;
    EXPECT_EQ(table.systemLanguage(), indexOfLanguage(::GetSystemDefaultLCID()));
    wchar_t names[256] = {};
    ULONG count = 0;
    ULONG size = 256;
    ASSERT_TRUE(::GetUserPreferredUILanguages(MUI_LANGUAGE_ID, &count, names, &size));
    EXPECT_EQ(table.userLanguage(), indexOfLanguage(std::wcstoul(names, nullptr, 16)));
}

TEST(LanguageTableWindows, TheClockFollowsTheMeasures) {
    DWORD measures = 2;
    ASSERT_NE(::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IMEASURE | LOCALE_RETURN_NUMBER,
                               reinterpret_cast<wchar_t*>(&measures), sizeof measures / sizeof(wchar_t)),
              0);
    EXPECT_EQ(LanguageTable::timeFormat(), measures == 0 ? 1 : measures == 1 ? 0 : -1);
}

} // namespace
} // namespace tessera
