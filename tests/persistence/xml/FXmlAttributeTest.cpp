#include "persistence/xml/FXmlAttribute.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FXmlAttribute, IsKnownByNameAndNotCreatedByIt) {
    FXmlAttribute attribute;
    EXPECT_STREQ(attribute.getClassName(), "FXmlAttribute");
    EXPECT_TRUE(attribute.isTypeOf("CmObject", true));
    EXPECT_EQ(ClassFactory::getInstance(true)->findByName("FXmlAttribute"), &FXmlAttribute::metaClass);
    EXPECT_EQ(ClassFactory::getInstance(true)->createInstance("FXmlAttribute"), nullptr);
}

TEST(FXmlAttribute, TakesTextOfBothWidthsAndBytes) {
    FXmlAttribute attribute("name", u"w\u00E9rt");
    EXPECT_EQ(attribute.getName().view8(), "name");
    EXPECT_EQ(attribute.getValue().view16(), u"w\u00E9rt");
    attribute.setName("other");
    attribute.setValue("");
    EXPECT_EQ(attribute.getName().view8(), "other");
    EXPECT_FALSE(attribute.getValue().isWide());
    EXPECT_TRUE(attribute.getValue().isEmpty());
}

TEST(FXmlAttribute, ATextThatIsThereAlreadyStaysWhereItIs) {
    FXmlAttribute attribute("name", "value");
    const void* name = attribute.getName().rawText();
    attribute.setName("name");
    EXPECT_EQ(attribute.getName().rawText(), name);
}

TEST(FXmlAttribute, ACopyIsAnObjectOfItsOwn) {
    const FXmlAttribute attribute("name", "value");
    const auto copy = FRefPtr<FXmlAttribute>::adopt(attribute.clone());
    EXPECT_EQ(copy->getReferenceCount(), 1u);
    EXPECT_EQ(copy->getName().view8(), "name");
    EXPECT_EQ(copy->getValue().view8(), "value");
}

} // namespace
} // namespace tessera
