#include "foundation/object/FMetaClass.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

constexpr FUIDBytes kIdentifier = "{1F0C3A52-77C4-4B0B-9A61-5D0E8F3B7C11}"_uid;

// A record that leaves the registry again with the test; those of the program stay to its end.
class TestRecord : public FMetaClass {
public:
    using FMetaClass::FMetaClass;
    ~TestRecord() { ClassFactory::getInstance(true)->removeClass(this); }
};

ClassFactory& registry() {
    return *ClassFactory::getInstance(true);
}

TEST(FMetaClass, KeepsWhatItIsGiven) {
    const TestRecord record("TestClass", &CmObject::metaClass, &createCmObject<CmObject>, kIdentifier);
    EXPECT_STREQ(record.getName(), "TestClass");
    EXPECT_STREQ(record.getPersistentName(), "TestClass");
    EXPECT_TRUE(record.getClassUID() == kIdentifier);
    EXPECT_EQ(record.getFactory(), &createCmObject<CmObject>);
    EXPECT_EQ(record.getParent(), &CmObject::metaClass);
    EXPECT_EQ(record.getFlags(), 0);
}

TEST(FMetaClass, EntersItselfUnderNameAndIdentifier) {
    const TestRecord record("TestClass", &CmObject::metaClass, &createCmObject<CmObject>, kIdentifier);
    EXPECT_EQ(registry().findByName("TestClass"), &record);
    EXPECT_EQ(registry().findByUID(kIdentifier), &record);
}

TEST(FMetaClass, WithoutFactoryAndParentStaysOutOfTheRegistry) {
    const TestRecord record("TestClass", nullptr, nullptr, kIdentifier);
    EXPECT_EQ(registry().findByName("TestClass"), nullptr);
    EXPECT_EQ(registry().findByUID(kIdentifier), nullptr);
}

TEST(FMetaClass, WithAParentAndNoFactoryIsFoundAndCreatesNothing) {
    const TestRecord record("TestClass", &CmObject::metaClass, nullptr);
    EXPECT_EQ(registry().findByName("TestClass"), &record);
    EXPECT_EQ(registry().createInstance("TestClass"), nullptr);
    EXPECT_EQ(registry().createObject("TestClass"), nullptr);
}

TEST(FMetaClass, AnAliasGivesItsClassASecondNameAndTheOneItIsWrittenWith) {
    TestRecord record("TestClass", &CmObject::metaClass, &createCmObject<CmObject>);
    const TestRecord alias("Test", record);
    EXPECT_EQ(alias.getFactory(), record.getFactory());
    EXPECT_EQ(alias.getParent(), nullptr);
    EXPECT_FALSE(alias.getClassUID().isValid());
    EXPECT_STREQ(record.getName(), "TestClass");
    EXPECT_STREQ(record.getPersistentName(), "Test");
    EXPECT_EQ(registry().findByName("Test"), &alias);
    EXPECT_EQ(registry().findByName("TestClass"), &record);
    const auto created = FRefPtr<CmObject>::adopt(registry().createObject("Test"));
    EXPECT_TRUE(created);
}

TEST(FMetaClass, ANamelessRecordMatchesNoName) {
    const TestRecord record(nullptr, nullptr, &createCmObject<CmObject>, kIdentifier);
    EXPECT_FALSE(record.isTypeOf(nullptr, true));
    EXPECT_FALSE(record.isTypeOf("", true));
    EXPECT_EQ(registry().findByUID(kIdentifier), &record);
}

} // namespace
} // namespace tessera
