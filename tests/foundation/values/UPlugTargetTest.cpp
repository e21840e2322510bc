#include "foundation/values/UPlugTarget.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/values/IValueOwner.h"
#include "foundation/values/UIntValue.h"
#include "foundation/values/ValueDoubles.h"
#include "support/ForeignObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::NotedValue;
using testing::ElementsAre;

class Owner : public test::ForeignObject<IValueOwner> {
public:
    void beginEdit(IValue* value) override { calls.push_back({"begin", value->getValue()}); }
    void endEdit(IValue* value) override { calls.push_back({"end", value->getValue()}); }
    std::vector<std::pair<std::string, int>> calls;
};

TEST(UPlugTarget, ForwardsTheBracketsToItsOwner) {
    Owner owner;
    {
        UPlugTarget target(&owner);
        UIntValue value(3, 0, 9);
        value.setTarget(&target, 0, false);
        value.beginEdit(true);
        value.setValue(4);
        value.endEdit(true);
        EXPECT_THAT(owner.calls,
                    ElementsAre(std::pair<std::string, int>("begin", 3), std::pair<std::string, int>("end", 4)));
        EXPECT_EQ(value.getReferenceCount(), 1u);
    }
    EXPECT_EQ(owner.references, 1u);
}

TEST(UPlugTarget, TakesTheNotificationOfTheBracketsAway) {
    UPlugTarget target;
    NotedValue value(0, 0, 1);
    value.setTarget(&target, 0, false);
    EXPECT_TRUE(value.hasState(UValue::kBracketTarget));
    value.beginEdit(true);
    EXPECT_THAT(value.steps, ElementsAre("begin", "check"));
    value.endEdit(true);
    EXPECT_THAT(value.steps, ElementsAre("begin", "check", "end"));
}

TEST(UPlugTarget, AnswersBothBracketsAndNothingElse) {
    UPlugTarget target;
    UIntValue value;
    for (const char* name : {"BeginEdit", "EndEdit"}) {
        FMessage message(name);
        EXPECT_EQ(target.receiveMessage(&message), 1) << name;
        message.setObject("Value", static_cast<CmObject*>(&value), false);
        EXPECT_EQ(target.receiveMessage(&message), 1) << name;
    }
    for (const char* name : {"beginedit", "Unload", ""}) {
        FMessage message(name);
        EXPECT_EQ(target.receiveMessage(&message), 0) << name;
    }
}

// Gives numbers as a value does, and is none.
class NumberOnly final : public FImplements<CmObject, IValue> {
public:
    bool isEnabled() const override { return true; }
    void setValue(std::int32_t) override {}
    std::int32_t getValue() const override { return 0; }
    std::int32_t getMinimum() const override { return 0; }
    std::int32_t getMaximum() const override { return 0; }
    std::int32_t getDefault() const override { return 0; }
};

TEST(UPlugTarget, WhatIsNoValueReachesNoOwner) {
    Owner owner;
    UPlugTarget target(&owner);
    CmObject plain;
    NumberOnly number;
    FMessage message("BeginEdit");
    message.setObject("Value", &plain, false);
    EXPECT_EQ(target.receiveMessage(&message), 1);
    message.setObject("Value", static_cast<CmObject*>(&number), false);
    EXPECT_EQ(target.receiveMessage(&message), 1);
    EXPECT_TRUE(owner.calls.empty());
    test::ForeignObject<> noOwner;
    UPlugTarget other(&noOwner);
    UIntValue value;
    value.setTarget(&other, 0, false);
    value.beginEdit(true);
    EXPECT_EQ(noOwner.references, 2u);
}

TEST(UPlugTarget, IsCreatedByIdentifierAndGivenItsOwner) {
    void* created = ClassFactory::getInstance(true)->createInstance(IPlugTarget::iid);
    ASSERT_NE(created, nullptr);
    auto* target = static_cast<IPlugTarget*>(created);
    Owner owner;
    target->setOwner(&owner);
    EXPECT_EQ(target->getOwner(), &owner);
    EXPECT_TRUE(asCmObject(target)->isTypeOf("UPlugTarget", false));
    target->release();
    EXPECT_EQ(owner.references, 1u);
    EXPECT_EQ(ClassFactory::getInstance(true)->createObject("UPlugTarget"), nullptr);
}

} // namespace
} // namespace tessera
