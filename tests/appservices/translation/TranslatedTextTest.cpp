#include "appservices/translation/TranslatedText.h"

#include "ProgramFolders.h"
#include "appservices/translation/TranslationTable.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace tessera {
namespace {

constexpr const char* kFile =
    "<Translation><LanguageTable><language key='de'>D</language><language key='fr'>F</language>"
    "</LanguageTable><StringTable>"
    "<String Key='Open'><de>Auf</de><fr>Ouvrir</fr></String>"
    "<String Key='Copy{{Noun}}'><de>Kopie</de></String>"
    "</StringTable></Translation>";

// Constants are static in a program; here they stand before the table, which knows them to its end.
class TranslatedTextTest : public testing::Test {
protected:
    TranslatedTextTest() {
        folders_.module.write("translation.xml", kFile);
        folders_.user.write("lang.cfg", "de");
    }

    test::ProgramFolders folders_;
};

TEST_F(TranslatedTextTest, KeepsItsFirstAnswer) {
    TranslatedText open{u"Open"};
    TranslationTable table;
    EXPECT_EQ(open.cached.load(), nullptr);
    // Nothing is loaded yet, and the key it is for the rest of the run.
    EXPECT_EQ(table.translate(open), open.key);
    ASSERT_TRUE(table.load(false));
    EXPECT_EQ(open.cached.load(), open.key);
    EXPECT_EQ(translate(open), open.key);
}

TEST_F(TranslatedTextTest, IsLookedUpWhenItIsFirstAsked) {
    TranslatedText open{u"Open"};
    TranslationTable table;
    ASSERT_TRUE(table.load(false));
    const char16_t* const text = table.translate(open);
    EXPECT_EQ(std::u16string(text), u"Auf");
    EXPECT_EQ(open.cached.load(), text);
    EXPECT_EQ(translate(open), text);
}

TEST_F(TranslatedTextTest, AKeyWithoutTranslationIsItsOwn) {
    TranslatedText save{u"Save"};
    TranslatedText copy{u"Copy{{Verb}}"};
    TranslatedText noun{u"Copy{{Noun}}"};
    TranslatedText none{nullptr};
    TranslationTable table;
    ASSERT_TRUE(table.load(false));
    EXPECT_EQ(table.translate(save), save.key);
    EXPECT_EQ(table.translate(copy), copy.key);
    EXPECT_EQ(std::u16string(table.translate(noun)), u"Kopie");
    EXPECT_EQ(table.translate(none), nullptr);
}

TEST_F(TranslatedTextTest, AnEmptyTranslationIsNone) {
    folders_.module.write("translation.xml",
                          "\xEF\xBB\xBF<Translation><LanguageTable><language key='de'>D</language></LanguageTable>"
                          "<StringTable><String key='Save'><de></de></String>"
                          "<String key='Copy{{Noun}}'><de></de></String></StringTable></Translation>");
    TranslatedText save{u"Save"};
    TranslatedText noun{u"Copy{{Noun}}"};
    TranslationTable table;
    ASSERT_TRUE(table.load(false));
    EXPECT_EQ(table.translate(save), save.key);
    EXPECT_EQ(table.translate(noun), noun.key);
    // The look-up tells the empty text of a context from none.
    ASSERT_NE(table.lookup(u"Copy{{Noun}}", TranslationTable::FallBack::null), nullptr);
    EXPECT_EQ(*table.lookup(u"Copy{{Noun}}", TranslationTable::FallBack::null), u'\0');
}

TEST_F(TranslatedTextTest, AsksAgainInAnotherLanguage) {
    TranslatedText open{u"Open"};
    TranslationTable table;
    ASSERT_TRUE(table.load(false));
    EXPECT_EQ(std::u16string(table.translate(open)), u"Auf");
    ASSERT_TRUE(table.reload("fr"));
    EXPECT_EQ(open.cached.load(), nullptr);
    EXPECT_EQ(std::u16string(table.translate(open)), u"Ouvrir");
}

TEST_F(TranslatedTextTest, AsksAgainWhereTheFirstLanguageHadNoTextsAtAll) {
    folders_.module.write("translation.xml",
                          "<Translation><LanguageTable><language key='us'>E</language><language key='de'>D</language>"
                          "</LanguageTable><StringTable><String Key='Open'><de>Auf</de></String></StringTable>"
                          "</Translation>");
    folders_.user.write("lang.cfg", "us");
    TranslatedText open{u"Open"};
    TranslationTable table;
    ASSERT_TRUE(table.load(false));
    EXPECT_EQ(table.translate(open), open.key);
    ASSERT_TRUE(table.reload("de"));
    EXPECT_EQ(open.cached.load(), nullptr);
    EXPECT_EQ(std::u16string(table.translate(open)), u"Auf");
}

TEST_F(TranslatedTextTest, OutlivesItsTable) {
    TranslatedText open{u"Open"};
    {
        TranslationTable table;
        ASSERT_TRUE(table.load(false));
        table.translate(open);
    }
    EXPECT_EQ(open.cached.load(), nullptr);
}

TEST_F(TranslatedTextTest, IsAskedByManyThreadsAtOnce) {
    std::vector<TranslatedText> texts(200);
    TranslationTable table;
    ASSERT_TRUE(table.load(false));
    for (TranslatedText& text : texts) {
        text.key = u"Open";
    }
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (TranslatedText& text : texts) {
                EXPECT_EQ(std::u16string(table.translate(text)), u"Auf");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

constinit TranslatedText greeting{u"No such text in any table"};

TEST_F(TranslatedTextTest, GoesToTheTableOfTheProcess) {
    EXPECT_EQ(translate(greeting), greeting.key);
    EXPECT_EQ(greeting.cached.load(), greeting.key);
    EXPECT_EQ(TranslationTable::getInstance(), TranslationTable::getInstance());
}

} // namespace
} // namespace tessera
