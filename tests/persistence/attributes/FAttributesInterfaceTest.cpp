// The tree as another module sees it.
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/text/FVariant.h"
#include "persistence/attributes/FAttrBuffer.h"
#include "support/ForeignObject.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

using test::newNode;

IBaseUnknown* unknownOf(CmObject* object) {
    return object;
}

class FAttributesInterface : public testing::Test {
protected:
    FAttributesInterface() : tree(FRefPtr<FAttributes>::adopt(new FAttributes)), attributes(*tree) {}

    bool set(const char* name, FVariant value) { return attributes.set(name, value) == kResultOk; }
    bool queue(const char* name, FVariant value) { return attributes.queue(name, value) == kResultOk; }
    FVariant get(const char* name) {
        FVariant value;
        EXPECT_EQ(attributes.get(name, value), kResultOk) << name;
        return value;
    }

    FRefPtr<FAttributes> tree;
    IAttributes& attributes;
};

TEST_F(FAttributesInterface, IsAnsweredByItsIdentifier) {
    const auto found = queryFor<IAttributes>(static_cast<CmObject*>(tree.get()));
    EXPECT_EQ(found.get(), &attributes);
    EXPECT_EQ(tree->getReferenceCount(), 2u);
}

TEST_F(FAttributesInterface, SetsAndGetsValuesOfEachKind) {
    EXPECT_TRUE(set("int", FVariant(std::int64_t(5))));
    EXPECT_TRUE(set("float", FVariant(0.5)));
    EXPECT_TRUE(set("narrow", FVariant("a")));
    EXPECT_TRUE(set("wide", FVariant(u"b")));
    EXPECT_EQ(get("int").integer(), 5);
    EXPECT_EQ(get("float").real(), 0.5);
    EXPECT_STREQ(get("narrow").text8(), "a");
    EXPECT_EQ(std::u16string(get("wide").text16()), u"b");
    EXPECT_EQ(attributes.count(), 4);
    EXPECT_STREQ(attributes.getName(3), "wide");
    EXPECT_EQ(attributes.getName(4), nullptr);
    EXPECT_TRUE(set("int", FVariant("now a text")));
    EXPECT_EQ(attributes.count(), 4);
}

TEST_F(FAttributesInterface, WhatIsMissingOrMeansNothingFails) {
    FVariant value;
    EXPECT_EQ(attributes.get("missing", value), kResultFalse);
    EXPECT_EQ(attributes.set("empty", value), kResultFalse);
    EXPECT_EQ(attributes.queue("empty", value), kResultFalse);
    EXPECT_EQ(attributes.unqueue("missing", value), kResultFalse);
    EXPECT_EQ(attributes.resetQueue("missing"), kResultFalse);
    value.setInteger(1);
    EXPECT_EQ(attributes.set(nullptr, value), kResultFalse);
    EXPECT_EQ(attributes.get(nullptr, value), kResultFalse);
    EXPECT_EQ(attributes.count(), 0);
}

TEST_F(FAttributesInterface, AnObjectWithTheOwnerMarkChangesHands) {
    const auto node = newNode(1);
    FVariant value;
    node->addRef();
    value.setObject(unknownOf(node.get()), FVariant::kOwner);
    EXPECT_EQ(attributes.set("node", value), kResultOk);
    EXPECT_FALSE(value.isOwner());
    EXPECT_EQ(node->getReferenceCount(), 2u);
    EXPECT_EQ(attributes.queue("nodes", value), kResultOk);
    EXPECT_EQ(node->getReferenceCount(), 3u) << "without the mark the tree takes a reference of its own";
    EXPECT_EQ(get("node").object(), unknownOf(node.get()));
    EXPECT_EQ(tree->getObject("node"), node.get());
}

TEST_F(FAttributesInterface, AnObjectThatIsRefusedStaysWithTheCaller) {
    tree->appendInt("ints", 1);
    const auto node = newNode(1);
    FVariant value;
    node->addRef();
    value.setObject(unknownOf(node.get()), FVariant::kOwner);
    EXPECT_EQ(attributes.queue("ints", value), kResultFalse);
    EXPECT_TRUE(value.isOwner());
    EXPECT_EQ(node->getReferenceCount(), 2u);
}

TEST_F(FAttributesInterface, ForeignObjectsAreHeldInTheirWrapper) {
    test::ForeignObject<> foreign;
    EXPECT_TRUE(set("one", FVariant(&foreign)));
    EXPECT_TRUE(queue("list", FVariant(&foreign)));
    EXPECT_EQ(foreign.references, 3u);
    EXPECT_TRUE(tree->getObject("one")->isA("CmDelegatingUnknown"));
    EXPECT_EQ(get("one").object(), &foreign);
    FVariant value;
    EXPECT_EQ(attributes.unqueue("list", value), kResultOk);
    EXPECT_EQ(value.object(), &foreign);
    tree->removeAll();
    EXPECT_EQ(foreign.references, 1u);
}

