#include "foundation/values/UValue.h"

#include "foundation/messages/UpdateHandler.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/values/IValueObserver.h"
#include "foundation/values/UIntDefValue.h"
#include "foundation/values/UPlugTarget.h"
#include "foundation/values/ValueDoubles.h"

#include "support/SlotOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::NotedTarget;
using test::NotedValue;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(UValue::kOwnsTarget == 0x20 && UValue::kDisabled == 0x100 && UValue::kUnreported == 0x800 &&
              UValue::kWraps == 0x1000 && UValue::kDisplayOnly == 0x2000 && UValue::kBracketTarget == 0x10000 &&
              UValue::kUncheckedEnd == 0x80000 && UValue::kUnobserved == 0x200000 && UValue::kEndFromUser == 0x800000);

TEST(UValue, BeginsWithItsKindInTheState) {
    EXPECT_EQ(UValue().getState(), 513u);
    EXPECT_EQ(UIntValue().getState(), 514u);
    EXPECT_EQ(UIntDefValue().getState(), 514u);
}

TEST(UValue, IsRegisteredUnderBothNamesAndWrittenUnderTheBindingName) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    for (const char* name : {"UValue", "Binding::Value"}) {
        const auto value = FRefPtr<CmObject>::adopt(registry.createObject(name));
        ASSERT_TRUE(value) << name;
        EXPECT_STREQ(value->getClassName(), "UValue");
    }
    for (const char* name : {"UIntValue", "Binding::IntValue"}) {
        const auto value = FRefPtr<CmObject>::adopt(registry.createObject(name));
        ASSERT_TRUE(value) << name;
        EXPECT_STREQ(value->getClassName(), "UIntValue");
    }
    EXPECT_STREQ(UValue::metaClass.getPersistentName(), "Binding::Value");
    EXPECT_STREQ(UIntValue::metaClass.getPersistentName(), "Binding::IntValue");
    EXPECT_STREQ(UIntDefValue::metaClass.getPersistentName(), "Binding::IntDefValue");
    EXPECT_EQ(registry.findByName("UIntDefValue"), &UIntDefValue::metaClass);
    EXPECT_EQ(registry.createObject("UIntDefValue"), nullptr);
    EXPECT_EQ(registry.createObject("Binding::IntDefValue"), nullptr);
}

TEST(UValue, AnswersToTheBindingNamesOfItsBases) {
    const UIntDefValue defValue;
    const UIntValue intValue;
    const UValue value;
    for (const char* name : {"UValue", "UIntValue", "UIntDefValue", "Binding::Value", "Binding::IntValue",
                             "Binding::IntDefValue", "CmObject", "FObject"}) {
        EXPECT_TRUE(defValue.isTypeOf(name, true)) << name;
    }
    EXPECT_TRUE(defValue.isTypeOf("Binding::IntDefValue", false));
    EXPECT_FALSE(defValue.isTypeOf("Binding::IntValue", false));
    EXPECT_FALSE(defValue.isTypeOf("Binding::Value", false));
    EXPECT_TRUE(intValue.isTypeOf("Binding::IntValue", false));
    EXPECT_TRUE(intValue.isTypeOf("Binding::Value", true));
    EXPECT_FALSE(intValue.isTypeOf("Binding::Value", false));
    EXPECT_FALSE(intValue.isTypeOf("Binding::IntDefValue", true));
    EXPECT_TRUE(value.isTypeOf("Binding::Value", false));
    EXPECT_FALSE(value.isTypeOf("Binding::IntValue", true));
    EXPECT_FALSE(value.isTypeOf(nullptr, true));
    EXPECT_FALSE(intValue.isTypeOf(nullptr, true));
    EXPECT_FALSE(defValue.isTypeOf(nullptr, true));
}

TEST(UValue, IsReachedByBothInterfaces) {
    const auto value = FRefPtr<UIntValue>::adopt(new UIntValue(3, 0, 9));
    void* out = nullptr;
    ASSERT_EQ(value->queryInterface(IValue::iid, &out), kResultOk);
    auto* number = static_cast<IValue*>(out);
    number->setValue(7);
    EXPECT_EQ(number->getValue(), 7);
    EXPECT_EQ(value->getValue(), 7);
    ASSERT_EQ(value->queryInterface(IValueBracket::iid, &out), kResultOk);
    auto* bracket = static_cast<IValueBracket*>(out);
    bracket->beginEdit(true);
    EXPECT_TRUE(value->isEditFromUser());
    bracket->endEdit(false);
    EXPECT_FALSE(value->isEditFromUser());
    EXPECT_EQ(value->getReferenceCount(), 3u);
    number->release();
    bracket->release();
}

