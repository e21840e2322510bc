#include "docs/Marker.h"
#include "persistence/attributes/FAttributes.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [attributes]
bool describe(FAttributes& song, Marker& verse) {
    return song.setString("title", u"Größe") && song.setInt("tempo", 120) && song.setAttributes("loop", verse) &&
           song.setObject("selected", &verse) && // with a reference of the tree's own
           song.appendFloat("bars", 0) && song.appendFloat("bars", 2);
}

double lastBar(FAttributes& song) {
    double bar = 0;
    for (song.resetList("bars"); song.nextFloat("bars", bar);) {
    }
    return bar;
}
// [attributes]

TEST(AttributesExample, ATreeHoldsWhatItIsGiven) {
    FAttributes song;
    Marker verse("Verse", 12);
    ASSERT_TRUE(describe(song, verse));
    EXPECT_EQ(lastBar(song), 2);
    EXPECT_EQ(song.getObject("selected"), &verse);
    EXPECT_EQ(verse.getReferenceCount(), 2u);
    Marker loop;
    EXPECT_TRUE(song.getAttributesInto("loop", loop));
    EXPECT_EQ(loop.getSeconds(), 12);
    ASSERT_NE(song.lookupAttributes("loop"), nullptr);
    std::int64_t tempo = 7;
    EXPECT_FALSE(song.getInt("missing", tempo));
    EXPECT_EQ(tempo, 7);
    song.removeAll();
    EXPECT_EQ(verse.getReferenceCount(), 1u);
}

} // namespace
} // namespace tessera::test
