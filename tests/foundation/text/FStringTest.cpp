#include "foundation/text/FString.h"

#include "foundation/text/FVariant.h"
#include "support/ScopedLocale.h"
#include "support/StringObjects.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace tessera {
namespace {

using testing_support::systemBytes;
using testing_support::whyNoUtf8;

// From UTF-8, and what narrowing makes of it in the two other code pages that are in use.
constexpr char kCafe[] = "caf\xc3\xa9";

TEST(FString, ADefaultStringIsWideAndEmptyAndStaysSo) {
    const FString text;
    EXPECT_TRUE(text.isWide());
    EXPECT_TRUE(text.isNull());
    EXPECT_EQ(text.length(), 0);
    EXPECT_STREQ(text.text8(), "");
    EXPECT_TRUE(text.isWide()) << "the accessors don't convert empty text";
    EXPECT_EQ(std::u16string_view(text.text16()), u"");
}

// The text's pointer follows the table of operations, and the word with the length follows the pointer.
constexpr std::size_t kPointerPlace = sizeof(void*);
constexpr std::size_t kWordPlace = kPointerPlace + sizeof(void*);
constexpr std::uint32_t kWide = 0x40000000;
constexpr std::uint32_t kSpare = 0x80000000;

std::uint32_t wordOf(const FStringRef& text) {
    std::uint32_t word = 0;
    std::memcpy(&word, reinterpret_cast<const char*>(&text) + kWordPlace, sizeof word);
    return word;
}

void setSpareBit(FString& text) {
    const std::uint32_t word = wordOf(text) | kSpare;
    std::memcpy(reinterpret_cast<char*>(&text) + kWordPlace, &word, sizeof word);
}

TEST(FString, TheLengthAndTheWidthShareAWord) {
    const FString text("abc");
    const void* pointer = nullptr;
    std::memcpy(&pointer, reinterpret_cast<const char*>(&text) + kPointerPlace, sizeof pointer);
    EXPECT_EQ(pointer, text.rawText());
    EXPECT_EQ(wordOf(text), 3u);
    EXPECT_EQ(wordOf(FString(u"abc")), kWide | 3);
    EXPECT_EQ(wordOf(FString()), kWide);
    EXPECT_EQ(wordOf(FStringRef(u"abcd", 2)), kWide | 2);
    EXPECT_EQ(wordOf(FStringRef()), 0u);
}

TEST(FString, TheSpareBitStaysThroughEveryChange) {
    FString text("abc");
    setSpareBit(text);
    EXPECT_EQ(text.length(), 3);
    text.toWide();
    EXPECT_EQ(wordOf(text), kSpare | kWide | 3);
    text.append("d ");
    text.trim();
    text.toMultiByte();
    EXPECT_EQ(wordOf(text), kSpare | 4);
    text.setChar(5, 'f');
    EXPECT_EQ(wordOf(text), kSpare | 6);
    text.incrementVersion(2, '_', 0, false);
    EXPECT_EQ(text.view8(), "abcd f_01");
    EXPECT_EQ(wordOf(text), kSpare | 9);
    FString other(u"x");
    text.swap(other);
    EXPECT_EQ(wordOf(text), kSpare | kWide | 1);
    EXPECT_EQ(wordOf(other), 9u) << "what is spare is the object's own";
    text.take(other);
    EXPECT_EQ(wordOf(text), kSpare | 9);
    text.clear();
    EXPECT_EQ(wordOf(text), kSpare);
    text.assign16(u"ab");
    EXPECT_EQ(wordOf(text), kSpare | kWide | 2);
}

TEST(FString, EachConstructorTakesItsWidth) {
    EXPECT_EQ(FString("abc").view8(), "abc");
    EXPECT_EQ(FString(u"abc").view16(), u"abc");
    EXPECT_EQ(FString("abcdef", 3).view8(), "abc");
    EXPECT_FALSE(FString("").isWide());
    EXPECT_FALSE(FString(static_cast<const char*>(nullptr)).isWide());
    EXPECT_TRUE(FString(u"").isWide());
    EXPECT_EQ(FString(FStringRef("abcdef"), 4).view8(), "abcd");
    EXPECT_FALSE(FString(FStringRef("")).isWide());
    EXPECT_TRUE(FString(FStringRef(u"")).isWide());
}

TEST(FString, ANulInFrontOfTheLengthIsKeptOrEndsTheText) {
    EXPECT_EQ(FString("ab\0cd", 5).length(), 5);
    EXPECT_EQ(FString("ab\0cd", 5, FNul::ends).view8(), "ab");
    EXPECT_EQ(FString(u"ab\0cd", 5, FNul::ends).view16(), u"ab");
    EXPECT_EQ(FString("abcd", 2, FNul::ends).view8(), "ab");
}

TEST(FString, TheTextEndsWithANulBehindEveryChange) {
    FString text("abcdef", 3);
    EXPECT_STREQ(static_cast<const char*>(text.rawText()), "abc");
    text.append("de");
    EXPECT_STREQ(static_cast<const char*>(text.rawText()), "abcde");
    text.remove(1, 2);
    EXPECT_STREQ(static_cast<const char*>(text.rawText()), "ade");
    text.toWide();
    EXPECT_EQ(std::u16string_view(static_cast<const char16_t*>(text.rawText())), u"ade");
}

TEST(FString, TheCodePageConstructorWidens) {
    EXPECT_EQ(FString(kCafe, CodePage::utf8).view16(), u"caf\u00e9");
    EXPECT_EQ(FString("caf\xe9", CodePage::western).view16(), u"caf\u00e9");
    EXPECT_EQ(FString("\x89\xb9", CodePage::shiftJis).view16(), u"\u97f3");
    const FString invalid("caf\xe9", CodePage::utf8);
    EXPECT_FALSE(invalid.isWide());
    EXPECT_EQ(invalid.view8(), "caf\xe9");
}

TEST(FString, AVariantIsPrintedOrCopied) {
    EXPECT_EQ(FString(FVariant("ab")).view8(), "ab");
    EXPECT_EQ(FString(FVariant(u"ab")).view16(), u"ab");
    EXPECT_EQ(FString(FVariant(std::int64_t{-12})).view16(), u"-12");
    EXPECT_TRUE(FString(FVariant()).isEmpty());
}

TEST(FString, AStringInterfaceIsCopiedInItsWidth) {
    test::StringObject source;
    source.setText8("narrow");
    EXPECT_EQ(FString(source).view8(), "narrow");
    source.setText16(u"wide");
    EXPECT_EQ(FString(source).view16(), u"wide");
}

TEST(FString, MovingTakesTheBufferAndLeavesTheSourceEmptyInItsWidth) {
    FString source("text");
    const void* const buffer = source.rawText();
    const FString moved(std::move(source));
    EXPECT_EQ(moved.rawText(), buffer);
    EXPECT_EQ(moved.view8(), "text");
    EXPECT_TRUE(source.isEmpty());
    EXPECT_FALSE(source.isWide());

    FString target(u"old");
    FString other("new");
    target = std::move(other);
    EXPECT_EQ(target.view8(), "new");
    EXPECT_TRUE(other.isNull());
}

TEST(FString, ACopyHasABufferOfItsOwn) {
    const FString text(u"text");
    const FString copy(text);
    EXPECT_NE(copy.rawText(), text.rawText());
    EXPECT_EQ(copy.view16(), u"text");
}

TEST(FString, ReadingInTheOtherWidthConvertsTheString) {
    const FString text(u"caf\u00e9");
    const std::string bytes = systemBytes(u"caf\u00e9");
    EXPECT_EQ(text.text8(), bytes);
    EXPECT_FALSE(text.isWide());
    EXPECT_EQ(text.length(), static_cast<std::int32_t>(bytes.size()));
    EXPECT_EQ(text.char16At(3), u'\u00e9');
    EXPECT_TRUE(text.isWide());
    EXPECT_EQ(text.char8At(0), 'c');
    EXPECT_FALSE(text.isWide());
    EXPECT_EQ(std::u16string_view(text.text()), u"caf\u00e9");
    EXPECT_TRUE(text.isWide());
}

TEST(FString, ReadingBytesThatCantBeWidenedGivesTheEmptyText) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    const FString text("\xff");
    EXPECT_EQ(std::u16string_view(text.text16()), u"");
    EXPECT_EQ(text.char16At(0), u'\0');
    EXPECT_EQ(text.view8(), "\xff") << "the text is as it was";
}

