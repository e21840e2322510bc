#include "foundation/values/UIntValue.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/values/CutToInteger.h"
#include "foundation/values/ValueDoubles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tessera {
namespace {

using test::NotedTarget;
using test::NotedValue;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

TEST(UIntValue, BeginsAt0InTheRange0To1) {
    const UIntValue value;
    EXPECT_EQ(value.getValue(), 0);
    EXPECT_EQ(value.getMinimum(), 0);
    EXPECT_EQ(value.getMaximum(), 1);
    EXPECT_EQ(value.getDefault(), 0);
}

TEST(UIntValue, WithoutWrappingIsClamped) {
    const UIntValue value(0, 0, 3);
    EXPECT_EQ(value.limit(9), 3);
    EXPECT_EQ(value.limit(-9), 0);
    EXPECT_EQ(value.limit(2), 2);
    EXPECT_EQ(value.limit(kLeast), 0);
    EXPECT_EQ(value.limit(kMost), 3);
}

TEST(UIntValue, WrapsAroundTheEndsOfTheRange) {
    UIntValue value(0, 0, 3);
    value.setWrap(true);
    EXPECT_EQ(value.limit(5), 1);
    EXPECT_EQ(value.limit(-1), 3);
    EXPECT_EQ(value.limit(0), 0);
    EXPECT_EQ(value.limit(3), 3);
    EXPECT_EQ(value.limit(4), 0);
    EXPECT_EQ(value.limit(-2), 2);
}

// Values in documents depend on it.
TEST(UIntValue, WrappingAMultipleOfTheWidthLeavesTheRange) {
    UIntValue value(0, 0, 3);
    value.setWrap(true);
    EXPECT_EQ(value.limit(6), -1);
    EXPECT_EQ(value.limit(-3), -1);
    UIntValue flag;
    flag.setWrap(true);
    for (const std::int32_t outside : {-5, -1, 2, 3, 100}) {
        EXPECT_EQ(flag.limit(outside), -1) << outside;
    }
}

TEST(UIntValue, WrapsInTheWidestRangesWithoutOverflow) {
    UIntValue value(0, kLeast, kMost - 1);
    value.setWrap(true);
    EXPECT_EQ(value.limit(kMost), kLeast);
    UIntValue low(kLeast, kLeast, kLeast + 2);
    low.setWrap(true);
    EXPECT_EQ(low.limit(kLeast + 4), kLeast);
    EXPECT_EQ(low.limit(kLeast + 3), kLeast);
}

TEST(UIntValue, ARangeWithoutWidthDoesNotWrap) {
    UIntValue value(5, 5, 5);
    value.setWrap(true);
    EXPECT_EQ(value.limit(9), 5);
    EXPECT_EQ(value.limit(1), 5);
}

TEST(UIntValue, SetAsksThenStoresThenTells) {
    NotedTarget target;
    NotedValue value(0, 0, 10);
    value.setTarget(&target, 0, false);
    value.setValue(4);
    EXPECT_THAT(value.steps, ElementsAre("check", "apply", "notify"));
    EXPECT_THAT(target.updates, ElementsAre(1));
    EXPECT_EQ(value.getValue(), 4);
}

TEST(UIntValue, SetToTheSameValueDoesNothing) {
    NotedValue value(10, 0, 10);
    value.setValue(10);
    value.setValue(99);
    EXPECT_THAT(value.steps, IsEmpty());
}

TEST(UIntValue, SetToAForbiddenValueLeavesIt) {
    NotedValue value(1, 0, 10);
    value.permitted = false;
    value.setValue(2);
    EXPECT_EQ(value.getValue(), 1);
    EXPECT_THAT(value.steps, ElementsAre("check"));
}

TEST(UIntValue, WithReportingOffIsStoredSilently) {
    NotedValue value(1, 0, 10);
    value.setReport(false);
    value.setValue(2);
    EXPECT_EQ(value.getValue(), 2);
    EXPECT_THAT(value.steps, ElementsAre("check", "apply"));
}

TEST(UIntValue, ANormalizedValueSpansTheRangeAndIsCut) {
    UIntValue value(0, -10, 10);
    value.setNormalized(0.5);
    EXPECT_EQ(value.getValue(), 0);
    value.setNormalized(1);
    EXPECT_EQ(value.getValue(), 10);
    value.setNormalized(0.24);
    EXPECT_EQ(value.getValue(), -5);
    value.setNormalized(1e300);
    EXPECT_EQ(value.getValue(), 10);
    value.setNormalized(std::nan(""));
    EXPECT_EQ(value.getValue(), 0);
    UIntValue wide(0, kLeast, kMost);
    wide.setNormalized(1);
    EXPECT_EQ(wide.getValue(), kMost);
}

TEST(UIntValue, StepsStopAtTheEndsEvenWhenItWraps) {
    UIntValue value(2, 0, 3);
    value.setWrap(true);
    value.increment();
    EXPECT_EQ(value.getValue(), 3);
    value.increment();
    EXPECT_EQ(value.getValue(), 3);
    value.setValue(1);
    value.decrement();
    value.decrement();
    EXPECT_EQ(value.getValue(), 0);
    UIntValue extreme(kMost, kLeast, kMost);
    extreme.increment();
    EXPECT_EQ(extreme.getValue(), kMost);
}

TEST(UIntValue, CopiesTheNumberOfAnotherValueIntoItsOwnRange) {
    UIntValue value(2, 0, 3);
    const UIntValue other(9, 0, 10);
    value.copyValue(&other);
    EXPECT_EQ(value.getValue(), 3);
    value.copyValue(nullptr);
    EXPECT_EQ(value.getValue(), 3);
}

TEST(UIntValue, ToggleBracketsAPermittedChange) {
    NotedValue value(0, 0, 1);
    value.toggle();
    EXPECT_EQ(value.getValue(), 1);
    EXPECT_THAT(value.steps,
                ElementsAre("check", "begin", "check", "notify", "check", "apply", "notify", "end", "check", "notify"));
    value.toggle();
    EXPECT_EQ(value.getValue(), 0);
    NotedValue large(7, 0, 10);
    large.toggle();
    EXPECT_EQ(large.getValue(), 0);
}

TEST(UIntValue, ToggleOfAForbiddenChangeHasNoBracket) {
    NotedValue value(0, 0, 1);
    value.permitted = false;
    value.toggle();
    EXPECT_EQ(value.getValue(), 0);
    EXPECT_THAT(value.steps, ElementsAre("check", "check"));
}

TEST(UIntValue, ACloneHasStateTagTargetAndNumbers) {
    NotedTarget target;
    UIntValue value(5, -2, 8);
    value.setTarget(&target, 99, false);
    value.setWrap(true);
    const auto copy = FRefPtr<UIntValue>::adopt(value.clone());
    EXPECT_EQ(copy->getValue(), 5);
    EXPECT_EQ(copy->getMinimum(), -2);
    EXPECT_EQ(copy->getMaximum(), 8);
    EXPECT_EQ(copy->getTag(), 99u);
    EXPECT_EQ(copy->getTarget(), &target);
    EXPECT_EQ(copy->getState(), value.getState());
    EXPECT_EQ(copy->getReferenceCount(), 1u);
}

TEST(UIntValue, ANewRangeLimitsTheNextValueOnly) {
    UIntValue value(5, 0, 10);
    value.setMaximum(3);
    EXPECT_EQ(value.getValue(), 5);
    value.setValue(9);
    EXPECT_EQ(value.getValue(), 3);
    value.setMinimum(2);
    value.setValue(0);
    EXPECT_EQ(value.getValue(), 2);
}

struct Entry {
    const char* text;
    std::int32_t before;
    bool read;
    std::int32_t after;
};

TEST(UIntValue, ReadsNumbersAndOperationsOnThePresentValue) {
    const Entry entries[] = {
        {"2*", 8, true, 16},       {"0/", 8, false, 8},        {"12", 8, true, 12},   {"-5", 8, true, -5},
        {"5-", 8, true, 3},        {"5+", 8, true, 13},        {"2/", 8, true, 4},    {"3/", 8, true, 2},
        {"1.5*", 8, true, 12},     {"0.3*", 8, true, 2},       {"3.9", 8, true, 3},   {"-3.9", 8, true, -3},
        {"-2*", 8, true, -16},     {" 7", 8, true, 7},         {"7 ", 8, false, 8},   {"", 8, false, 8},
        {"*", 8, false, 8},        {"-", 8, false, 8},         {"+", 8, false, 8},    {"/", 8, false, 8},
        {"abc", 8, false, 8},      {"x*", 8, false, 8},        {"7x", 8, false, 8},   {"inf", 8, false, 8},
        {"nan", 8, false, 8},      {"-inf", 8, false, 8},      {"inf*", 8, false, 8}, {"nan+", 8, false, 8},
        {"0*", 8, true, 0},        {"1e3", 8, true, 1000},     {"-0/", 8, false, 8},  {"1e2+", 8, true, 108},
        {"1e30*", 8, true, kMost}, {"1e30-", 8, true, kLeast},
    };
    for (const Entry& entry : entries) {
        SCOPED_TRACE(entry.text);
        UIntValue value(entry.before, kLeast, kMost);
        EXPECT_EQ(value.setString(entry.text), entry.read);
        EXPECT_EQ(value.getValue(), entry.after);
        UIntValue wide(entry.before, kLeast, kMost);
        FString text(entry.text);
        text.toWide();
        EXPECT_EQ(wide.setString(text), entry.read);
        EXPECT_EQ(wide.getValue(), entry.after);
    }
}

TEST(UIntValue, AnOperationIsLimitedByTheRange) {
    UIntValue value(8, 0, 10);
    EXPECT_TRUE(value.setString("2*"));
    EXPECT_EQ(value.getValue(), 10);
}

TEST(UIntValue, PrintsItsNumber) {
    FString text;
    EXPECT_TRUE(UIntValue(-42, -100, 100).getString(text));
    EXPECT_TRUE(text == FStringRef("-42"));
}

TEST(CutToInteger, CutsTheFractionAndStaysInRange) {
    EXPECT_EQ(cutToInteger(2.9), 2);
    EXPECT_EQ(cutToInteger(-2.9), -2);
    EXPECT_EQ(cutToInteger(2147483646.9), kMost - 1);
    EXPECT_EQ(cutToInteger(2147483647.0), kMost);
    EXPECT_EQ(cutToInteger(-2147483648.5), kLeast);
    EXPECT_EQ(cutToInteger(INFINITY), kMost);
    EXPECT_EQ(cutToInteger(-INFINITY), kLeast);
    EXPECT_EQ(cutToInteger(NAN), 0);
}

} // namespace
} // namespace tessera
