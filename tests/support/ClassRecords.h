// What every class record of a program promises, checked over all that are registered.
#pragma once

#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {

inline void expectSoundRecord(const ClassFactory& registry, const FMetaClass& record) {
    if (record.getName() == nullptr) {
        EXPECT_TRUE(record.getClassUID().isValid());
        EXPECT_NE(record.getFactory(), nullptr);
        return;
    }
    SCOPED_TRACE(record.getName());
    EXPECT_EQ(registry.findByName(record.getName()), &record) << "two classes of one name";
    const FMetaClass* parent = record.getParent();
    if (parent != nullptr) {
        EXPECT_EQ(registry.findByName(parent->getName()), parent);
    }
    // What has an identifier hands out its interface, and need be no CmObject.
    if (record.getClassUID().isValid()) {
        return;
    }
    if (parent != nullptr) {
        EXPECT_TRUE(record.isTypeOf("CmObject", true));
    }
    const auto object = FRefPtr<CmObject>::adopt(registry.createObject(record.getName()));
    EXPECT_EQ(static_cast<bool>(object), record.getFactory() != nullptr);
    if (object) {
        EXPECT_EQ(object->getReferenceCount(), 1u);
        EXPECT_TRUE(object->isTypeOf("CmObject", true));
        EXPECT_TRUE(object->isTypeOf("FObject", true));
        EXPECT_FALSE(object->isTypeOf(nullptr, true));
        EXPECT_FALSE(object->isTypeOf(nullptr, false));
        EXPECT_EQ(registry.findByName(object->getClassName()), object->getMetaClass());
    }
}

// Gives how many classes have a name.
inline int expectSoundRecords() {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    int named = 0;
    for (const FMetaClass* record : registry.getRecords()) {
        expectSoundRecord(registry, *record);
        named += record->getName() != nullptr ? 1 : 0;
    }
    return named;
}

} // namespace tessera::test
