#include "appservices/formatting/CmTime.h"
#include "foundation/containers/CmString.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"

#include <gtest/gtest.h>

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

TEST(CmTime, ComparesAndHashesByItsSeconds) {
    const CmTime early(10);
    const CmTime same(10);
    const CmTime late(20);
    const CmString other(FStringRef("10"));
    EXPECT_TRUE(early.isEqual(&same));
    EXPECT_FALSE(early.isEqual(&late));
    EXPECT_FALSE(early.isEqual(&other));
    EXPECT_FALSE(early.isEqual(nullptr));
    EXPECT_LT(early.compare(&late), 0);
    EXPECT_GT(late.compare(&early), 0);
    EXPECT_EQ(early.compare(&same), 0);
    EXPECT_EQ(late.hash(7), 6u);
    EXPECT_EQ(late.hash(0), 0u);
}

TEST(CmTime, IsClonedWithItsSeconds) {
    const CmTime time(12'345);
    const auto copy = FRefPtr<CmTime>::adopt(time.clone());
    EXPECT_NE(copy.get(), &time);
    EXPECT_EQ(copy->getSeconds(), 12'345u);
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

TEST(CmTime, KeepsItsCountUnderSecondsAsAnInteger) {
    FAttributes attributes;
    ASSERT_TRUE(CmTime(12'345).storeAttributes(attributes));
    ASSERT_EQ(attributes.getCount(), 1);
    EXPECT_TRUE(attributes.at(0)->hasType(AttributeBits::kInteger));
    std::int64_t stored = 0;
    ASSERT_TRUE(attributes.getInt("Seconds", stored));
    EXPECT_EQ(stored, 12'345);
    CmTime restored;
    ASSERT_TRUE(restored.restoreAttributes(attributes));
    EXPECT_EQ(restored.getSeconds(), 12'345u);
}

TEST(CmTime, StaysWhenItsAttributeIsMissing) {
    FAttributes attributes;
    CmTime object(7);
    EXPECT_FALSE(object.restoreAttributes(attributes));
    EXPECT_EQ(object.getSeconds(), 7u);
}

TEST(CmTime, TakesTheNearestCountForANumberThatDoesNotFit) {
    FAttributes attributes;
    CmTime object;
    attributes.setInt("Seconds", -1);
    ASSERT_TRUE(object.restoreAttributes(attributes));
    EXPECT_EQ(object.getSeconds(), 0u);
    attributes.setInt("Seconds", std::int64_t{1} << 40);
    ASSERT_TRUE(object.restoreAttributes(attributes));
    EXPECT_EQ(object.getSeconds(), UINT32_MAX);
}

} // namespace
} // namespace tessera
