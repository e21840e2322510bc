#include "foundation/text/FTextFormat.h"

#include "foundation/text/FString.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace tessera {
namespace {

using testing_support::systemBytes;
using testing_support::whyNoUtf8;

std::string print(const char* format, ...) {
    char text[256];
    std::va_list arguments;
    va_start(arguments, format);
    const std::size_t length = FTextFormat::print(text, sizeof text, format, arguments);
    va_end(arguments);
    return std::string(text, length);
}

std::u16string print16(const char16_t* format, ...) {
    char16_t text[256];
    std::va_list arguments;
    va_start(arguments, format);
    const std::size_t length = FTextFormat::print(text, 256, format, arguments);
    va_end(arguments);
    return std::u16string(text, length);
}

TEST(FTextFormat, PlainTextPassesThrough) {
    EXPECT_EQ(print("plain"), "plain");
    EXPECT_EQ(print("100%%"), "100%");
    EXPECT_EQ(print16(u"caf\u00e9 %%"), u"caf\u00e9 %");
    EXPECT_EQ(print(""), "");
}

TEST(FTextFormat, IntegersTakeWidthAndFlags) {
    EXPECT_EQ(print("%d|%i", -42, 42), "-42|42");
    EXPECT_EQ(print("%5d|%-5d|%05d", 42, 42, 42), "   42|42   |00042");
    EXPECT_EQ(print("%+d|% d|%+d", 42, 42, -42), "+42| 42|-42");
    EXPECT_EQ(print("%05d", -42), "-0042");
    EXPECT_EQ(print("%*d|%-*d|%*d", 4, 7, 4, 7, -4, 7), "   7|7   |7   ");
    EXPECT_EQ(print("%.3d|%8.3d|%08.3d", 7, 7, 7), "007|     007|     007");
    EXPECT_EQ(print("%.0d|", 0), "|");
    EXPECT_EQ(print("%.*d", 3, 7), "007");
    EXPECT_EQ(print("%.*d", -3, 7), "7");
    EXPECT_EQ(print("%u", 4294967295u), "4294967295");
    EXPECT_EQ(print("%d", std::numeric_limits<int>::min()), "-2147483648");
}

TEST(FTextFormat, BasesAreEightTenAndSixteen) {
    EXPECT_EQ(print("%x|%X|%o", 0xabcu, 0xabcu, 8u), "abc|ABC|10");
    EXPECT_EQ(print("%#x|%#X|%#o|%#x", 0xabcu, 0xabcu, 8u, 0u), "0xabc|0XABC|010|0");
    EXPECT_EQ(print("%08X", 0xbeefu), "0000BEEF");
    EXPECT_EQ(print("%#010x", 0xbeefu), "0x0000beef");
}

TEST(FTextFormat, LengthsSayHowMuchOfTheArgumentCounts) {
    EXPECT_EQ(print("%I64d", std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(print("%I64u", std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(print("%I32u", 0xffffffffu), "4294967295");
    EXPECT_EQ(print("%lld|%llx", -5LL, 0x123456789aLL), "-5|123456789a");
    EXPECT_EQ(print("%ld|%lu", -5L, 5UL), "-5|5");
    EXPECT_EQ(print("%zu", static_cast<std::size_t>(77)), "77");
    EXPECT_EQ(print("%hd|%hu", 0x12345, 0x12345), "9029|9029");
    EXPECT_EQ(print("%hhd|%hhu", 0x1ff, 0x1ff), "-1|255");
    EXPECT_EQ(print16(u"%I64d %I64u", std::int64_t{-1}, std::uint64_t{1}), u"-1 1");
}

TEST(FTextFormat, FloatsAreTheLibrarys) {
    EXPECT_EQ(print("%f|%.2f|%e|%g", 1.5, 1.255, 1500.0, 0.0001), "1.500000|1.25|1.500000e+03|0.0001");
    EXPECT_EQ(print("%8.2f|%-8.2f|%08.2f|%+.1f", 1.5, 1.5, 1.5, 1.5), "    1.50|1.50    |00001.50|+1.5");
    EXPECT_EQ(print("%.50g", 0.1), "0.1000000000000000055511151231257827021181583404541");
    EXPECT_EQ(print("%a|%lf", 1.0, 2.0), "0x1p+0|2.000000");
    EXPECT_EQ(print16(u"%.3f %G", 0.5, 1e30), u"0.500 1E+30");
}

TEST(FTextFormat, TextIsOfTheFormatsOwnWidthUnlessTold) {
    EXPECT_EQ(print("%s|%S|%hs|%ls", "own", u"caf\u00e9", "own", u"wide"),
              "own|" + systemBytes(u"caf\u00e9") + "|own|wide");
    EXPECT_EQ(print16(u"%s|%S|%hs|%ls", u"own", systemBytes(u"caf\u00e9").c_str(), "bytes", u"own"),
              u"own|caf\u00e9|bytes|own");
    EXPECT_EQ(print("%c|%lc|%C", 'a', u'\u00e9', u'z'), "a|" + systemBytes(u"\u00e9") + "|z");
    EXPECT_EQ(print16(u"%c|%hc|%C", u'\u00e9', 'a', 'z'), u"\u00e9|a|z");
}

TEST(FTextFormat, TextTakesWidthAndPrecision) {
    EXPECT_EQ(print("%6s|%-6s|%.2s|%6.2s", "abc", "abc", "abc", "abc"), "   abc|abc   |ab|    ab");
    const char unterminated[3] = {'x', 'y', 'z'};
    EXPECT_EQ(print("%.*s", 3, unterminated), "xyz");
    EXPECT_EQ(print16(u"%4s|%-4S|", u"\u97f3", "a"), u"   \u97f3|a   |");
    EXPECT_EQ(print("%3c|%-3c|", 'x', 'y'), "  x|y  |");
}

TEST(FTextFormat, NullTextDoesntCrash) {
    EXPECT_EQ(print("%s|%S", nullptr, nullptr), "(null)|(null)");
}

TEST(FTextFormat, UnconvertibleTextDoesntCrash) {
    if (const char* reason = whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(print16(u"[%S]", "\xff"), u"[]");
}

TEST(FTextFormat, PointersAreHexadecimal) {
    EXPECT_EQ(print("%p", reinterpret_cast<void*>(0xabc)), "0xabc");
    EXPECT_EQ(print("%p", nullptr), "0x0");
}

TEST(FTextFormat, UnknownConversionsPrintAsTheyStand) {
    EXPECT_EQ(print("%q %n|%", 1), "%q %n|%");
    EXPECT_EQ(print("%5"), "%5");
    EXPECT_EQ(print16(u"%\u97f3"), u"%\u97f3");
}

TEST(FTextFormat, TheLimitCutsEveryConversion) {
    char text[8] = "#######";
    const auto cut = [&](const char* format, ...) {
        std::va_list arguments;
        va_start(arguments, format);
        const std::size_t length = FTextFormat::print(text, 4, format, arguments);
        va_end(arguments);
        return std::string(text, length);
    };
    EXPECT_EQ(cut("abcdef"), "abcd");
    EXPECT_EQ(cut("%s", "abcdef"), "abcd");
    EXPECT_EQ(cut("%d", 123456), "1234");
    EXPECT_EQ(cut("%9d", 1), "    ");
    EXPECT_EQ(cut("%f", 1.25), "1.25");
    EXPECT_EQ(cut("abc%c%c", 'd', 'e'), "abcd");
    EXPECT_EQ(text[4], '#') << "nothing is written behind the limit";
}

TEST(FTextFormat, HugeWidthsStayWithinTheLimit) {
    EXPECT_EQ(print("%2000000000d", 1).size(), 256u);
    EXPECT_EQ(print("%.2000000000d", 1), std::string(256, '0'));
    EXPECT_EQ(print("%99999999999999999999s", "x").size(), 256u);
    EXPECT_EQ(print("%.300f", 1.0).size(), 256u);
}

} // namespace
} // namespace tessera
