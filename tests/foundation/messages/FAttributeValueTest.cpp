#include "foundation/messages/FAttributeValue.h"

#include "foundation/containers/CmString.h"
#include "foundation/object/FRefPtr.h"
#include "support/ForeignObject.h"
#include "support/OrderedNumber.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using namespace AttributeBits;
using test::OrderedNumber;
using Foreign = test::ForeignObject<>;
using Holding = FAttributeValue::TextHolding;

TEST(FAttributeValue, IsBornEmpty) {
    FAttributeValue value;
    EXPECT_EQ(value.getType(), 0);
    EXPECT_EQ(value.getInt(), 0);
    EXPECT_EQ(value.getFloat(), 0);
    EXPECT_EQ(value.getString8(), nullptr);
    EXPECT_EQ(value.getString16(), nullptr);
    EXPECT_EQ(value.getObject(), nullptr);
    EXPECT_EQ(value.getForeign(), nullptr);
    EXPECT_EQ(value.getPointer(), nullptr);
}

struct FlagRow {
    std::uint16_t flags;
    std::uint16_t marks;
};

class FAttributeValueFlags : public testing::TestWithParam<FlagRow> {};

TEST_P(FAttributeValueFlags, BecomeMarksThatSurviveEveryChange) {
    const FlagRow& row = GetParam();
    FAttributeValue value(row.flags);
    EXPECT_EQ(value.getType(), row.marks);
    value.setInt(1);
    EXPECT_EQ(value.getType(), row.marks | 0x0001);
    value.setFloat(1);
    EXPECT_EQ(value.getType(), row.marks | 0x0004);
    value.setString8("text");
    EXPECT_EQ(value.getType(), row.marks | 0x0008);
    value.clear();
    EXPECT_EQ(value.getType(), row.marks);
}

INSTANTIATE_TEST_SUITE_P(Rows, FAttributeValueFlags,
                         testing::Values(FlagRow{0, 0}, FlagRow{1, 0x0040}, FlagRow{2, 0x0080}, FlagRow{4, 0},
                                         FlagRow{8, 0x0800}, FlagRow{11, 0x08c0}));

TEST(FAttributeValue, HoldsNumbers) {
    FAttributeValue value;
    value.setInt(-9000000000000000000);
    EXPECT_EQ(value.getInt(), -9000000000000000000);
    value.setFloat(-0.25);
    EXPECT_EQ(value.getFloat(), -0.25);
}

TEST(FAttributeValue, ANumberOfTheOtherKindIsNotConverted) {
    FAttributeValue value;
    value.setInt(3);
    EXPECT_EQ(value.getFloat(), 0);
    value.setFloat(3);
    EXPECT_EQ(value.getInt(), 0);
}

TEST(FAttributeValue, NumbersAreFoundInTexts) {
    FAttributeValue value;
    value.setString8("about -42.5 dB");
    EXPECT_EQ(value.getInt(), -42);
    EXPECT_EQ(value.getFloat(), -42.5);
    value.setString16(u"take 7", Holding::byReference);
    EXPECT_EQ(value.getInt(), 7);
    value.setString8("none");
    EXPECT_EQ(value.getInt(), 0);
    EXPECT_EQ(value.getFloat(), 0);
}

TEST(FAttributeValue, CopiesTextsOrPointsAtThem) {
    char text[] = "first";
    FAttributeValue copied;
    FAttributeValue pointing;
    copied.setString8(text);
    pointing.setString8(text, Holding::byReference);
    text[0] = 'F';
    EXPECT_STREQ(copied.getString8(), "first");
    EXPECT_EQ(pointing.getString8(), text);
    EXPECT_EQ(copied.getType(), 0x0008);
    EXPECT_EQ(pointing.getType(), 0x0018);
}

TEST(FAttributeValue, ARawWideTextIsMarkedAsSuch) {
    const char16_t text[] = u"wide";
    FAttributeValue value;
    value.setString16(text, Holding::byReference);
    EXPECT_EQ(value.getType(), 0x0418);
    EXPECT_EQ(value.getString16(), text);
}

TEST(FAttributeValue, ATextOfTheOtherWidthBecomesItsOwn) {
    FAttributeValue value;
    value.setString16(u"wide", Holding::byReference);
    EXPECT_STREQ(value.getString8(), "wide");
    EXPECT_EQ(value.getType(), 0x0008);
    value.setString8("narrow", Holding::byReference);
    EXPECT_EQ(std::u16string(value.getString16()), u"narrow");
    EXPECT_EQ(value.getType(), 0x0008);
}

TEST(FAttributeValue, ANullTextIsEmpty) {
    FAttributeValue value;
    for (const Holding holding : {Holding::copied, Holding::byReference}) {
        value.setString8(nullptr, holding);
        EXPECT_STREQ(value.getString8(), "");
        value.setString16(nullptr, holding);
        EXPECT_EQ(std::u16string(value.getString16()), u"");
    }
}

TEST(FAttributeValue, ItsOwnTextMayBeSetAgain) {
    FAttributeValue value;
    value.setString8("tessera");
    value.setString8(value.getString8() + 4);
    EXPECT_STREQ(value.getString8(), "era");
    value.setString8(value.getString8(), Holding::copied);
    EXPECT_STREQ(value.getString8(), "era");
}

