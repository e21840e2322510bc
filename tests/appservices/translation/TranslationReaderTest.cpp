#include "appservices/translation/TranslationReader.h"

#include "RecordingListener.h"
#include "TranslationText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using test::inLanguages;
using test::inStrings;
using testing::ElementsAre;
using testing::IsEmpty;

class TranslationReaderTest : public testing::Test {
protected:
    bool read(const std::string& text) {
        listener_.forget();
        // Not a byte more than the file has: what reads on is found by the sanitizers.
        const std::vector<char> bytes(text.begin(), text.end());
        TranslationReader reader({bytes.data(), bytes.size()}, listener_);
        const bool complete = reader.read();
        error_ = std::string(reader.getErrorMessage().view8());
        strings_ = reader.getStringCount();
        FString description = reader.describeError();
        description.toWide();
        description_ = std::u16string(description.view16());
        return complete;
    }
    std::string errorOf(const std::string& text) {
        EXPECT_FALSE(read(text)) << text;
        return error_;
    }

    test::RecordingListener listener_;
    std::string error_;
    std::u16string description_;
    std::int32_t strings_ = 0;
};

TEST_F(TranslationReaderTest, TellsLanguagesAndTranslationsInTheOrderOfTheFile) {
    EXPECT_TRUE(read("<?xml version=\"1.0\"?>\r\n"
                     "<!-- all texts -->\r\n"
                     "<Translation>\r\n"
                     "  <LanguageTable>\r\n"
                     "    <language key=\"us\">English</language>\r\n"
                     "    <language key='de'>Deutsch</language>\r\n"
                     "  </LanguageTable>\r\n"
                     "  <StringTable>\r\n"
                     "    <String Key=\"Open\">\r\n"
                     "      <de>\xD6"
                     "ffnen</de>\r\n"
                     "      <fr>Ouvrir</fr>\r\n"
                     "    </String>\r\n"
                     "    <String key=\"Close\"><de>Schlie\xDF"
                     "en</de></String>\r\n"
                     "  </StringTable>\r\n"
                     "</Translation>\r\n"));
    EXPECT_THAT(listener_.told, ElementsAre(u"language us: English", u"language de: Deutsch", u"Open in de: Öffnen",
                                            u"Open in fr: Ouvrir", u"Close in de: Schließen"));
    EXPECT_THAT(listener_.lines, ElementsAre(10, 11, 13));
    EXPECT_EQ(strings_, 3);
    EXPECT_EQ(error_, "");
}

TEST_F(TranslationReaderTest, AnEmptyDocumentIsRead) {
    EXPECT_TRUE(read(""));
    EXPECT_TRUE(read(" \r\n"));
    EXPECT_TRUE(read("<Translation/>"));
    EXPECT_TRUE(read("<Translation></Translation>"));
    EXPECT_TRUE(read(inStrings("<String Key=\"a\"/>")));
    EXPECT_TRUE(read(inStrings("<String Key=\"a\"><de/><fr></fr></String>")));
    EXPECT_THAT(listener_.told, IsEmpty());
    EXPECT_EQ(strings_, 0);
}

