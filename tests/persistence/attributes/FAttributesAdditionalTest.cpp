// Foreign attribute lists inside of a tree.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/messages/FIntIDAttribute.h"
#include "persistence/attributes/FAttributes.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using AdditionalKeys = FAttributes::AdditionalKeys;
using AdditionalPresent = FAttributes::AdditionalPresent;

class FAttributesAdditional : public testing::Test {
protected:
    FAttributesAdditional() { list.setOwnership(CmOwnership::owner); }

    FIntIDAttribute* addNumbered(std::uint32_t id, std::int64_t value, std::uint16_t flags = 0) {
        auto* attribute = new FIntIDAttribute(id, flags);
        attribute->setInt(value);
        list.add(attribute);
        return attribute;
    }
    FStringIDAttribute* addNamed(const char* key, std::int64_t value) {
        auto* attribute = new FStringIDAttribute(key);
        attribute->setInt(value);
        list.add(attribute);
        return attribute;
    }
    std::string exportedKeys() {
        EXPECT_TRUE(tree.exportAdditional(list));
        std::string keys;
        FAttributes* exported = tree.getTree("Additional Attributes");
        for (std::int32_t i = 0; exported != nullptr && i < exported->getCount(); ++i) {
            keys += (i > 0 ? "," : "") + std::string(exported->getName(i));
        }
        return keys;
    }

    CmArray list;
    FAttributes tree;
};

TEST_F(FAttributesAdditional, ANumberIsWrittenAsItsBytesIfTheyArePrintable) {
    addNumbered(0x6e696147, 1);
    addNumbered(0x20202020, 2);
    addNumbered(0x6e69610a, 3);
    addNumbered(7, 4);
    addNumbered(0xffffffff, 5);
    addNumbered(0x7e7e7e7e, 6);
    addNumbered(0x7f7e7e7e, 7);
    EXPECT_EQ(exportedKeys(), "Gain,    ,IntID:1852399882,IntID:7,IntID:4294967295,~~~~,IntID:2138996350");
}

TEST_F(FAttributesAdditional, NumbersComeBack) {
    const std::uint32_t ids[] = {0x6e696147, 7, 0xffffffff};
    for (const std::uint32_t id : ids) {
        addNumbered(id, id);
    }
    ASSERT_TRUE(tree.exportAdditional(list));
    CmOrderedArray back;
    back.setOwnership(CmOwnership::owner);
    ASSERT_TRUE(tree.importAdditional(back, AdditionalKeys::numbers));
    ASSERT_EQ(back.getCount(), 3);
    for (const std::uint32_t id : ids) {
        const FIntIDAttribute probe(id);
        const auto* found = cmCast<FIntIDAttribute>(back.find(&probe));
        ASSERT_NE(found, nullptr) << id;
        EXPECT_EQ(found->getInt(), id);
    }
}

TEST_F(FAttributesAdditional, AnyOtherKeyIsTakenAsFourBytes) {
    auto* keys = new FAttributes;
    for (const char* key : {"ab", "abcdefg", ""}) {
        keys->setInt(key, 1);
    }
    tree.setObject("Additional Attributes", keys, AttributeHolding::owned);
    CmArray back;
    back.setOwnership(CmOwnership::owner);
    ASSERT_TRUE(tree.importAdditional(back, AdditionalKeys::numbers));
    EXPECT_EQ(static_cast<FIntIDAttribute*>(back.at(0))->getId(), 0x6261u);
    EXPECT_EQ(static_cast<FIntIDAttribute*>(back.at(1))->getId(), 0x64636261u);
    EXPECT_EQ(static_cast<FIntIDAttribute*>(back.at(2))->getId(), 0u);
}

TEST_F(FAttributesAdditional, TextsKeepTheirKeys) {
    addNamed("IntID:5", 1);
    addNamed("name", 2);
    EXPECT_EQ(exportedKeys(), "IntID:5,name");
    CmArray back;
    back.setOwnership(CmOwnership::owner);
    ASSERT_TRUE(tree.importAdditional(back, AdditionalKeys::texts));
    ASSERT_EQ(back.getCount(), 2);
    EXPECT_TRUE(static_cast<FStringIDAttribute*>(back.at(0))->getKey() == FStringRef("IntID:5"));
    EXPECT_EQ(static_cast<FStringIDAttribute*>(back.at(1))->getInt(), 2);
}

TEST_F(FAttributesAdditional, TransientValuesAndPointersStayBehind) {
    addNumbered(1, 1, 1);
    addNumbered(2, 1)->setPointer(this);
    addNumbered(3, 1);
    EXPECT_EQ(exportedKeys(), "IntID:3");
}

TEST_F(FAttributesAdditional, WhatIsPresentIsReplacedOrKept) {
    addNamed("a", 1);
    addNamed("b", 2);
    ASSERT_TRUE(tree.exportAdditional(list, "mine"));
    static_cast<FStringIDAttribute*>(list.at(0))->setInt(10);
    list.removeAt(1);
    ASSERT_TRUE(tree.importAdditional(list, AdditionalKeys::texts, AdditionalPresent::kept, "mine"));
    ASSERT_EQ(list.getCount(), 2);
    EXPECT_EQ(static_cast<FStringIDAttribute*>(list.at(0))->getInt(), 10);
    EXPECT_EQ(static_cast<FStringIDAttribute*>(list.at(1))->getInt(), 2);
    ASSERT_TRUE(tree.importAdditional(list, AdditionalKeys::texts, AdditionalPresent::replaced, "mine"));
    EXPECT_EQ(static_cast<FStringIDAttribute*>(list.at(0))->getInt(), 1);
    EXPECT_EQ(list.getCount(), 2);
    EXPECT_FALSE(tree.importAdditional(list, AdditionalKeys::texts));
}

TEST_F(FAttributesAdditional, AListThatSharesHoldsTheOnlyReferences) {
    addNamed("a", 1);
    ASSERT_TRUE(tree.exportAdditional(list));
    CmArray back;
    back.setOwnership(CmOwnership::shared);
    ASSERT_TRUE(tree.importAdditional(back, AdditionalKeys::texts));
    EXPECT_EQ(back.at(0)->getReferenceCount(), 1u);
}

TEST_F(FAttributesAdditional, ExportingAgainReplacesWhatWasThere) {
    addNamed("a", 1);
    ASSERT_TRUE(tree.exportAdditional(list));
    list.removeAll();
    EXPECT_EQ(exportedKeys(), "");
    EXPECT_EQ(tree.getCount(), 1);
}

} // namespace
} // namespace tessera
