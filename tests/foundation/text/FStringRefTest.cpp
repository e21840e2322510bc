#include "foundation/text/FStringRef.h"

#include "foundation/text/FString.h"
#include "foundation/text/FVariant.h"
#include "support/StringObjects.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tessera {
namespace {

using testing_support::systemBytes;
using testing_support::whyNoUtf8;

TEST(FStringRef, ADefaultViewIsNullAndNarrow) {
    const FStringRef view;
    EXPECT_TRUE(view.isNull());
    EXPECT_TRUE(view.isEmpty());
    EXPECT_FALSE(view.isWide());
    EXPECT_EQ(view.length(), 0);
    EXPECT_EQ(view.rawText(), nullptr);
    EXPECT_STREQ(view.text8(), "");
    EXPECT_EQ(std::u16string_view(view.text16()), u"");
}

TEST(FStringRef, ANegativeLengthCountsToTheNul) {
    EXPECT_EQ(FStringRef("four").length(), 4);
    EXPECT_EQ(FStringRef(u"sixty6").length(), 6);
    EXPECT_EQ(FStringRef("abcdef", 3).length(), 3);
    EXPECT_EQ(FStringRef(static_cast<const char*>(nullptr), 5).length(), 0);
    EXPECT_EQ(FStringRef(static_cast<const char16_t*>(nullptr), 5).length(), 0);
}

TEST(FStringRef, AViewPointsAtTheTextItself) {
    const char* const text = "text";
    const FStringRef view(text);
    EXPECT_EQ(view.rawText(), text);
    EXPECT_EQ(view.text8(), text);
}

TEST(FStringRef, AccessorsOfTheOtherWidthGiveTheEmptyText) {
    const FStringRef narrow("abc");
    const FStringRef wide(u"abc");
    EXPECT_EQ(std::u16string_view(narrow.text16()), u"");
    EXPECT_EQ(std::u16string_view(narrow.text()), u"");
    EXPECT_STREQ(wide.text8(), "");
    EXPECT_EQ(std::u16string_view(wide.text()), u"abc");
    EXPECT_FALSE(narrow.isWide());
    EXPECT_TRUE(wide.isWide());
}

TEST(FStringRef, CharactersPastTheEndAndOfTheOtherWidthAreZero) {
    const FStringRef narrow("abc");
    const FStringRef wide(u"abc");
    EXPECT_EQ(narrow.char8At(2), 'c');
    EXPECT_EQ(narrow.char8At(3), '\0');
    EXPECT_EQ(narrow.char8At(-1), '\0');
    EXPECT_EQ(narrow.char16At(0), u'\0');
    EXPECT_EQ(wide.char16At(0), u'a');
    EXPECT_EQ(wide.char16At(3), u'\0');
    EXPECT_EQ(wide.char8At(0), '\0');
    EXPECT_EQ(FStringRef().char8At(0), '\0');
}

TEST(FStringRef, ASubstringViewFollowsTheWidthAndIsCutAtTheEnd) {
    const FStringRef wide(u"abcdef");
    EXPECT_EQ(FStringRef(wide, 2).view16(), u"cdef");
    EXPECT_EQ(FStringRef(wide, 2, 3).view16(), u"cde");
    EXPECT_EQ(FStringRef(wide, -4, 2).view16(), u"ab");
    EXPECT_EQ(FStringRef(wide, 4, 100).view16(), u"ef");
    EXPECT_EQ(FStringRef(wide, 100).length(), 0);
    EXPECT_TRUE(FStringRef(wide, 6).isWide());
    EXPECT_EQ(FStringRef(FStringRef("abc"), 1).view8(), "bc");
    EXPECT_TRUE(FStringRef(FStringRef(), 3, 3).isNull());
}

TEST(FStringRef, AVariantOfTextGivesAViewAndAnyOtherANullOne) {
    const FVariant narrow("ab");
    const FVariant wide(u"abc");
    const FVariant number(std::int64_t{5});
    EXPECT_EQ(FStringRef(narrow).view8(), "ab");
    EXPECT_EQ(FStringRef(wide).view16(), u"abc");
    EXPECT_TRUE(FStringRef(number).isNull());
    EXPECT_TRUE(FStringRef(FVariant()).isNull());
}

TEST(FStringRef, DigitsAndAsciiAreSeenInBothWidths) {
    EXPECT_TRUE(FStringRef("a7").isDigitAt(1));
    EXPECT_FALSE(FStringRef("a7").isDigitAt(0));
    EXPECT_FALSE(FStringRef("a7").isDigitAt(2));
    EXPECT_FALSE(FStringRef("a7").isDigitAt(-1));
    EXPECT_TRUE(FStringRef(u"7").isDigitAt(0));
    // An Arabic digit is no digit that a number is made of.
    EXPECT_FALSE(FStringRef(u"\u0661").isDigitAt(0));
    EXPECT_TRUE(FStringRef("plain text, longer than a block").isAscii());
    EXPECT_FALSE(FStringRef("plain text, longer than a block\xc3\xa9").isAscii());
    EXPECT_TRUE(FStringRef(u"plain").isAscii());
    EXPECT_FALSE(FStringRef(u"plain \u00e9").isAscii());
    EXPECT_TRUE(FStringRef().isAscii());
}

TEST(FStringRef, OnlyWideTextCanBeNormalized) {
    EXPECT_TRUE(FStringRef().isNormalized());
    EXPECT_TRUE(FStringRef(u"caf\u00e9").isNormalized());
    EXPECT_FALSE(FStringRef(u"cafe\u0301").isNormalized());
    EXPECT_TRUE(FStringRef(u"cafe").isNormalized());
    EXPECT_FALSE(FStringRef("cafe").isNormalized());
    EXPECT_FALSE(FStringRef(u"cafe").isNormalized(static_cast<FNormalForm>(1)));
}

TEST(FStringRef, BytesAreClassifiedByAsciiAlone) {
    EXPECT_TRUE(FStringRef::isSpace(' '));
    EXPECT_TRUE(FStringRef::isSpace('\v'));
    EXPECT_FALSE(FStringRef::isSpace('\xa0'));
    EXPECT_TRUE(FStringRef::isAlpha('q'));
    EXPECT_FALSE(FStringRef::isAlpha('7'));
    EXPECT_FALSE(FStringRef::isAlpha('\xe9'));
    EXPECT_TRUE(FStringRef::isAlnum('7'));
    EXPECT_TRUE(FStringRef::isDigit('0'));
    EXPECT_FALSE(FStringRef::isDigit('a'));
    EXPECT_TRUE(FStringRef::isAsciiChar('\x7f'));
    EXPECT_FALSE(FStringRef::isAsciiChar('\x80'));
    EXPECT_TRUE(FStringRef::isLower('a'));
    EXPECT_FALSE(FStringRef::isLower('A'));
    EXPECT_TRUE(FStringRef::isUpper('Z'));
    EXPECT_FALSE(FStringRef::isUpper('z'));
}

TEST(FStringRef, CodeUnitsAreClassifiedByTheirMeaning) {
    EXPECT_TRUE(FStringRef::isAlpha(u'\u00e9'));
    EXPECT_TRUE(FStringRef::isAlpha(u'\u97f3'));
    EXPECT_FALSE(FStringRef::isAlpha(u'\u20ac'));
    EXPECT_TRUE(FStringRef::isAlnum(u'\u0661'));
    EXPECT_FALSE(FStringRef::isAlnum(u'-'));
    EXPECT_TRUE(FStringRef::isLower(u'\u00e9'));
    EXPECT_FALSE(FStringRef::isLower(u'\u00c9'));
    EXPECT_TRUE(FStringRef::isUpper(u'\u00c9'));
    EXPECT_FALSE(FStringRef::isUpper(u'\u97f3'));
    EXPECT_TRUE(FStringRef::isAsciiChar(u'~'));
    EXPECT_FALSE(FStringRef::isAsciiChar(u'\u0080'));
}

TEST(FStringRef, WhiteSpaceAndBlanksAreTwoSetsOfCodeUnits) {
    const auto isWhiteSpace = [](std::uint32_t c) {
        return (c >= 9 && c <= 13) || c == 32 || c == 0xa0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200a) ||
               c == 0x2028 || c == 0x2029 || c == 0x202f || c == 0x205f || c == 0x3000;
    };
    const auto isBlank = [](std::uint32_t c) {
        return c == 32 || c == 160 || (c >= 8194 && c <= 8203) || c == 8239 || c == 8287 || c == 12288;
    };
    constexpr std::uint32_t kNextLine = 0x85; // in which systems differ
    for (std::uint32_t c = 0; c < 0x10000; ++c) {
        if (c != kNextLine) {
            ASSERT_EQ(FStringRef::isSpace(static_cast<char16_t>(c)), isWhiteSpace(c)) << c;
        }
        ASSERT_EQ(FStringRef::isBlank(static_cast<char16_t>(c)), isBlank(c)) << c;
    }
}

