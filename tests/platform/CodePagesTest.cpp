#include "platform/CodePages.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tessera {
namespace {

constexpr auto kUnknown = static_cast<CodePage>(64999);

std::u16string widened(CodePage page, std::string_view text) {
    const std::ptrdiff_t length = platform::widenedLength(page, text.data(), text.size());
    if (length < 0) {
        return u"invalid";
    }
    std::u16string result(static_cast<std::size_t>(length), u'?');
    EXPECT_EQ(platform::widen(page, text.data(), text.size(), result.data(), result.size()), length);
    return result;
}

std::string narrowed(CodePage page, std::u16string_view text) {
    const std::ptrdiff_t length = platform::narrowedLength(page, text.data(), text.size());
    if (length < 0) {
        return "unknown";
    }
    std::string result(static_cast<std::size_t>(length), '#');
    EXPECT_EQ(platform::narrow(page, text.data(), text.size(), result.data(), result.size()), length);
    return result;
}

TEST(CodePages, KnownBytesBecomeKnownUnits) {
    EXPECT_EQ(widened(CodePage::western, "\x80 \xe9"), u"\u20ac \u00e9");
    EXPECT_EQ(widened(CodePage::shiftJis, "\x83\x65\x83\x58 \xb1"), u"\u30c6\u30b9 \uff71");
    EXPECT_EQ(widened(CodePage::utf8, "\xc3\xa9"), u"\u00e9");
    EXPECT_EQ(widened(CodePage::western, ""), u"");
}

TEST(CodePages, BytesWithoutMeaningFailTheWholeText) {
    EXPECT_EQ(widened(CodePage::shiftJis, "ok \x83"), u"invalid") << "a cut pair";
    EXPECT_EQ(widened(CodePage::shiftJis, "ok \xff ok"), u"invalid");
    EXPECT_EQ(widened(CodePage::utf8, "\xff"), u"invalid");
    EXPECT_EQ(widened(kUnknown, "text"), u"invalid");
    // A failure leaves nothing behind for the next text.
    EXPECT_EQ(widened(CodePage::shiftJis, "\x83\x65"), u"\u30c6");
}

TEST(CodePages, WhatHasNoPlaceBecomesAQuestionMarkForEachUnit) {
    EXPECT_EQ(narrowed(CodePage::western, u"\u20ac\u97f3\u00e9"), "\x80?\xe9");
    EXPECT_EQ(narrowed(CodePage::western, u"a\U0001f3b5z"), "a??z");
    EXPECT_EQ(narrowed(CodePage::shiftJis, u"\u0905\u30c6"), "?\x83\x65");
    EXPECT_EQ(narrowed(CodePage::western, std::u16string(1, static_cast<char16_t>(0xd800))), "?");
    EXPECT_EQ(narrowed(CodePage::western, std::u16string({static_cast<char16_t>(0xdc00), u'x'})), "?x");
    EXPECT_EQ(narrowed(kUnknown, u"text"), "unknown");
}

TEST(CodePages, MeasuringGoesOnBehindItsBlock) {
    EXPECT_EQ(platform::widenedLength(CodePage::western, std::string(5000, '\xe9').data(), 5000), 5000);
    EXPECT_EQ(platform::narrowedLength(CodePage::shiftJis, std::u16string(5000, u'\u30c6').data(), 5000), 10000);
    EXPECT_EQ(platform::narrowedLength(CodePage::western, std::u16string(5000, u'\u30c6').data(), 5000), 5000);
}

TEST(CodePages, TooLittleRoomFails) {
    char16_t units[2];
    EXPECT_EQ(platform::widen(CodePage::western, "abc", 3, units, 2), -1);
    EXPECT_EQ(platform::widen(CodePage::western, "ab", 2, units, 2), 2);
    char bytes[2];
    EXPECT_EQ(platform::narrow(CodePage::western, u"abc", 3, bytes, 2), -1);
    EXPECT_EQ(platform::narrow(CodePage::western, u"a\u97f3\u97f3", 3, bytes, 2), -1);
    EXPECT_EQ(platform::narrow(CodePage::western, u"ab", 2, bytes, 2), 2);
}

TEST(CodePages, OnlyTheSystemPageStandsForAnother) {
    EXPECT_EQ(platform::resolveCodePage(CodePage::western), CodePage::western);
    EXPECT_EQ(platform::resolveCodePage(CodePage::utf8), CodePage::utf8);
}

TEST(CodePages, MorePagesThanAreKeptOpenAreServedInAnyOrder) {
    for (int round = 0; round < 3; ++round) {
        for (const std::uint32_t page : {1250u, 1251u, 1252u, 1253u, 1254u, 437u}) {
            EXPECT_EQ(widened(static_cast<CodePage>(page), "text"), u"text") << page;
            EXPECT_EQ(narrowed(static_cast<CodePage>(page), u"text"), "text") << page;
        }
        EXPECT_EQ(widened(static_cast<CodePage>(1251), "\xc6"), u"\u0416");
        EXPECT_EQ(narrowed(static_cast<CodePage>(437), u"\u00e9"), "\x82");
    }
}

TEST(CodePages, ThreadsConvertAtTheSameTime) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (std::size_t t = 0; t < wrong.size(); ++t) {
        threads.emplace_back([&wrong, t] {
            for (int i = 0; i < 200; ++i) {
                const CodePage page =
                    (static_cast<std::size_t>(i) + t) % 2 == 0 ? CodePage::western : CodePage::shiftJis;
                char16_t unit = 0;
                const std::string_view text = page == CodePage::western ? "\xe9" : "\x83\x65";
                const char16_t expected = page == CodePage::western ? u'\u00e9' : u'\u30c6';
                const bool right = platform::widen(page, text.data(), text.size(), &unit, 1) == 1 && unit == expected;
                wrong[t] += right ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

} // namespace
} // namespace tessera
