#include "appservices/formatting/UFormatedValue.h"

#include "appservices/translation/TranslationTable.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/values/UIntValue.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tessera {
namespace {

using Kind = UFormatedValue::Kind;

std::string shown(const UFormatedValue& value) {
    FString text;
    EXPECT_TRUE(value.getString(text));
    return text.text8();
}

// Counts what it is told.
class Listener final : public CmObject {
public:
    void updateFrom(CmObject*, std::int32_t) override { ++told; }
    int told = 0;
};

class LockedValue final : public UFormatedValue {
public:
    bool checkChange() override { return permits; }
    void applyChange() override { ++applied; }
    bool permits = true;
    int applied = 0;
};

TEST(UFormatedValue, IsAValue) {
    const UFormatedValue value;
    EXPECT_STREQ(value.getClassName(), "UFormatedValue");
    EXPECT_TRUE(value.isTypeOf("UValue", true));
    EXPECT_TRUE(value.isTypeOf("Binding::Value", true));
    EXPECT_FALSE(value.isTypeOf("UIntValue", true));
    EXPECT_FALSE(value.isTypeOf(nullptr, true));
    EXPECT_EQ(value.getState(), 0x201u);
    EXPECT_EQ(shown(value), "0.0.0");
}

TEST(UFormatedValue, IsKnownByNameAndNotCreatedByIt) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    EXPECT_EQ(registry.findByName("UFormatedValue"), &UFormatedValue::metaClass);
    EXPECT_EQ(registry.createInstance("UFormatedValue"), nullptr);
}

TEST(UFormatedValue, KindsAreNumberedInTheOrderOfTheirForms) {
    EXPECT_EQ(static_cast<int>(Kind::version), 0);
    EXPECT_EQ(static_cast<int>(Kind::rectangle), 1);
    EXPECT_EQ(static_cast<int>(Kind::sampleRate), 2);
    EXPECT_EQ(static_cast<int>(Kind::bitRate), 3);
    EXPECT_EQ(static_cast<int>(Kind::variableBitRate), 4);
    EXPECT_EQ(static_cast<int>(Kind::duration), 5);
    EXPECT_EQ(static_cast<int>(Kind::integerSampleWidth), 6);
    EXPECT_EQ(static_cast<int>(Kind::floatSampleWidth), 7);
    EXPECT_EQ(static_cast<int>(Kind::numberWithUnit), 8);
    EXPECT_EQ(static_cast<int>(Kind::integerWithUnit), 9);
}

