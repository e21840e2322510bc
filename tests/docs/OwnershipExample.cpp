#include "docs/Marker.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [ownership]
class Cursor {
public:
    // Lent: the cursor keeps it, so it takes a reference of its own.
    void setMarker(Marker* marker) { marker_ = marker; }
    // Lends. Null for none.
    Marker* getMarker() const { return marker_.get(); }
    // The caller's: a name that begins with create, clone, or get and ends in Instance says so.
    Marker* cloneMarker() const { return marker_ ? marker_->clone() : nullptr; }

private:
    FRefPtr<Marker> marker_;
};

void useCursor(Cursor& cursor) {
    const auto verse = FRefPtr<Marker>::adopt(new Marker("Verse", 12)); // takes over what new gave
    cursor.setMarker(verse.get());
    const auto copy = FRefPtr<Marker>::adopt(cursor.cloneMarker()); // gives it back at the end of the scope
}
// [ownership]

TEST(OwnershipExample, WhatTheCursorKeepsIsItsOwn) {
    Cursor cursor;
    useCursor(cursor);
    ASSERT_NE(cursor.getMarker(), nullptr);
    EXPECT_EQ(cursor.getMarker()->getReferenceCount(), 1u);
    EXPECT_TRUE(cursor.getMarker()->getName() == "Verse");
    const auto copy = FRefPtr<Marker>::adopt(cursor.cloneMarker());
    EXPECT_NE(copy.get(), cursor.getMarker());
    EXPECT_EQ(copy->getSeconds(), 12);
}

} // namespace
} // namespace tessera::test