TEST(FStringRef, CopyingOutTerminatesAndCounts) {
    char bytes[16];
    EXPECT_EQ(FStringRef("abcdef").copyTo8(bytes, 1, 3), 3);
    EXPECT_STREQ(bytes, "bcd");
    EXPECT_EQ(FStringRef("abcdef").copyTo8(bytes), 6);
    EXPECT_STREQ(bytes, "abcdef");
    EXPECT_EQ(FStringRef("abc").copyTo8(bytes, 7, 3), 0);
    EXPECT_STREQ(bytes, "");

    char16_t units[16];
    EXPECT_EQ(FStringRef(u"abcdef").copyTo16(units, 4), 2);
    EXPECT_EQ(std::u16string_view(units), u"ef");
    EXPECT_EQ(FStringRef(u"abc").copyTo16(units, 4, 1), 0);
    EXPECT_EQ(std::u16string_view(units), u"");
}

TEST(FStringRef, CopyingOutConvertsAndStaysWithinTheCount) {
    const std::string etude = systemBytes(u"\u00e9tude");
    char bytes[16];
    EXPECT_EQ(FStringRef(u"\u00e9tude").copyTo8(bytes), static_cast<std::int32_t>(etude.size()));
    EXPECT_EQ(bytes, etude);
    EXPECT_EQ(FStringRef(u"a\u00e9tude").copyTo8(bytes, 0, 3), 3);
    EXPECT_EQ(bytes, systemBytes(u"a\u00e9tude").substr(0, 3));

    char16_t units[16];
    EXPECT_EQ(FStringRef(etude.c_str()).copyTo16(units), 5);
    EXPECT_EQ(std::u16string_view(units), u"\u00e9tude");
    EXPECT_EQ(FStringRef(("a" + etude).c_str()).copyTo16(units, 0, 2), 2);
    EXPECT_EQ(std::u16string_view(units), u"a\u00e9");
    EXPECT_EQ(FStringRef(("a" + etude).c_str()).copyTo16(units, 1, 2), 2);
    EXPECT_EQ(std::u16string_view(units), u"\u00e9t");
    EXPECT_EQ(FStringRef("abc").copyTo16(units, 1, 0), 0);
    EXPECT_EQ(std::u16string_view(units), u"");
    EXPECT_EQ(FStringRef(u"abcdef").copyTo16(units, 1, 2), 2);
    EXPECT_EQ(std::u16string_view(units), u"bc");
}

