#include "appservices/formatting/DateTimeText.h"

#include "appservices/formatting/CmDate.h"
#include "appservices/formatting/CmTime.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

FString internetTextOf(std::int32_t year, std::int32_t month, std::int32_t day, std::uint32_t seconds = 0) {
    CmDate date;
    EXPECT_TRUE(date.setCivil(year, month, day));
    return internetDateText(date, CmTime(seconds));
}

TEST(InternetDateText, SpellsWeekDayDayMonthYearAndTime) {
    EXPECT_EQ(internetTextOf(1994, 11, 6, 31'777), FStringRef("Sun, 06 Nov 1994 08:49:37 GMT"));
    EXPECT_EQ(internetTextOf(2001, 1, 1), FStringRef("Mon, 01 Jan 2001 00:00:00 GMT"));
}

TEST(InternetDateText, AprilPrintsAsMayAndMayAsApril) {
    EXPECT_EQ(internetTextOf(2001, 4, 1), FStringRef("Sun, 01 May 2001 00:00:00 GMT"));
    EXPECT_EQ(internetTextOf(2001, 5, 1), FStringRef("Tue, 01 Apr 2001 00:00:00 GMT"));
}

TEST(InternetDateText, EveryMonthAndWeekDayHasItsName) {
    constexpr const char* kTexts[] = {
        "Mon, 01 Jan 2001 00:00:00 GMT", "Thu, 01 Feb 2001 00:00:00 GMT", "Thu, 01 Mar 2001 00:00:00 GMT",
        "Sun, 01 May 2001 00:00:00 GMT", "Tue, 01 Apr 2001 00:00:00 GMT", "Fri, 01 Jun 2001 00:00:00 GMT",
        "Sun, 01 Jul 2001 00:00:00 GMT", "Wed, 01 Aug 2001 00:00:00 GMT", "Sat, 01 Sep 2001 00:00:00 GMT",
        "Mon, 01 Oct 2001 00:00:00 GMT", "Thu, 01 Nov 2001 00:00:00 GMT", "Sat, 01 Dec 2001 00:00:00 GMT"};
    for (std::int32_t month = 1; month <= 12; ++month) {
        EXPECT_EQ(internetTextOf(2001, month, 1), FStringRef(kTexts[month - 1]));
    }
}

TEST(InternetDateText, ATimeBeyondADayShowsTheTimeOfThatDay) {
    EXPECT_EQ(internetTextOf(2001, 1, 1, 86'400 + 3'723), FStringRef("Mon, 01 Jan 2001 01:02:03 GMT"));
}

TEST(ReadDateTime, ReadsBothParts) {
    CmDate date;
    CmTime time;
    EXPECT_TRUE(readDateTime("2001-01-01 10:00:00", date, time));
    EXPECT_EQ(date.getText(), FStringRef("2001-01-01"));
    EXPECT_EQ(time.getText(), FStringRef("10:00:00"));
    EXPECT_TRUE(readDateTime(u"1994-11-06 8:49:37", date, time));
    EXPECT_EQ(internetDateText(date, time), FStringRef("Sun, 06 Nov 1994 08:49:37 GMT"));
}

TEST(ReadDateTime, WithoutATimeItIsMidnight) {
    CmDate date;
    CmTime time(5);
    EXPECT_TRUE(readDateTime("2001-01-01", date, time));
    EXPECT_EQ(date.getJulianDay(), 2'451'911);
    EXPECT_EQ(time.getSeconds(), 0u);
    time.setSeconds(5);
    EXPECT_TRUE(readDateTime(u"2001-01-01", date, time));
    EXPECT_EQ(time.getSeconds(), 0u);
}

TEST(ReadDateTime, GivesNothingUnlessBothPartsAreGood) {
    for (const char* text : {"", " ", "2001-01-01 ", "2001-01-01 25:00:00", "2001-13-01 10:00:00", "10:00:00",
                             "2001-01-01  10:00:00", "2001-01-01 10:00:00 ", "2001-01-01T10:00:00", " 10:00:00"}) {
        SCOPED_TRACE(text);
        CmDate date(1);
        CmTime time(2);
        EXPECT_FALSE(readDateTime(text, date, time));
        EXPECT_EQ(date.getJulianDay(), 1);
        EXPECT_EQ(time.getSeconds(), 2u);
    }
}

} // namespace
} // namespace tessera
