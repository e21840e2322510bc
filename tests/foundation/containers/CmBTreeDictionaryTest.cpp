#include "foundation/containers/CmBTreeDictionary.h"

#include "foundation/containers/CmQueue.h"
#include "tests/foundation/containers/TestNumber.h"

namespace tessera::test {
namespace {

using CmBTreeDictionaryTest = ContainerTest;

int valueOf(const CmObject* object) {
    return object != nullptr ? static_cast<const TestNumber*>(object)->value : 0;
}

TEST_F(CmBTreeDictionaryTest, KnowsItsClassAndItsParents) {
    const CmBTreeDictionary dictionary;
    EXPECT_STREQ(dictionary.getClassName(), "CmBTreeDictionary");
    EXPECT_TRUE(dictionary.isTypeOf("CmBTree", true));
    EXPECT_TRUE(dictionary.isTypeOf("CmContainer", true));
}

TEST_F(CmBTreeDictionaryTest, GivesValuesByEqualKeys) {
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::owner);
    for (const int key : {5, 3, 8, 1, 9}) {
        EXPECT_TRUE(dictionary.set(new TestNumber(key), new TestNumber(key * 10)));
    }
    const TestNumber eight(8);
    const TestNumber two(2);
    EXPECT_EQ(valueOf(dictionary.get(&eight)), 80);
    EXPECT_EQ(valueOf(dictionary.getAssociation(&eight)->getKey()), 8);
    EXPECT_TRUE(dictionary.containsKey(&eight));
    EXPECT_EQ(dictionary.countKey(&eight), 1);
    EXPECT_EQ(dictionary.get(&two), nullptr);
    EXPECT_EQ(dictionary.getAssociation(&two), nullptr);
    EXPECT_FALSE(dictionary.containsKey(&two));
    EXPECT_EQ(dictionary.countKey(&two), 0);
    EXPECT_EQ(dictionary.get(nullptr), nullptr);
    EXPECT_EQ(dictionary.getCount(), 5);
}

TEST_F(CmBTreeDictionaryTest, SetWithAnExistingKeyChangesNothing) {
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::owner);
    dictionary.set(new TestNumber(1), new TestNumber(10));
    TestNumber key(1);
    TestNumber value(99);
    EXPECT_FALSE(dictionary.set(&key, &value));
    EXPECT_EQ(key.getReferenceCount(), 1u);
    EXPECT_EQ(value.getReferenceCount(), 1u);
    EXPECT_EQ(valueOf(dictionary.get(&key)), 10);
    EXPECT_EQ(dictionary.getCount(), 1);
}

TEST_F(CmBTreeDictionaryTest, TakesNoNullKeyButANullValue) {
    CmBTreeDictionary dictionary;
    TestNumber value(1);
    EXPECT_FALSE(dictionary.set(nullptr, &value));
    EXPECT_FALSE(dictionary.removeKey(nullptr));
    for (const CmOwnership ownership : {CmOwnership::none, CmOwnership::shared}) {
        dictionary.setOwnership(ownership);
        TestNumber key(1);
        EXPECT_TRUE(dictionary.set(&key, nullptr));
        EXPECT_TRUE(dictionary.containsKey(&key));
        EXPECT_EQ(dictionary.get(&key), nullptr);
        EXPECT_TRUE(dictionary.removeKey(&key));
        EXPECT_EQ(key.getReferenceCount(), 1u);
    }
}

TEST_F(CmBTreeDictionaryTest, WithoutOwnershipKeyAndValueStayUntouched) {
    TestNumber key(1);
    TestNumber value(2);
    {
        CmBTreeDictionary dictionary;
        EXPECT_TRUE(dictionary.set(&key, &value));
        EXPECT_EQ(key.getReferenceCount(), 1u);
        EXPECT_TRUE(dictionary.removeKey(&key));
        EXPECT_TRUE(dictionary.set(&key, &value));
        // The association that is in there at the end was the dictionary's own; the leak check counts it.
    }
    EXPECT_EQ(key.getReferenceCount(), 1u);
    EXPECT_EQ(value.getReferenceCount(), 1u);
}

TEST_F(CmBTreeDictionaryTest, WithoutOwnershipAnAddedAssociationIsTheCallers) {
    TestNumber key(1);
    TestNumber value(2);
    CmAssociation association(&key, &value);
    CmBTreeDictionary dictionary;
    EXPECT_TRUE(dictionary.add(&association));
    EXPECT_EQ(dictionary.getAssociation(&key), &association);
    EXPECT_TRUE(dictionary.removeKey(&key));
    EXPECT_EQ(association.getReferenceCount(), 1u);
}

