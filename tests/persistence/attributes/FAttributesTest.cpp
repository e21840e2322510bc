#include "persistence/attributes/FAttributes.h"

#include "foundation/containers/CmBuffer.h"
#include "foundation/containers/CmString.h"
#include "foundation/object/ClassFactory.h"
#include "persistence/attributes/FAttrBuffer.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/streams/FMemoryStream.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tessera {
namespace {

using test::newNode;
using test::StoredNode;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();

std::int64_t intOf(const FAttributes& attributes, const char* name) {
    std::int64_t value = -12345;
    EXPECT_TRUE(attributes.getInt(name, value)) << name;
    return value;
}

std::string textOf(const FAttributes& attributes, const char* name) {
    FString text;
    EXPECT_TRUE(attributes.getString(name, text)) << name;
    return text.text8();
}

std::string namesOf(FAttributes& attributes) {
    std::string names;
    for (std::int32_t i = 0; i < attributes.getCount(); ++i) {
        names += (i > 0 ? " " : "") + std::string(attributes.getName(i));
    }
    return names;
}

TEST(FAttributes, IsCreatedByBothItsNamesAndStoredUnderTheAlias) {
    for (const char* name : {"FAttributes", "Attributes"}) {
        const auto made = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject(name));
        ASSERT_TRUE(made) << name;
        EXPECT_STREQ(made->getClassName(), "FAttributes");
        EXPECT_STREQ(made->getMetaClass()->getPersistentName(), "Attributes");
    }
}

TEST(FAttributes, KeepsRecordsInTheOrderInWhichTheyCame) {
    FAttributes attributes;
    for (const char* name : {"zoom", "alpha", "Mid"}) {
        EXPECT_TRUE(attributes.setInt(name, 1));
    }
    attributes.setInt("alpha", 2);
    EXPECT_EQ(namesOf(attributes), "zoom alpha Mid");
}

TEST(FAttributes, SettingReplacesTheFirstOfThatName) {
    FAttributes attributes;
    attributes.setInt("a", 1, AttributeFlags::kAppend);
    attributes.setInt("a", 2, AttributeFlags::kAppend);
    EXPECT_EQ(attributes.getCount(), 2);
    EXPECT_EQ(intOf(attributes, "a"), 1);
    attributes.setString("a", "text");
    EXPECT_EQ(attributes.getCount(), 2);
    EXPECT_EQ(textOf(attributes, "a"), "text");
    EXPECT_TRUE(attributes.remove("a"));
    EXPECT_EQ(intOf(attributes, "a"), 2);
    EXPECT_TRUE(attributes.remove("a"));
    EXPECT_FALSE(attributes.remove("a"));
}

TEST(FAttributes, NamesAreCaseSensitive) {
    FAttributes attributes;
    attributes.setInt("Gain", 1);
    std::int64_t value = 7;
    EXPECT_FALSE(attributes.getInt("gain", value));
    EXPECT_EQ(value, 7);
}

TEST(FAttributes, MarksOfARecordSurviveItsValues) {
    FAttributes attributes;
    attributes.setInt("a", 1, AttributeFlags::kTransient | AttributeFlags::kLocal | AttributeFlags::kHidden);
    EXPECT_EQ(attributes.at(0)->getType(), 0x08c1);
    attributes.setFloat("a", 1.5);
    EXPECT_EQ(attributes.at(0)->getType(), 0x08c4);
    attributes.setString("a", "x");
    EXPECT_EQ(attributes.at(0)->getType(), 0x08c8);
}

TEST(FAttributes, AFloatIsCutToAnInteger) {
    const struct {
        double value;
        std::int64_t expected;
    } rows[] = {{2.9, 2},
                {-2.9, -2},
                {1e300, kLargest},
                {-1e300, kSmallest},
                {9223372036854775808.0, kLargest},
                {-9223372036854775808.0, kSmallest},
                {std::numeric_limits<double>::quiet_NaN(), 0},
                {std::numeric_limits<double>::infinity(), kLargest}};
    for (const auto& row : rows) {
        FAttributes attributes;
        attributes.setFloat("a", row.value);
        EXPECT_EQ(intOf(attributes, "a"), row.expected) << row.value;
    }
}

TEST(FAttributes, NumbersAreReadFromTexts) {
    FAttributes attributes;
    attributes.setString("a", "take -12 of 3");
    EXPECT_EQ(intOf(attributes, "a"), -12);
    attributes.setString("b", u"x 2.5");
    double value = 0;
    EXPECT_TRUE(attributes.getFloat("b", value));
    EXPECT_EQ(value, 2.5);
    attributes.setString("c", "none");
    std::int64_t number = 7;
    EXPECT_FALSE(attributes.getInt("c", number));
    EXPECT_FALSE(attributes.getFloat("c", value));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(value, 2.5);
}

