#include "foundation/messages/FMessage.h"

#include "foundation/object/ClassFactory.h"
#include "support/ForeignObject.h"
#include "support/OrderedNumber.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using test::OrderedNumber;
using Foreign = test::ForeignObject<>;

TEST(FMessage, IsKnownByItsNameWithCase) {
    FMessage message(FStringRef("Unload"));
    EXPECT_TRUE(message.isMessage("Unload"));
    EXPECT_FALSE(message.isMessage("unload"));
    EXPECT_FALSE(message.isMessage("Unloaded"));
    EXPECT_FALSE(message.isMessage(""));
    EXPECT_FALSE(message.isMessage(nullptr));
    EXPECT_STREQ(message.getName(), "Unload");
    message.setName("Load");
    EXPECT_STREQ(message.getName(), "Load");
}

TEST(FMessage, GivesBackWhatWasSet) {
    FMessage message;
    int target = 0;
    EXPECT_EQ(message.setInt("int", 5), kResultOk);
    EXPECT_EQ(message.setFloat("float", 0.5), kResultOk);
    EXPECT_EQ(message.setString("string", "text"), kResultOk);
    EXPECT_EQ(message.setPointer("pointer", &target), kResultOk);
    std::int64_t number = 0;
    double real = 0;
    const char* text = nullptr;
    const char16_t* wide = nullptr;
    void* pointer = nullptr;
    EXPECT_EQ(message.getInt("int", &number), 0);
    EXPECT_EQ(message.getFloat("float", &real), 0);
    EXPECT_EQ(message.getString("string", &text), 0);
    EXPECT_EQ(message.getPointer("pointer", &pointer), 0);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(real, 0.5);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(pointer, &target);
    EXPECT_EQ(message.getString16("string", &wide), 0);
    EXPECT_EQ(std::u16string(wide), u"text");
}

TEST(FMessage, AMissingKeyAnswersOneAndLeavesTheTargetAlone) {
    FMessage message;
    std::int64_t number = 77;
    double real = 77;
    const char* text = "before";
    const char16_t* wide = u"before";
    void* pointer = &number;
    IBaseUnknown* object = static_cast<IMessageAccess*>(&message);
    IBaseUnknown* const before = object;
    EXPECT_EQ(message.getInt("none", &number), 1);
    EXPECT_EQ(message.getFloat("none", &real), 1);
    EXPECT_EQ(message.getString("none", &text), 1);
    EXPECT_EQ(message.getString16("none", &wide), 1);
    EXPECT_EQ(message.getPointer("none", &pointer), 1);
    EXPECT_EQ(message.getObject("none", &object), 1);
    EXPECT_EQ(message.remove("none"), 1);
    EXPECT_FALSE(message.has("none"));
    EXPECT_EQ(number, 77);
    EXPECT_EQ(real, 77);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(pointer, &number);
    EXPECT_EQ(object, before);
}

TEST(FMessage, TheTypedFormGivesNothingForAMissingKey) {
    const FMessage message;
    const FStringRef key("none");
    EXPECT_EQ(message.getInt(key), 0);
    EXPECT_EQ(message.getFloat(key), 0);
    EXPECT_EQ(message.getString(key), nullptr);
    EXPECT_EQ(message.getString16(key), nullptr);
    EXPECT_EQ(message.getObject(key), nullptr);
    EXPECT_EQ(message.getPointer(key), nullptr);
    EXPECT_EQ(message.find(key), nullptr);
    EXPECT_EQ(message.getAttributeCount(), 0);
}

TEST(FMessage, KeysAreFoundHoweverManyThereAre) {
    FMessage message;
    for (int i = 0; i < 100; ++i) {
        // Entered in an order that is not that of the keys.
        message.setInt(("key" + std::to_string(i * 37 % 100)).c_str(), i * 37 % 100);
    }
    EXPECT_EQ(message.getAttributeCount(), 100);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(message.getInt(FStringRef(("key" + std::to_string(i)).c_str())), i);
    }
    EXPECT_FALSE(message.has("key"));
    EXPECT_FALSE(message.has("KEY1"));
}

TEST(FMessage, SettingAgainReplacesTheValueAndKeepsOneKey) {
    FMessage message;
    message.setInt("key", 1);
    message.setString("key", "two");
    EXPECT_EQ(message.getAttributeCount(), 1);
    EXPECT_STREQ(message.getString(FStringRef("key")), "two");
}

TEST(FMessage, AConstantKeyIsNeverCopied) {
    static const char key[] = "constant";
    FMessage message;
    FStringIDAttribute* attribute = message.obtain(FStringRef(key), KeyHolding::constant);
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->getKey().rawText(), key);
    EXPECT_EQ(message.obtain(FStringRef("constant")), attribute);
}

