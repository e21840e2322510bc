// Trees that are made independent of live objects.
#include "foundation/containers/CmBuffer.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/streams/FMemoryStream.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace tessera {
namespace {

using test::newNode;
using test::StoredNode;

FXmlInstance* instanceAt(const FAttributes& tree, const char* name) {
    const FStringIDAttribute* record = tree.find(name);
    return record != nullptr ? cmCast<FXmlInstance>(record->getObject()) : nullptr;
}

FXmlReference* referenceAt(const FAttributes& tree, const char* name) {
    const FStringIDAttribute* record = tree.find(name);
    return record != nullptr ? cmCast<FXmlReference>(record->getObject()) : nullptr;
}

TEST(DetachObjects, AnObjectBecomesASnapshot) {
    FAttributes tree;
    const int before = StoredNode::alive;
    tree.setObject("node", newNode(42).get());
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    EXPECT_EQ(StoredNode::alive, before) << "the live object is gone";
    FXmlInstance* instance = instanceAt(tree, "node");
    ASSERT_NE(instance, nullptr);
    EXPECT_TRUE(instance->isClass("StoredNode"));
    const auto* node = cmCast<StoredNode>(tree.getObject("node"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->number, 42);
}

TEST(DetachObjects, AnObjectThatIsMetAgainBecomesAReferenceToTheFirst) {
    FAttributes tree;
    const auto node = newNode(1);
    tree.setObject("first", node.get());
    tree.setObject("second", node.get());
    auto* inner = new FAttributes;
    inner->setObject("third", node.get());
    tree.setObject("inner", inner, AttributeHolding::owned);
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    FXmlInstance* instance = instanceAt(tree, "first");
    ASSERT_NE(instance, nullptr);
    ASSERT_NE(referenceAt(tree, "second"), nullptr);
    EXPECT_EQ(referenceAt(tree, "second")->getTarget(), instance);
    EXPECT_EQ(referenceAt(tree, "second")->getID(), instance->getID());
    ASSERT_NE(referenceAt(*inner, "third"), nullptr);
    EXPECT_EQ(tree.getObject("second"), tree.getObject("first"));
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(DetachObjects, ObjectsInObjectsAreSnapshotsToo) {
    FAttributes tree;
    const auto outer = newNode(1);
    outer->next = newNode(2);
    outer->linkTo(*newNode(3));
    outer->linkTo(*outer->next);
    tree.setObject("node", outer.get());
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    outer->next.reset();
    outer->links.clear();
    FAttributes* stored = instanceAt(tree, "node")->getAttributes();
    ASSERT_NE(instanceAt(*stored, "next"), nullptr);
    const auto* links = cmCast<FObjectList>(stored->getList("links"));
    ASSERT_NE(links, nullptr);
    EXPECT_NE(cmCast<FXmlInstance>(links->at(0)), nullptr);
    EXPECT_NE(cmCast<FXmlReference>(links->at(1)), nullptr);
    const auto* node = cmCast<StoredNode>(tree.getObject("node"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->next->number, 2);
    EXPECT_EQ(node->links[0]->number, 3);
    EXPECT_EQ(node->links[1], node->next);
}

TEST(DetachObjects, ACircleOfObjectsEnds) {
    FAttributes tree;
    const auto node = newNode(1);
    node->next = node;
    tree.setObject("node", node.get());
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    node->next.reset();
    FAttributes* stored = instanceAt(tree, "node")->getAttributes();
    EXPECT_EQ(referenceAt(*stored, "next")->getTarget(), instanceAt(tree, "node"));
    referenceAt(*stored, "next")->setTarget(nullptr);
}

TEST(DetachObjects, ListsOfObjectsBecomeNewLists) {
    FAttributes tree;
    const auto node = newNode(1);
    tree.appendObject("nodes", node.get(), AttributeHolding::none);
    const CmObject* before = tree.getList("nodes");
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    const auto* list = cmCast<FObjectList>(tree.getList("nodes"));
    ASSERT_NE(list, nullptr);
    EXPECT_NE(list, before);
    EXPECT_TRUE(list->isOwning());
    EXPECT_NE(cmCast<FXmlInstance>(list->at(0)), nullptr);
}

TEST(DetachObjects, BinaryDataBecomesOwn) {
    char bytes[] = "take";
    FAttributes tree;
    tree.setBinary("pointer", bytes, 4, BinaryHolding::byReference);
    tree.setBinary("own", bytes, 4, BinaryHolding::copied);
    tree.setBinary("none", nullptr, 0, BinaryHolding::byReference);
    const auto shared = FRefPtr<FMemoryStream>::adopt(new FMemoryStream);
    shared->write(bytes, 4);
    tree.setObject("shared", shared.get());
    const auto borrowed = FRefPtr<CmBuffer>::adopt(new CmBuffer);
    borrowed->append(bytes, 4);
    tree.setObject("borrowed", borrowed.get(), AttributeHolding::none);
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    std::memset(bytes, 'x', 4);
    std::memset(shared->getData(), 'x', 4);
    EXPECT_TRUE(tree.getObject("pointer")->isA("FMemoryStream"));
    EXPECT_TRUE(tree.getObject("own")->isA("CmBuffer"));
    EXPECT_TRUE(tree.getObject("shared")->isA("FMemoryStream"));
    EXPECT_TRUE(tree.getObject("borrowed")->isA("CmBuffer"));
    EXPECT_EQ(shared->getReferenceCount(), 1u);
    for (const char* name : {"pointer", "own", "shared", "borrowed"}) {
        FBinaryView view;
        ASSERT_TRUE(tree.getBinary(name, view)) << name;
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(view.data), 4), "take") << name;
        EXPECT_TRUE(tree.find(name)->hasType(AttributeBits::kOwned)) << name;
    }
    EXPECT_EQ(tree.getBinarySize("none"), 0);
    EXPECT_TRUE(tree.getObject("none")->isA("FMemoryStream"));
}

TEST(DetachObjects, AnOwnStreamOverForeignMemoryIsCopied) {
    char bytes[] = "take";
    FAttributes tree;
    tree.setObject("a", new FMemoryStream(bytes, 4), AttributeHolding::owned);
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    std::memset(bytes, 'x', 4);
    const auto* stream = cmCast<FMemoryStream>(tree.find("a")->getObject());
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(stream->ownsMemory());
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(stream->getData()), 4), "take");
    EXPECT_TRUE(tree.find("a")->hasType(AttributeBits::kOwned));
}

