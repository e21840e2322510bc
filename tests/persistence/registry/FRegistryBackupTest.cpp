#include "persistence/registry/FRegistryBackup.h"

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

class FRegistryBackupTest : public testing::Test {
protected:
    FRegistryBackupTest() {
        backup_.add(kKey, u"Path");
        backup_.add(kKey, u"Absent");
        backup_.add(u"Software\\Other", u"Path");
    }

    testing_support::OwnRegistry registry_;
    FRegistryBackup backup_;
};

TEST_F(FRegistryBackupTest, IsCreatedByName) {
    const auto object = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject("FRegistryBackup"));
    ASSERT_NE(cmCast<FRegistryBackup>(object.get()), nullptr);
}

TEST_F(FRegistryBackupTest, HoldsEachValueOnce) {
    EXPECT_FALSE(backup_.add("Software\\Vendor", "Path"));
    EXPECT_EQ(backup_.getCount(), 3);
    EXPECT_EQ(backup_.find(kKey, u"Absent"), backup_.at(1));
    EXPECT_EQ(backup_.find(kKey, u"Nobody's"), nullptr);
    EXPECT_EQ(backup_.at(3), nullptr);
    EXPECT_EQ(backup_.at(-1), nullptr);
    backup_.removeAll();
    EXPECT_EQ(backup_.getCount(), 0);
}

TEST_F(FRegistryBackupTest, PutsBackWhatWasThereAndWhatWasNot) {
    platform::writeRegistryValue(kKey, u"Path", u"before");
    platform::writeRegistryValue(u"Software\\Other", u"Path", u"other");
    backup_.backup();
    platform::writeRegistryValue(kKey, u"Path", u"after");
    platform::writeRegistryValue(kKey, u"Absent", u"after");
    platform::deleteRegistryValue(u"Software\\Other", u"Path");
    EXPECT_TRUE(backup_.restore());
    EXPECT_EQ(platform::readRegistryValue(kKey, u"Path"), u"before");
    EXPECT_EQ(platform::readRegistryValue(kKey, u"Absent"), std::nullopt);
    EXPECT_EQ(platform::readRegistryValue(u"Software\\Other", u"Path"), u"other");
}

TEST_F(FRegistryBackupTest, OneThatFailsDoesntKeepTheOthersBack) {
    platform::writeRegistryValue(u"Software\\Other", u"Path", u"other");
    backup_.backup();
    const std::u16string tooLong(platform::kLongestRegistryValue + 1, u'x');
    backup_.at(0)->setText(FStringRef(tooLong.data(), static_cast<std::int32_t>(tooLong.size())));
    platform::writeRegistryValue(u"Software\\Other", u"Path", u"changed");
    EXPECT_FALSE(backup_.restore());
    EXPECT_EQ(platform::readRegistryValue(u"Software\\Other", u"Path"), u"other");
}

TEST_F(FRegistryBackupTest, ComesBackFromAStream) {
    platform::writeRegistryValue(kKey, u"Path", u"before");
    backup_.backup();
    FMemoryStream stream;
    ASSERT_TRUE(backup_.write(stream));
    stream.rewind();
    FRegistryBackup read;
    read.add("old", "old");
    EXPECT_TRUE(read.read(stream));
    EXPECT_TRUE(read.isEqual(&backup_));
    EXPECT_EQ(stream.tell(), stream.getSize());
    for (std::int32_t size = 0; size < stream.getSize(); ++size) {
        FMemoryStream cut(static_cast<const void*>(stream.getData()), size);
        EXPECT_FALSE(FRegistryBackup().read(cut)) << size;
    }
}

TEST_F(FRegistryBackupTest, ACountThatTheStreamDoesntHoldIsRefused) {
    for (const std::int32_t count : {-1, 1, 0x7fffffff}) {
        FMemoryStream stream;
        stream.writeInt32(count);
        stream.rewind();
        FRegistryBackup read;
        EXPECT_FALSE(read.read(stream));
        EXPECT_EQ(read.getCount(), 0);
    }
}

TEST_F(FRegistryBackupTest, ACopyIsEqualAndApart) {
    const auto copy = FRefPtr<CmObject>::adopt(backup_.clone());
    EXPECT_TRUE(copy->isEqual(&backup_));
    backup_.at(0)->setText("x");
    EXPECT_FALSE(copy->isEqual(&backup_));
    EXPECT_FALSE(backup_.isEqual(nullptr));
}

TEST_F(FRegistryBackupTest, ComesBackFromATree) {
    platform::writeRegistryValue(kKey, u"Path", u"before");
    backup_.backup();
    FAttributes tree;
    ASSERT_TRUE(backup_.storeAttributes(tree));
    EXPECT_EQ(tree.listCount("Entries"), 3);
    FRegistryBackup restored;
    restored.add("old", "old");
    EXPECT_TRUE(restored.restoreAttributes(tree));
    EXPECT_TRUE(restored.isEqual(&backup_));
    FAttributes empty;
    EXPECT_TRUE(restored.restoreAttributes(empty));
    EXPECT_EQ(restored.getCount(), 0);
}

} // namespace
} // namespace tessera