TEST(UValue, EnablingTellsDependentsOfAChangeOnly) {
    UpdateHandler::getInstance(true);
    UValue value;
    NotedTarget dependent;
    value.addDependent(&dependent);
    value.setEnabled(true);
    EXPECT_THAT(dependent.updates, IsEmpty());
    value.setEnabled(false);
    EXPECT_FALSE(value.isEnabled());
    EXPECT_TRUE(value.hasState(UValue::kDisabled));
    value.setEnabled(false);
    value.setEnabled(true);
    EXPECT_THAT(dependent.updates, ElementsAre(1, 1));
    value.removeDependent(&dependent);
}

TEST(UValue, SwitchesAreBitsOfTheState) {
    UValue value;
    value.setReport(false);
    value.setWrap(true);
    value.setDisplay(true);
    EXPECT_EQ(value.getState(), 0x201u | 0x800u | 0x1000u | 0x2000u);
    EXPECT_TRUE(value.isDisplay());
    value.setReport(true);
    value.setWrap(false);
    value.setDisplay(false);
    EXPECT_EQ(value.getState(), 0x201u);
    EXPECT_FALSE(value.isDisplay());
}

TEST(UValue, AnOwnedTargetGoesWithTheLastValueThatHoldsIt) {
    bool gone = false;
    auto* target = new NotedTarget;
    target->gone = &gone;
    auto* value = new UValue;
    value->setTarget(target, 17, true);
    EXPECT_EQ(value->getTag(), 17u);
    auto* copy = value->clone();
    EXPECT_EQ(copy->getTag(), 17u);
    EXPECT_EQ(copy->getTarget(), target);
    value->release();
    EXPECT_FALSE(gone);
    copy->release();
    EXPECT_TRUE(gone);
}

TEST(UValue, ATargetThatIsReplacedIsReleasedIfItWasOwned) {
    bool gone = false;
    auto* owned = new NotedTarget;
    owned->gone = &gone;
    NotedTarget borrowed;
    UValue value;
    value.setTarget(owned, 1, true);
    value.setTarget(&borrowed, 2, false);
    EXPECT_TRUE(gone);
    EXPECT_FALSE(value.hasState(UValue::kOwnsTarget));
    value.setTarget(nullptr, 3, false);
    EXPECT_EQ(borrowed.getReferenceCount(), 1u);
    EXPECT_EQ(value.getTag(), 3u);
}

TEST(UValue, NotifyTellsTheTargetThatThisValueChanged) {
    NotedTarget target;
    UValue value;
    value.notify();
    value.setTarget(&target, 0, false);
    value.notify();
    EXPECT_THAT(target.updates, ElementsAre(1));
    EXPECT_THAT(target.from, ElementsAre(&value));
}

class Log : public IValueObserver {
public:
    Log() { UValue::setGlobalObserver(this); }
    virtual ~Log() {
        UValue::setGlobalObserver(nullptr);
        UValue::setGlobalObserverOff(false);
    }
    void valueNotifies(UValue& value) override { seen.push_back(&value); }
    std::vector<UValue*> seen;
};

TEST(UValue, TheGlobalObserverSeesEveryNotificationThatIsNotKeptFromIt) {
    Log log;
    UValue value;
    value.notify();
    EXPECT_THAT(log.seen, ElementsAre(&value));
    value.setState(UValue::kUnobserved, true);
    value.notify();
    value.setState(UValue::kUnobserved, false);
    UValue::setGlobalObserverOff(true);
    value.notify();
    EXPECT_EQ(log.seen.size(), 1u);
    UValue::setGlobalObserverOff(false);
    value.notify();
    EXPECT_EQ(log.seen.size(), 2u);
}