TEST(DetachObjects, TextsBecomeOwnAndListsOfThemWide) {
    char text[] = "take";
    FAttributes tree;
    tree.setString("text", "");
    tree.find("text")->setString8(text, FAttributeValue::TextHolding::byReference);
    tree.appendString("list", text, FAttributes::TextHolding::byReference);
    tree.appendString("own", text);
    const CmObject* own = tree.getList("own");
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    std::memset(text, 'x', 4);
    FString copy;
    ASSERT_TRUE(tree.getString("text", copy));
    EXPECT_STREQ(copy.text8(), "take");
    const auto* list = cmCast<FStringList>(tree.getList("list"));
    EXPECT_TRUE(list->ownsText());
    EXPECT_TRUE(list->at(0).isWide());
    EXPECT_TRUE(list->at(0) == FStringRef(u"take"));
    EXPECT_EQ(tree.getList("own"), own);
}

TEST(DetachObjects, WalksSubTreesAndListsOfThem) {
    const int before = StoredNode::alive;
    FAttributes tree;
    auto* sub = new FAttributes;
    sub->setObject("node", newNode(1).get());
    tree.setObject("sub", sub, AttributeHolding::owned);
    auto* element = new FAttributes;
    element->setObject("node", newNode(2).get());
    tree.appendSub("list", element);
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    EXPECT_EQ(StoredNode::alive, before);
    EXPECT_NE(instanceAt(*sub, "node"), nullptr);
    EXPECT_NE(instanceAt(*element, "node"), nullptr);
}

TEST(DetachObjects, WhatIsOnlyPointedAtIsHeld) {
    FAttributes tree;
    const auto sub = FRefPtr<FAttributes>::adopt(new FAttributes);
    tree.setObject("sub", sub.get(), AttributeHolding::none);
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    EXPECT_EQ(sub->getReferenceCount(), 2u);
}

TEST(DetachObjects, SnapshotsStayAndBuiltOnesAreTakenAnew) {
    FAttributes tree;
    for (const char* name : {"waiting", "built"}) {
        auto* stored = new FAttributes;
        stored->setInt("number", 5);
        tree.setObject(name, new FXmlInstance(16, "StoredNode", stored), AttributeHolding::owned);
    }
    FXmlInstance* waiting = instanceAt(tree, "waiting");
    waiting->getAttributes()->setObject("next", newNode(6).get());
    static_cast<StoredNode*>(tree.getObject("built"))->number = 7;
    const auto lost = FRefPtr<FXmlReference>::adopt(new FXmlReference(99));
    tree.setObject("lost", lost.get());
    ASSERT_TRUE(FAttributes::detachObjects(tree));
    EXPECT_EQ(instanceAt(tree, "waiting"), waiting);
    EXPECT_NE(instanceAt(*waiting->getAttributes(), "next"), nullptr);
    ASSERT_NE(instanceAt(tree, "built"), nullptr);
    ASSERT_NE(instanceAt(tree, "built")->getAttributes(), nullptr);
    EXPECT_EQ(static_cast<StoredNode*>(tree.getObject("built"))->number, 7);
    EXPECT_EQ(referenceAt(tree, "lost"), lost.get());
}

TEST(DetachObjects, AnObjectThatRefusesFailsIt) {
    FAttributes tree;
    const auto node = newNode(1);
    node->refusesStoring = true;
    tree.setObject("node", node.get());
    EXPECT_FALSE(FAttributes::detachObjects(tree));
    EXPECT_EQ(tree.getObject("node"), node.get());
    FAttributes other;
    other.appendObject("nodes", node.get());
    EXPECT_FALSE(FAttributes::detachObjects(other));
}

TEST(DetachObjects, ObjectsBeyondTheDeepestFailIt) {
    const auto chain = [](int length) {
        FRefPtr<StoredNode> first = newNode(0);
        for (int i = 1; i < length; ++i) {
            const auto node = newNode(i);
            node->next = first;
            first = node;
        }
        return first;
    };
    // Chains of live objects go one by one, whatever the test says about trees.
    const auto unchain = [](FRefPtr<StoredNode> first) {
        while (first) {
            const FRefPtr<StoredNode> next = first->next;
            first->next.reset();
            first = next;
        }
    };
    for (const bool fits : {true, false}) {
        FAttributes tree;
        const auto first = chain(fits ? FAttributes::kDeepest - 1 : FAttributes::kDeepest);
        tree.setObject("node", first.get());
        EXPECT_EQ(FAttributes::detachObjects(tree), fits);
        unchain(first);
    }
}

} // namespace
} // namespace tessera