TEST_F(TranslationReaderTest, JapaneseIsOneCodePageAndAllElseAnother) {
    EXPECT_TRUE(read(inLanguages("<language key=\"jp\">\x93\xFA\x96{\x8C\xEA</language>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"language jp: 日本語"));
    EXPECT_TRUE(read(inStrings("<String Key=\"\xA9\"><jp>\x8AJ\x82\xAD</jp><de>\x80\x84</de></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"© in jp: 開く", u"© in de: €„"));
}

TEST_F(TranslationReaderTest, WhiteSpaceCountsInTextsAlone) {
    EXPECT_TRUE(read(inStrings("\r\n<String \t Key = \"a b\"\n>  <de  > Kopie: </de >\n</String >")));
    EXPECT_THAT(listener_.told, ElementsAre(u"a b in de:  Kopie: "));
}

TEST_F(TranslationReaderTest, CommentsAndInstructionsStandAnywhere) {
    EXPECT_TRUE(read("<?a?><!----><Translation><?b <c> ?><StringTable><!-- <String> -- --><String Key='k'>"
                     "<de>ein<!-- und -->s<?x?></de><!--e--></String></StringTable></Translation><!-- end -->"));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: eins"));
    EXPECT_EQ(strings_, 1);
}

TEST_F(TranslationReaderTest, TextsAreTakenAsTheyStand) {
    EXPECT_TRUE(read(inStrings("<String Key=\"A & B > 'C'\"><de>&amp; \"%d\" > {{x}}</de></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"A & B > 'C' in de: &amp; \"%d\" > {{x}}"));
}

TEST_F(TranslationReaderTest, NamesMayHoldSignsAndHighBytes) {
    EXPECT_TRUE(read(inStrings("<String Key='k'><_a:b-c.9>x</_a:b-c.9></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in _a:b-c.9: x"));
    EXPECT_TRUE(read(inStrings("<String Key='k'><\xE4>x</\xE4></String>")));
    EXPECT_EQ(strings_, 1);
}

TEST_F(TranslationReaderTest, CommentsHaveALimit) {
    const std::string longest(32'944, 'c');
    EXPECT_TRUE(read("<!--" + longest + "-->"));
    EXPECT_EQ(errorOf("<!--" + longest + "c-->"), "Too int32 comment");
    EXPECT_EQ(errorOf("<!--" + longest + longest), "Too int32 comment");
}

TEST_F(TranslationReaderTest, CommentsHaveToEnd) {
    EXPECT_EQ(errorOf("<!-- "), "Non closed comment");
    EXPECT_EQ(errorOf("<!--"), "Non closed comment");
    EXPECT_EQ(errorOf("<!-- --"), "Non closed comment");
}

TEST_F(TranslationReaderTest, InstructionsHaveALimit) {
    const std::string longest(32'944, 'i');
    EXPECT_TRUE(read("<?" + longest + "?>"));
    EXPECT_EQ(errorOf("<?" + longest + "i?>"), "Too int32 processing instruction");
}

TEST_F(TranslationReaderTest, InstructionsHaveToEnd) {
    EXPECT_EQ(errorOf("<?xml >"), "Non closed processing instruction ( '<? ... ?>')");
}

TEST_F(TranslationReaderTest, DeclarationsAreRefused) {
    EXPECT_EQ(errorOf("<!DOCTYPE Translation>"), "Non supported '<!' tag");
    EXPECT_EQ(errorOf(inStrings("<![CDATA[x]]>")), "Non supported '<!' tag");
}

TEST_F(TranslationReaderTest, AnEndTagNeedsItsStartTag) {
    EXPECT_EQ(errorOf("</Translation>"), "Non expected end tag");
    EXPECT_EQ(errorOf("<Translation></Translation></Translation>"), "Non expected end tag");
    EXPECT_EQ(errorOf("<Translation></StringTable>"), "Non expected end tag");
    EXPECT_EQ(errorOf(inStrings("<String Key='k'><de>x</fr></String>")), "Non expected end tag");
    EXPECT_THAT(listener_.told, IsEmpty());
}

TEST_F(TranslationReaderTest, AnEndTagHoldsItsNameAlone) {
    EXPECT_EQ(errorOf("<Translation></Translation x>"), "syntax error at end tag");
    EXPECT_EQ(errorOf("<Translation></Translation "), "syntax error at end tag");
    // The end tag that doesn't come at all.
    EXPECT_EQ(errorOf("<Translation>"), "syntax error at end tag");
    EXPECT_EQ(errorOf("<Translation><StringTable><String Key='k'><de>x"), "syntax error at end tag");
}

TEST_F(TranslationReaderTest, ATagHasSixteenAttributesAtMost) {
    std::string attributes;
    for (int i = 0; i < 16; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
    }
    EXPECT_EQ(errorOf("<Translation" + attributes + ">"), "This tag doesn't support attributes (or unknown tag)!");
    EXPECT_EQ(errorOf("<Translation" + attributes + " b=''>"), "Too many attribute/value pairs");
}

TEST_F(TranslationReaderTest, AnAttributeHasANameAndAnEqualsSign) {
    for (const char* tag : {"<String Key>", "<String Key 'k'>", "<String 'k'>", "<String =>", "<String 1='k'>",
                            "<String / >", "<String "}) {
        EXPECT_EQ(errorOf("<Translation><StringTable>" + std::string(tag)), "Attribute field not valid") << tag;
    }
}

TEST_F(TranslationReaderTest, AnAttributeHasAValueInQuotes) {
    for (const char* tag :
         {"<String Key=k>", "<String Key='k>", "<String Key=\"k'>", "<String Key=", "<String Key= >"}) {
        EXPECT_EQ(errorOf("<Translation><StringTable>" + std::string(tag)), "Attribute value invalid (or too int32)")
            << tag;
    }
    const std::string longest(32'944, 'k');
    EXPECT_TRUE(read(inStrings("<String Key='" + longest + "'></String>")));
    EXPECT_EQ(errorOf(inStrings("<String Key='" + longest + "k'></String>")), "Attribute value invalid (or too int32)");
}

TEST_F(TranslationReaderTest, ATagBeginsWithItsName) {
    for (const char* text : {"< Translation>", "<>", "<1>", "<-a>", "<", "<Translation></>", "<Translation></ x>"}) {
        EXPECT_EQ(errorOf(text), "Name is not legal") << text;
    }
}

TEST_F(TranslationReaderTest, ANameEndsBeforeTheFileDoes) {
    for (const char* text : {"<Translation", "<T", "<Translation></Translation", "<Translation a"}) {
        EXPECT_EQ(errorOf(text), "Name too int32") << text;
    }
}

TEST_F(TranslationReaderTest, TextBelongsIntoATable) {
    EXPECT_EQ(errorOf("text"), "The context is not valid for raw text yet!");
    EXPECT_EQ(errorOf("<Translation>text</Translation>"), "The context is not valid for raw text yet!");
    EXPECT_EQ(errorOf(std::string("\0\0\0\0", 4)), "The context is not valid for raw text yet!");
}

TEST_F(TranslationReaderTest, TextNeedsAKeyAndALanguage) {
    EXPECT_EQ(errorOf(inStrings("text")), "The key is not set!");
    EXPECT_EQ(errorOf(inStrings("<String Key='k'>text</String>")), "The language is not set!");
    EXPECT_EQ(errorOf(inStrings("<String Key='k'><de>x</de>text</String>")), "The language is not set!");
    EXPECT_EQ(errorOf(inLanguages("Deutsch")), "The language code is not set! Can't read a language name yet!");
}

TEST_F(TranslationReaderTest, TagsStandInTheirPlaces) {
    constexpr const char* kError = "This tag is not supported in that context!";
    EXPECT_EQ(errorOf("<StringTable>"), kError);
    EXPECT_EQ(errorOf("<Translation><Translation>"), kError);
    EXPECT_EQ(errorOf("<Translation><String>"), kError);
    EXPECT_EQ(errorOf("<Translation><other>"), kError);
    EXPECT_EQ(errorOf(inLanguages("<String>")), kError);
    EXPECT_EQ(errorOf(inLanguages("<language key='de'><b>")), kError);
}

TEST_F(TranslationReaderTest, OnlyStringsAndLanguagesHaveAttributes) {
    constexpr const char* kError = "This tag doesn't support attributes (or unknown tag)!";
    EXPECT_EQ(errorOf("<Translation version='1'>"), kError);
    EXPECT_EQ(errorOf("<other a='1'>"), kError);
    EXPECT_EQ(errorOf("<Translation><StringTable a='1'>"), kError);
    EXPECT_EQ(errorOf("<Translation><LanguageTable a='1'>"), kError);
    EXPECT_EQ(errorOf(inLanguages("<other a='1'>")), kError);
}

TEST_F(TranslationReaderTest, ALanguageHasItsCodeUnderKey) {
    constexpr const char* kPair = "The language tag requires a single key/value pair!";
    EXPECT_EQ(errorOf(inLanguages("<language>Deutsch</language>")), kPair);
    EXPECT_EQ(errorOf(inLanguages("<language key='de' b='c'>Deutsch</language>")), kPair);
    EXPECT_EQ(errorOf(inLanguages("<language code='de'>Deutsch</language>")),
              "This tag doesnt support this attribute name!");
}

TEST_F(TranslationReaderTest, AStringHasItsKeyUnderKey) {
    constexpr const char* kSingle = "The string tag requires a single 'key' attribute with value!";
    EXPECT_EQ(errorOf(inStrings("<String>")), kSingle);
    EXPECT_EQ(errorOf(inStrings("<String Key=''>")), kSingle);
    EXPECT_EQ(errorOf(inStrings("<String Key='a' key='b'>")), kSingle);
    EXPECT_EQ(errorOf(inStrings("<String name='a'>")), "The string tag doesn't support this attribute name!");
    EXPECT_EQ(errorOf(inStrings("<String KEY='a'>")), "The string tag doesn't support this attribute name!");
}

TEST_F(TranslationReaderTest, StringsDoNotNest) {
    EXPECT_EQ(errorOf(inStrings("<String Key='a'><String Key='b'>")), "The string key is already set!");
    EXPECT_EQ(errorOf(inStrings("<String Key='a'><de><String Key='b'>")), "The string key is already set!");
}

TEST_F(TranslationReaderTest, ALanguageElementNeedsAKeyAndNoAttributes) {
    EXPECT_EQ(errorOf(inStrings("<de>x</de>")), "You must set the string key first!");
    EXPECT_EQ(errorOf(inStrings("<String Key='a'><de>x<fr>y")), "You haven't finished the previous translation!");
    EXPECT_EQ(errorOf(inStrings("<String Key='a'><de x='y'>")),
              "Attribute/value pairs are not supported in that context!");
}

TEST_F(TranslationReaderTest, LanguagesThatNobodyWantsAreCountedAndNotTold) {
    listener_.unwanted = "fr";
    EXPECT_TRUE(read(inStrings("<String key='k'><fr>2</fr><de>1</de></String>")));
    EXPECT_THAT(listener_.told, ElementsAre(u"k in de: 1"));
    EXPECT_EQ(strings_, 2);
}

TEST_F(TranslationReaderTest, WhatCameBeforeAnErrorWasTold) {
    EXPECT_FALSE(read(inStrings("<String Key='a'><de>eins</de></String><String Key='b'><de>zwei</de>oops")));
    EXPECT_THAT(listener_.told, ElementsAre(u"a in de: eins", u"b in de: zwei"));
    EXPECT_EQ(strings_, 2);
}

TEST_F(TranslationReaderTest, TheListenerEndsTheReading) {
    listener_.endsAt = 2;
    EXPECT_FALSE(read(inStrings("<String Key='a'><de>1</de><fr>2</fr><it>3</it></String>")));
    EXPECT_EQ(listener_.told.size(), 2u);
    EXPECT_EQ(error_, "enough");
}

TEST_F(TranslationReaderTest, EveryKindOfLineEndCountsOnce) {
    EXPECT_TRUE(read(inStrings("\n<String Key='a'>\r<de>1</de>\r\n<fr>2</fr>\n\r<it>\n3</it></String>")));
    EXPECT_THAT(listener_.lines, ElementsAre(3, 4, 7));
}

TEST_F(TranslationReaderTest, AnErrorIsShownWithTheTextAroundIt) {
    EXPECT_FALSE(read("<Translation>\n"
                      "<StringTable>\n"
                      "<String Key='a'>\n"
                      "<de>eins</de>oops</String>\n"
                      "</StringTable>\n"));
    EXPECT_EQ(description_, u"The language is not set!\n\n\n"
                            u"<StringTable>\n"
                            u"<String Key='a'>\n"
                            u"<de>eins</de>  <====== HERE ======  oops</String>\n"
                            u"</StringTable>\n");
}

TEST_F(TranslationReaderTest, TheShownTextIsBounded) {
    const std::string behind(1000, 'x');
    EXPECT_FALSE(read(behind));
    EXPECT_EQ(description_,
              u"The context is not valid for raw text yet!\n\n\n  <====== HERE ======  " + std::u16string(200, u'x'));
    // One line of 100,000 bytes before the place.
    const std::string text(100'000, 'x');
    EXPECT_FALSE(read("<Translation><StringTable><String Key='a'><de>" + text + "</de>oops"));
    EXPECT_LT(description_.size(), 40'000u);
    EXPECT_TRUE(description_.ends_with(u"xx</de>  <====== HERE ======  oops"));
}

TEST_F(TranslationReaderTest, DeepNestingIsRefusedAtOnce) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += "<Translation>";
    }
    EXPECT_EQ(errorOf(text), "This tag is not supported in that context!");
}

TEST_F(TranslationReaderTest, ALargeTextIsRead) {
    const std::string text(10'000'000, 't');
    EXPECT_TRUE(read(inStrings("<String Key='a'><de>" + text + "</de></String>")));
    ASSERT_EQ(listener_.told.size(), 1u);
    EXPECT_EQ(listener_.told[0].size(), text.size() + 9);
}

} // namespace
} // namespace tessera
