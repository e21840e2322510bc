#include "foundation/object/CmObject.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/UHostList.h"
#include "support/ForeignObject.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

class Follower : public CmObject {
public:
    void updateFrom(CmObject* changed, std::int32_t message) override {
        lastChanged = changed;
        lastMessage = message;
    }

    CmObject* lastChanged = nullptr;
    std::int32_t lastMessage = 0;
};

TEST(CmObject, ComparesByAddress) {
    const CmObject pair[2];
    EXPECT_TRUE(pair[0].isEqual(&pair[0]));
    EXPECT_FALSE(pair[0].isEqual(&pair[1]));
    EXPECT_EQ(pair[0].compare(&pair[0]), 0);
    EXPECT_EQ(pair[0].compare(&pair[1]), -1);
    EXPECT_EQ(pair[1].compare(&pair[0]), 1);
}

TEST(CmObject, HashesItsAddressIntoTheTable) {
    const CmObject object;
    EXPECT_EQ(object.hash(7), (reinterpret_cast<std::uintptr_t>(&object) / 16) % 7);
    EXPECT_EQ(object.hash(1), 0u);
    EXPECT_EQ(object.hash(0), 0u);
}

TEST(CmObject, DefaultsOfPersistenceAndMessages) {
    CmObject object;
    EXPECT_EQ(object.receiveMessage(nullptr), 0);
    EXPECT_EQ(object.getMetaClass(), &CmObject::metaClass);
    const auto copy = FRefPtr<CmObject>::adopt(object.clone());
    EXPECT_STREQ(copy->getClassName(), "CmObject");
}

TEST(CmObject, ClassQuestionsClimbToTheRoot) {
    const CmUID uid;
    EXPECT_STREQ(uid.getClassName(), "CmUID");
    EXPECT_TRUE(uid.isA("CmUID"));
    EXPECT_FALSE(uid.isA("CmObject"));
    EXPECT_TRUE(uid.isTypeOf("CmObject", true));
    EXPECT_TRUE(uid.isTypeOf("FObject", true));
    EXPECT_FALSE(uid.isTypeOf("FObject", false));
    EXPECT_FALSE(uid.isTypeOf("UHostList", true));
    EXPECT_FALSE(uid.isTypeOf(nullptr, true));
    EXPECT_FALSE(uid.isTypeOf(nullptr, false));
}

TEST(CmObject, ClassNamesAreComparedByTheirCharacters) {
    const std::string copiedName = std::string("Cm") + "UID";
    const CmUID uid;
    EXPECT_TRUE(uid.isTypeOf(copiedName.c_str(), false));
    EXPECT_FALSE(uid.isTypeOf("CmUI", true));
    EXPECT_FALSE(uid.isTypeOf("CmUIDs", true));
}

TEST(CmObject, AnUpdateFromACmObjectBecomesUpdateFrom) {
    Follower follower;
    CmObject subject;
    follower.update(static_cast<FObject*>(&subject), 9);
    EXPECT_EQ(follower.lastChanged, &subject);
    EXPECT_EQ(follower.lastMessage, 9);
}

TEST(CmObject, AnUpdateFromSomethingElseIsDropped) {
    Follower follower;
    test::ForeignObject<> foreign;
    FObject plain;
    follower.update(&foreign, 9);
    follower.update(&plain, 9);
    follower.update(nullptr, 9);
    EXPECT_EQ(follower.lastMessage, 0);
}

TEST(AsCmObject, GivesABorrowedPointerToACmObjectAlone) {
    CmObject object;
    EXPECT_EQ(asCmObject(&object), &object);
    EXPECT_EQ(object.getReferenceCount(), 1u);
}

TEST(AsCmObject, FindsTheObjectBehindAnyOfItsInterfaces) {
    UHostList list;
    IHostList* interface = &list;
    EXPECT_EQ(asCmObject(interface), &list);
    EXPECT_EQ(list.getReferenceCount(), 1u);
}

TEST(AsCmObject, GivesNullForNullForeignObjectsAndPlainFObjects) {
    test::ForeignObject<> foreign;
    FObject plain;
    EXPECT_EQ(asCmObject(static_cast<IBaseUnknown*>(nullptr)), nullptr);
    EXPECT_EQ(asCmObject(&foreign), nullptr);
    EXPECT_EQ(asCmObject(&plain), nullptr);
    EXPECT_EQ(foreign.references, 1u);
    EXPECT_EQ(plain.getReferenceCount(), 1u);
}

TEST(CmCast, GivesTheObjectAsItsClassOrNull) {
    CmUID uid;
    CmObject plain;
    EXPECT_EQ(cmCast<CmUID>(static_cast<CmObject*>(&uid)), &uid);
    EXPECT_EQ(cmCast<CmUID>(&plain), nullptr);
    EXPECT_EQ(cmCast<CmUID>(static_cast<CmObject*>(nullptr)), nullptr);
}

} // namespace
} // namespace tessera
