#include "foundation/object/ClassFactory.h"

#include "foundation/object/CmClass.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/IAllocator.h"
#include "foundation/object/IComponentSource.h"
#include "foundation/object/IHostList.h"
#include "foundation/object/ILibraryLoader.h"
#include "foundation/object/IObjectOrder.h"
#include "foundation/object/IPersistentObject.h"
#include "support/ClassRecords.h"
#include "support/ForeignObject.h"
#include "support/StringSink.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::StringSink;

ClassFactory& registry() {
    return *ClassFactory::getInstance(true);
}

class ForeignPersistent : public test::ForeignObject<IPersistentObject> {
public:
    FResult getClassUID(FUIDBytes& uid) override {
        uid = classUID;
        return answer;
    }
    FResult saveAttributes(IAttributes*) override { return kResultFailure; }
    FResult loadAttributes(IAttributes*) override { return kResultFailure; }

    FUIDBytes classUID = IHostList::iid;
    FResult answer = kResultOk;
};

// A class of this module whose name nobody registered.
class Unregistered : public CmObject {
public:
    const char* getClassName() const override { return "Unregistered"; }
};

TEST(ClassFactory, IsOneObject) {
    EXPECT_NE(ClassFactory::getInstance(true), nullptr);
    EXPECT_EQ(ClassFactory::getInstance(true), ClassFactory::getInstance(false));
    EXPECT_TRUE(registry().isA("ClassFactory"));
    EXPECT_TRUE(registry().isTypeOf("FObject", true));
}

TEST(ClassFactory, CreatesByName) {
    const auto object = FRefPtr<CmObject>::adopt(static_cast<CmObject*>(registry().createInstance("CmUID")));
    ASSERT_TRUE(object);
    EXPECT_STREQ(object->getClassName(), "CmUID");
    EXPECT_EQ(object->getReferenceCount(), 1u);
}

TEST(ClassFactory, UnknownNamesAndIdentifiersGiveNull) {
    EXPECT_EQ(registry().createInstance("NoSuchClass"), nullptr);
    EXPECT_EQ(registry().createInstance(""), nullptr);
    EXPECT_EQ(registry().createInstance(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(registry().createInstance("{01234567-89AB-CDEF-0123-456789ABCDEF}"_uid), nullptr);
    EXPECT_EQ(registry().createInstance("0123456789ABCDEF0123456789ABCDEF"), nullptr);
    EXPECT_EQ(registry().createInstance(FUIDBytes{}), nullptr);
    EXPECT_EQ(registry().createObject("NoSuchClass"), nullptr);
}

TEST(ClassFactory, ANameOfThirtyTwoDigitsIsAnIdentifier) {
    const auto list = FRefPtr<IHostList>::adopt(
        static_cast<IHostList*>(registry().createInstance("8E8562D867F54576817561CFC2B134E3")));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->getCount(), 0);
}

TEST(ClassFactory, AClassWithAnIdentifierIsNoPlainObject) {
    EXPECT_EQ(registry().createObject("8E8562D867F54576817561CFC2B134E3"), nullptr);
}

TEST(ClassFactory, RemovedRecordsAreNotFoundAnyMore) {
    constexpr FUIDBytes uid = "{5C1C0A3B-0B85-4F0E-9E53-3F6D2B1A9C77}"_uid;
    FMetaClass record("RemovedClass", &CmObject::metaClass, &createCmObject<CmObject>, uid);
    registry().removeClass(&record);
    EXPECT_EQ(registry().findByName("RemovedClass"), nullptr);
    EXPECT_EQ(registry().findByUID(uid), nullptr);
}

TEST(ClassFactory, WithoutAComponentRegistryThereIsNoComponentSource) {
    EXPECT_EQ(registry().createInstance(IComponentSource::iid), nullptr);
}

TEST(ClassFactory, PersistentNameWithoutTheRegistryIsTheClassName) {
    StringSink sink;
    CmUID uid;
    EXPECT_TRUE(registry().getPersistentClassName(static_cast<FObject*>(&uid), &sink, false));
    EXPECT_EQ(sink.text, "CmUID");
}

TEST(ClassFactory, PersistentNameWithTheRegistryIsTheRecords) {
    FMetaClass record("Unregistered", &CmObject::metaClass, &createCmObject<CmObject>);
    FMetaClass alias("Known", record);
    StringSink sink;
    Unregistered object;
    EXPECT_TRUE(registry().getPersistentClassName(&object, &sink, true));
    EXPECT_EQ(sink.text, "Known");
    EXPECT_EQ(object.getReferenceCount(), 1u);
    registry().removeClass(&alias);
    registry().removeClass(&record);
}

TEST(ClassFactory, AnUnregisteredClassHasNoPersistentName) {
    StringSink sink;
    Unregistered object;
    EXPECT_FALSE(registry().getPersistentClassName(&object, &sink, true));
    EXPECT_EQ(sink.text, "(nothing)");
}

TEST(ClassFactory, AForeignObjectIsStoredUnderItsRegisteredIdentifier) {
    StringSink sink;
    ForeignPersistent object;
    EXPECT_TRUE(registry().getPersistentClassName(&object, &sink, true));
    EXPECT_EQ(sink.text, "8E8562D867F54576817561CFC2B134E3");
    EXPECT_EQ(object.references, 1u);
}

TEST(ClassFactory, AForeignIdentifierCountsUnregisteredOnlyWithoutTheRegistry) {
    StringSink sink;
    ForeignPersistent object;
    object.classUID = "{01234567-89AB-CDEF-0123-456789ABCDEF}"_uid;
    EXPECT_FALSE(registry().getPersistentClassName(&object, &sink, true));
    EXPECT_TRUE(registry().getPersistentClassName(&object, &sink, false));
    EXPECT_EQ(sink.text, "0123456789ABCDEF0123456789ABCDEF");
}

TEST(ClassFactory, AForeignObjectThatCannotTellItsClassHasNoName) {
    StringSink sink;
    ForeignPersistent object;
    object.answer = kResultFalse;
    test::ForeignObject<> plain;
    EXPECT_FALSE(registry().getPersistentClassName(&object, &sink, false));
    EXPECT_FALSE(registry().getPersistentClassName(&plain, &sink, false));
    EXPECT_FALSE(registry().getPersistentClassName(nullptr, &sink, false));
}

// Whatever is registered, now or later, keeps the promises of its record.
TEST(ClassFactory, EveryRecordCreatesItsObjectAndEndsInTheRoot) {
    EXPECT_GE(test::expectSoundRecords(), 20);
}

struct TreeRow {
    const char* name;
    const char* parent;
    bool isAbstract;
};

class ClassTree : public testing::TestWithParam<TreeRow> {};

TEST_P(ClassTree, StandsInTheRegistry) {
    const TreeRow& row = GetParam();
    const FMetaClass* record = registry().findByName(row.name);
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->getName(), row.name);
    EXPECT_EQ(record->getFactory() == nullptr, row.isAbstract);
    if (row.parent == nullptr) {
        EXPECT_EQ(record->getParent(), nullptr);
    } else {
        ASSERT_NE(record->getParent(), nullptr);
        EXPECT_STREQ(record->getParent()->getName(), row.parent);
    }
}

INSTANTIATE_TEST_SUITE_P(Object, ClassTree,
                         testing::Values(TreeRow{"CmObject", nullptr, false}, TreeRow{"UHostList", "CmObject", false},
                                         TreeRow{"CmUID", "CmObject", false},
                                         TreeRow{"CmDelegatingUnknown", "CmObject", false}),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace tessera
