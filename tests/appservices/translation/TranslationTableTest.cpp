#include "appservices/translation/TranslationTable.h"

#include "ProgramFolders.h"
#include "TranslationText.h"
#include "appservices/translation/LanguageTable.h"
#include "appservices/translation/TranslatedText.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace tessera {
namespace {

using test::inStrings;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScopedEnvironment;
using FallBack = TranslationTable::FallBack;

constexpr const char* kFile = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                              "<Translation>\n"
                              "<LanguageTable>\n"
                              "<language key=\"us\">English</language>\n"
                              "<language key=\"de\">Deutsch</language>\n"
                              "<language key=\"fr\">Français</language>\n"
                              "</LanguageTable>\n"
                              "<StringTable>\n"
                              "<String key=\"Open\"><de>Öffnen</de><fr>Ouvrir</fr></String>\n"
                              "<String key=\"Copy{{Noun}}\"><de>Kopie</de></String>\n"
                              "<String key=\"Copy{{Verb}}\"><de>Kopieren</de></String>\n"
                              "<String key=\"%d files\"><de>%d Dateien</de></String>\n"
                              "</StringTable>\n"
                              "</Translation>\n";

class TranslationTableTest : public testing::Test {
protected:
    std::u16string textOf(const char16_t* key) {
        const char16_t* const text = table_.lookup(key, FallBack::null);
        return text != nullptr ? text : u"(none)";
    }
    bool loadText(const std::string& text) { return table_.loadFromMemory(text.data(), text.size()); }
    std::vector<std::string> languages() {
        std::vector<std::string> result;
        for (const TranslationTable::Language& language : table_.getLanguages()) {
            FString name(language.name);
            result.push_back(std::string(language.code.text()) + " " + name.text8());
        }
        return result;
    }

