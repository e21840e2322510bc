// What the system's own conversions add: its code page, and letters that stand in for others.
#include "platform/CodePages.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <windows.h>

namespace tessera {
namespace {

std::string narrowed(CodePage page, std::u16string_view text) {
    char bytes[16];
    const std::ptrdiff_t length = platform::narrow(page, text.data(), text.size(), bytes, sizeof bytes);
    return length < 0 ? "unknown" : std::string(bytes, static_cast<std::size_t>(length));
}

TEST(CodePagesWindows, ALetterMayStandInForAnother) {
    EXPECT_EQ(narrowed(CodePage::shiftJis, u"\u00e9\u30c6"), "e\x83\x65");
    EXPECT_EQ(narrowed(CodePage::western, u"\u0100"), "A");
}

TEST(CodePagesWindows, TheSystemsPageIsTheOneOfTheSystem) {
    const CodePage page = platform::resolveCodePage(CodePage::system);
    if (::GetACP() == CP_UTF8) {
        EXPECT_EQ(page, CodePage::utf8);
        return;
    }
    EXPECT_EQ(page, CodePage::system);
    char16_t unit = 0;
    const auto named = static_cast<CodePage>(::GetACP());
    for (const char* byte : {"\xa7", "\xe9", "\xf6"}) {
        char16_t expected = 0;
        const std::ptrdiff_t count = platform::widen(named, byte, 1, &expected, 1);
        EXPECT_EQ(platform::widen(page, byte, 1, &unit, 1), count);
        EXPECT_EQ(unit, expected);
    }
}

TEST(CodePagesWindows, WhatTheSystemsPageCantHoldIsLost) {
    if (::GetACP() == CP_UTF8) {
        GTEST_SKIP() << "the system's page holds every character";
    }
    EXPECT_EQ(narrowed(CodePage::system, u"a\U0001f3b5"), "a??");
}

TEST(CodePagesWindows, PagesThatTakeNoStrictReadingRefuseText) {
    constexpr auto kSymbols = static_cast<CodePage>(42);
    char16_t units[4];
    EXPECT_EQ(platform::widen(kSymbols, "a", 1, units, 4), -1);
}

} // namespace
} // namespace tessera