TEST(FString, AssigningItsOwnTextDoesNothing) {
    FString text("abcdef");
    EXPECT_TRUE(text.assign8(text.text8(), 3));
    EXPECT_EQ(text.view8(), "abcdef");
    text = text;
    EXPECT_EQ(text.view8(), "abcdef");
    EXPECT_TRUE(text.assign(text));
    EXPECT_EQ(text.view8(), "abcdef");
}

TEST(FString, AssigningFromTheMiddleOfItselfCopiesFirst) {
    FString text("abcdef");
    EXPECT_TRUE(text.assign8(text.text8() + 2));
    EXPECT_EQ(text.view8(), "cdef");
    EXPECT_TRUE(text.assign(FStringRef(text, 1, 2)));
    EXPECT_EQ(text.view8(), "de");
}

TEST(FString, AssigningTakesTheWidthOfTheSource) {
    FString text;
    text = "narrow";
    EXPECT_EQ(text.view8(), "narrow");
    text = u"wide";
    EXPECT_EQ(text.view16(), u"wide");
    text = FStringRef("ref");
    EXPECT_EQ(text.view8(), "ref");
    EXPECT_TRUE(text.assign16(nullptr));
    EXPECT_TRUE(text.isNull());
    EXPECT_TRUE(text.isWide());
    EXPECT_TRUE(text.assign8("abc", 2));
    EXPECT_EQ(text.view8(), "ab");
    EXPECT_TRUE(text.assign8(""));
    EXPECT_TRUE(text.isNull());
    EXPECT_FALSE(text.isWide());
}

