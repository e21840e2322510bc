#include "persistence/attributes/FXmlObject.h"

#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::newNode;
using test::ReportedErrors;
using test::StoredNode;

FRefPtr<FXmlInstance> newInstance(const char* className, std::int64_t number) {
    auto* tree = new FAttributes;
    tree->setInt("number", number);
    return FRefPtr<FXmlInstance>::adopt(new FXmlInstance(16, className, tree));
}

TEST(FXmlObject, IsKnownByItsIDAlone) {
    const FXmlObject a(1);
    const FXmlReference b(1);
    const FXmlObject c(2);
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_FALSE(a.isEqual(&c));
    EXPECT_FALSE(a.isEqual(nullptr));
    EXPECT_FALSE(a.isEqual(&*newNode(1)));
    EXPECT_LT(a.compare(&c), 0);
    EXPECT_GT(c.compare(&b), 0);
    EXPECT_EQ(a.compare(&b), 0);
    EXPECT_EQ(a.hash(256), b.hash(256));
    EXPECT_EQ(a.hash(0), 0u);
    EXPECT_LT(FXmlObject(~std::uint64_t(0)).hash(50), 50u);
}

TEST(FXmlObject, StandsForNothingByItself) {
    FXmlObject object(1);
    EXPECT_EQ(object.getObject(), nullptr);
    EXPECT_EQ(object.getAttributes(), nullptr);
    EXPECT_FALSE(object.isClass("FXmlObject"));
}

TEST(FXmlInstance, BuildsItsObjectWhenItIsAskedFor) {
    const int before = StoredNode::alive;
    const auto instance = newInstance("StoredNode", 42);
    EXPECT_EQ(StoredNode::alive, before);
    EXPECT_NE(instance->getAttributes(), nullptr);
    EXPECT_TRUE(instance->isClass("StoredNode"));
    EXPECT_FALSE(instance->isClass("CmObject"));
    EXPECT_FALSE(instance->isClass(nullptr));
    auto* node = cmCast<StoredNode>(instance->getObject());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->number, 42);
    EXPECT_EQ(instance->getAttributes(), nullptr) << "given up";
    EXPECT_EQ(instance->getObject(), node);
    EXPECT_EQ(node->getReferenceCount(), 1u);
}

TEST(FXmlInstance, AnUnknownClassIsReportedOnceAndNeverRetried) {
    const ReportedErrors reported;
    const auto instance = newInstance("NoSuchClass", 1);
    EXPECT_EQ(instance->getObject(), nullptr);
    EXPECT_EQ(instance->getObject(), nullptr);
    EXPECT_EQ(instance->getAttributes(), nullptr);
    ASSERT_EQ(reported.errors().size(), 1u);
    EXPECT_EQ(reported.errors()[0], ReportedErrors::Error(-98, "NoSuchClass"));
}

TEST(FXmlInstance, WithoutAnErrorReporterAnUnknownClassIsSilent) {
    const auto instance = newInstance("NoSuchClass", 1);
    EXPECT_EQ(instance->getObject(), nullptr);
}

TEST(FXmlInstance, AnObjectThatCantBeRestoredGoes) {
    const ReportedErrors reported;
    const int before = StoredNode::alive;
    const auto instance = FRefPtr<FXmlInstance>::adopt(new FXmlInstance(16, "StoredNode", new FAttributes));
    EXPECT_EQ(instance->getObject(), nullptr);
    EXPECT_EQ(instance->getAttributes(), nullptr);
    EXPECT_EQ(StoredNode::alive, before);
    EXPECT_TRUE(reported.errors().empty());
}

TEST(FXmlInstance, WithoutAClassNameOrATreeThereIsNothingToBuild) {
    const auto nameless = newInstance("", 1);
    EXPECT_EQ(nameless->getObject(), nullptr);
    EXPECT_NE(nameless->getAttributes(), nullptr);
    FXmlInstance empty(16, "StoredNode", nullptr);
    EXPECT_EQ(empty.getObject(), nullptr);
}

TEST(FXmlInstance, AnObjectThatNamesItselfMeetsItself) {
    const auto instance = newInstance("StoredNode", 1);
    const auto reference = FRefPtr<FXmlReference>::adopt(new FXmlReference(16));
    reference->setTarget(instance.get());
    instance->getAttributes()->setObject("next", reference.get());
    auto* node = static_cast<StoredNode*>(instance->getObject());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->next, node);
    node->next.reset();
}

// Each object asks for the next one while it is restored.
TEST(FXmlInstance, AChainOfReferencesLongerThanAStackIsBuiltAsFarAsTheBoundGoes) {
    constexpr int kLength = 20000;
    std::vector<FRefPtr<FXmlInstance>> instances;
    for (int i = 0; i < kLength; ++i) {
        instances.push_back(newInstance("StoredNode", i));
    }
    for (int i = 0; i + 1 < kLength; ++i) {
        instances[static_cast<std::size_t>(i)]->getAttributes()->setObject(
            "next", instances[static_cast<std::size_t>(i) + 1].get());
    }
    const auto* node = static_cast<StoredNode*>(instances[0]->getObject());
    int built = 0;
    for (; node != nullptr; node = node->next.get()) {
        ++built;
    }
    EXPECT_EQ(built, FXmlInstance::kDeepestBuild);
    // The one beyond isn't lost.
    EXPECT_NE(instances[FXmlInstance::kDeepestBuild]->getObject(), nullptr);
}

TEST(FXmlInstance, AChainOfReferencesLongerThanAStackIsReleased) {
    auto instance = newInstance("StoredNode", 0);
    for (int i = 1; i < 100000; ++i) {
        auto reference = FRefPtr<FXmlReference>::adopt(new FXmlReference(16));
        reference->setTarget(instance.get());
        instance = newInstance("StoredNode", i);
        instance->getAttributes()->setObject("next", reference.detach(), AttributeHolding::owned);
    }
    EXPECT_EQ(instance->getReferenceCount(), 1u);
    instance.reset();
}

TEST(FXmlInstance, ACopyOfItsTreeHoldsTheSameInstance) {
    FAttributes tree;
    const auto instance = newInstance("StoredNode", 1);
    tree.setObject("a", FRefPtr<FXmlInstance>(instance).detach(), AttributeHolding::owned);
    const FAttributes copy(tree);
    EXPECT_EQ(copy.getObject("a"), tree.getObject("a"));
    EXPECT_NE(copy.getObject("a"), nullptr);
}

TEST(FXmlReference, AsksItsTarget) {
    const auto instance = newInstance("StoredNode", 5);
    FXmlReference reference(16);
    EXPECT_EQ(reference.getObject(), nullptr);
    EXPECT_FALSE(reference.isClass("StoredNode"));
    reference.setTarget(instance.get());
    EXPECT_EQ(instance->getReferenceCount(), 2u);
    EXPECT_TRUE(reference.isClass("StoredNode"));
    EXPECT_EQ(reference.getObject(), instance->getObject());
    EXPECT_EQ(reference.getAttributes(), nullptr);
    const auto copy = FRefPtr<FXmlReference>::adopt(reference.clone());
    EXPECT_EQ(copy->getTarget(), instance.get());
    EXPECT_EQ(copy->getID(), 16u);
}

} // namespace
} // namespace tessera
