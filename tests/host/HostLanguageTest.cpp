#include "host/program/HostLanguage.h"

#include "host/TranslatedHost.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <iterator>

namespace tessera::host {
namespace {

class HostLanguageTest : public TranslatedHost {
protected:
    std::string languageFile() const {
        std::ifstream file(userFile("lang.cfg"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
};

TEST_F(HostLanguageTest, WithoutTranslationsThereIsEnglish) {
    std::filesystem::remove(folders_.module.path() / "translation.xml");
    speak("de");
    EXPECT_EQ(describeLanguage(), "language us (English); there are: us");
    EXPECT_EQ(chooseLanguage("de"), "there is no language \"de\"; there are: us");
    EXPECT_FALSE(std::filesystem::exists(userFile("lang.cfg")));
}

TEST_F(HostLanguageTest, AChosenLanguageIsSpokenAndWrittenDown) {
    speak("us");
    EXPECT_EQ(describeLanguage(), "language us (English); there are: us, de");
    EXPECT_EQ(message(hostTexts.trackName, 1), "Track 1");
    EXPECT_EQ(chooseLanguage("de"), "");
    EXPECT_EQ(languageFile(), "de");
    EXPECT_EQ(message(hostTexts.trackName, 1), "Spur 1");
    EXPECT_EQ(describeLanguage(), "Sprache de (Deutsch); es gibt: us, de");
    EXPECT_EQ(chooseLanguage("us"), "");
    EXPECT_EQ(languageFile(), "us");
    EXPECT_EQ(message(hostTexts.trackName, 1), "Track 1");
}

TEST_F(HostLanguageTest, WhatWasChosenHoldsAtTheNextStart) {
    speak("us");
    ASSERT_EQ(chooseLanguage("de"), "");
    speak("us");
    TranslationTable::getInstance()->load(false);
    EXPECT_EQ(message(hostTexts.addEvent), "Event hinzufügen");
}

TEST_F(HostLanguageTest, ALanguageThatIsNotOfferedIsToldAndChangesNothing) {
    speak("de");
    for (const char* code : {"fr", "", "d", "de_DE", "DE"}) {
        EXPECT_EQ(chooseLanguage(code), std::string("die Sprache \"") + code + "\" gibt es nicht; es gibt: us, de");
    }
    EXPECT_FALSE(std::filesystem::exists(userFile("lang.cfg")));
}

TEST_F(HostLanguageTest, ALanguageThatCannotBeWrittenDownIsNotSpoken) {
    speak("us");
    std::filesystem::create_directory(userFile("lang.cfg"));
    EXPECT_EQ(chooseLanguage("de"), "the language can't be written to \"" + userFile("lang.cfg").string() + "\"");
    EXPECT_EQ(message(hostTexts.trackName, 1), "Track 1");
}

} // namespace
} // namespace tessera::host