TEST(FString, Utf8IsWidenedOrKeptAsBytes) {
    FString text;
    EXPECT_TRUE(text.assignUtf8(kCafe));
    EXPECT_EQ(text.view16(), u"caf\u00e9");
    EXPECT_FALSE(text.assignUtf8("\xc3"));
    EXPECT_EQ(text.view8(), "\xc3");
    EXPECT_TRUE(text.assignUtf8(""));
    EXPECT_TRUE(text.isEmpty());
}

TEST(FString, VariantsAreAssignedInThePresentWidth) {
    FString text("narrow");
    EXPECT_TRUE(text.assignVariant(FVariant(std::int64_t{42})));
    EXPECT_EQ(text.view8(), "42");
    text = u"wide";
    EXPECT_TRUE(text.assignVariant(FVariant(std::int64_t{-42})));
    EXPECT_EQ(text.view16(), u"-42");
    EXPECT_TRUE(text.assignVariant(FVariant(1.5)));
    EXPECT_EQ(text.view16(), u"1.5");
    EXPECT_TRUE(text.assignVariant(FVariant("bytes")));
    EXPECT_EQ(text.view8(), "bytes");
    test::ByteStringObject object;
    EXPECT_FALSE(text.assignVariant(FVariant(static_cast<IBaseUnknown*>(&object))));
    EXPECT_TRUE(text.isEmpty());
}

struct DoubleRow {
    const char* name;
    double value;
    const char* text;
};

class FStringDouble : public testing::TestWithParam<DoubleRow> {};