TEST(FMessage, HoldsObjectsSharedOrOwned) {
    OrderedNumber shared(1);
    const int before = OrderedNumber::alive;
    {
        FMessage message;
        EXPECT_EQ(message.setObject("shared", &shared, false), kResultOk);
        EXPECT_EQ(message.setObject("owned", new OrderedNumber(2), true), kResultOk);
        EXPECT_EQ(shared.getReferenceCount(), 2u);
        EXPECT_EQ(message.getObject(FStringRef("shared")), &shared);
        IBaseUnknown* object = nullptr;
        EXPECT_EQ(message.getObject("owned", &object), kResultOk);
        EXPECT_EQ(static_cast<OrderedNumber*>(asCmObject(object))->value, 2);
    }
    EXPECT_EQ(shared.getReferenceCount(), 1u);
    EXPECT_EQ(OrderedNumber::alive, before);
}

TEST(FMessage, AnOwnedObjectSetAgainGivesItsFirstReferenceBack) {
    OrderedNumber number(1);
    {
        FMessage message;
        for (int i = 0; i < 2; ++i) {
            number.addRef();
            message.setObject("key", &number, true);
            EXPECT_EQ(number.getReferenceCount(), 2u);
        }
    }
    EXPECT_EQ(number.getReferenceCount(), 1u);
}

TEST(FMessage, HoldsForeignObjects) {
    Foreign foreign;
    {
        FMessage message;
        message.setObject("foreign", &foreign, false);
        EXPECT_EQ(foreign.references, 2u);
        message.setObject("foreign", &foreign, false);
        EXPECT_EQ(foreign.references, 2u);
        IBaseUnknown* object = nullptr;
        EXPECT_EQ(message.getObject("foreign", &object), kResultOk);
        EXPECT_EQ(object, &foreign);
        EXPECT_EQ(message.getObject(FStringRef("foreign")), nullptr);
    }
    EXPECT_EQ(foreign.references, 1u);
}

TEST(FMessage, ANullObjectRemovesTheKey) {
    FMessage message;
    message.setInt("key", 1);
    EXPECT_EQ(message.setObject("key", nullptr, false), kResultOk);
    EXPECT_FALSE(message.has("key"));
    EXPECT_EQ(message.setObject("key", nullptr, false), kResultFalse);
}

TEST(FMessage, RemoveTakesOneKey) {
    FMessage message;
    message.setInt("a", 1);
    message.setInt("b", 2);
    message.setInt("c", 3);
    EXPECT_EQ(message.remove("b"), kResultOk);
    EXPECT_FALSE(message.has("b"));
    EXPECT_TRUE(message.has("a"));
    EXPECT_TRUE(message.has("c"));
}

TEST(FMessage, ACopyHasLostPointersForeignObjectsAndWhatIsMarkedLocal) {
    Foreign foreign;
    OrderedNumber shared(1);
    int target = 0;
    FMessage message(FStringRef("Name"));
    message.setInt("int", 1);
    message.setString("string", "text");
    message.setObject("object", &shared, false);
    message.setObject("foreign", &foreign, false);
    message.setPointer("pointer", &target);
    message.obtain(FStringRef("wide"))->setString16(u"raw", FAttributeValue::TextHolding::byReference);
    message.obtain(FStringRef("transient"), KeyHolding::copied, 1)->setInt(1);
    message.obtain(FStringRef("local"), KeyHolding::copied, 2)->setInt(1);
    message.obtain(FStringRef("hidden"), KeyHolding::copied, 8)->setInt(1);
    const auto copy = FRefPtr<FMessage>::adopt(message.clone());
    EXPECT_TRUE(copy->isMessage("Name"));
    for (const char* kept : {"int", "string", "object", "transient"}) {
        EXPECT_TRUE(copy->has(kept)) << kept;
    }
    for (const char* lost : {"foreign", "pointer", "wide", "local", "hidden"}) {
        EXPECT_FALSE(copy->has(lost)) << lost;
    }
    EXPECT_EQ(shared.getReferenceCount(), 3u);
}

TEST(FMessage, IsCreatedByItsIdentifiersThroughItsFirstInterface) {
    for (const FUIDBytes& uid : {IMessageAccess::iid, IMessageObjects::iid}) {
        const auto message = FRefPtr<IMessageAccess>::adopt(
            static_cast<IMessageAccess*>(ClassFactory::getInstance(true)->createInstance(uid)));
        ASSERT_TRUE(message);
        message->setName("Name");
        EXPECT_TRUE(message->isMessage("Name"));
        const auto objects = queryFor<IMessageObjects>(message.get());
        ASSERT_TRUE(objects);
        EXPECT_STREQ(asCmObject(objects.get())->getClassName(), "FMessage");
    }
}

} // namespace
} // namespace tessera
