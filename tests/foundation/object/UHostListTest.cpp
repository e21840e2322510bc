#include "foundation/object/UHostList.h"

#include "foundation/object/FRefPtr.h"
#include "support/ForeignObject.h"
#include "support/OrderedNumber.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::OrderedNumber;
using Foreign = test::ForeignObject<>;

// The entry as a list takes it; the list's reference is the only one that stays.
void addNumber(UHostList& list, int value) {
    const auto number = FRefPtr<OrderedNumber>::adopt(new OrderedNumber(value));
    list.add(number.get());
}

TEST(UHostList, HoldsAReferenceOfEachEntry) {
    Foreign object;
    {
        UHostList list;
        list.add(&object);
        list.add(&object);
        EXPECT_EQ(object.references, 3u);
        EXPECT_EQ(list.getCount(), 2);
        EXPECT_EQ(list.getAt(0), &object);
        EXPECT_EQ(object.references, 3u);
    }
    EXPECT_EQ(object.references, 1u);
}

TEST(UHostList, NullIsIgnoredAndPastTheEndIsNull) {
    UHostList list;
    list.add(nullptr);
    EXPECT_EQ(list.getCount(), 0);
    EXPECT_EQ(list.getAt(0), nullptr);
    EXPECT_EQ(list.getAt(-1), nullptr);
}

TEST(UHostList, RemovesTheFirstEntryAndReleasesIt) {
    Foreign a;
    Foreign b;
    UHostList list;
    for (IBaseUnknown* object : {&a, &b, &a}) {
        list.add(object);
    }
    list.remove(&a);
    EXPECT_EQ(a.references, 2u);
    EXPECT_EQ(list.getAt(0), &b);
    EXPECT_EQ(list.getAt(1), &a);
    Foreign stranger;
    list.remove(&stranger);
    EXPECT_EQ(stranger.references, 1u);
    EXPECT_EQ(list.getCount(), 2);
}

TEST(UHostList, IsReachedByItsInterface) {
    UHostList list;
    void* out = nullptr;
    ASSERT_EQ(list.queryInterface(IHostList::iid, &out), kResultOk);
    auto* interface = static_cast<IHostList*>(out);
    EXPECT_EQ(interface, static_cast<IHostList*>(&list));
    EXPECT_EQ(list.getReferenceCount(), 2u);
    EXPECT_EQ(interface->release(), 1u);
}

TEST(UHostList, OneIdentityThroughBothItsTables) {
    UHostList list;
    const auto direct = queryFor<IBaseUnknown>(static_cast<FObject*>(&list));
    const auto through = queryFor<IBaseUnknown>(static_cast<IHostList*>(&list));
    EXPECT_TRUE(direct == through);
}

TEST(UHostList, GrowsPastItsStep) {
    Foreign object;
    UHostList list;
    for (int i = 0; i < 25; ++i) {
        list.add(&object);
    }
    EXPECT_EQ(list.getCount(), 25);
    EXPECT_EQ(object.references, 26u);
}

TEST(UHostList, ACloneSharesTheEntries) {
    Foreign object;
    UHostList list;
    list.add(&object);
    {
        const auto copy = FRefPtr<UHostList>::adopt(list.clone());
        EXPECT_EQ(copy->getAt(0), &object);
        EXPECT_EQ(object.references, 3u);
    }
    EXPECT_EQ(object.references, 2u);
}

TEST(UHostList, ComparesElementByElement) {
    UHostList a;
    UHostList b;
    for (const int value : {1, 5}) {
        addNumber(a, value);
    }
    for (const int value : {1, 7}) {
        addNumber(b, value);
    }
    EXPECT_EQ(a.compare(&b), -1);
    EXPECT_EQ(b.compare(&a), 1);
    EXPECT_EQ(a.compare(&a), 0);
}

TEST(UHostList, EqualsEveryListThatItBegins) {
    UHostList shorter;
    UHostList longer;
    addNumber(shorter, 1);
    addNumber(longer, 1);
    addNumber(longer, 2);
    EXPECT_EQ(shorter.compare(&longer), 0);
    EXPECT_EQ(longer.compare(&shorter), 1);
    EXPECT_EQ(UHostList().compare(&longer), 0);
}

TEST(UHostList, EntriesThatAreNoObjectsDecideForTheirSide) {
    Foreign foreign;
    UHostList ours;
    UHostList theirs;
    ours.add(&foreign);
    addNumber(theirs, 1);
    EXPECT_EQ(ours.compare(&theirs), -1);
    EXPECT_EQ(theirs.compare(&ours), 1);
}

TEST(UHostList, SortsBehindWhatIsNoList) {
    const UHostList list;
    const CmObject other;
    EXPECT_EQ(list.compare(&other), 1);
    EXPECT_EQ(list.compare(nullptr), 1);
}

} // namespace
} // namespace tessera
