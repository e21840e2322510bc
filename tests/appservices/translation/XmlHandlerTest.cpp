#include "appservices/translation/XmlHandler.h"

#include "RecordingListener.h"
#include "TranslationText.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/FXmlParser2.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace tessera {
namespace {

using test::inLanguages;
using test::inStrings;
using testing::ElementsAre;
using testing::IsEmpty;

class XmlHandlerTest : public testing::Test {
protected:
    bool read(const std::string& text) {
        listener_.forget();
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        auto owned = std::make_unique<XmlHandler>(listener_);
        const XmlHandler& handler = *owned;
        FXmlParser2 parser(std::move(owned), "UTF-8");
        const bool complete = parser.parse(stream);
        strings_ = handler.getStringCount();
        error_ = std::string(handler.getErrorMessage().view8());
        return complete;
    }

    test::RecordingListener listener_;
    std::string error_;
    std::int32_t strings_ = 0;
};

TEST_F(XmlHandlerTest, TellsLanguagesAndTranslationsInTheOrderOfTheFile) {
    EXPECT_TRUE(read("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                     "<!-- all texts -->\n"
                     "<Translation>\n"
                     "  <LanguageTable>\n"
                     "    <language key=\"us\">English</language>\n"
                     "    <language key=\"jp\">日本語</language>\n"
                     "  </LanguageTable>\n"
                     "  <StringTable>\n"
                     "    <String key=\"Öffnen &amp; Co\">\n"
                     "      <de>Öff&#110;en</de>\n"
                     "      <jp>開く</jp>\n"
                     "    </String>\n"
                     "    <String Key=\"Close\"><de>Schließen</de></String>\n"
                     "  </StringTable>\n"
                     "</Translation>\n"));
    EXPECT_THAT(listener_.told,
                ElementsAre(u"language us: English", u"language jp: 日本語", u"Öffnen & Co in de: Öffnen",
                            u"Öffnen & Co in jp: 開く", u"Close in de: Schließen"));
    EXPECT_THAT(listener_.lines, ElementsAre(10, 11, 13));
    EXPECT_EQ(strings_, 3);
}

TEST_F(XmlHandlerTest, ATextIsAllBetweenItsTags) {
    EXPECT_TRUE(
        read(inStrings("<String key='k'> <de> ein<!-- x -->s &lt;\n</de> <fr><![CDATA[<b>]]></fr><it/></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de:  eins <\n", u"k in fr: <b>", u"k in it: "));
}

TEST_F(XmlHandlerTest, CharactersBeyond16BitsBecomePairs) {
    EXPECT_TRUE(read(inStrings("<String key='\xF0\x9D\x84\x9E'><de>\xF0\x9D\x84\xA2</de></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"\U0001D11E in de: \U0001D122"));
}

TEST_F(XmlHandlerTest, TextBetweenTheTagsIsPassedOver) {
    EXPECT_TRUE(read("<Translation>a<StringTable>b<String key='k'>c<de>d</de>e</String></StringTable></Translation>"));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: d"));
}

TEST_F(XmlHandlerTest, TagsOutOfTheirPlaceStopTheParse) {
    for (const std::string& text :
         {std::string("<StringTable/>"), std::string("<Translation><Translation/></Translation>"),
          std::string("<Translation><String key='k'/></Translation>"), inLanguages("<String key='k'/>"),
          inLanguages("<language key='de'><language key='fr'/></language>"), inLanguages("<language/>"),
          inLanguages("<language code='de'/>"), inLanguages("<language key='de' x='y'/>"), inStrings("<de>x</de>"),
          inStrings("<String/>"), inStrings("<String name='k'/>"), inStrings("<language key='de'/>"),
          inStrings("<String key='k'><de>x<fr>y</fr></de></String>")}) {
        EXPECT_FALSE(read(text)) << text;
        EXPECT_THAT(listener_.told, IsEmpty()) << text;
        EXPECT_EQ(error_, "");
    }
}

TEST_F(XmlHandlerTest, AStringMayHaveOtherAttributesBesideItsKey) {
    EXPECT_TRUE(read(inStrings("<String id='7' key='k'><de>x</de></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: x"));
}

TEST_F(XmlHandlerTest, TheListenerStopsTheParse) {
    listener_.endsAt = 1;
    EXPECT_FALSE(read(inStrings("<String key='k'><de>1</de><fr>2</fr></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: 1"));
    EXPECT_EQ(error_, "enough");
}

TEST_F(XmlHandlerTest, LanguagesThatNobodyWantsAreCountedAndNotTold) {
    listener_.unwanted = "fr";
    EXPECT_TRUE(read(inStrings("<String key='k'><fr>2</fr><de>1</de></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: 1"));
    EXPECT_EQ(strings_, 2);
}

TEST_F(XmlHandlerTest, WhatCameBeforeABreakWasTold) {
    EXPECT_FALSE(read("<Translation><StringTable><String key='k'><de>1</de></String><String key="));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: 1"));
}

TEST_F(XmlHandlerTest, BytesThatAreNoUtf8AreRefused) {
    EXPECT_FALSE(read(inStrings("<String key='k'><de>\xD6</de></String>")));
}

TEST_F(XmlHandlerTest, DeepNestingIsRefusedAtOnce) {
    std::string text = "<Translation><StringTable><String key='k'>";
    for (int i = 0; i < 100'000; ++i) {
        text += "<de>";
    }
    EXPECT_FALSE(read(text));
    EXPECT_THAT(listener_.told, IsEmpty());
}

} // namespace
} // namespace tessera
