#include "foundation/object/FRefPtr.h"

#include "support/ForeignObject.h"

#include <gtest/gtest.h>

#include <utility>

namespace tessera {
namespace {

using Foreign = test::ForeignObject<>;

TEST(FRefPtr, TakesAReferenceAndGivesItBackAtTheEndOfItsScope) {
    Foreign object;
    {
        const FRefPtr<Foreign> holder(&object);
        EXPECT_EQ(object.references, 2u);
    }
    EXPECT_EQ(object.references, 1u);
}

TEST(FRefPtr, AdoptsAReferenceThatTheCallerOwns) {
    Foreign object;
    object.addRef();
    { const auto holder = FRefPtr<Foreign>::adopt(&object); }
    EXPECT_EQ(object.references, 1u);
}

TEST(FRefPtr, CopiesShareAndMovesHandOver) {
    Foreign object;
    FRefPtr<Foreign> a(&object);
    const FRefPtr<Foreign> b(a);
    EXPECT_EQ(object.references, 3u);
    const FRefPtr<Foreign> c(std::move(a));
    EXPECT_EQ(object.references, 3u);
    EXPECT_EQ(c.get(), &object);
}

TEST(FRefPtr, AssigningWhatItHoldsNeverDropsTheLastReference) {
    // Released before the new reference is taken, the count would pass through 0.
    class Sentinel : public Foreign {
    public:
        std::uint32_t release() override {
            lowest = std::min(lowest, references - 1);
            return Foreign::release();
        }
        std::uint32_t lowest = 1;
    };
    Sentinel object;
    auto holder = FRefPtr<Sentinel>::adopt(&object);
    holder = &object;
    EXPECT_EQ(object.lowest, 1u);
    EXPECT_EQ(object.references, 1u);
    static_cast<void>(holder.detach());
}

TEST(FRefPtr, DetachAndResetEmptyIt) {
    Foreign object;
    FRefPtr<Foreign> holder(&object);
    EXPECT_EQ(holder.detach(), &object);
    EXPECT_FALSE(holder);
    EXPECT_EQ(object.references, 2u);
    object.release();
    holder = &object;
    holder.reset();
    EXPECT_EQ(object.references, 1u);
}

TEST(FRefPtr, QueryForGivesTheInterfaceOrNull) {
    Foreign object;
    EXPECT_TRUE(queryFor<IBaseUnknown>(&object));
    EXPECT_FALSE(queryFor<IBaseUnknown>(static_cast<Foreign*>(nullptr)));
    EXPECT_EQ(object.references, 1u);
}

} // namespace
} // namespace tessera