    ScopedEnvironment all_{"LC_ALL", ""};
    ScopedEnvironment messages_{"LC_MESSAGES", ""};
    ScopedEnvironment lang_{"LANG", ""};
    test::ProgramFolders folders_;
    TranslationTable table_;
};

TEST_F(TranslationTableTest, ReadsTheFileInTheLanguageThatTheUserChose) {
    folders_.user.write("lang.cfg", "de\n");
    folders_.module.write("translation.xml", kFile);
    EXPECT_FALSE(table_.isLoaded());
    EXPECT_TRUE(table_.load(false));
    EXPECT_TRUE(table_.isLoaded());
    EXPECT_STREQ(table_.getLanguageCode(), "de");
    EXPECT_EQ(table_.getConfigCode().view(), "de");
    EXPECT_EQ(textOf(u"Open"), u"Öffnen");
    EXPECT_EQ(textOf(u"Copy{{Noun}}"), u"Kopie");
    EXPECT_EQ(textOf(u"Copy{{Verb}}"), u"Kopieren");
    EXPECT_EQ(table_.getStringCount(), 4u);
    EXPECT_EQ(table_.getLanguages().size(), 3u);
    EXPECT_EQ(table_.getLanguages()[2].name, FStringRef(u"Français"));
    EXPECT_EQ(LanguageTable::getInstance().userLanguage(), 1);
    EXPECT_THAT(folders_.questions, IsEmpty());
}

TEST_F(TranslationTableTest, WithoutAChoiceTheUserLanguageIsInUse) {
    LanguageTable::getInstance().setUserLanguage(2);
    folders_.module.write("translation.xml", kFile);
    EXPECT_TRUE(table_.load(false));
    EXPECT_STREQ(table_.getLanguageCode(), "fr");
    EXPECT_EQ(textOf(u"Open"), u"Ouvrir");
    EXPECT_TRUE(table_.getConfigCode().isEmpty());
}

TEST_F(TranslationTableTest, AChoiceOfOneByteIsNone) {
    LanguageTable::getInstance().setUserLanguage(1);
    folders_.user.write("lang.cfg", "f");
    folders_.module.write("translation.xml", kFile);
    EXPECT_TRUE(table_.load(false));
    EXPECT_TRUE(table_.getConfigCode().isEmpty());
    EXPECT_STREQ(table_.getLanguageCode(), "de");
}

TEST_F(TranslationTableTest, ALanguageThatTheFileDoesNotHaveGivesTheFirstOneThatItHas) {
    folders_.user.write("lang.cfg", "jp");
    folders_.module.write("translation.xml",
                          "<Translation><LanguageTable><language key='fr'>F</language><language key='de'>D</language>"
                          "</LanguageTable><StringTable><String Key='Open'><de>Auf</de><fr>Ouvrir</fr></String>"
                          "</StringTable></Translation>");
    EXPECT_TRUE(table_.load(false));
    EXPECT_STREQ(table_.getLanguageCode(), "fr");
    EXPECT_EQ(textOf(u"Open"), u"Ouvrir");
    EXPECT_EQ(table_.getStringCount(), 1u);
    EXPECT_THAT(languages(), ElementsAre("fr F", "de D"));
    EXPECT_EQ(LanguageTable::getInstance().userLanguage(), 2);
}

TEST_F(TranslationTableTest, AFileWithoutLanguagesIsReadInEnglish) {
    folders_.user.write("lang.cfg", "de");
    folders_.module.write("translation.xml", inStrings("<String Key='Open'><de>Auf</de></String>"
                                                       "<String Key='Color'><de>Farbe</de><us>Colour</us></String>"));
    EXPECT_TRUE(table_.load(false));
    EXPECT_STREQ(table_.getLanguageCode(), "us");
    EXPECT_EQ(textOf(u"Open"), u"(none)");
    EXPECT_EQ(textOf(u"Color"), u"Colour");
    EXPECT_EQ(LanguageTable::getInstance().userLanguage(), 0);
}

TEST_F(TranslationTableTest, WithoutFilesTheTextsAreEnglish) {
    LanguageTable::getInstance().setUserLanguage(1);
    EXPECT_FALSE(table_.load(false));
    EXPECT_STREQ(table_.getLanguageCode(), "us");
    EXPECT_EQ(table_.getStringCount(), 0u);
    EXPECT_EQ(std::u16string(table_.lookup(u"Open", FallBack::key)), u"Open");
    EXPECT_THAT(folders_.questions, IsEmpty());
}

TEST_F(TranslationTableTest, WithoutFoldersTheTextsAreEnglish) {
    applicationFoldersSource = nullptr;
    EXPECT_FALSE(table_.load(false));
    EXPECT_EQ(table_.getStringCount(), 0u);
    EXPECT_FALSE(table_.isPseudoOffered());
}

TEST_F(TranslationTableTest, LoadedForNothingItStaysEmpty) {
    folders_.user.write("lang.cfg", "de");
    folders_.module.write("translation.xml", kFile);
    EXPECT_TRUE(table_.load(true));
    EXPECT_TRUE(table_.isLoaded());
    EXPECT_EQ(table_.getStringCount(), 0u);
    EXPECT_THAT(table_.getLanguages(), IsEmpty());
    EXPECT_EQ(textOf(u"Open"), u"(none)");
    EXPECT_EQ(std::u16string(table_.lookup(u"Open", FallBack::key)), u"Open");
    EXPECT_FALSE(loadText(kFile));
    EXPECT_FALSE(table_.reload("de"));
    EXPECT_EQ(table_.getStringCount(), 0u);
}

TEST_F(TranslationTableTest, TheLanguageInUseIsTheSystemOneAsLongAsThereIsNone) {
    EXPECT_STREQ(table_.getLanguageCode(), LanguageTable::codeOf(LanguageTable::getInstance().systemLanguage()));
}

TEST_F(TranslationTableTest, OldFilesAreReadByTheirOwnReader) {
    table_.setLanguage("de");
    EXPECT_TRUE(loadText("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>" +
                         inStrings("<String Key='Open'><de>\xD6"
                                   "ffnen</de><jp>\x8AJ\x82\xAD</jp></String>")));
    EXPECT_EQ(textOf(u"Open"), u"Öffnen");
    table_.setLanguage("jp");
    EXPECT_TRUE(loadText(inStrings("<String Key='Open'><jp>\x8AJ\x82\xAD</jp></String>")));
    EXPECT_EQ(textOf(u"Open"), u"開く");
}

TEST_F(TranslationTableTest, AMarkOrADeclarationTellsUtf8) {
    table_.setLanguage("de");
    const std::string content = inStrings("<String key='a'><de>\xC3\xA4&lt;</de></String>");
    EXPECT_TRUE(loadText("\xEF\xBB\xBF" + content));
    EXPECT_EQ(textOf(u"a"), u"ä<");
    for (const char* declaration :
         {"<?xml version=\"1.0\" encoding=\"utf-8\"?>", "<?xml version='1.0' ENCODING=\"UTF-8\"?>"}) {
        TranslationTable table;
        table.setLanguage("de");
        const std::string text = declaration + content;
        // XML has no capital "ENCODING": that the answer is no shows which of the readers was asked.
        const bool isXml = std::string(declaration).find("ENCODING") == std::string::npos;
        EXPECT_EQ(table.loadFromMemory(text.data(), text.size()), isXml) << declaration;
    }
}

TEST_F(TranslationTableTest, ADeclarationBeyond128BytesIsNotSeen) {
    table_.setLanguage("de");
    const std::string declaration = "encoding=\"utf-8\"";
    const std::string text = inStrings("<String key='a'><de>\xC3\xA4</de></String>");
    EXPECT_TRUE(loadText("<!--" + std::string(128 - 4 - declaration.size(), ' ') + declaration + "-->" + text));
    EXPECT_EQ(textOf(u"a"), u"ä");
    EXPECT_TRUE(loadText("<!--" + std::string(129 - 4 - declaration.size(), ' ') + declaration + "-->" + text));
    EXPECT_EQ(textOf(u"a"), u"Ã¤");
}

TEST_F(TranslationTableTest, FilesOfThreeBytesAreRefused) {
    EXPECT_FALSE(loadText(""));
    EXPECT_FALSE(loadText("\xEF\xBB\xBF"));
    EXPECT_FALSE(loadText("   "));
    EXPECT_TRUE(loadText("    "));
    EXPECT_THAT(folders_.questions, IsEmpty());
}

TEST_F(TranslationTableTest, IsReadFromAStreamOfAnyKind) {
    table_.setLanguage("de");
    FMemoryStream stream;
    const std::string text = std::string(200'000, ' ') + inStrings("<String key='a'><de>b</de></String>");
    stream.write(text.data(), static_cast<std::int32_t>(text.size()));
    stream.seek(0, SeekMode::fromStart);
    EXPECT_TRUE(table_.loadFromStream(stream));
    EXPECT_EQ(textOf(u"a"), u"b");
}

TEST_F(TranslationTableTest, ABrokenOldFileIsShownAndWhatCameBeforeStays) {
    table_.setLanguage("de");
    EXPECT_FALSE(loadText(inStrings("<String Key='a'><de>eins</de></String>\n<String Key='b'>oops")));
    EXPECT_EQ(textOf(u"a"), u"eins");
    ASSERT_EQ(folders_.questions.size(), 1u);
    EXPECT_EQ(folders_.questions[0],
              u"The language is not set!\n\n\n<Translation><StringTable><String Key='a'><de>eins</de></String>\n"
              u"<String Key='b'>  <====== HERE ======  oops</StringTable></Translation>");
}

TEST_F(TranslationTableTest, ABrokenXmlFileIsShownAndWhatCameBeforeStays) {
    table_.setLanguage("de");
    EXPECT_FALSE(loadText("\xEF\xBB\xBF<Translation><StringTable>\n<String key='a'><de>eins</de></String>\n<String"));
    EXPECT_EQ(textOf(u"a"), u"eins");
    ASSERT_EQ(folders_.questions.size(), 1u);
    EXPECT_TRUE(folders_.questions[0].starts_with(u"Xml Error: ")) << folders_.questions[0].size();
    EXPECT_TRUE(folders_.questions[0].ends_with(u"\r\nLine: 3"));
}

TEST_F(TranslationTableTest, WithoutSomebodyToAskABrokenFileIsSilent) {
    persistenceHooks.ask = nullptr;
    EXPECT_FALSE(loadText("<oops>"));
}

TEST_F(TranslationTableTest, ABrokenFileIsShownOnce) {
    folders_.user.write("lang.cfg", "jp");
    folders_.module.write("translation.xml",
                          "<Translation><LanguageTable><language key='de'>D</language></LanguageTable><StringTable>"
                          "<String Key='a'><de>eins</de></String>oops");
    EXPECT_FALSE(table_.load(false));
    EXPECT_STREQ(table_.getLanguageCode(), "de");
    EXPECT_EQ(textOf(u"a"), u"eins");
    EXPECT_EQ(folders_.questions.size(), 1u);
}

FStream* makeResource(const FStringRef& name) {
    EXPECT_EQ(name, FStringRef("translation.xml"));
    auto* stream = new FMemoryStream;
    stream->write(kFile, static_cast<std::int32_t>(std::char_traits<char>::length(kFile)));
    stream->seek(0, SeekMode::fromStart);
    return stream;
}

TEST_F(TranslationTableTest, WithoutAFileTheResourceIsRead) {
    folders_.user.write("lang.cfg", "de");
    TranslationTable::setResourceSource(makeResource);
    EXPECT_TRUE(table_.load(false));
    EXPECT_EQ(textOf(u"Open"), u"Öffnen");
    // So it is when the file is broken; nothing of that remains.
    const std::string broken = "<String Key='x'><de>y</de></String>oops";
    for (const std::string& text : {inStrings(broken), "<Translation><LanguageTable><language key='de'>D</language>"
                                                       "</LanguageTable><StringTable>" +
                                                           broken}) {
        folders_.module.write("translation.xml", text);
        EXPECT_TRUE(table_.reload("de"));
        EXPECT_EQ(textOf(u"Open"), u"Öffnen");
        EXPECT_EQ(textOf(u"x"), u"(none)");
        EXPECT_EQ(table_.getLanguages().size(), 3u);
    }
    TranslationTable::setResourceSource([](const FStringRef&) -> FStream* { return nullptr; });
    EXPECT_FALSE(table_.reload("de"));
    EXPECT_EQ(textOf(u"x"), u"y");
    TranslationTable::setResourceSource(nullptr);
}

TEST_F(TranslationTableTest, TextsOfOtherLanguagesAreLeftOut) {
    table_.setLanguage("de");
    EXPECT_TRUE(loadText(inStrings("<String Key='a'><fr>un</fr><us>one</us></String>")));
    EXPECT_EQ(table_.getStringCount(), 0u);
}

TEST_F(TranslationTableTest, TextsOfEveryLanguageAreTakenOnRequest) {
    table_.setLanguage("de");
    table_.setAcceptAllLanguages(true);
    EXPECT_TRUE(loadText(inStrings("<String Key='a'><de>eins</de><fr>un</fr></String>")));
    EXPECT_EQ(textOf(u"a"), u"un");
}

TEST_F(TranslationTableTest, LookUpsFallBackAsTheyAreTold) {
    EXPECT_EQ(table_.lookup(nullptr, FallBack::key), nullptr);
    EXPECT_EQ(table_.lookup(nullptr, FallBack::null), nullptr);
    const char16_t* const key = u"Open";
    EXPECT_EQ(table_.lookup(key, FallBack::key), key);
    EXPECT_EQ(table_.lookup(key, FallBack::null), nullptr);
    table_.setLanguage("de");
    EXPECT_TRUE(loadText(inStrings("<String Key='a'><de>eins</de></String>")));
    EXPECT_EQ(table_.lookup(key, FallBack::key), key);
    EXPECT_EQ(table_.lookup(key, FallBack::null), nullptr);
    EXPECT_EQ(table_.lookup(nullptr, FallBack::key), nullptr);
}

TEST_F(TranslationTableTest, AKeyWithAContextComesBackWhole) {
    const char16_t* const key = u"Copy{{Noun}}";
    EXPECT_EQ(table_.lookup(key, FallBack::key), key);
    table_.setLanguage("de");
    EXPECT_TRUE(loadText(inStrings("<String Key='Copy'><de>kopieren</de></String>"
                                   "<String Key='Copy{{Verb}}'><de>Kopieren</de></String>")));
    EXPECT_EQ(table_.lookup(key, FallBack::key), key);
    EXPECT_EQ(textOf(u"Copy"), u"kopieren");
    EXPECT_EQ(textOf(u"Copy{{Verb}}"), u"Kopieren");
}

TEST_F(TranslationTableTest, OfEqualKeysTheLastCountsAndOfEqualContextsTheFirst) {
    table_.setLanguage("de");
    EXPECT_TRUE(
        loadText(inStrings("<String Key='a'><de>1</de></String><String Key='a'><de>2</de></String>"
                           "<String Key='a{{b}}'><de>3</de></String><String Key='a{{b}}'><de>4</de></String>")));
    EXPECT_EQ(textOf(u"a"), u"2");
    EXPECT_EQ(textOf(u"a{{b}}"), u"3");
}

TEST_F(TranslationTableTest, ConversionsMustMatch) {
    table_.setLanguage("de");
    EXPECT_FALSE(loadText("<Translation>\n<StringTable>\n"
                          "<String Key='a'><de>eins</de></String>\n"
                          "<String Key='%d files'><de>%s Dateien</de></String>\n"
                          "<String Key='b'><de>zwei</de></String>\n"
                          "</StringTable></Translation>"));
    ASSERT_EQ(folders_.questions.size(), 1u);
    EXPECT_TRUE(folders_.questions[0].starts_with(u"printf mismatch at line 4\n\n\n"));
    EXPECT_EQ(textOf(u"a"), u"eins");
    EXPECT_EQ(textOf(u"%d files"), u"(none)");
    // A mismatch ends the reading.
    EXPECT_EQ(textOf(u"b"), u"(none)");
}

TEST_F(TranslationTableTest, ConversionsMustMatchInXmlToo) {
    table_.setLanguage("de");
    EXPECT_FALSE(loadText("\xEF\xBB\xBF<Translation><StringTable>\n"
                          "<String key='%d files'><de>%s Dateien</de></String></StringTable></Translation>"));
    EXPECT_THAT(folders_.questions, ElementsAre(u"printf mismatch at line 2"));
}

TEST_F(TranslationTableTest, ConversionsOfOtherLanguagesDoNotMatter) {
    table_.setLanguage("de");
    EXPECT_TRUE(loadText(inStrings("<String Key='%d'><fr>%s</fr><de>%d</de></String>")));
    EXPECT_EQ(textOf(u"%d"), u"%d");
}

TEST_F(TranslationTableTest, CheckingCanBeLeftOut) {
    table_.setLanguage("de");
    table_.setVerification(false);
    EXPECT_TRUE(loadText(inStrings("<String Key='%d files'><de>%s Dateien</de></String>")));
    EXPECT_EQ(textOf(u"%d files"), u"%s Dateien");
}

TEST_F(TranslationTableTest, VerifyNamesTheLine) {
    FString out("before");
    EXPECT_EQ(table_.verify(u"%d", u"eins", 7, out), kResultOk);
    EXPECT_EQ(out, FStringRef("before"));
    EXPECT_EQ(table_.verify(u"%d", u"%s", 7, out), kResultFailure);
    EXPECT_EQ(out, FStringRef("printf mismatch at line 7"));
}

TEST_F(TranslationTableTest, ReloadTakesAnotherLanguage) {
    folders_.user.write("lang.cfg", "de");
    folders_.module.write("translation.xml", kFile);
    EXPECT_TRUE(table_.load(false));
    EXPECT_TRUE(table_.reload(u"fr"));
    EXPECT_STREQ(table_.getLanguageCode(), "fr");
    EXPECT_EQ(textOf(u"Open"), u"Ouvrir");
    EXPECT_EQ(textOf(u"Copy{{Noun}}"), u"(none)");
    EXPECT_EQ(table_.getLanguages().size(), 3u);
    EXPECT_EQ(LanguageTable::getInstance().userLanguage(), 2);
    table_.setLanguage("de");
    EXPECT_EQ(textOf(u"Open"), u"Öffnen");
    EXPECT_TRUE(table_.reload("zz"));
    EXPECT_STREQ(table_.getLanguageCode(), "us");
}

TEST_F(TranslationTableTest, AKeyInEitherWidthIsTranslatedOnTheFly) {
    table_.setLanguage("de");
    EXPECT_TRUE(loadText(kFile));
    EXPECT_EQ(table_.translateKey("Open"), FStringRef(u"Öffnen"));
    EXPECT_EQ(table_.translateKey(u"Open"), FStringRef(u"Öffnen"));
    EXPECT_EQ(table_.translateKey("Copy{{Verb}}"), FStringRef("Kopieren"));
    EXPECT_EQ(table_.translateKey("Print"), FStringRef("Print"));
    EXPECT_EQ(table_.translateKey("Print{{Noun}}"), FStringRef("Print"));
    EXPECT_TRUE(table_.translateKey("").isEmpty());
}

class PseudoLanguage : public TranslationTableTest {
protected:
    PseudoLanguage() {
        folders_.module.write("translation.xml", kFile);
        folders_.module.write("PSEUDO_TRANSLATION", "");
        folders_.user.write("lang.cfg", "xx");
    }
};

TEST_F(PseudoLanguage, IsOfferedByAFile) {
    EXPECT_TRUE(table_.load(false));
    EXPECT_TRUE(table_.isPseudoOffered());
    EXPECT_STREQ(table_.getLanguageCode(), "xx");
    ASSERT_EQ(table_.getLanguages().size(), 4u);
    EXPECT_EQ(table_.getLanguages()[3].code.view(), "xx");
    EXPECT_EQ(table_.getLanguages()[3].name, FStringRef("Pseudo Translation"));
    EXPECT_EQ(LanguageTable::getInstance().userLanguage(), 0);
}

TEST_F(PseudoLanguage, DisguisesWhatHasNoTranslation) {
    EXPECT_TRUE(table_.load(false));
    static constinit TranslatedText open{u"Open %u files"};
    const char16_t* const first = table_.translate(open);
    EXPECT_EQ(std::u16string(first), u"_Òpèn %u fìlès_");
    EXPECT_EQ(table_.translate(open), first);
    EXPECT_EQ(table_.translateKey("Save{{Verb}}"), FStringRef(u"_Sàvè_"));
    EXPECT_EQ(table_.translateKey("Save{{Verb}}"), FStringRef(u"_Sàvè_"));
    // The look-up itself knows nothing of it.
    EXPECT_EQ(table_.lookup(u"Open", FallBack::null), nullptr);
}

TEST_F(PseudoLanguage, LeavesWhatHasATranslation) {
    folders_.module.write("translation.xml", inStrings("<String Key='Open'><xx>OPEN</xx></String>"));
    EXPECT_TRUE(table_.load(false));
    EXPECT_EQ(table_.translateKey("Open"), FStringRef("OPEN"));
    EXPECT_EQ(table_.translateKey("Save"), FStringRef(u"_Sàvè_"));
    static constinit TranslatedText open{u"Open"};
    EXPECT_EQ(std::u16string(table_.translate(open)), u"OPEN");
}

TEST_F(PseudoLanguage, IsLookedForOnce) {
    EXPECT_TRUE(table_.isPseudoOffered());
    std::filesystem::remove(folders_.module / "PSEUDO_TRANSLATION");
    EXPECT_TRUE(table_.isPseudoOffered());
    TranslationTable other;
    EXPECT_FALSE(other.isPseudoOffered());
    folders_.module.write("PSEUDO_TRANSLATION", "");
    EXPECT_FALSE(other.isPseudoOffered());
}

TEST_F(PseudoLanguage, IsNoLanguageWithoutItsFile) {
    std::filesystem::remove(folders_.module / "PSEUDO_TRANSLATION");
    EXPECT_TRUE(table_.load(false));
    EXPECT_STREQ(table_.getLanguageCode(), "us");
    EXPECT_EQ(table_.translateKey("Save"), FStringRef("Save"));
}

TEST_F(PseudoLanguage, IsMadeByManyThreadsAtOnce) {
    EXPECT_TRUE(table_.load(false));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this] {
            for (int key = 0; key < 500; ++key) {
                const std::string text = "key " + std::to_string(key);
                EXPECT_EQ(table_.translateKey(text.c_str()).length(), static_cast<std::int32_t>(text.size() + 2));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// The example that comes with the documents.
TEST_F(TranslationTableTest, TheExampleFilesAreRead) {
    for (const char* name : {"translation.xml", "translation-old.xml"}) {
        TranslationTable table;
        table.setLanguage("de");
        std::ifstream file(std::string(EXAMPLES) + "/" + name, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        ASSERT_TRUE(table.loadFromMemory(text.data(), text.size())) << name;
        EXPECT_EQ(table.translateKey("No error occurred."), FStringRef(u"Es ist kein Fehler aufgetreten.")) << name;
        EXPECT_EQ(table.translateKey("This disk is full."), FStringRef(u"Dieser Datenträger ist voll.")) << name;
        EXPECT_EQ(table.translateKey("Copy{{Noun}}"), FStringRef(u"Kopie")) << name;
        EXPECT_EQ(table.getLanguages().size(), 2u) << name;
    }
}

} // namespace
} // namespace tessera