TEST(UFormatedValue, EachKindHasItsForm) {
    UFormatedValue value;
    value.setVersion(1, 2, 34);
    EXPECT_EQ(shown(value), "1.2.34");
    EXPECT_EQ(value.getKind(), Kind::version);
    value.setRectangle(-1, 2, 640, 480);
    EXPECT_EQ(shown(value), "(-1|2|640|480)");
    value.setSampleRate(44'100);
    EXPECT_EQ(shown(value), "44.100 kHz");
    value.setSampleRate(22'050.5);
    EXPECT_EQ(shown(value), "22.050 kHz");
    value.setBitRate(192);
    EXPECT_EQ(shown(value), "192 kBit/s");
    value.setVariableBitRate(128);
    EXPECT_EQ(shown(value), "VBR 128 kBit/s");
    value.setIntegerSampleWidth(24);
    EXPECT_EQ(shown(value), "24 bit");
    value.setFloatSampleWidth();
    EXPECT_EQ(shown(value), "32 bit float");
    value.setNumberWithUnit(-6, "dB");
    EXPECT_EQ(shown(value), "-6.00 dB");
    value.setIntegerWithUnit(3, u"Stück");
    EXPECT_EQ(shown(value), testing_support::systemBytes(u"3 Stück"));
    value.setNumber(1.5, -1);
    EXPECT_EQ(shown(value), "1.5");
    value.setNumber(1.5, 3);
    EXPECT_EQ(shown(value), "1.500");
    EXPECT_EQ(value.getKind(), Kind::number);
}

TEST(UFormatedValue, DurationsShowHoursMinutesAndSeconds) {
    UFormatedValue value;
    value.setDuration(3'723);
    EXPECT_EQ(shown(value), "01:02:03");
    value.setDuration(0);
    EXPECT_EQ(shown(value), "00:00:00");
    value.setDuration(360'000 + 59);
    EXPECT_EQ(shown(value), "100:00:59");
    value.setDuration(-5);
    EXPECT_EQ(shown(value), "00:00:00");
    value.setDuration(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(shown(value), "596523:14:07");
}

TEST(UFormatedValue, ZeroHasNoSign) {
    UFormatedValue value;
    value.setNumberWithUnit(-0.001, "dB");
    EXPECT_EQ(shown(value), "0.00 dB");
    value.setNumber(-0.001, -1);
    EXPECT_EQ(shown(value), "0.");
}

TEST(UFormatedValue, UnitsAreNoFormats) {
    UFormatedValue value;
    value.setIntegerWithUnit(3, "%s%n");
    EXPECT_EQ(shown(value), "3 %s%n");
    value.setNumberWithUnit(3, "%d");
    EXPECT_EQ(shown(value), "3.00 %d");
    value.setIntegerWithUnit(3, FStringRef());
    EXPECT_EQ(shown(value), "3 ");
}

TEST(UFormatedValue, IsNotTypedIn) {
    UFormatedValue value;
    value.setBitRate(192);
    EXPECT_FALSE(value.setString("128"));
    EXPECT_FALSE(value.isEditable());
    EXPECT_EQ(shown(value), "192 kBit/s");
}

TEST(UFormatedValue, AsAPlainValueItIsTheNumber) {
    UFormatedValue value;
    value.setVersion(4, 5, 6);
    EXPECT_EQ(value.getValue(), 4);
    value.setValue(7);
    EXPECT_EQ(shown(value), "7.5.6");
    value.setSampleRate(48'000.9);
    EXPECT_EQ(value.getValue(), 48'000);
    value.setValue(96'000);
    EXPECT_EQ(shown(value), "96.000 kHz");
    value.setNumber(std::numeric_limits<double>::quiet_NaN(), 2);
    EXPECT_EQ(value.getValue(), 0);
    value.setFloatSampleWidth();
    value.setValue(16);
    EXPECT_EQ(value.getValue(), 32);
    value.setDuration(9);
    value.setValue(-1);
    EXPECT_EQ(value.getValue(), 0);
}

TEST(UFormatedValue, CopiesAllOfItsLikeAndTheNumberOfOthers) {
    UFormatedValue source;
    source.setNumberWithUnit(2.5, "dB");
    UFormatedValue value;
    value.copyValue(&source);
    EXPECT_EQ(shown(value), "2.50 dB");
    const UIntValue integer(5, 0, 10);
    value.copyValue(&integer);
    EXPECT_EQ(shown(value), "5.00 dB");
    value.copyValue(nullptr);
    EXPECT_EQ(shown(value), "5.00 dB");
}

TEST(UFormatedValue, IsClonedWithAllItShows) {
    UFormatedValue value;
    value.setNumberWithUnit(2.5, "dB");
    value.setTag(9);
    const auto copy = FRefPtr<UFormatedValue>::adopt(value.clone());
    value.setNumber(0, 0);
    EXPECT_EQ(shown(*copy), "2.50 dB");
    EXPECT_EQ(copy->getTag(), 9u);
}

TEST(UFormatedValue, TellsAChangeOnce) {
    Listener listener;
    UFormatedValue value;
    value.setTarget(&listener, 0, false);
    value.setBitRate(192);
    EXPECT_EQ(listener.told, 1);
    value.setBitRate(192);
    EXPECT_EQ(listener.told, 1);
    value.setVariableBitRate(192);
    EXPECT_EQ(listener.told, 2);
    value.setReport(false);
    value.setBitRate(64);
    EXPECT_EQ(listener.told, 2);
    EXPECT_EQ(shown(value), "64 kBit/s");
    value.setReport(true);
    value.setNumber(std::numeric_limits<double>::quiet_NaN(), 2);
    value.setNumber(std::numeric_limits<double>::quiet_NaN(), 2);
    EXPECT_EQ(listener.told, 3);
}

TEST(UFormatedValue, AsksBeforeItChanges) {
    LockedValue value;
    value.setBitRate(192);
    EXPECT_EQ(value.applied, 1);
    value.permits = false;
    value.setBitRate(64);
    EXPECT_EQ(value.applied, 1);
    EXPECT_EQ(shown(value), "192 kBit/s");
}

class TranslatedForms : public testing::Test {
protected:
    ~TranslatedForms() override { table_.reload("us"); }

    void load(const std::string& strings) {
        table_.setAcceptAllLanguages(true);
        table_.setVerification(false);
        table_.reload("de");
        const std::string text = "<Translation><StringTable>" + strings + "</StringTable></Translation>";
        ASSERT_TRUE(table_.loadFromMemory(text.data(), text.size()));
    }

    TranslationTable& table_ = *TranslationTable::getInstance();
};

TEST_F(TranslatedForms, AreThoseOfTheUsersLanguage) {
    load("<String Key='%d kBit/s'><de>%d KBit je s</de></String><String Key='%.3f kHz'><de>%.1f Kilohertz</de></String>"
         "<String Key='VBR %d kBit/s'><de>etwa %d kBit/s</de></String><String Key='%d bit'><de>%d Bit</de></String>"
         "<String Key='32 bit float'><de>32 Bit Fliesskomma</de></String>");
    UFormatedValue value;
    value.setBitRate(192);
    EXPECT_EQ(shown(value), "192 KBit je s");
    value.setSampleRate(44'100);
    EXPECT_EQ(shown(value), "44.1 Kilohertz");
    value.setVariableBitRate(192);
    EXPECT_EQ(shown(value), "etwa 192 kBit/s");
    value.setIntegerSampleWidth(16);
    EXPECT_EQ(shown(value), "16 Bit");
    value.setFloatSampleWidth();
    EXPECT_EQ(shown(value), "32 Bit Fliesskomma");
}

TEST_F(TranslatedForms, ThatWouldReadOtherArgumentsAreNotUsed) {
    load("<String Key='%d kBit/s'><de>%s KBit</de></String><String Key='%.3f kHz'><de>%d Hz</de></String>"
         "<String Key='%d bit'><de>%d %s</de></String><String Key='32 bit float'><de>%s%s%s</de></String>");
    UFormatedValue value;
    value.setBitRate(192);
    EXPECT_EQ(shown(value), "192 kBit/s");
    value.setSampleRate(44'100);
    EXPECT_EQ(shown(value), "44.100 kHz");
    value.setIntegerSampleWidth(16);
    EXPECT_EQ(shown(value), "16 bit");
    value.setFloatSampleWidth();
    EXPECT_EQ(shown(value), "32 bit float");
}

} // namespace
} // namespace tessera
