// Look-up by a path.
#include "foundation/text/FVariant.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

FAttributes* newTree(const char* name, std::int64_t number) {
    auto* tree = new FAttributes;
    tree->setInt(name, number);
    return tree;
}

class FAttributesLookup : public testing::Test {
protected:
    FAttributesLookup() {
        auto* a = newTree("b", 1);
        a->setObject("c", newTree("d", 2), AttributeHolding::owned);
        root.setObject("a", a, AttributeHolding::owned);
    }

    std::int64_t numberAt(const char* path) {
        FVariant value;
        return root.lookupValue(path, value) && value.type() == FVariant::kInteger ? value.integer() : -1;
    }

    FAttributes root;
};

TEST_F(FAttributesLookup, GoesFromTreeToTree) {
    EXPECT_EQ(numberAt("a|b"), 1);
    EXPECT_EQ(numberAt("a|c|d"), 2);
    EXPECT_EQ(numberAt("a|c|e"), -1);
    EXPECT_EQ(numberAt("a|b|c"), -1);
    EXPECT_EQ(numberAt("b"), -1);
    EXPECT_EQ(root.lookupAttributes("a"), root.getTree("a"));
    EXPECT_EQ(root.lookupAttributes("a|c"), root.getTree("a")->getTree("c"));
    EXPECT_EQ(root.lookupAttributes("a|b"), nullptr);
    EXPECT_EQ(root.lookupAttributes(""), nullptr);
    EXPECT_EQ(root.lookupAttributes("|"), nullptr);
}

TEST_F(FAttributesLookup, GoesThroughTheElementsOfAListOfTreesInOrder) {
    root.appendSub("list", newTree("x", 10));
    root.appendSub("list", newTree("y", 20));
    root.appendSub("list", newTree("y", 30));
    EXPECT_EQ(numberAt("list|y"), 20);
    EXPECT_EQ(root.lookupAttributes("list"), static_cast<FSubList*>(root.getList("list"))->at(0));
}

TEST_F(FAttributesLookup, GoesThroughInstancesThatArentBuilt) {
    const auto instance = FRefPtr<FXmlInstance>::adopt(new FXmlInstance(16, "StoredNode", newTree("number", 7)));
    root.setObject("node", instance.get());
    root.appendObject("nodes", test::newNode(1).get());
    root.appendObject("nodes", instance.get());
    EXPECT_EQ(numberAt("node|number"), 7);
    EXPECT_EQ(numberAt("nodes|number"), 7);
    EXPECT_EQ(root.lookupAttributes("node"), instance->getAttributes());
    EXPECT_EQ(root.lookupAttributes("nodes"), instance->getAttributes());
    instance->getObject();
    EXPECT_EQ(numberAt("node|number"), -1);
    EXPECT_EQ(root.lookupAttributes("nodes"), nullptr);
}

TEST_F(FAttributesLookup, AReferenceIsNoTree) {
    const auto instance = FRefPtr<FXmlInstance>::adopt(new FXmlInstance(16, "StoredNode", newTree("number", 7)));
    const auto reference = FRefPtr<FXmlReference>::adopt(new FXmlReference(16));
    reference->setTarget(instance.get());
    root.setObject("node", reference.get());
    EXPECT_EQ(numberAt("node|number"), -1);
}

TEST_F(FAttributesLookup, TriesEachRecordOfAName) {
    root.setObject("a", newTree("z", 3), AttributeHolding::owned, AttributeFlags::kAppend);
    EXPECT_EQ(numberAt("a|z"), 3);
    EXPECT_EQ(numberAt("a|b"), 1);
}

TEST_F(FAttributesLookup, GivesValuesOfAllKinds) {
    root.setFloat("float", 0.5);
    root.setString("narrow", "text");
    root.setString("wide", u"text");
    root.setObject("nothing", nullptr);
    FVariant value;
    EXPECT_TRUE(root.lookupValue("float", value));
    EXPECT_EQ(value.real(), 0.5);
    EXPECT_TRUE(root.lookupValue("narrow", value));
    EXPECT_STREQ(value.text8(), "text");
    EXPECT_FALSE(value.isOwner());
    EXPECT_TRUE(root.lookupValue("wide", value));
    EXPECT_EQ(value.type(), FVariant::kText16);
    EXPECT_TRUE(root.lookupValue("a", value));
    EXPECT_EQ(value.object(), static_cast<IBaseUnknown*>(static_cast<CmObject*>(root.getTree("a"))));
    EXPECT_FALSE(root.lookupValue("nothing", value));
    EXPECT_EQ(value.type(), FVariant::kEmpty);
}

} // namespace
} // namespace tessera
