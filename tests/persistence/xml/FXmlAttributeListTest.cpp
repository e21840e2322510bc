#include "persistence/xml/FXmlAttributeList.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tessera {
namespace {

std::string textOf(const FXmlAttributeList& list) {
    std::string text;
    for (const FXmlAttribute& attribute : list) {
        text += std::string(attribute.getName().view8()) + "=" + std::string(attribute.getValue().view8()) + ";";
    }
    return text;
}

TEST(FXmlAttributeList, KeepsTheOrderAndFindsTheFirstOfAName) {
    FXmlAttributeList list;
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(list.find("a"), nullptr);
    list.add("a", "1");
    list.add("b", "2");
    list.add("a", "3");
    EXPECT_EQ(list.getCount(), 3);
    EXPECT_EQ(textOf(list), "a=1;b=2;a=3;");
    EXPECT_EQ(list.find("a")->getValue().view8(), "1");
    EXPECT_EQ(list.valueOf("b")->view8(), "2");
    EXPECT_EQ(list.valueOf("A"), nullptr);
    EXPECT_EQ(list.find(""), nullptr);
}

TEST(FXmlAttributeList, ANameIsComparedByItsBytesAndA16BitOneIsNotFound) {
    FXmlAttributeList list;
    list.add(u"a", "1");
    EXPECT_EQ(list.find("a"), nullptr);
}

TEST(FXmlAttributeList, HoldsAReferenceAndHandsItOver) {
    auto attribute = FRefPtr<FXmlAttribute>::adopt(new FXmlAttribute("a", "1"));
    FXmlAttributeList list;
    list.add(attribute);
    EXPECT_EQ(attribute->getReferenceCount(), 2u);
    list.add("b", "2");
    const FRefPtr<FXmlAttribute> taken = list.takeFirst();
    EXPECT_EQ(taken, attribute);
    EXPECT_EQ(attribute->getReferenceCount(), 2u);
    EXPECT_EQ(textOf(list), "b=2;");
    list.add(attribute);
    EXPECT_EQ(textOf(list), "b=2;a=1;");
    list.clear();
    EXPECT_EQ(attribute->getReferenceCount(), 2u);
    EXPECT_FALSE(list.takeFirst());
}

TEST(FXmlAttributeList, MovesAsAWholeToTheFrontOfAnother) {
    FXmlAttributeList list;
    FXmlAttributeList other;
    list.prepend(other);
    EXPECT_TRUE(list.isEmpty());
    other.add("a", "1");
    other.add("b", "2");
    list.prepend(other);
    EXPECT_TRUE(other.isEmpty());
    EXPECT_EQ(other.getCount(), 0);
    other.add("c", "3");
    list.prepend(other);
    list.add("d", "4");
    EXPECT_EQ(textOf(list), "c=3;a=1;b=2;d=4;");
    EXPECT_EQ(list.getCount(), 4);
}

TEST(FXmlAttributeList, WhatOthersHoldIsDroppedOnDemand) {
    const auto held = FRefPtr<FXmlAttribute>::adopt(new FXmlAttribute("b", "2"));
    FXmlAttributeList list;
    list.add("a", "1");
    list.dropShared();
    list.add(held);
    list.add("c", "3");
    list.dropShared();
    EXPECT_EQ(textOf(list), "a=1;c=3;");
    EXPECT_EQ(held->getReferenceCount(), 1u);
}

TEST(FXmlAttributeList, ALongListGoesWithoutRecursion) {
    FXmlAttributeList list;
    for (int i = 0; i < 200000; ++i) {
        list.add("a", "");
    }
    EXPECT_EQ(list.getCount(), 200000);
}

} // namespace
} // namespace tessera