TEST(FAttributes, AnIntegerIsAFloatAsWell) {
    FAttributes attributes;
    attributes.setInt("a", -3);
    double value = 0;
    EXPECT_TRUE(attributes.getFloat("a", value));
    EXPECT_EQ(value, -3.0);
}

TEST(FAttributes, TextsKeepTheirWidth) {
    FAttributes attributes;
    attributes.setString("narrow", "gain");
    attributes.setString("wide", u"\u00e4");
    FString text;
    ASSERT_TRUE(attributes.getString("narrow", text));
    EXPECT_FALSE(text.isWide());
    ASSERT_TRUE(attributes.getString("wide", text));
    EXPECT_TRUE(text.isWide());
    EXPECT_TRUE(text == FStringRef(u"\u00e4"));
}

TEST(FAttributes, OnlyATextIsGivenAsOne) {
    FAttributes attributes;
    attributes.setInt("number", 1);
    const auto object = FRefPtr<CmString>::adopt(new CmString("text"));
    attributes.setObject("object", object.get());
    FString text("before");
    EXPECT_FALSE(attributes.getString("number", text));
    EXPECT_FALSE(attributes.getString("object", text));
    EXPECT_FALSE(attributes.getString("missing", text));
    EXPECT_STREQ(text.text8(), "before");
}

TEST(FAttributes, HoldsObjectsAsItIsTold) {
    const auto node = newNode(1);
    {
        FAttributes attributes;
        EXPECT_TRUE(attributes.setObject("none", node.get(), AttributeHolding::none));
        EXPECT_EQ(node->getReferenceCount(), 1u);
        EXPECT_TRUE(attributes.setObject("shared", node.get()));
        EXPECT_EQ(node->getReferenceCount(), 2u);
        node->addRef();
        EXPECT_TRUE(attributes.setObject("owned", node.get(), AttributeHolding::owned));
        EXPECT_EQ(node->getReferenceCount(), 3u);
        EXPECT_EQ(attributes.getObject("owned"), node.get());
    }
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(FAttributes, TheSameObjectAgainIsHeldTheNewWay) {
    const auto node = newNode(1);
    FAttributes attributes;
    attributes.setObject("a", node.get());
    attributes.setObject("a", node.get());
    EXPECT_EQ(node->getReferenceCount(), 2u);
    node->addRef();
    attributes.setObject("a", node.get(), AttributeHolding::owned);
    EXPECT_EQ(node->getReferenceCount(), 2u);
    attributes.setObject("a", node.get(), AttributeHolding::none);
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(FAttributes, OfANullObjectTheNameRemains) {
    FAttributes attributes;
    attributes.setInt("a", 1);
    EXPECT_TRUE(attributes.setObject("a", nullptr));
    EXPECT_EQ(attributes.getCount(), 1);
    EXPECT_EQ(attributes.getObject("a"), nullptr);
    std::int64_t value = 0;
    EXPECT_FALSE(attributes.getInt("a", value));
}

TEST(FAttributes, CopiesBinaryDataOrPointsAtIt) {
    const char bytes[] = "take";
    FAttributes attributes;
    ASSERT_TRUE(attributes.setBinary("copy", bytes, 4, BinaryHolding::copied));
    ASSERT_TRUE(attributes.setBinary("pointer", bytes, 4, BinaryHolding::byReference));
    EXPECT_TRUE(attributes.getObject("copy")->isA("CmBuffer"));
    EXPECT_TRUE(attributes.getObject("pointer")->isA("FAttrBuffer"));
    FBinaryView view;
    ASSERT_TRUE(attributes.getBinary("copy", view));
    EXPECT_NE(static_cast<const void*>(view.data), bytes);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(view.data), 4), "take");
    ASSERT_TRUE(attributes.getBinary("pointer", view));
    EXPECT_EQ(static_cast<const void*>(view.data), bytes);
    EXPECT_EQ(attributes.getBinarySize("pointer"), 4);
    EXPECT_EQ(attributes.getBinarySize("missing"), -1);
    EXPECT_FALSE(attributes.setBinary("a", nullptr, 1, BinaryHolding::copied));
    EXPECT_FALSE(attributes.setBinary("a", bytes, -1, BinaryHolding::copied));
    EXPECT_TRUE(attributes.setBinary("a", nullptr, 0, BinaryHolding::copied));
    EXPECT_EQ(attributes.getBinarySize("a"), 0);
}

