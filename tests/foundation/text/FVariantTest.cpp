#include "foundation/text/FVariant.h"

#include "support/StringObjects.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <utility>

namespace tessera {
namespace {

char* allocatedText() {
    auto* const text = static_cast<char*>(std::malloc(4));
    std::strcpy(text, "abc");
    return text;
}

TEST(FVariant, AFreshVariantIsEmpty) {
    const FVariant value;
    EXPECT_EQ(value.typeWord(), 0);
    EXPECT_FALSE(value.isOwner());
    EXPECT_EQ(value.integer(), 0);
    EXPECT_EQ(value.text8(), nullptr);
}

TEST(FVariant, AValueAnswersAsItsOwnTypeAlone) {
    const FVariant integer(std::int64_t{-7});
    EXPECT_EQ(integer.type(), 1);
    EXPECT_EQ(integer.integer(), -7);
    EXPECT_EQ(integer.real(), 0.0);
    EXPECT_EQ(integer.object(), nullptr);
    const FVariant real(2.5);
    EXPECT_EQ(real.type(), 2);
    EXPECT_EQ(real.real(), 2.5);
    EXPECT_EQ(real.integer(), 0);
    const FVariant narrow("text");
    EXPECT_EQ(narrow.type(), 4);
    EXPECT_STREQ(narrow.text8(), "text");
    EXPECT_EQ(narrow.text16(), nullptr);
    const FVariant wide(u"text");
    EXPECT_EQ(wide.type(), 32);
    EXPECT_EQ(wide.text8(), nullptr);
}

TEST(FVariant, TheTypeLeavesTheOwnerBitOut) {
    FVariant value;
    value.setText8(allocatedText(), FVariant::kOwner);
    EXPECT_EQ(value.typeWord(), 20);
    EXPECT_EQ(value.type(), 4);
    EXPECT_TRUE(value.isOwner());
    EXPECT_STREQ(value.text8(), "abc");
    value.clear();
    EXPECT_EQ(value.typeWord(), 0);
    EXPECT_EQ(value.text8(), nullptr);
}

TEST(FVariant, AnOwnedObjectIsReleasedOnceAndABorrowedOneNever) {
    test::ByteStringObject object;
    {
        FVariant value(&object);
        EXPECT_EQ(value.object(), &object);
    }
    EXPECT_EQ(object.references, 1);
    object.addRef();
    {
        FVariant value;
        value.setObject(&object, FVariant::kOwner);
        EXPECT_EQ(object.references, 2);
        value.setInteger(1);
        EXPECT_EQ(object.references, 1) << "setting another value clears the old one";
    }
    EXPECT_EQ(object.references, 1);
    FVariant nothing;
    nothing.setObject(nullptr, FVariant::kOwner);
    nothing.clear();
    EXPECT_EQ(nothing.typeWord(), 0);
}

TEST(FVariant, MovingHandsTheOwnershipOver) {
    test::ByteStringObject object;
    object.addRef();
    FVariant source;
    source.setObject(&object, FVariant::kOwner);
    FVariant moved(std::move(source));
    EXPECT_EQ(source.typeWord(), 0);
    EXPECT_TRUE(moved.isOwner());
    FVariant target("old");
    target = std::move(moved);
    EXPECT_EQ(moved.typeWord(), 0);
    EXPECT_EQ(target.object(), &object);
    EXPECT_EQ(object.references, 2);
    target.clear();
    EXPECT_EQ(object.references, 1);
}

} // namespace
} // namespace tessera
