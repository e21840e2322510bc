#include "docs/Marker.h"
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [containers]
void fill(CmOrderedArray& markers) {
    markers.setOwnership(CmOwnership::owner);
    markers.add(new Marker("Chorus", 30)); // what new gave goes over to the array
    markers.add(new Marker("Verse", 12));
}

// Without owning: the markers belong to the other container.
void selectBehind(const CmContainer& markers, double seconds, CmArray& found) {
    markers.select(
        [seconds](CmObject* element) {
            const auto* marker = cmCast<Marker>(element);
            return marker != nullptr && marker->getSeconds() > seconds;
        },
        found);
}

void removeBefore(CmContainer& markers, double seconds) {
    const auto iterator = markers.newIterator();
    while (const auto* marker = cmCast<Marker>(iterator->current())) {
        if (marker->getSeconds() < seconds) {
            markers.removeAtIterator(*iterator); // now on the one behind; an owner releases
        } else {
            iterator->next();
        }
    }
}
// [containers]

TEST(ContainersExample, AnOwnerKeepsAndReleases) {
    CmOrderedArray markers;
    fill(markers);
    ASSERT_EQ(markers.getCount(), 2);
    EXPECT_TRUE(cmCast<Marker>(markers.at(0))->getName() == "Verse");
    const FRefPtr<CmObject> verse(markers.at(0));
    EXPECT_EQ(verse->getReferenceCount(), 2u);
    removeBefore(markers, 20);
    EXPECT_EQ(markers.getCount(), 1);
    EXPECT_EQ(verse->getReferenceCount(), 1u);
}

TEST(ContainersExample, AContainerThatOwnsNothingOnlyPoints) {
    CmOrderedArray markers;
    fill(markers);
    CmArray found;
    selectBehind(markers, 20, found);
    ASSERT_EQ(found.getCount(), 1);
    EXPECT_EQ(found.at(0), markers.at(1));
    EXPECT_EQ(found.at(0)->getReferenceCount(), 1u);
}

TEST(ContainersExample, ACopyOfAnOwnerHoldsClones) {
    CmOrderedArray markers;
    fill(markers);
    CmOrderedArray copy;
    EXPECT_TRUE(copy.copyFrom(markers));
    ASSERT_EQ(copy.getCount(), 2);
    EXPECT_NE(copy.at(0), markers.at(0));
}

} // namespace
} // namespace tessera::test
