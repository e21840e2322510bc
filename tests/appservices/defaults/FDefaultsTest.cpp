#include "appservices/defaults/FDefaults.h"

#include "foundation/containers/CmString.h"
#include "foundation/object/ClassFactory.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/registry/FRegistryEntry.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace tessera {
namespace {

std::int64_t intOf(const FDefaults& group, const FStringRef& key) {
    std::int64_t value = -99;
    group.getInt(key, value);
    return value;
}

double floatOf(const FDefaults& group, const FStringRef& key) {
    double value = -99;
    group.getFloat(key, value);
    return value;
}

std::u16string textOf(const FDefaults& group, const FStringRef& key) {
    FString text;
    return group.getString(key, text) ? text.text16() : u"missing";
}

FRefPtr<FAttributes> newTree() {
    return FRefPtr<FAttributes>::adopt(new FAttributes);
}

// What is stored and restored into a fresh group.
void expectSame(const FDefaults& group, const FDefaults& restored) {
    EXPECT_TRUE(restored.getGroupName() == group.getGroupName());
    EXPECT_EQ(restored.getVersion(), group.getVersion());
    EXPECT_EQ(restored.getCount(), group.getCount());
}

TEST(FDefaults, IsKnownByNameAndNotCreatedByIt) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    ASSERT_NE(registry.findByName("FDefaults"), nullptr);
    EXPECT_EQ(registry.createInstance("FDefaults"), nullptr);
    EXPECT_TRUE(FDefaults().isTypeOf("CmObject", true));
}

TEST(FDefaults, BeginsEmpty) {
    const FDefaults group("name", 3);
    EXPECT_TRUE(group.getGroupName() == "name");
    EXPECT_EQ(group.getVersion(), 3);
    EXPECT_TRUE(group.isEmpty());
    EXPECT_EQ(group.at(0), nullptr);
    EXPECT_FALSE(group.has("key"));
    EXPECT_EQ(FDefaults("name").getVersion(), FDefaults::kNoVersion);
}

TEST(FDefaults, KeepsANameInEightBits) {
    FDefaults group(u"größe");
    EXPECT_FALSE(group.getGroupName().isWide());
    EXPECT_TRUE(group.getGroupName() == u"größe");
}

