#include "foundation/object/CmUID.h"

#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

constexpr FUIDBytes kSample = "{01234567-89AB-CDEF-1032-547698BADCFE}"_uid;

std::string memoryDigitsOf(const CmUID& uid) {
    char buffer[FUID::kTextSize];
    uid.toMemoryDigits(buffer);
    return buffer;
}

std::string base32Of(const CmUID& uid) {
    char buffer[CmUID::kBase32Size];
    uid.toBase32(buffer);
    return buffer;
}

TEST(CmUID, EqualsAnotherWithTheSameBytes) {
    const CmUID a(kSample);
    const CmUID b(kSample);
    const CmUID zero;
    const CmObject other;
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_FALSE(a.isEqual(&zero));
    EXPECT_FALSE(a.isEqual(&other));
    EXPECT_FALSE(a.isEqual(nullptr));
}

TEST(CmUID, ACloneHasTheSameBytes) {
    const CmUID uid(kSample);
    const auto copy = FRefPtr<CmUID>::adopt(uid.clone());
    EXPECT_TRUE(copy->bytes() == kSample);
    EXPECT_FALSE(CmUID(static_cast<const CmUID*>(nullptr)).isValid());
}

TEST(CmUID, TheTwoDigitFormsDifferInTheOrderOfTheWords) {
    const CmUID uid(kSample);
    char text[FUID::kTextSize];
    uid.toString(text);
    EXPECT_STREQ(text, "0123456789ABCDEF1032547698BADCFE");
    EXPECT_EQ(memoryDigitsOf(uid), "67452301AB89EFCD1032547698BADCFE");
}

struct DigitRow {
    const char* name;
    const char* text;
    const char* read;
};

class CmUIDDigits : public testing::TestWithParam<DigitRow> {};

TEST_P(CmUIDDigits, AreReadAPairAtATime) {
    CmUID uid("{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"_uid);
    uid.fromMemoryDigits(GetParam().text);
    EXPECT_EQ(memoryDigitsOf(uid), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CmUIDDigits,
    testing::Values(
        DigitRow{"Upper", "67452301AB89EFCD1032547698BADCFE", "67452301AB89EFCD1032547698BADCFE"},
        DigitRow{"Lower", "67452301ab89efcd1032547698badcfe", "67452301AB89EFCD1032547698BADCFE"},
        DigitRow{"NoDigitCountsZero", "67g52z01AB89EFCD1032547698BADCFE", "67052001AB89EFCD1032547698BADCFE"},
        DigitRow{"Short", "674", "67400000000000000000000000000000"},
        DigitRow{"Empty", "", "00000000000000000000000000000000"},
        DigitRow{"AtMostThirtyTwo", "67452301AB89EFCD1032547698BADCFE99", "67452301AB89EFCD1032547698BADCFE"}),
    [](const auto& row) { return row.param.name; });

TEST(CmUID, Base32TakesFiveBitsFromTheLowEnd) {
    // Byte 0 is 0x67 = 01100111b: the lowest five bits are 00111b = 7; then 011b and the two lowest bits of 0x45, 01b,
    // give 01011b = 11 = B.
    const std::string text = base32Of(CmUID(kSample));
    ASSERT_EQ(text.size(), 26u);
    EXPECT_EQ(text.substr(0, 2), "7B");
}

TEST(CmUID, Base32OfAllBitsEndsInTheThreeThatAreLeft) {
    EXPECT_EQ(base32Of(CmUID("{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"_uid)), "VVVVVVVVVVVVVVVVVVVVVVVVV7");
    EXPECT_EQ(base32Of(CmUID()), "00000000000000000000000000");
}

TEST(CmUID, Base32ReadsBackWhatItWrote) {
    CmUID uid;
    uid.fromBase32(base32Of(CmUID(kSample)).c_str());
    EXPECT_TRUE(uid.bytes() == kSample);
    uid.fromBase32("VVVVVVVVVVVVVVVVVVVVVVVVVV");
    EXPECT_TRUE(uid.bytes() == "{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"_uid);
    uid.fromBase32("1");
    EXPECT_EQ(memoryDigitsOf(uid), "01000000000000000000000000000000");
}

} // namespace
} // namespace tessera
