// The lists, by themselves and as values of a tree.
#include "persistence/attributes/FAttrList.h"

#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlReference.h"
#include "support/SystemText.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

using test::newNode;
using TextHolding = FAttributes::TextHolding;

FAttributes* newTree(std::int64_t number) {
    auto* tree = new FAttributes;
    tree->setInt("number", number);
    return tree;
}

TEST(FIntList, ACursorAtTheEndSaysNoAndStays) {
    FIntList list;
    list.append(5);
    list.append(-6);
    std::int64_t value = 0;
    EXPECT_TRUE(list.next(value));
    EXPECT_EQ(value, 5);
    EXPECT_TRUE(list.next(value));
    EXPECT_EQ(value, -6);
    EXPECT_FALSE(list.next(value));
    EXPECT_FALSE(list.next(value));
    EXPECT_EQ(value, -6);
    list.append(7);
    EXPECT_TRUE(list.next(value));
    EXPECT_EQ(value, 7);
    list.reset();
    EXPECT_TRUE(list.next(value));
    EXPECT_EQ(value, 5);
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.at(1), -6);
    EXPECT_EQ(list.at(3), 0);
    EXPECT_EQ(list.at(-1), 0);
}

TEST(FFloatList, IsReadInOrder) {
    FFloatList list;
    list.append(0.5);
    double value = 0;
    EXPECT_TRUE(list.next(value));
    EXPECT_EQ(value, 0.5);
    EXPECT_FALSE(list.next(value));
    EXPECT_EQ(list.at(1), 0.0);
}

TEST(FSubList, BeginsAnewBehindItsEnd) {
    FSubList list;
    list.append(newTree(1));
    list.append(newTree(2));
    EXPECT_FALSE(list.append(nullptr));
    for (int walk = 0; walk < 2; ++walk) {
        EXPECT_EQ(list.next(), list.at(0));
        EXPECT_EQ(list.next(), list.at(1));
        EXPECT_EQ(list.next(), nullptr);
    }
    EXPECT_EQ(list.at(2), nullptr);
}

TEST(FSubList, ACopyHasTreesOfItsOwn) {
    FSubList list;
    list.append(newTree(1));
    const auto copy = FRefPtr<FSubList>::adopt(list.clone());
    list.at(0)->setInt("number", 9);
    std::int64_t number = 0;
    EXPECT_TRUE(copy->at(0)->getInt("number", number));
    EXPECT_EQ(number, 1);
}

TEST(FStringList, OwnsSixteenBitCopies) {
    char text[] = "take";
    FStringList list;
    EXPECT_TRUE(list.append(text));
    EXPECT_TRUE(list.append(u"\u00e4"));
    EXPECT_TRUE(list.append(""));
    std::memset(text, 'x', 4);
    EXPECT_TRUE(list.at(0) == FStringRef(u"take"));
    EXPECT_TRUE(list.at(0).isWide());
    EXPECT_TRUE(list.at(1) == FStringRef(u"\u00e4"));
    EXPECT_TRUE(list.at(2).isEmpty());
    EXPECT_TRUE(list.isWide());
}

TEST(FStringList, KeepsBytesThatMeanNothingInTheCodePage) {
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    FStringList list;
    EXPECT_TRUE(list.append("\xff\xfe"));
    EXPECT_FALSE(list.at(0).isWide());
    EXPECT_EQ(list.at(0).view8(), "\xff\xfe");
}

TEST(FStringList, OnlyPointsAtTextsWhenToldSo) {
    const char text[] = "take";
    FStringList list(TextHolding::byReference);
    EXPECT_TRUE(list.append(text, TextHolding::byReference));
    EXPECT_EQ(list.at(0).rawText(), text);
    EXPECT_FALSE(list.isWide());
    EXPECT_TRUE(list.append(u"wide", TextHolding::byReference));
    EXPECT_TRUE(list.isWide());
    const auto copy = FRefPtr<FStringList>::adopt(list.clone());
    EXPECT_TRUE(copy->ownsText());
    EXPECT_TRUE(copy->at(0) == FStringRef(u"take"));
}

TEST(FStringList, RefusesTextsOfTheOtherHolding) {
    FStringList owning;
    EXPECT_FALSE(owning.append("a", TextHolding::byReference));
    FStringList pointing(TextHolding::byReference);
    EXPECT_FALSE(pointing.append("a"));
    EXPECT_EQ(owning.count() + pointing.count(), 0);
}

TEST(FStringList, ACursorAtTheEndSaysNoAndStays) {
    FStringList list;
    list.append("a");
    FStringRef text;
    EXPECT_TRUE(list.next(text));
    EXPECT_FALSE(list.next(text));
    EXPECT_TRUE(text == FStringRef("a"));
    EXPECT_TRUE(list.at(1).isNull());
}

