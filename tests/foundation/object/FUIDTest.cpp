#include "foundation/object/FUID.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

namespace tessera {
namespace {

constexpr FUIDBytes kSample = "{01234567-89AB-CDEF-1032-547698BADCFE}"_uid;

std::string textOf(const FUID& uid) {
    char buffer[FUID::kTextSize];
    uid.toString(buffer);
    return buffer;
}

std::string registryTextOf(const FUID& uid) {
    char buffer[FUID::kRegistryTextSize];
    uid.toRegistryString(buffer);
    return buffer;
}

std::array<std::uint32_t, 4> longsOf(const FUID& uid) {
    std::array<std::uint32_t, 4> longs;
    uid.getLongs(longs[0], longs[1], longs[2], longs[3]);
    return longs;
}

TEST(FUID, ItsBytesFollowTheTableOfOperations) {
    const FUID uid(kSample);
    const auto* start = reinterpret_cast<const char*>(&uid);
    EXPECT_EQ(sizeof uid, sizeof(void*) + 16);
    EXPECT_EQ(std::memcmp(start + sizeof(void*), kSample.bytes, 16), 0);
}

TEST(FUID, ADefaultOneIsNotValid) {
    EXPECT_FALSE(FUID().isValid());
    EXPECT_EQ(textOf(FUID()), "00000000000000000000000000000000");
}

TEST(FUID, OneBitInEitherHalfMakesItValid) {
    EXPECT_TRUE(FUID(1, 0, 0, 0).isValid());
    EXPECT_TRUE(FUID(0, 0, 0, 1).isValid());
}

TEST(FUID, GeneratedOnesDiffer) {
    FUID a;
    FUID b;
    ASSERT_TRUE(a.generate());
    ASSERT_TRUE(b.generate());
    EXPECT_TRUE(a.isValid());
    EXPECT_FALSE(a == b);
}

TEST(FUID, LongsLieInTheBytesOfAWindowsGuid) {
    const FUID uid(0x01234567, 0x89abcdef, 0x10325476, 0x98badcfe);
    const std::uint8_t expected[16] = {0x67, 0x45, 0x23, 0x01, 0xab, 0x89, 0xef, 0xcd,
                                       0x10, 0x32, 0x54, 0x76, 0x98, 0xba, 0xdc, 0xfe};
    EXPECT_EQ(std::memcmp(uid.bytes().bytes, expected, 16), 0);
    EXPECT_EQ(longsOf(uid), (std::array<std::uint32_t, 4>{0x01234567, 0x89abcdef, 0x10325476, 0x98badcfe}));
    EXPECT_TRUE(uid == kSample);
}

TEST(FUID, PlainTextIsTheWordsThenTheBytes) {
    EXPECT_EQ(textOf(kSample), "0123456789ABCDEF1032547698BADCFE");
    FUID read;
    ASSERT_TRUE(read.fromString("0123456789abcdef1032547698BADCFE"));
    EXPECT_TRUE(read == kSample);
}

TEST(FUID, PlainTextOfAnyOtherLengthIsRefusedAndChangesNothing) {
    FUID uid(kSample);
    for (const char* text : {"", "0123456789ABCDEF1032547698BADCF", "0123456789ABCDEF1032547698BADCFE0"}) {
        EXPECT_FALSE(uid.fromString(text)) << text;
        EXPECT_TRUE(uid == kSample);
    }
    EXPECT_FALSE(uid.fromString(nullptr));
    EXPECT_TRUE(uid == kSample);
}

struct OddText {
    const char* name;
    const char* text;
    const char* read;
};

class FUIDOddText : public testing::TestWithParam<OddText> {};

TEST_P(FUIDOddText, EachGroupIsReadByItself) {
    FUID uid(0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff);
    ASSERT_TRUE(uid.fromString(GetParam().text));
    EXPECT_EQ(textOf(uid), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FUIDOddText,
    testing::Values(
        OddText{"UnreadableWordIsZero", "zzzzzzzz89ABCDEF1032547698BADCFE", "0000000089ABCDEF1032547698BADCFE"},
        OddText{"UnreadableByteIsZero", "0123456789ABCDEFxx32547698BADCFE", "0123456789ABCDEF0032547698BADCFE"},
        OddText{"DigitsAfterBlanksStayInTheirGroup", "    456789ABCDEF1032547698BADCFE",
                "0000456789ABCDEF1032547698BADCFE"},
        OddText{"AHalfReadableGroupCountsAsFarAsItGoes", "01g3456789ABCDEF1032547698BADCFE",
                "0000000189ABCDEF1032547698BADCFE"},
        OddText{"ASignIsReadAsTheFormatReadsIt", "-000000189ABCDEF1032547698BADCFE",
                "FFFFFFFF89ABCDEF1032547698BADCFE"},
        OddText{"APrefixIsReadAsTheFormatReadsIt", "0x00001289ABCDEF1032547698BADCFE",
                "0000001289ABCDEF1032547698BADCFE"},
        OddText{"NonsenseIsAllZero", "quiz quiz quiz quiz quiz quiz qu", "00000000000000000000000000000000"}),
    [](const auto& row) { return row.param.name; });

TEST(FUID, RegistryTextHasBracesAndDashes) {
    EXPECT_EQ(registryTextOf(kSample), "{01234567-89AB-CDEF-1032-547698BADCFE}");
    FUID read;
    ASSERT_TRUE(read.fromRegistryString("{01234567-89AB-CDEF-1032-547698BADCFE}"));
    EXPECT_TRUE(read == kSample);
}

TEST(FUID, RegistryTextIsReadWithoutALookAtBracesAndDashes) {
    FUID read;
    ASSERT_TRUE(read.fromRegistryString("?01234567?89AB?CDEF?1032?547698BADCFE?"));
    EXPECT_TRUE(read == kSample);
}

TEST(FUID, ThirtyEightCharactersOfNonsenseAreARegistryText) {
    FUID uid(kSample);
    EXPECT_TRUE(uid.fromRegistryString("thirty-eight characters of nonsense, !"));
}

TEST(FUID, RegistryTextOfAnyOtherLengthIsRefusedAndChangesNothing) {
    FUID uid(kSample);
    EXPECT_FALSE(uid.fromRegistryString(nullptr));
    EXPECT_FALSE(uid.fromRegistryString(""));
    EXPECT_FALSE(uid.fromRegistryString("{01234567-89AB-CDEF-1032-547698BADCFE"));
    EXPECT_FALSE(uid.fromRegistryString("{01234567-89AB-CDEF-1032-547698BADCFE}}"));
    EXPECT_TRUE(uid == kSample);
}

TEST(FUID, PrintsItsLongsAsSourceText) {
    const char* const expected[] = {
        "INLINE_UID (0x01234567, 0x89ABCDEF, 0x10325476, 0x98BADCFE)",
        "DECLARE_UID (0x01234567, 0x89ABCDEF, 0x10325476, 0x98BADCFE)",
        "FUID (0x01234567, 0x89ABCDEF, 0x10325476, 0x98BADCFE)",
        "DECLARE_CLASS_IID (Interface, 0x01234567, 0x89ABCDEF, 0x10325476, 0x98BADCFE)",
        "DECLARE_CLASS_IID (Interface, 0x01234567, 0x89ABCDEF, 0x10325476, 0x98BADCFE)",
    };
    for (int format = 0; format < 5; ++format) {
        char buffer[FUID::kPrintSize];
        FUID(kSample).print(static_cast<FUID::PrintFormat>(format), buffer);
        EXPECT_STREQ(buffer, expected[format]);
    }
    char buffer[FUID::kPrintSize];
    FUID(kSample).print(static_cast<FUID::PrintFormat>(-1), buffer);
    EXPECT_STREQ(buffer, expected[3]);
}

TEST(FUID, PrintsNowhereButToADebugger) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    FUID(kSample).print(FUID::PrintFormat::constructor, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace tessera
