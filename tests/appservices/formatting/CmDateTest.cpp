#include "appservices/formatting/CmDate.h"

#include "StoredCountTest.h"
#include "appservices/formatting/CmTime.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {

template <>
struct StoredCount<CmDate> {
    static constexpr const char* key = "Julian";
    static constexpr std::int64_t least = INT32_MIN;
    static constexpr std::int64_t most = INT32_MAX;
    static std::int64_t of(const CmDate& object) { return object.getJulianDay(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(CmDate, StoredCountTest, CmDate);

} // namespace tessera::test

namespace tessera {
namespace {

CmDate dateOf(std::int32_t year, std::int32_t month, std::int32_t day) {
    CmDate date;
    EXPECT_TRUE(date.setCivil(year, month, day)) << year << ' ' << month << ' ' << day;
    return date;
}

TEST(CmDate, IsCreatedByNameOnDay0) {
    const auto object = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject("CmDate"));
    auto* const date = cmCast<CmDate>(object.get());
    ASSERT_NE(date, nullptr);
    EXPECT_STREQ(date->getClassName(), "CmDate");
    EXPECT_EQ(date->getJulianDay(), 0);
    EXPECT_EQ(date->getText(), FStringRef("-4713-11-24"));
}

struct KnownDay {
    std::int32_t julianDay;
    CmDate::Civil civil;
    // 0 is Monday.
    std::int32_t weekDay;
};

// From printed tables of Julian days.
constexpr KnownDay kKnownDays[] = {
    {1'721'060, {0, 1, 1}, 5},      {1'721'119, {0, 2, 29}, 1},     {1'721'426, {1, 1, 1}, 0},
    {2'299'161, {1582, 10, 15}, 4}, {2'415'021, {1900, 1, 1}, 0},   {2'415'079, {1900, 2, 28}, 2},
    {2'415'080, {1900, 3, 1}, 3},   {2'440'588, {1970, 1, 1}, 3},   {2'449'663, {1994, 11, 6}, 6},
    {2'451'545, {2000, 1, 1}, 5},   {2'451'604, {2000, 2, 29}, 1},  {2'451'911, {2001, 1, 1}, 0},
    {2'460'311, {2024, 1, 1}, 0},   {5'373'484, {9999, 12, 31}, 4},
};

TEST(CmDate, ConvertsKnownDaysBothWays) {
    for (const KnownDay& known : kKnownDays) {
        SCOPED_TRACE(known.julianDay);
        const CmDate date(known.julianDay);
        EXPECT_EQ(date.getCivil().year, known.civil.year);
        EXPECT_EQ(date.getCivil().month, known.civil.month);
        EXPECT_EQ(date.getCivil().day, known.civil.day);
        EXPECT_EQ(date.getWeekDay(), known.weekDay);
        EXPECT_EQ(dateOf(known.civil.year, known.civil.month, known.civil.day).getJulianDay(), known.julianDay);
    }
}

TEST(CmDate, EveryDayOfTwoErasFollowsTheOneBeforeIt) {
    CmDate::Civil before = CmDate(2'299'160).getCivil();
    for (std::int32_t day = 2'299'161; day < 2'299'161 + 2 * 146'097; ++day) {
        const CmDate::Civil civil = CmDate(day).getCivil();
        const bool sameMonth = civil.day == before.day + 1 && civil.month == before.month && civil.year == before.year;
        const bool nextMonth = civil.day == 1 && civil.month == before.month + 1 && civil.year == before.year;
        const bool nextYear = civil.day == 1 && civil.month == 1 && civil.year == before.year + 1;
        ASSERT_TRUE(sameMonth || nextMonth || nextYear) << day;
        ASSERT_EQ(dateOf(civil.year, civil.month, civil.day).getJulianDay(), day);
        before = civil;
    }
}

TEST(CmDate, TheEndsOfTheCountAreDays) {
    for (const std::int32_t day : {INT32_MIN, INT32_MIN + 1, -1, INT32_MAX}) {
        const CmDate date(day);
        EXPECT_GE(date.getCivil().month, 1) << day;
        EXPECT_LE(date.getCivil().month, 12) << day;
        EXPECT_GE(date.getCivil().day, 1) << day;
        EXPECT_LE(date.getCivil().day, 31) << day;
        EXPECT_GE(date.getWeekDay(), 0) << day;
        EXPECT_LE(date.getWeekDay(), 6) << day;
    }
}

TEST(CmDate, RefusesDaysThatTheCalendarDoesNotHave) {
    constexpr CmDate::Civil kNone[] = {{2001, 2, 29}, {1900, 2, 29}, {2001, 4, 31}, {2001, 0, 1},  {2001, 13, 1},
                                       {2001, 1, 0},  {2001, 1, 32}, {-1, 1, 1},    {10'000, 1, 1}};
    for (const CmDate::Civil& civil : kNone) {
        CmDate date(5);
        EXPECT_FALSE(date.setCivil(civil.year, civil.month, civil.day)) << civil.year << '-' << civil.month;
        EXPECT_EQ(date.getJulianDay(), 5);
    }
}

TEST(CmDate, DaysBeforeTheFirstSortAheadAndHaveAHash) {
    const CmDate early(-3);
    const CmDate late(0);
    EXPECT_LT(early.compare(&late), 0);
    EXPECT_GT(late.compare(&early), 0);
    EXPECT_LT(early.hash(7), 7u);
}

TEST(CmDate, TakesTheDayOutOfACountSince1970) {
    CmDate date;
    date.setFromUnixTime(0);
    EXPECT_EQ(date.getJulianDay(), CmDate::kUnixEpoch);
    date.setFromUnixTime(86'399);
    EXPECT_EQ(date.getJulianDay(), CmDate::kUnixEpoch);
    date.setFromUnixTime(86'400);
    EXPECT_EQ(date.getJulianDay(), CmDate::kUnixEpoch + 1);
    date.setFromUnixTime(-1);
    EXPECT_EQ(date.getJulianDay(), CmDate::kUnixEpoch - 1);
    date.setFromUnixTime(INT64_MAX);
    EXPECT_EQ(date.getJulianDay(), INT32_MAX);
    date.setFromUnixTime(INT64_MIN);
    EXPECT_EQ(date.getJulianDay(), INT32_MIN);
}

TEST(CmDate, CountsTheSecondsOfAMomentBeyond32Bits) {
    EXPECT_EQ(CmDate(2'440'588).getSeconds(CmTime(1)), 2'440'588ll * 86'400 + 1);
    EXPECT_EQ(CmDate(-1).getSeconds(CmTime(0)), -86'400);
    // A count beyond a day doesn't reach into the next one.
    EXPECT_EQ(CmDate(1).getSeconds(CmTime(86'400 + 5)), 86'405);
}

TEST(CmDate, TwoMomentsOfOneDayDiffer) {
    CmDate date;
    CmTime time;
    date.setFromUnixTime(784'111'777);
    time.setFromUnixTime(784'111'777);
    const std::int64_t first = date.getSeconds(time);
    time.setFromUnixTime(784'111'778);
    EXPECT_EQ(date.getSeconds(time), first + 1);
}

TEST(CmDate, ReadsYearMonthAndDay) {
    CmDate date;
    EXPECT_TRUE(date.setText("2001-01-01"));
    EXPECT_EQ(date.getJulianDay(), 2'451'911);
    EXPECT_TRUE(date.setText(u"1994-11-6"));
    EXPECT_EQ(date.getText(), FStringRef("1994-11-06"));
}

TEST(CmDate, RefusesTextThatIsNoDateAndStays) {
    for (const char* text : {"", "2001", "2001-01", "2001-01-01-01", "2001-02-29", "2001-00-01", "01/01/2001",
                             "2001-01-01 ", "-2001-01-01", "20010-01-01", "x"}) {
        SCOPED_TRACE(text);
        CmDate date(9);
        EXPECT_FALSE(date.setText(text));
        EXPECT_EQ(date.getJulianDay(), 9);
    }
}

} // namespace
} // namespace tessera