TEST_P(FStringDouble, KeepsOneDigitBehindThePoint) {
    FString text("");
    text.assignDouble(GetParam().value);
    EXPECT_EQ(text.view8(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rows, FStringDouble,
                         testing::Values(DoubleRow{"Whole", 2.0, "2.0"}, DoubleRow{"One", 1, "1.0"},
                                         DoubleRow{"Half", 1.5, "1.5"}, DoubleRow{"Eighth", 0.125, "0.125"},
                                         DoubleRow{"SixDigits", 0.1234567, "0.123457"},
                                         DoubleRow{"Negative", -100.0, "-100.0"}, DoubleRow{"Rounded", 1e-9, "0.0"},
                                         DoubleRow{"Infinity", std::numeric_limits<double>::infinity(), "inf"}),
                         [](const auto& row) { return row.param.name; });

TEST(FString, TheLargestDoubleIsPrintedWhole) {
    FString text("");
    text.assignDouble(-std::numeric_limits<double>::max());
    EXPECT_EQ(text.length(), 1 + 309 + 2);
    EXPECT_TRUE(text.startsWith("-17976931348623157"));
    EXPECT_TRUE(text.endsWith(".0"));
}

TEST(FString, ADecimalCommaLeavesTheZeros) {
    const test::ScopedLocale german("de_DE", "UTF-8");
    if (!german.useForNumbers()) {
        GTEST_SKIP() << "this machine can't build the German locale";
    }
    FString text("");
    text.assignDouble(1.5);
    EXPECT_EQ(text.view8(), "1,500000");
    text.printf("%.2f", 0.25);
    EXPECT_EQ(text.view8(), "0,25");
}

TEST(FString, PrintfTakesTheWidthOfItsFormat) {
    FString text(u"old");
    EXPECT_TRUE(text.printf("%s %d", "take", 7));
    EXPECT_EQ(text.view8(), "take 7");
    EXPECT_TRUE(text.printf(u"%s %d", u"take", 8));
    EXPECT_EQ(text.view16(), u"take 8");
    EXPECT_TRUE(text.printf(""));
    EXPECT_TRUE(text.isEmpty());
    EXPECT_FALSE(text.isWide());
}

TEST(FString, PrintfMayPrintTheStringIntoItself) {
    FString text("take");
    EXPECT_TRUE(text.printf("%s %s", text.text8(), text.text8()));
    EXPECT_EQ(text.view8(), "take take");
}

TEST(FString, PrintfKeeps4095Characters) {
    FString text;
    text.printf("%5000d", 7);
    EXPECT_EQ(text.length(), 4095);
    EXPECT_EQ(text.view8(), std::string(4095, ' '));
    text.printf(u"%s", std::u16string(4096, u'x').c_str());
    EXPECT_EQ(text.view16(), std::u16string(4095, u'x'));
    text.printf("%s", std::string(4095, 'y').c_str());
    EXPECT_EQ(text.view8(), std::string(4095, 'y'));
}

TEST(FString, ResizeChangesRoomAndWidthButNotTheLength) {
    FString text("ab");
    EXPECT_TRUE(text.resize(4, FTextWidth::narrow, true));
    EXPECT_EQ(text.length(), 2);
    EXPECT_EQ(std::string_view(static_cast<const char*>(text.rawText()), 5), std::string_view("ab  \0", 5));
    EXPECT_TRUE(text.resize(0, FTextWidth::wide));
    EXPECT_TRUE(text.isNull());
    EXPECT_TRUE(text.isWide());
    EXPECT_EQ(text.length(), 0);
}

TEST(FString, ResizeRefusesWhatTheLengthBitsCantHold) {
    FString text("ab");
    EXPECT_FALSE(text.resize(-1, FTextWidth::narrow));
    EXPECT_FALSE(text.resize(FStringRef::kMaximumLength + 1, FTextWidth::narrow));
    EXPECT_EQ(text.view8(), "ab");
}

struct PageRow {
    const char* name;
    CodePage page;
    std::string bytes;
    std::u16string_view units;
};

class FStringCodePage : public testing::TestWithParam<PageRow> {};

TEST_P(FStringCodePage, WidensAndNarrowsInPlace) {
    const PageRow& row = GetParam();
    FString text(row.bytes.data(), static_cast<std::int32_t>(row.bytes.size()));
    EXPECT_TRUE(text.toWide(row.page));
    EXPECT_EQ(text.view16(), row.units);
    EXPECT_TRUE(text.toMultiByte(row.page));
    EXPECT_EQ(text.view8(), row.bytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, FStringCodePage,
                         testing::Values(PageRow{"Utf8", CodePage::utf8, "caf\xc3\xa9 \xe9\x9f\xb3",
                                                 u"caf\u00e9 \u97f3"},
                                         PageRow{"System", CodePage::system, systemBytes(u"caf\u00e9"), u"caf\u00e9"},
                                         PageRow{"Western", CodePage::western, "caf\xe9 5\x80", u"caf\u00e9 5\u20ac"},
                                         PageRow{"ShiftJis", CodePage::shiftJis, "\x89\xb9\x8ay 1", u"\u97f3\u697d 1"},
                                         PageRow{"OfDos", static_cast<CodePage>(437), "\x82t\x82", u"\u00e9t\u00e9"}),
                         [](const auto& row) { return row.param.name; });

TEST(FString, WideningIsStrictAndLeavesTheOldText) {
    FString text("ab\xff");
    EXPECT_FALSE(text.toWide(CodePage::utf8));
    EXPECT_FALSE(text.toWide(CodePage::shiftJis));
    EXPECT_FALSE(text.toWide(static_cast<CodePage>(64999)));
    EXPECT_EQ(text.view8(), "ab\xff");
    EXPECT_TRUE(text.toWide(CodePage::western));
    EXPECT_EQ(text.view16(), u"ab\u00ff");
    EXPECT_TRUE(text.toWide(static_cast<CodePage>(64999))) << "it is wide already";
}

TEST(FString, NarrowingPutsQuestionMarksAndNeverFailsForACharacter) {
    FString text(u"\u97f3 caf\u00e9 \U0001f3b5");
    EXPECT_TRUE(text.toMultiByte(CodePage::western));
    EXPECT_EQ(text.view8(), "? caf\xe9 ??");
    FString half(std::u16string({u'a', static_cast<char16_t>(0xd83d), u'b'}).c_str());
    EXPECT_TRUE(half.toMultiByte(CodePage::utf8));
    EXPECT_EQ(half.view8(), "a\xef\xbf\xbd"
                            "b");
    FString otherHalf(std::u16string({u'a', static_cast<char16_t>(0xdc00), u'b'}).c_str());
    EXPECT_TRUE(otherHalf.toMultiByte(CodePage::western));
    EXPECT_EQ(otherHalf.view8(), "a?b");
    FString unknown(u"abc");
    EXPECT_FALSE(unknown.toMultiByte(static_cast<CodePage>(64999)));
    EXPECT_EQ(unknown.view16(), u"abc");
}

TEST(FString, LongTextNarrowsInEveryCodePage) {
    // Longer than the block that the measuring converts into.
    std::u16string units;
    std::string bytes;
    for (int i = 0; i < 2000; ++i) {
        units += i % 7 == 0 ? u'\u97f3' : i % 5 == 0 ? u'\u0416' : u'x';
        bytes += i % 7 == 0 ? "\x89\xb9" : i % 5 == 0 ? "\x84G" : "x";
    }
    FString text(units.c_str());
    EXPECT_TRUE(text.toMultiByte(CodePage::shiftJis));
    EXPECT_EQ(text.view8(), bytes);
    EXPECT_TRUE(text.toWide(CodePage::shiftJis));
    EXPECT_EQ(text.view16(), units);
}

TEST(FString, EmptyTextTakesTheOtherWidth) {
    FString text;
    EXPECT_TRUE(text.toMultiByte());
    EXPECT_FALSE(text.isWide());
    EXPECT_TRUE(text.toWide(CodePage::utf8));
    EXPECT_TRUE(text.isWide());
}

TEST(FString, NarrowTextGoesFromOneCodePageIntoAnother) {
    const std::string bytes = systemBytes(u"caf\u00e9");
    FString text(bytes.c_str());
    EXPECT_TRUE(text.toMultiByte());
    EXPECT_EQ(text.view8(), bytes);
    EXPECT_TRUE(text.toMultiByte(static_cast<CodePage>(437)));
    EXPECT_EQ(text.view8(), "caf\x82");
    EXPECT_FALSE(FString("x").toMultiByte(static_cast<CodePage>(64999)));
}

TEST(FString, ANulEndsConvertedText) {
    FString text("ab\0cd", 5);
    EXPECT_TRUE(text.toWide());
    EXPECT_EQ(text.view16(), u"ab");
    FString wide(u"ab\0cd", 5);
    EXPECT_TRUE(wide.toMultiByte(CodePage::utf8));
    EXPECT_EQ(wide.view8(), "ab");
    FString begins("\0x", 2);
    EXPECT_TRUE(begins.toWide());
    EXPECT_TRUE(begins.isEmpty());
    EXPECT_TRUE(begins.isNull());
}

TEST(FString, NormalizeComposes) {
    FString text(u"cafe\u0301 a\u0323\u0302");
    EXPECT_TRUE(text.normalize());
    EXPECT_EQ(text.view16(), u"caf\u00e9 \u1ead");
    EXPECT_TRUE(text.normalize()) << "nothing is left to do";
    EXPECT_EQ(text.view16(), u"caf\u00e9 \u1ead");
    FString hangul(u"\u1112\u1161\u11ab");
    EXPECT_TRUE(hangul.normalize());
    EXPECT_EQ(hangul.view16(), u"\ud55c");
}

TEST(FString, NormalizeKnowsOneFormAndWideTextAlone) {
    FString narrow("cafe");
    EXPECT_FALSE(narrow.normalize());
    FString wide(u"cafe\u0301");
    EXPECT_FALSE(wide.normalize(static_cast<FNormalForm>(1)));
    EXPECT_EQ(wide.view16(), u"cafe\u0301");
    FString nothing;
    EXPECT_TRUE(nothing.normalize());
}

TEST(FString, CompositionOfTheSameLengthIsntTakenOver) {
    // The Angstrom sign composes to one other character.
    FString text(u"\u212b");
    EXPECT_TRUE(text.normalize());
    EXPECT_EQ(text.view16(), u"\u212b");
}

TEST(FString, SwapExchangesTextAndWidth) {
    FString a("narrow");
    FString b(u"wide");
    a.swap(b);
    EXPECT_EQ(a.view16(), u"wide");
    EXPECT_EQ(b.view8(), "narrow");
}

TEST(FString, TakeLeavesTheOtherEmpty) {
    FString a(u"old");
    FString b("new");
    a.take(b);
    EXPECT_EQ(a.view8(), "new");
    EXPECT_TRUE(b.isNull());
    a.take(a);
    EXPECT_EQ(a.view8(), "new");
}

TEST(FString, AdoptedAndReleasedBlocksAreThoseOfTheCAllocator) {
    auto* const block = static_cast<char*>(std::malloc(4));
    std::strcpy(block, "abc");
    FString text(u"old");
    text.adopt(block);
    EXPECT_EQ(text.rawText(), block);
    EXPECT_EQ(text.view8(), "abc");
    void* const released = text.release();
    EXPECT_EQ(released, block);
    EXPECT_TRUE(text.isNull());
    EXPECT_EQ(text.length(), 0);
    EXPECT_FALSE(text.isWide());
    std::free(released);
    EXPECT_EQ(text.release(), nullptr);

    auto* const wide = static_cast<char16_t*>(std::calloc(2, sizeof(char16_t)));
    wide[0] = u'x';
    text.adopt(wide);
    EXPECT_EQ(text.view16(), u"x");
    text.adopt(static_cast<char*>(std::calloc(1, 1)));
    EXPECT_TRUE(text.isNull());
    EXPECT_FALSE(text.isWide());
    text = "x";
    text.adopt(static_cast<char16_t*>(nullptr));
    EXPECT_TRUE(text.isNull());
    EXPECT_TRUE(text.isWide());
}

TEST(FString, AVariantTakesTheBufferOver) {
    FString text("abc");
    const void* const buffer = text.rawText();
    FVariant value;
    text.takeToVariant(value);
    EXPECT_EQ(value.typeWord(), 20);
    EXPECT_EQ(value.text8(), buffer);
    EXPECT_TRUE(text.isNull());

    FString wide(u"abc");
    wide.takeToVariant(value);
    EXPECT_EQ(value.typeWord(), 48);
    EXPECT_EQ(std::u16string_view(value.text16()), u"abc");

    wide.takeToVariant(value);
    EXPECT_EQ(value.typeWord(), FVariant::kText16) << "empty text isn't owned";
    EXPECT_EQ(std::u16string_view(value.text16()), u"");
}

TEST(FString, PascalTextHasItsLengthInFront) {
    FString text;
    text.fromPascal(reinterpret_cast<const std::uint8_t*>("\3abcdef"));
    EXPECT_EQ(text.view8(), "abc");
    std::uint8_t bytes[256];
    text.toPascal(bytes);
    EXPECT_EQ(std::memcmp(bytes, "\3abc", 4), 0);
    text.fromPascal(reinterpret_cast<const std::uint8_t*>(""));
    EXPECT_TRUE(text.isEmpty());
    text.toPascal(bytes);
    EXPECT_EQ(bytes[0], 0);
}

TEST(FString, BytesWithoutMeaningInTheSystemsCodePageStay) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FString text("caf\xe9");
    EXPECT_FALSE(text.toMultiByte(CodePage::western));
    EXPECT_EQ(text.view8(), "caf\xe9");
}

TEST(FString, PascalTextIsNarrowAndCutAt255) {
    std::uint8_t bytes[256];
    FString(std::string(300, 'x').c_str()).toPascal(bytes);
    EXPECT_EQ(bytes[0], 255);
    EXPECT_EQ(bytes[255], 'x');
    const FString wide(u"\u00e9");
    wide.toPascal(bytes);
    const std::string narrow = systemBytes(u"\u00e9");
    EXPECT_EQ(bytes[0], narrow.size());
    EXPECT_EQ(std::memcmp(bytes + 1, narrow.data(), narrow.size()), 0);
    EXPECT_TRUE(wide.isWide());
}

} // namespace
} // namespace tessera
