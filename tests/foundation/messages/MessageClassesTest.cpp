// The records of the messages in the class registry.
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FMetaClass.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

struct Row {
    const char* name;
    const char* parent;
    bool isAbstract;
};

class MessageClasses : public testing::TestWithParam<Row> {};

TEST_P(MessageClasses, StandInTheRegistry) {
    const Row& row = GetParam();
    const FMetaClass* record = ClassFactory::getInstance(true)->findByName(row.name);
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->getParent()->getName(), row.parent);
    EXPECT_EQ(record->getFactory() == nullptr, row.isAbstract);
}

INSTANTIATE_TEST_SUITE_P(Rows, MessageClasses,
                         testing::Values(Row{"FMessage", "CmObject", false}, Row{"FAttributeValue", "CmObject", false},
                                         Row{"FIntIDAttribute", "FAttributeValue", false},
                                         Row{"FStringIDAttribute", "FAttributeValue", false},
                                         Row{"FMessenger", "CmObject", true}, Row{"FPostedMessage", "CmObject", true}),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace tessera