TEST(FAttributes, AMemoryStreamCountsAsBinaryDataFromItsStart) {
    auto stream = FRefPtr<FMemoryStream>::adopt(new FMemoryStream);
    stream->writeString8("take", false);
    FAttributes attributes;
    attributes.setObject("a", stream.get());
    FBinaryView view;
    ASSERT_TRUE(attributes.getBinary("a", view));
    EXPECT_EQ(view.size, 4);
    EXPECT_EQ(view.data, stream->getData());
}

TEST(FAttributes, OfABufferTheUsedPartCounts) {
    auto buffer = FRefPtr<CmBuffer>::adopt(new CmBuffer);
    buffer->append("take", 4);
    FAttributes attributes;
    attributes.setObject("a", buffer.get());
    EXPECT_GT(buffer->getSize(), 4);
    EXPECT_EQ(attributes.getBinarySize("a"), 4);
    attributes.setInt("b", 1);
    EXPECT_EQ(attributes.getBinarySize("b"), -1);
}

TEST(FAttributes, AnObjectStoresItselfIntoATreeOfItsOwn) {
    FAttributes attributes;
    ASSERT_TRUE(attributes.setAttributes("node", *newNode(42)));
    ASSERT_NE(attributes.getTree("node"), nullptr);
    EXPECT_EQ(intOf(*attributes.getTree("node"), "number"), 42);
    const auto read = newNode(0);
    EXPECT_TRUE(attributes.getAttributesInto("node", *read));
    EXPECT_EQ(read->number, 42);
    EXPECT_FALSE(attributes.getAttributesInto("missing", *read));
}

TEST(FAttributes, WhatCantBeStoredLeavesNoTrace) {
    const auto node = newNode(1);
    node->refusesStoring = true;
    FAttributes attributes;
    EXPECT_FALSE(attributes.setAttributes("node", *node));
    EXPECT_EQ(attributes.getCount(), 0);
    EXPECT_FALSE(attributes.setAttributes("plain", CmObject()));
    EXPECT_EQ(attributes.getCount(), 0);
}

TEST(FAttributes, ACopyOwnsCopiesOfItsTreesAndSharesOtherObjects) {
    const auto node = newNode(1);
    FAttributes attributes;
    attributes.setObject("node", node.get());
    attributes.setAttributes("tree", *node);
    attributes.appendInt("list", 5);
    attributes.setString("text", u"t");
    const auto copy = FRefPtr<FAttributes>::adopt(attributes.clone());
    attributes.getTree("tree")->setInt("number", 9);
    attributes.appendInt("list", 6);
    EXPECT_EQ(namesOf(*copy), "node tree list text");
    EXPECT_EQ(intOf(*copy->getTree("tree"), "number"), 1);
    EXPECT_EQ(copy->listCount("list"), 1);
    EXPECT_EQ(copy->getObject("node"), node.get());
    EXPECT_EQ(node->getReferenceCount(), 3u);
}

TEST(FAttributes, StoresItsRecordsInAnotherTree) {
    FAttributes source;
    source.setInt("a", 1);
    source.setInt("b", 2);
    FAttributes target;
    target.setInt("c", 3);
    EXPECT_TRUE(source.storeAttributes(target));
    EXPECT_EQ(namesOf(target), "c a b");
    FAttributes restored;
    EXPECT_TRUE(restored.restoreAttributes(source));
    EXPECT_EQ(namesOf(restored), "a b");
    EXPECT_TRUE(source.storeAttributes(source));
    EXPECT_EQ(namesOf(source), "a b a b");
}

TEST(FAttributes, TreesNestedWithoutABoundAreReleased) {
    const auto node = newNode(1);
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    tree->setObject("node", node.get());
    for (int i = 0; i < 100000; ++i) {
        auto outer = FRefPtr<FAttributes>::adopt(new FAttributes);
        if (i % 2 == 0) {
            outer->setObject("inner", tree.detach(), AttributeHolding::owned);
        } else {
            outer->appendSub("list", tree.detach());
        }
        tree = outer;
    }
    tree.reset();
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(FAttributes, AnOutOfRangeIndexGivesNull) {
    FAttributes attributes;
    EXPECT_EQ(attributes.at(0), nullptr);
    attributes.setInt("a", 1);
    EXPECT_EQ(attributes.at(-1), nullptr);
    EXPECT_EQ(attributes.at(1), nullptr);
    EXPECT_EQ(attributes.getName(1), nullptr);
}

} // namespace
} // namespace tessera