TEST_F(CmBTreeDictionaryTest, OwnerReleasesAllThreeOnEveryWayOut) {
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::owner);
    for (int key = 0; key < 6; ++key) {
        dictionary.set(new TestNumber(key), new TestNumber(key));
    }
    EXPECT_EQ(TestNumber::alive, 12);
    {
        const TestNumber zero(0);
        EXPECT_TRUE(dictionary.removeKey(&zero));
        EXPECT_FALSE(dictionary.removeKey(&zero));
    }
    EXPECT_EQ(TestNumber::alive, 10);
    EXPECT_TRUE(dictionary.removeAt(0));
    EXPECT_EQ(TestNumber::alive, 8);
    EXPECT_TRUE(dictionary.remove(dictionary.at(0)));
    EXPECT_EQ(TestNumber::alive, 6);
    EXPECT_TRUE(dictionary.removeAtIterator(*dictionary.newIterator()));
    EXPECT_EQ(TestNumber::alive, 4);
    dictionary.removeAll();
    EXPECT_EQ(TestNumber::alive, 0);
    dictionary.set(new TestNumber(7), new TestNumber(7));
}

TEST_F(CmBTreeDictionaryTest, SharedBalancesReferencesOnEveryWayOut) {
    TestNumber key(1);
    TestNumber value(2);
    const auto expectFree = [&](const char* way) {
        EXPECT_EQ(key.getReferenceCount(), 1u) << way;
        EXPECT_EQ(value.getReferenceCount(), 1u) << way;
    };
    {
        CmBTreeDictionary dictionary;
        dictionary.setOwnership(CmOwnership::shared);
        const auto put = [&] {
            EXPECT_TRUE(dictionary.set(&key, &value));
            EXPECT_EQ(key.getReferenceCount(), 2u);
            EXPECT_EQ(value.getReferenceCount(), 2u);
            EXPECT_EQ(dictionary.getAssociation(&key)->getReferenceCount(), 1u);
        };
        put();
        EXPECT_TRUE(dictionary.removeKey(&key));
        expectFree("removeKey");
        put();
        EXPECT_TRUE(dictionary.removeAt(0));
        expectFree("removeAt");
        put();
        EXPECT_TRUE(dictionary.remove(dictionary.at(0)));
        expectFree("remove");
        put();
        dictionary.removeAll();
        expectFree("removeAll");
        put();
    }
    expectFree("destructor");
}

TEST_F(CmBTreeDictionaryTest, SharedRetainsAnAddedAssociationWithItsParts) {
    TestNumber key(1);
    TestNumber value(2);
    CmAssociation association(&key, &value);
    {
        CmBTreeDictionary dictionary;
        dictionary.setOwnership(CmOwnership::shared);
        EXPECT_TRUE(dictionary.add(&association));
        EXPECT_EQ(association.getReferenceCount(), 2u);
        EXPECT_EQ(key.getReferenceCount(), 2u);
        EXPECT_EQ(value.getReferenceCount(), 2u);
    }
    EXPECT_EQ(association.getReferenceCount(), 1u);
    EXPECT_EQ(key.getReferenceCount(), 1u);
    EXPECT_EQ(value.getReferenceCount(), 1u);
}

TEST_F(CmBTreeDictionaryTest, ReplaceDropsTheOldValue) {
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::owner);
    dictionary.set(new TestNumber(1), new TestNumber(10));
    TestNumber key(1);
    EXPECT_TRUE(dictionary.replace(&key, new TestNumber(20)));
    EXPECT_EQ(valueOf(dictionary.get(&key)), 20);
    EXPECT_EQ(TestNumber::alive, 3);
    TestNumber absent(2);
    TestNumber value(30);
    EXPECT_FALSE(dictionary.replace(&absent, &value));
}

TEST_F(CmBTreeDictionaryTest, ReplaceBearsTheValueThatIsThere) {
    TestNumber key(1);
    TestNumber value(10);
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::shared);
    dictionary.set(&key, &value);
    EXPECT_TRUE(dictionary.replace(&key, &value));
    EXPECT_EQ(value.getReferenceCount(), 2u);
    EXPECT_TRUE(dictionary.replace(&key, nullptr));
    EXPECT_EQ(value.getReferenceCount(), 1u);
}

TEST_F(CmBTreeDictionaryTest, AddRefusesWhatIsNoAssociationOrThereAlready) {
    TestNumber key(1);
    CmAssociation empty;
    CmAssociation first(&key, nullptr);
    CmAssociation second(&key, nullptr);
    CmBTreeDictionary dictionary;
    EXPECT_FALSE(dictionary.add(&key));
    EXPECT_FALSE(dictionary.add(nullptr));
    EXPECT_FALSE(dictionary.add(&empty));
    EXPECT_TRUE(dictionary.add(&first));
    EXPECT_FALSE(dictionary.add(&second));
    EXPECT_EQ(dictionary.getCount(), 1);
}

