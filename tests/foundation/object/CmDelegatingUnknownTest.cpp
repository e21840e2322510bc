#include "foundation/object/CmDelegatingUnknown.h"

#include "support/ForeignObject.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using Foreign = test::ForeignObject<>;

class RecordingOwner final : public CmDelegatingUnknown::Owner {
public:
    void removeDelegate(CmDelegatingUnknown* delegate) override { removed = delegate; }

    CmDelegatingUnknown* removed = nullptr;
};

TEST(CmDelegatingUnknown, HoldsAReferenceOfWhatItWraps) {
    Foreign object;
    {
        const CmDelegatingUnknown delegate(&object);
        EXPECT_EQ(delegate.getObject(), &object);
        EXPECT_EQ(object.references, 2u);
    }
    EXPECT_EQ(object.references, 1u);
}

TEST(CmDelegatingUnknown, TwoWrappersOfOneObjectAreEqual) {
    Foreign object;
    Foreign other;
    const CmDelegatingUnknown a(&object);
    const CmDelegatingUnknown b(&object);
    const CmDelegatingUnknown c(&other);
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_FALSE(a.isEqual(&c));
}

TEST(CmDelegatingUnknown, AgainstAnythingElseItIsEqualToItselfAlone) {
    const CmDelegatingUnknown delegate;
    const CmObject other;
    EXPECT_FALSE(delegate.isEqual(&other));
    EXPECT_FALSE(delegate.isEqual(nullptr));
}

TEST(CmDelegatingUnknown, TellsItsOwnerWhenItGoes) {
    RecordingOwner owner;
    auto* delegate = new CmDelegatingUnknown(nullptr, &owner);
    EXPECT_EQ(owner.removed, nullptr);
    delegate->release();
    EXPECT_EQ(owner.removed, delegate);
}

} // namespace
} // namespace tessera