TEST(FDefaults, KeepsNumbersTextsAndObjects) {
    FDefaults group;
    EXPECT_TRUE(group.setInt("int", std::numeric_limits<std::int64_t>::min()));
    EXPECT_TRUE(group.setFloat("float", 0.1));
    EXPECT_TRUE(group.setString("narrow", "text"));
    EXPECT_TRUE(group.setString(u"wide", u"t\u00e4xt"));
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    EXPECT_TRUE(group.setObject("object", object.get()));
    EXPECT_EQ(intOf(group, "int"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(floatOf(group, "float"), 0.1);
    EXPECT_EQ(textOf(group, "narrow"), u"text");
    EXPECT_EQ(textOf(group, "wide"), u"t\u00e4xt");
    EXPECT_EQ(group.getObject("object"), object.get());
    EXPECT_EQ(group.getCount(), 5);
}

TEST(FDefaults, ReplacesAValueOfWhateverKind) {
    FDefaults group;
    group.setInt("key", 1);
    group.setString("key", "two");
    EXPECT_EQ(textOf(group, "key"), u"two");
    group.setFloat("key", 3);
    EXPECT_EQ(floatOf(group, "key"), 3);
    EXPECT_EQ(group.getCount(), 1);
}

TEST(FDefaults, ConvertsWhereItCan) {
    FDefaults group;
    group.setInt("int", 7);
    group.setFloat("float", -7.9);
    group.setFloat("huge", 1e300);
    group.setString("text", "take 12.5");
    EXPECT_EQ(floatOf(group, "int"), 7);
    EXPECT_EQ(intOf(group, "float"), -7);
    EXPECT_EQ(intOf(group, "huge"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(intOf(group, "text"), 12);
    EXPECT_EQ(floatOf(group, "text"), 12.5);
    EXPECT_EQ(textOf(group, "int"), u"missing");
    EXPECT_EQ(group.getObject("int"), nullptr);
}

TEST(FDefaults, AnswersNothingForAMissingKey) {
    FDefaults group;
    group.setString("words", "none");
    for (const char* key : {"missing", "words", "", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(intOf(group, key), -99);
        EXPECT_EQ(floatOf(group, key), -99);
        EXPECT_EQ(group.getObject(key), nullptr);
    }
    EXPECT_EQ(textOf(group, "missing"), u"missing");
    EXPECT_EQ(textOf(group, "Words"), u"missing") << "keys are compared exactly";
}

TEST(FDefaults, FindsAKeyInEitherWidth) {
    FDefaults group;
    const std::string narrow = testing_support::systemBytes(u"größ");
    group.setInt("narrow", 1);
    group.setInt(u"wide", 2);
    group.setInt(narrow.c_str(), 3);
    for (const char16_t* more : {u"a", u"\u00e4", u"z", u"\u00ff", u"\u20ac"}) {
        group.setInt(more, 4);
    }
    EXPECT_EQ(intOf(group, u"narrow"), 1);
    EXPECT_EQ(intOf(group, "wide"), 2);
    EXPECT_EQ(intOf(group, u"größ"), 3);
    EXPECT_EQ(intOf(group, narrow.c_str()), 3);
    EXPECT_EQ(group.getCount(), 8);
}

TEST(FDefaults, InitLeavesAnExistingValue) {
    FDefaults group;
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    EXPECT_TRUE(group.initInt("int", 1));
    EXPECT_FALSE(group.initInt("int", 2));
    EXPECT_FALSE(group.initFloat("int", 2));
    EXPECT_FALSE(group.initString("int", "2"));
    EXPECT_FALSE(group.initObject("int", object.get()));
    EXPECT_EQ(intOf(group, "int"), 1);
    EXPECT_TRUE(group.initFloat("float", 1.5));
    EXPECT_TRUE(group.initString("text", "new"));
    EXPECT_TRUE(group.initObject("object", object.get()));
    EXPECT_EQ(floatOf(group, "float"), 1.5);
    EXPECT_EQ(textOf(group, "text"), u"new");
    EXPECT_EQ(group.getObject("object"), object.get());
}

TEST(FDefaults, SharesItsObjects) {
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    {
        FDefaults group;
        group.setObject("a", object.get());
        group.setObject("b", object.get());
        EXPECT_EQ(object->getReferenceCount(), 3u);
        EXPECT_TRUE(group.remove("a"));
        EXPECT_EQ(object->getReferenceCount(), 2u);
        group.setInt("b", 1);
        EXPECT_EQ(object->getReferenceCount(), 1u);
        group.setObject("c", object.get());
    }
    EXPECT_EQ(object->getReferenceCount(), 1u);
}

TEST(FDefaults, ANullObjectRemovesTheKey) {
    FDefaults group;
    group.setInt("key", 1);
    EXPECT_TRUE(group.setObject("key", nullptr));
    EXPECT_FALSE(group.has("key"));
    EXPECT_TRUE(group.isEmpty());
}

TEST(FDefaults, GivesAnObjectOfTheClassThatIsAskedFor) {
    FDefaults group;
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    group.setObject("key", object.get());
    EXPECT_EQ(group.getObject("key", "CmString"), object.get());
    EXPECT_EQ(group.getObject("key", "CmObject"), object.get());
    EXPECT_EQ(group.getObject("key", "CmUID"), nullptr);
}

TEST(FDefaults, RemovesOneValue) {
    FDefaults group;
    group.setInt("a", 1);
    group.setInt("b", 2);
    EXPECT_TRUE(group.remove("a"));
    EXPECT_FALSE(group.remove("a"));
    EXPECT_FALSE(group.remove(""));
    EXPECT_EQ(intOf(group, "b"), 2);
    EXPECT_EQ(group.getCount(), 1);
}

TEST(FDefaults, RefusesWhatNoFileGivesBack) {
    FDefaults group;
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    for (const std::string& key : {std::string(), std::string(48, 'k')}) {
        EXPECT_FALSE(group.setInt(key.c_str(), 1));
        EXPECT_FALSE(group.setFloat(key.c_str(), 1));
        EXPECT_FALSE(group.setString(key.c_str(), "x"));
        EXPECT_FALSE(group.setObject(key.c_str(), object.get()));
        EXPECT_FALSE(group.initInt(key.c_str(), 1));
    }
    EXPECT_FALSE(group.setObject("", nullptr));
    EXPECT_TRUE(group.isEmpty());
    group.setString("text", "old");
    EXPECT_FALSE(group.setString("text", std::string(2048, 'x').c_str()));
    EXPECT_EQ(textOf(group, "text"), u"old");
    EXPECT_TRUE(group.setString("text", std::string(2049, 'x').c_str()));
}

TEST(FDefaults, OrdersItsValuesByKey) {
    FDefaults group;
    for (const char* key : {"c", "a", "d", "b"}) {
        group.setInt(key, 1);
    }
    std::string order;
    for (std::int32_t i = 0; i < group.getCount(); ++i) {
        order += group.at(i)->getKey().view8();
    }
    EXPECT_EQ(order, "abcd");
    EXPECT_EQ(group.at(4), nullptr);
}

TEST(FDefaults, StoresNameVersionAndValues) {
    FDefaults group("name", 3);
    group.setInt("key", 7);
    const auto tree = newTree();
    EXPECT_TRUE(group.storeAttributes(*tree));
    ASSERT_EQ(tree->getCount(), 3);
    EXPECT_TRUE(tree->at(0)->getKey() == "Group");
    EXPECT_TRUE(tree->at(1)->getKey() == "Version");
    EXPECT_TRUE(tree->at(2)->getKey() == "Values");
    FString name;
    EXPECT_TRUE(tree->getString("Group", name) && name == "name");
    std::int64_t number = 0;
    EXPECT_TRUE(tree->getInt("Version", number) && number == 3);
    ASSERT_NE(tree->getTree("Values"), nullptr);
    EXPECT_TRUE(tree->getTree("Values")->getInt("key", number) && number == 7);
}

TEST(FDefaults, StoresNoVersionWhereThereIsNone) {
    const auto tree = newTree();
    EXPECT_TRUE(FDefaults("name").storeAttributes(*tree));
    EXPECT_EQ(tree->find("Version"), nullptr);
    EXPECT_EQ(tree->find("Values"), nullptr);
}

TEST(FDefaults, ComesBack) {
    FDefaults group("gr\xc3\xb6\xc3\x9f", -2);
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    group.setInt("int", 7);
    group.setString("text", u"t\u00e4xt");
    group.setObject("object", object.get());
    const auto tree = newTree();
    group.storeAttributes(*tree);
    FDefaults restored;
    EXPECT_TRUE(restored.restoreAttributes(*tree));
    expectSame(group, restored);
    EXPECT_EQ(intOf(restored, "int"), 7);
    EXPECT_EQ(textOf(restored, "text"), u"t\u00e4xt");
    EXPECT_NE(restored.getObject("object", "CmString"), nullptr);
}

TEST(FDefaults, RestoringKeepsTheValuesThatAreThere) {
    FDefaults group("name");
    group.setInt("both", 1);
    const auto tree = newTree();
    const auto values = newTree();
    values->setInt("both", 2);
    values->setInt("new", 3);
    tree->setObject("Values", values.get());
    EXPECT_TRUE(group.restoreAttributes(*tree));
    EXPECT_EQ(intOf(group, "both"), 1);
    EXPECT_EQ(intOf(group, "new"), 3);
    EXPECT_TRUE(group.getGroupName() == "name");
}

// "<" may be written as such in a file that somebody else made, and takes four bytes in ours.
TEST(FDefaults, LeavesOutWhatItsOwnFileWouldntGiveBack) {
    const auto tree = newTree();
    const auto values = newTree();
    values->setString("good", "text");
    values->setString("long", std::string(1000, '<').c_str());
    values->setInt(std::string(20, '<').c_str(), 1);
    tree->setObject("Values", values.get());
    FDefaults group;
    group.restoreAttributes(*tree);
    EXPECT_EQ(group.getCount(), 1);
    EXPECT_EQ(textOf(group, "good"), u"text");
}

TEST(FDefaults, FindsEveryKeyOfAFile) {
    const auto tree = newTree();
    const auto values = newTree();
    // The last two stand in another order in 16 bits than in UTF-8.
    const std::vector<const char*> keys = {
        "z", "gr\xc3\xb6\xc3\x9f", "a", "\xe6\xbc\xa2", "m", "\xc3\xa4", "\xff", "\xef\xbf\xbd", "\xf0\x9d\x84\x9e"};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        values->setInt(keys[i], static_cast<std::int64_t>(i), AttributeFlags::kAppend);
    }
    tree->setObject("Values", values.get());
    FDefaults group;
    group.restoreAttributes(*tree);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(intOf(group, keys[i]), static_cast<std::int64_t>(i)) << keys[i];
    }
}

TEST(FDefaults, BuildsAnObjectThatWasReadWhenItIsAskedFor) {
    FRegistryEntry entry("key", "value");
    entry.setText("text");
    const auto stored = newTree();
    ASSERT_TRUE(entry.storeAttributes(*stored));
    FDefaults group;
    const auto read =
        FRefPtr<CmObject>::adopt(new FXmlInstance(17, "FRegistryEntry", FRefPtr<FAttributes>(stored).detach()));
    group.setObject("entry", read.get());
    CmObject* object = group.getObject("entry", "FRegistryEntry");
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->isEqual(&entry));
    EXPECT_EQ(group.getObject("entry", "CmString"), nullptr);
}

} // namespace
} // namespace tessera