TEST(UValue, ABracketTargetIsSentTheValueWithBothMessages) {
    NotedTarget target;
    UIntValue value;
    value.setTarget(&target, 0, false);
    value.beginEdit(true);
    value.endEdit(true);
    EXPECT_THAT(target.messages, IsEmpty());
    value.setBracketTarget(true);
    value.beginEdit(false);
    value.endEdit(false);
    EXPECT_THAT(target.messages, ElementsAre("BeginEdit", "EndEdit"));
    EXPECT_THAT(target.values, ElementsAre(&value, &value));
    // Each of the four has notified as well.
    EXPECT_EQ(target.updates.size(), 4u);
}

TEST(UValue, ANullTargetSkipsTheMessage) {
    NotedValue value(0, 0, 1);
    value.setBracketTarget(true);
    value.beginEdit(true);
    EXPECT_THAT(value.steps, ElementsAre("begin", "check", "notify"));
}

TEST(UValue, ABracketNotifiesOnlyWhatMayChange) {
    NotedValue value(0, 0, 1);
    value.permitted = false;
    value.beginEdit(true);
    value.endEdit(true);
    EXPECT_THAT(value.steps, ElementsAre("begin", "check", "end", "check"));
    value.steps.clear();
    value.setState(UValue::kUncheckedEnd, true);
    value.endEdit(true);
    EXPECT_THAT(value.steps, ElementsAre("end", "notify"));
}

TEST(UValue, EndOfAnEditSaysDuringItsNotificationWhoEdited) {
    NotedValue value(0, 0, 1);
    value.endEdit(true);
    EXPECT_TRUE(value.endedByUser);
    EXPECT_FALSE(value.hasState(UValue::kEndFromUser));
    value.setState(UValue::kEndFromUser, true);
    value.endEdit(false);
    EXPECT_FALSE(value.endedByUser);
    EXPECT_TRUE(value.hasState(UValue::kEndFromUser));
}

TEST(UValue, OutlivesTheNotificationThatLetsGoOfIt) {
    class Holder : public CmObject {
    public:
        void updateFrom(CmObject*, std::int32_t) override {
            held = nullptr;
            told = true;
        }
        FRefPtr<UValue> held;
        bool told = false;
    };
    Holder holder;
    holder.held = FRefPtr<UValue>::adopt(new UIntValue);
    holder.held->setTarget(&holder, 0, false);
    holder.held.get()->endEdit(true);
    EXPECT_TRUE(holder.told);
    EXPECT_FALSE(holder.held);
}

TEST(UValue, ItsOperationsFollowThoseOfTheRootInOrder) {
    using test::slotOf;
    using V = UValue;
    test::expectConsecutive(
        {slotOf(&CmObject::clone), slotOf(&V::setTarget),  slotOf(&V::setTag),        slotOf(&V::setEnabled),
         slotOf(&V::isEnabled),    slotOf(&V::isText),     slotOf(&V::isFraction),    slotOf(&V::isStepped),
         slotOf(&V::isEditable),   slotOf(&V::limit),      slotOf(&V::setNormalized), slotOf(&V::setReport),
         slotOf(&V::setWrap),      slotOf(&V::decrement),  slotOf(&V::increment),     slotOf(&V::copyValue),
         slotOf(&V::toggle),       slotOf(&V::notify),     slotOf(&V::beginEdit),     slotOf(&V::endEdit),
         slotOf(&V::isDisplay),    slotOf(&V::setDisplay), slotOf(&V::setValue),      slotOf(&V::getValue),
         slotOf(&V::getMinimum),   slotOf(&V::setMinimum), slotOf(&V::getMaximum),    slotOf(&V::setMaximum),
         slotOf(&V::getDefault),   slotOf(&V::setDefault), slotOf(&V::getString),     slotOf(&V::setString),
         slotOf(&V::checkChange),  slotOf(&V::applyChange)});
}

TEST(UValue, HoldsNoNumber) {
    UValue value;
    FString text;
    value.setValue(3);
    value.increment();
    value.toggle();
    EXPECT_EQ(value.getValue(), 0);
    EXPECT_EQ(value.getDefault(), 0);
    EXPECT_EQ(value.limit(12), 12);
    EXPECT_FALSE(value.getString(text));
    EXPECT_FALSE(value.setString("3"));
    EXPECT_FALSE(value.isText());
    EXPECT_FALSE(value.isFraction());
    EXPECT_TRUE(value.isStepped());
    EXPECT_TRUE(value.isEditable());
}

} // namespace
} // namespace tessera
