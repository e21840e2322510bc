#include "appservices/formatting/CmTime.h"

#include "StoredCountTest.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {

template <>
struct StoredCount<CmTime> {
    static constexpr const char* key = "Seconds";
    static constexpr std::int64_t least = 0;
    static constexpr std::int64_t most = UINT32_MAX;
    static std::int64_t of(const CmTime& object) { return object.getSeconds(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(CmTime, StoredCountTest, CmTime);

} // namespace tessera::test

namespace tessera {
namespace {

TEST(CmTime, IsCreatedByNameAtMidnight) {
    const auto object = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject("CmTime"));
    auto* const time = cmCast<CmTime>(object.get());
    ASSERT_NE(time, nullptr);
    EXPECT_STREQ(time->getClassName(), "CmTime");
    EXPECT_EQ(time->getSeconds(), 0u);
    EXPECT_EQ(time->getText(), FStringRef("00:00:00"));
}

TEST(CmTime, SplitsItsSecondsIntoTheFieldsOfAClock) {
    const CmTime time(49'530);
    EXPECT_EQ(time.getHours(), 13);
    EXPECT_EQ(time.getMinutes(), 45);
    EXPECT_EQ(time.getSecondsOfMinute(), 30);
    EXPECT_EQ(time.getText(), FStringRef("13:45:30"));
}

TEST(CmTime, KeepsACountBeyondADayAndShowsTheTimeOfThatDay) {
    const CmTime time(86'400 + 61);
    EXPECT_EQ(time.getSeconds(), 86'461u);
    EXPECT_EQ(time.secondsOfDay(), 61u);
    EXPECT_EQ(time.getText(), FStringRef("00:01:01"));
    EXPECT_EQ(CmTime(0xffffffffu).getText(), FStringRef("06:28:15"));
}

TEST(CmTime, TakesTheTimeOfDayOutOfACountSince1970) {
    CmTime time;
    time.setFromUnixTime(784'111'777);
    EXPECT_EQ(time.getText(), FStringRef("08:49:37"));
    time.setFromUnixTime(-1);
    EXPECT_EQ(time.getText(), FStringRef("23:59:59"));
    time.setFromUnixTime(INT64_MIN);
    EXPECT_LT(time.getSeconds(), CmTime::kSecondsPerDay);
}

TEST(CmTime, ReadsThreeNumbersWithColons) {
    CmTime time;
    EXPECT_TRUE(time.setText("1:2:3"));
    EXPECT_EQ(time.getSeconds(), 3723u);
    EXPECT_TRUE(time.setText(u"23:59:59"));
    EXPECT_EQ(time.getSeconds(), 86'399u);
}

TEST(CmTime, RefusesTextThatIsNoTimeAndStays) {
    for (const char* text : {"", "1", "1:2", "1:2:3:4", "24:00:00", "1:60:0", "1:0:60", "1:2:3 ", " 1:2:3", "-1:2:3",
                             "a:b:c", "1.2.3", "::", "4294967297:0:0", "00001:0:0"}) {
        SCOPED_TRACE(text);
        CmTime time(77);
        EXPECT_FALSE(time.setText(text));
        EXPECT_EQ(time.getSeconds(), 77u);
    }
}

} // namespace
} // namespace tessera