TEST_F(CmBTreeDictionaryTest, CopyOfAnOwnerClonesKeysAndValues) {
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::owner);
    dictionary.set(new TestNumber(1), new TestNumber(10));
    dictionary.set(new TestNumber(2), new TestNumber(20));
    const auto copy = FRefPtr<CmBTreeDictionary>::adopt(dictionary.clone());
    EXPECT_EQ(TestNumber::alive, 8);
    const TestNumber two(2);
    EXPECT_EQ(valueOf(copy->get(&two)), 20);
    EXPECT_NE(copy->get(&two), dictionary.get(&two));
    // What is there already is refused, and its clones go.
    EXPECT_FALSE(copy->copyFrom(dictionary));
    EXPECT_EQ(TestNumber::alive, 9);
}

TEST_F(CmBTreeDictionaryTest, CopyOfASharedOneAddsReferences) {
    TestNumber key(1);
    TestNumber value(10);
    {
        CmBTreeDictionary dictionary;
        dictionary.setOwnership(CmOwnership::shared);
        dictionary.set(&key, &value);
        CmBTreeDictionary copy;
        EXPECT_TRUE(copy.copyFrom(dictionary));
        EXPECT_EQ(key.getReferenceCount(), 3u);
        EXPECT_EQ(value.getReferenceCount(), 3u);
    }
    EXPECT_EQ(key.getReferenceCount(), 1u);
    EXPECT_EQ(value.getReferenceCount(), 1u);
}

TEST_F(CmBTreeDictionaryTest, CopiesThatOwnNothingMakeTheirOwnAssociations) {
    for (const CmOwnership ownership : {CmOwnership::none, CmOwnership::shared}) {
        TestNumber key(1);
        TestNumber value(10);
        TestNumber other(20);
        CmBTreeDictionary dictionary;
        dictionary.setOwnership(ownership);
        dictionary.set(&key, &value);
        auto clone = FRefPtr<CmBTreeDictionary>::adopt(dictionary.clone());
        EXPECT_EQ(clone->getOwnership(), ownership);
        EXPECT_NE(clone->getAssociation(&key), dictionary.getAssociation(&key));
        EXPECT_TRUE(clone->replace(&key, &other));
        EXPECT_EQ(valueOf(dictionary.get(&key)), 10);
        EXPECT_EQ(valueOf(clone->get(&key)), 20);
        clone = nullptr;
        EXPECT_EQ(valueOf(dictionary.get(&key)), 10);
        CmBTreeDictionary copy;
        EXPECT_TRUE(copy.copyFrom(dictionary));
        EXPECT_FALSE(copy.copyFrom(dictionary)) << "it's there already";
        EXPECT_FALSE(copy.copyFrom(copy));
        dictionary.removeAll();
        EXPECT_EQ(valueOf(copy.get(&key)), 10);
        copy.removeAll();
        EXPECT_EQ(key.getReferenceCount(), 1u);
        EXPECT_EQ(value.getReferenceCount(), 1u);
        EXPECT_EQ(other.getReferenceCount(), 1u);
    }
}

TEST_F(CmBTreeDictionaryTest, ACopyRefusesElementsThatAreNoAssociations) {
    TestNumber number(1);
    CmAssociation withoutKey;
    CmBTreeDictionary dictionary;
    for (CmObject* element : {static_cast<CmObject*>(&number), static_cast<CmObject*>(&withoutKey)}) {
        CmQueue list;
        list.enqueue(element);
        EXPECT_FALSE(dictionary.copyFrom(list));
    }
    EXPECT_TRUE(dictionary.isEmpty());
}

TEST_F(CmBTreeDictionaryTest, AnAssociationGoesWithTheDictionaryThatMadeItAlone) {
    TestNumber key(1);
    TestNumber value(10);
    CmBTreeDictionary maker;
    maker.set(&key, &value);
    {
        CmBTreeDictionary added;
        EXPECT_TRUE(added.add(maker.getAssociation(&key)));
        CmBTreeDictionary selected;
        EXPECT_TRUE(maker.select([](CmObject*) { return true; }, selected));
        EXPECT_TRUE(selected.removeKey(&key));
    }
    EXPECT_EQ(valueOf(maker.get(&key)), 10);
}

TEST_F(CmBTreeDictionaryTest, AnAssociationThatOutlivesItsMakerIsTheHoldersAlone) {
    TestNumber key(1);
    FRefPtr<CmAssociation> association;
    CmBTreeDictionary dictionary;
    dictionary.set(&key, nullptr);
    association = dictionary.getAssociation(&key);
    dictionary.removeAll();
    EXPECT_EQ(association->getReferenceCount(), 1u);
    EXPECT_TRUE(dictionary.add(association.get()));
    EXPECT_TRUE(dictionary.removeKey(&key));
    EXPECT_EQ(association->getReferenceCount(), 1u);
}

} // namespace
} // namespace tessera::test