TEST(FAttributeValue, ATextObjectCountsAsText) {
    const auto text = FRefPtr<CmString>::adopt(new CmString(FStringRef("12 bars")));
    FAttributeValue value;
    value.setObject(text.get(), kByReference);
    EXPECT_STREQ(value.getString8(), "12 bars");
    EXPECT_EQ(value.getInt(), 12);
    EXPECT_EQ(value.getObject(), text.get());
    EXPECT_EQ(value.getType(), 0x0012);
}

TEST(FAttributeValue, AnyOtherObjectIsNoText) {
    OrderedNumber number(1);
    FAttributeValue value;
    value.setObject(&number, 0);
    EXPECT_EQ(value.getString8(), nullptr);
    EXPECT_EQ(value.getInt(), 0);
}

TEST(FAttributeValue, ASharedObjectIsReferencedAndReleased) {
    OrderedNumber number(1);
    {
        FAttributeValue value;
        value.setObject(&number, kByReference);
        EXPECT_EQ(number.getReferenceCount(), 2u);
        value.setInt(1);
        EXPECT_EQ(number.getReferenceCount(), 1u);
        value.setObject(&number, kByReference);
    }
    EXPECT_EQ(number.getReferenceCount(), 1u);
}

TEST(FAttributeValue, AnOwnedObjectGoesWithTheValue) {
    const int before = OrderedNumber::alive;
    {
        FAttributeValue value;
        value.setObject(new OrderedNumber(1), kOwned);
        EXPECT_EQ(value.getType(), 0x0022);
        EXPECT_EQ(OrderedNumber::alive, before + 1);
    }
    EXPECT_EQ(OrderedNumber::alive, before);
}

TEST(FAttributeValue, AnUnheldObjectIsOnlyPointedAt) {
    OrderedNumber number(1);
    {
        FAttributeValue value;
        value.setObject(&number, 0);
        EXPECT_EQ(value.getType(), 0x0002);
    }
    EXPECT_EQ(number.getReferenceCount(), 1u);
}

TEST(FAttributeValue, AnObjectThatIsHeldAlreadyStaysAsItIs) {
    OrderedNumber number(1);
    FAttributeValue value;
    value.setObject(&number, 0);
    value.setObject(&number, kByReference);
    EXPECT_EQ(number.getReferenceCount(), 1u);
    EXPECT_EQ(value.getType(), 0x0002);
}

TEST(FAttributeValue, ANullObjectClears) {
    FAttributeValue value(1);
    value.setInt(5);
    value.setObject(nullptr, kByReference);
    EXPECT_EQ(value.getType(), 0x0040);
    value.setForeign(nullptr, kByReference);
    EXPECT_EQ(value.getForeign(), nullptr);
}

TEST(FAttributeValue, AForeignObjectIsHeldByItsReference) {
    Foreign object;
    {
        FAttributeValue value;
        value.setForeign(&object, kByReference);
        EXPECT_EQ(value.getType(), 0x0110);
        EXPECT_EQ(value.getForeign(), &object);
        EXPECT_EQ(value.getObject(), nullptr);
        EXPECT_EQ(object.references, 2u);
    }
    EXPECT_EQ(object.references, 1u);
}

TEST(FAttributeValue, OnlyAPointerIsAPointer) {
    int target = 0;
    FAttributeValue value;
    value.setPointer(&target);
    EXPECT_EQ(value.getType(), 0x0200);
    EXPECT_EQ(value.getPointer(), &target);
    value.setInt(5);
    EXPECT_EQ(value.getPointer(), nullptr);
}

TEST(FAttributeValue, ACopyClonesWhatIsOwnedAndSharesTheRest) {
    const int before = OrderedNumber::alive;
    OrderedNumber shared(2);
    FAttributeValue value;
    value.setObject(new OrderedNumber(1), kOwned);
    {
        const FAttributeValue copy(value);
        EXPECT_NE(copy.getObject(), value.getObject());
        EXPECT_EQ(static_cast<OrderedNumber*>(copy.getObject())->value, 1);
        EXPECT_EQ(OrderedNumber::alive, before + 3);
    }
    value.setObject(&shared, kByReference);
    {
        const FAttributeValue copy(value);
        EXPECT_EQ(copy.getObject(), &shared);
        EXPECT_EQ(shared.getReferenceCount(), 3u);
    }
    EXPECT_EQ(shared.getReferenceCount(), 2u);
}

TEST(FAttributeValue, ACopyHasTextsMarksAndNumbers) {
    FAttributeValue text(2);
    text.setString8("words");
    const auto copy = FRefPtr<FAttributeValue>::adopt(text.clone());
    text.setString8("other");
    EXPECT_STREQ(copy->getString8(), "words");
    EXPECT_EQ(copy->getType(), 0x0088);
    FAttributeValue number;
    number.setFloat(1.5);
    EXPECT_EQ(FAttributeValue(number).getFloat(), 1.5);
    Foreign object;
    FAttributeValue foreign;
    foreign.setForeign(&object, kByReference);
    const FAttributeValue foreignCopy(foreign);
    EXPECT_EQ(object.references, 3u);
}

} // namespace
} // namespace tessera