TEST_F(FAttributesInterface, QueuesAreListsOfOneKind) {
    EXPECT_TRUE(queue("ints", FVariant(std::int64_t(1))) && queue("ints", FVariant(std::int64_t(2))));
    EXPECT_TRUE(queue("floats", FVariant(0.5)));
    EXPECT_TRUE(queue("texts", FVariant("a")) && queue("texts", FVariant(u"b")));
    EXPECT_TRUE(queue("objects", FVariant(unknownOf(newNode(1).get()))));
    const auto sub = FRefPtr<FAttributes>::adopt(new FAttributes);
    EXPECT_TRUE(queue("trees", FVariant(unknownOf(sub.get()))));
    EXPECT_EQ(static_cast<FAttrList*>(tree->getObject("trees"))->getKind(), FAttrListKind::subs);
    EXPECT_FALSE(queue("ints", FVariant(0.5)));
    EXPECT_FALSE(queue("objects", FVariant(unknownOf(sub.get()))));
    EXPECT_EQ(attributes.queuedCount("ints"), 2);
    EXPECT_EQ(attributes.queuedCount("missing"), 0);
}

TEST_F(FAttributesInterface, QueuesAreReadInOrderAndReset) {
    queue("ints", FVariant(std::int64_t(1)));
    queue("ints", FVariant(std::int64_t(2)));
    queue("texts", FVariant("a"));
    queue("floats", FVariant(0.5));
    const auto sub = FRefPtr<FAttributes>::adopt(new FAttributes);
    queue("trees", FVariant(unknownOf(sub.get())));
    FVariant value;
    EXPECT_EQ(attributes.unqueue("ints", value), kResultOk);
    EXPECT_EQ(value.integer(), 1);
    EXPECT_EQ(attributes.resetQueue("ints"), kResultOk);
    EXPECT_EQ(attributes.unqueue("ints", value), kResultOk);
    EXPECT_EQ(value.integer(), 1);
    EXPECT_EQ(attributes.unqueue("ints", value), kResultOk);
    EXPECT_EQ(attributes.unqueue("ints", value), kResultFalse);
    EXPECT_EQ(attributes.unqueue("ints", value), kResultFalse) << "the end is where it stays";
    EXPECT_EQ(attributes.unqueue("texts", value), kResultOk);
    EXPECT_EQ(value.type(), FVariant::kText16);
    EXPECT_EQ(attributes.unqueue("texts", value), kResultFalse);
    EXPECT_EQ(attributes.unqueue("floats", value), kResultOk);
    EXPECT_EQ(value.real(), 0.5);
    EXPECT_EQ(attributes.unqueue("trees", value), kResultOk);
    EXPECT_EQ(value.object(), unknownOf(sub.get()));
    EXPECT_EQ(attributes.unqueue("trees", value), kResultFalse);
    EXPECT_EQ(attributes.unqueue("trees", value), kResultOk) << "trees begin anew";
    EXPECT_EQ(attributes.resetAllQueues(), kResultOk);
    EXPECT_EQ(attributes.unqueue("ints", value), kResultOk);
    EXPECT_EQ(attributes.unqueue("texts", value), kResultOk);
}

TEST_F(FAttributesInterface, BinaryDataIsCopiedOutUpToTheSizeOfTheBuffer) {
    char bytes[] = "take";
    EXPECT_EQ(attributes.setBinary("copy", bytes, 4, true), kResultOk);
    EXPECT_EQ(attributes.setBinary("pointer", bytes, 4, false), kResultOk);
    std::memcpy(bytes, "TAKE", 4);
    char buffer[8] = "-------";
    EXPECT_EQ(attributes.getBinary("copy", buffer, 3), kResultOk);
    EXPECT_STREQ(buffer, "tak----");
    EXPECT_EQ(attributes.getBinary("pointer", buffer, 8), kResultOk);
    EXPECT_STREQ(buffer, "TAKE---");
    std::uint32_t size = 0;
    EXPECT_EQ(attributes.getBinarySize("copy", &size), kResultOk);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(attributes.getBinarySize("missing", &size), kResultFalse);
    EXPECT_EQ(attributes.getBinary("missing", buffer, 8), kResultFalse);
    EXPECT_EQ(attributes.setBinary("big", bytes, 0x80000000u, true), kResultFalse);
    EXPECT_EQ(attributes.setBinary(nullptr, bytes, 4, true), kResultFalse);
}

TEST_F(FAttributesInterface, TheSlotsStandInTheirOrder) {
    // A module built elsewhere calls by number.
    using Count = std::int32_t (*)(IAttributes*);
    using GetName = const char* (*)(IAttributes*, std::int32_t);
    tree->setInt("a", 1);
    void** table = *reinterpret_cast<void***>(&attributes);
    constexpr std::size_t kCountSlot = 13;
    EXPECT_EQ(reinterpret_cast<Count>(table[kCountSlot])(&attributes), 1);
    EXPECT_STREQ(reinterpret_cast<GetName>(table[kCountSlot + 1])(&attributes, 0), "a");
}

} // namespace
} // namespace tessera
