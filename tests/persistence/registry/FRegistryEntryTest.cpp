#include "persistence/registry/FRegistryEntry.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/streams/FMemoryStream.h"
#include "platform/RegistryValues.h"
#include "support/OwnRegistry.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

constexpr char16_t kKey[] = u"Software\\Vendor";

class FRegistryEntryTest : public testing::Test {
protected:
    testing_support::OwnRegistry registry_;
};

TEST_F(FRegistryEntryTest, IsCreatedByName) {
    const auto object = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject("FRegistryEntry"));
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isTypeOf("CmObject", true));
    const auto* entry = cmCast<FRegistryEntry>(object.get());
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->hasText());
}

TEST_F(FRegistryEntryTest, TakesWhatIsThere) {
    FRegistryEntry entry(kKey, u"Path");
    entry.take();
    EXPECT_FALSE(entry.hasText());
    platform::writeRegistryValue(kKey, u"Path", u"größe");
    entry.take();
    EXPECT_TRUE(entry.hasText());
    EXPECT_EQ(entry.getText(), FStringRef(u"größe"));
    platform::writeRegistryValue(kKey, u"Path", u"");
    entry.take();
    EXPECT_TRUE(entry.hasText()) << "the empty text is a text";
    EXPECT_TRUE(entry.getText().isEmpty());
    platform::deleteRegistryValue(kKey, u"Path");
    entry.take();
    EXPECT_FALSE(entry.hasText());
}

TEST_F(FRegistryEntryTest, PutsBackATextOrItsAbsence) {
    FRegistryEntry entry(kKey, u"Path");
    entry.setText("narrow");
    EXPECT_TRUE(entry.putBack());
    EXPECT_EQ(platform::readRegistryValue(kKey, u"Path"), u"narrow");
    entry.clearText();
    EXPECT_TRUE(entry.putBack());
    EXPECT_EQ(platform::readRegistryValue(kKey, u"Path"), std::nullopt);
}

TEST_F(FRegistryEntryTest, SaysWhenItCantBePutBack) {
    FRegistryEntry entry(kKey, u"Path");
    entry.setText("x");
    registry_.remove();
    EXPECT_FALSE(entry.putBack());
}

TEST_F(FRegistryEntryTest, IsEqualByAllThatItHolds) {
    FRegistryEntry entry(kKey, u"Path");
    FRegistryEntry same("Software\\Vendor", "Path");
    EXPECT_TRUE(entry.isEqual(&same));
    same.setText("");
    EXPECT_FALSE(entry.isEqual(&same)) << "no text is not the empty one";
    entry.setText("");
    EXPECT_TRUE(entry.isEqual(&same));
    same.setText("x");
    EXPECT_FALSE(entry.isEqual(&same));
    EXPECT_FALSE(FRegistryEntry("a", "b").isEqual(nullptr));
    const FRegistryEntry a("a", "b");
    const FRegistryEntry otherKey("A", "b");
    const FRegistryEntry otherName("a", "c");
    EXPECT_FALSE(a.isEqual(&otherKey));
    EXPECT_FALSE(a.isEqual(&otherName));
    const auto copy = FRefPtr<CmObject>::adopt(entry.clone());
    EXPECT_TRUE(entry.isEqual(copy.get()));
}

TEST_F(FRegistryEntryTest, ComesBackFromAStream) {
    FRegistryEntry entry(kKey, u"Path");
    for (int round = 0; round < 2; ++round) {
        FMemoryStream stream;
        ASSERT_TRUE(entry.write(stream));
        stream.rewind();
        FRegistryEntry read("old", "old");
        read.setText("old");
        EXPECT_TRUE(read.read(stream));
        EXPECT_TRUE(read.isEqual(&entry));
        EXPECT_EQ(stream.tell(), stream.getSize());
        for (std::int32_t size = 0; size < stream.getSize(); ++size) {
            FMemoryStream cut(static_cast<const void*>(stream.getData()), size);
            EXPECT_FALSE(FRegistryEntry().read(cut)) << size;
        }
        entry.setText(u"größe");
    }
}

TEST_F(FRegistryEntryTest, ComesBackFromATree) {
    FRegistryEntry entry(kKey, u"Path");
    for (int round = 0; round < 2; ++round) {
        FAttributes tree;
        ASSERT_TRUE(entry.storeAttributes(tree));
        EXPECT_EQ(tree.getCount(), 2 + round);
        FRegistryEntry restored("old", "old");
        restored.setText("old");
        EXPECT_TRUE(restored.restoreAttributes(tree));
        EXPECT_TRUE(restored.isEqual(&entry));
        entry.setText("");
    }
    FAttributes empty;
    EXPECT_FALSE(entry.restoreAttributes(empty));
}

} // namespace
} // namespace tessera
