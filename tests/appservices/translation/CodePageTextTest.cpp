#include "appservices/translation/CodePageText.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(WidenText, GoesByTheCodePage) {
    EXPECT_EQ(widenText(CodePage::western, "Gr\xFC\xDF"
                                           "e \x80"),
              u"Grüße €");
    EXPECT_EQ(widenText(CodePage::shiftJis, "\x93\xFA\x96{\x8C\xEA \xB1"), u"日本語 ｱ");
    EXPECT_EQ(widenText(CodePage::western, ""), u"");
    EXPECT_EQ(widenText(CodePage::western, std::string_view("a\0b", 3)), std::u16string(u"a\0b", 3));
}

TEST(WidenText, BytesWithoutAMeaningStandForThemselves) {
    EXPECT_EQ(widenText(CodePage::western, "\x80\x81\x8D\xFC"), u"€\u0081\u008Dü");
}

TEST(WidenText, PairsWithoutAMeaningAreReplaced) {
    EXPECT_EQ(widenText(CodePage::shiftJis, "\x93\xFA\x81\x20\x93\xFA"), u"日\uFFFD日");
    // A first byte at the very end.
    EXPECT_EQ(widenText(CodePage::shiftJis, "\x93\xFA\x93"), u"日\u0093");
}

} // namespace
} // namespace tessera