TEST(FStringRef, CopyingOutWhatCantBeWidenedGivesNothing) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    char16_t units[16];
    EXPECT_EQ(FStringRef("\xff").copyTo16(units), 0);
    EXPECT_EQ(std::u16string_view(units), u"");
}

TEST(FStringRef, SubstringFillsTheTargetEvenWhenItIsTheSource) {
    FString target;
    EXPECT_TRUE(FStringRef("abcdef").substring(target, 2, 3));
    EXPECT_EQ(target.view8(), "cde");
    EXPECT_TRUE(FStringRef("abc").substring(target, 3));
    EXPECT_TRUE(target.isEmpty());
    target = "left over";
    EXPECT_FALSE(FStringRef("abc").substring(target, 4));
    EXPECT_TRUE(target.isEmpty());

    FString own(u"abcdef");
    EXPECT_TRUE(own.substring(own, 0, 3));
    EXPECT_EQ(own.view16(), u"abc");
    EXPECT_TRUE(own.substring(own, 1));
    EXPECT_EQ(own.view16(), u"bc");
}

TEST(FStringRef, AnEightBitTextIsSentAsItIs) {
    test::StringObject target;
    // A view that doesn't end with a NUL.
    FStringRef("abcdef", 3).sendTo(target);
    EXPECT_EQ(target.text8, "abc");
    EXPECT_FALSE(target.wide);
    EXPECT_EQ(target.references, 1);
}

TEST(FStringRef, AWideTextIsSentWideToWhoTakesIt) {
    test::StringObject target;
    FStringRef(u"caf\u00e9").sendTo(target);
    EXPECT_EQ(target.text16, u"caf\u00e9");
    EXPECT_TRUE(target.wide);
    EXPECT_EQ(target.references, 1);
}

TEST(FStringRef, AWideTextIsSentNarrowedToWhoTakesBytesAlone) {
    test::ByteStringObject target;
    const FString text(u"caf\u00e9");
    text.sendTo(target);
    EXPECT_EQ(target.received, systemBytes(u"caf\u00e9"));
    EXPECT_TRUE(text.isWide()) << "the sender keeps its width";
    EXPECT_EQ(target.references, 1);
}

TEST(FStringRef, AVariantBorrowsTheText) {
    const FString text("abc");
    FVariant value;
    text.toVariant(value);
    EXPECT_EQ(value.typeWord(), FVariant::kText8);
    EXPECT_EQ(value.text8(), text.rawText());
    FString().toVariant(value);
    EXPECT_EQ(value.typeWord(), FVariant::kText16);
    EXPECT_EQ(std::u16string_view(value.text16()), u"");
}

TEST(FStringRef, EqualTextsOfDifferentWidthHashByTheirOwnCharacters) {
    EXPECT_EQ(FStringRef("ab").hash(50), 6u);
    EXPECT_EQ(FStringRef(u"ab").hash(50), 6u);
    EXPECT_NE(FStringRef("\xc3\xa9").hash(1000), FStringRef(u"\u00e9").hash(1000));
    EXPECT_EQ(FStringRef().hash(50), 0u);
}

} // namespace
} // namespace tessera