TEST(FObjectList, AnOwningOneTakesTheReferenceOver) {
    const auto node = newNode(1);
    {
        FObjectList list;
        node->addRef();
        EXPECT_TRUE(list.append(node.get()));
        EXPECT_FALSE(list.append(nullptr));
        const auto copy = FRefPtr<FObjectList>::adopt(list.clone());
        EXPECT_EQ(node->getReferenceCount(), 3u);
        EXPECT_EQ(copy->at(0), node.get());
        EXPECT_EQ(copy->at(1), nullptr);
    }
    EXPECT_EQ(node->getReferenceCount(), 1u);
    {
        FObjectList list(FObjectList::Owning::no);
        list.append(node.get());
    }
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(FObjectList, WhatCantBeHadIsReadAsNull) {
    FObjectList list;
    list.append(new FXmlReference(7));
    const auto node = newNode(1);
    node->addRef();
    list.append(node.get());
    CmObject* object = node.get();
    EXPECT_TRUE(list.next(object));
    EXPECT_EQ(object, nullptr);
    EXPECT_TRUE(list.next(object));
    EXPECT_EQ(object, node.get());
    EXPECT_FALSE(list.next(object));
}

TEST(FAttributesLists, TheFirstValueMakesTheList) {
    FAttributes attributes;
    EXPECT_EQ(attributes.listCount("ints"), 0);
    EXPECT_TRUE(attributes.appendInt("ints", 1));
    EXPECT_TRUE(attributes.appendInt("ints", 2));
    EXPECT_TRUE(attributes.appendFloat("floats", 0.5));
    EXPECT_TRUE(attributes.appendString("texts", "a"));
    EXPECT_TRUE(attributes.appendObject("objects", newNode(1).get()));
    EXPECT_TRUE(attributes.appendSub("trees", newTree(3)));
    EXPECT_EQ(attributes.getCount(), 5);
    EXPECT_EQ(attributes.listCount("ints"), 2);

    std::int64_t number = 0;
    EXPECT_TRUE(attributes.nextInt("ints", number) && attributes.nextInt("ints", number));
    EXPECT_EQ(number, 2);
    EXPECT_FALSE(attributes.nextInt("ints", number));
    attributes.resetList("ints");
    EXPECT_TRUE(attributes.nextInt("ints", number));
    EXPECT_EQ(number, 1);
    double value = 0;
    EXPECT_TRUE(attributes.nextFloat("floats", value));
    EXPECT_EQ(value, 0.5);
    FStringRef text;
    EXPECT_TRUE(attributes.nextString("texts", text));
    EXPECT_TRUE(text == FStringRef("a"));
    CmObject* object = nullptr;
    EXPECT_TRUE(attributes.nextObject("objects", object));
    EXPECT_EQ(static_cast<test::StoredNode*>(object)->number, 1);
    ASSERT_NE(attributes.nextSub("trees"), nullptr);
    EXPECT_EQ(attributes.nextSub("trees"), nullptr);
    EXPECT_NE(attributes.nextSub("trees"), nullptr);
}

TEST(FAttributesLists, AnotherKindUnderTheNameFails) {
    FAttributes attributes;
    attributes.appendInt("list", 1);
    attributes.setInt("value", 1);
    const auto node = newNode(1);
    for (const char* name : {"list", "value"}) {
        EXPECT_FALSE(attributes.appendFloat(name, 1));
        EXPECT_FALSE(attributes.appendString(name, "a"));
        EXPECT_FALSE(attributes.appendObject(name, node.get()));
        EXPECT_FALSE(attributes.appendSub(name, newTree(1)));
        double value = 0;
        EXPECT_FALSE(attributes.nextFloat(name, value));
        FStringRef text;
        EXPECT_FALSE(attributes.nextString(name, text));
        CmObject* object = nullptr;
        EXPECT_FALSE(attributes.nextObject(name, object));
        EXPECT_EQ(attributes.nextSub(name), nullptr);
    }
    EXPECT_FALSE(attributes.appendInt("value", 1));
    EXPECT_EQ(attributes.listCount("list"), 1);
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(FAttributesLists, ElementsOfOtherHoldingFail) {
    const auto node = newNode(1);
    FAttributes attributes;
    EXPECT_TRUE(attributes.appendString("texts", "a"));
    EXPECT_FALSE(attributes.appendString("texts", "b", TextHolding::byReference));
    EXPECT_TRUE(attributes.appendObject("objects", node.get(), AttributeHolding::none));
    EXPECT_FALSE(attributes.appendObject("objects", node.get()));
    node->addRef();
    EXPECT_FALSE(attributes.appendObject("objects", node.get(), AttributeHolding::owned));
    EXPECT_EQ(node->getReferenceCount(), 1u);
    EXPECT_FALSE(attributes.appendObject("other", nullptr));
    EXPECT_EQ(attributes.getCount(), 2);
}

} // namespace
} // namespace tessera
