// The records of this layer and of those below it.
#include "support/ClassRecords.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(AppservicesClassRecords, CreateTheirObjectsAndEndInTheRoot) {
    EXPECT_GE(test::expectSoundRecords(), 40);
}

TEST(AppservicesClassRecords, HaveTheirParents) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    constexpr const char* kRows[][2] = {{"CmTime", "CmObject"}, {"CmDate", "CmObject"}, {"UFormatedValue", "UValue"}};
    for (const auto& [name, parent] : kRows) {
        const FMetaClass* const record = registry.findByName(name);
        ASSERT_NE(record, nullptr) << name;
        ASSERT_NE(record->getParent(), nullptr) << name;
        EXPECT_STREQ(record->getParent()->getName(), parent);
        EXPECT_STREQ(record->getPersistentName(), name);
        EXPECT_FALSE(record->getClassUID().isValid());
    }
}

} // namespace
} // namespace tessera
