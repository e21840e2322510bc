#include "host/text/HostTexts.h"

#include "appservices/translation/FormatConversions.h"
#include "appservices/translation/TranslationTable.h"
#include "host/text/Text16.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace tessera::host {
namespace {

std::span<const TranslatedText> allTexts() {
    return {reinterpret_cast<const TranslatedText*>(&hostTexts), sizeof hostTexts / sizeof(TranslatedText)};
}

std::string translationFile() {
    std::ifstream file(TESX_HOST_TRANSLATION, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void loadGerman(TranslationTable& table) {
    const std::string content = translationFile();
    table.setLanguage("de");
    ASSERT_TRUE(table.loadFromMemory(content.data(), content.size()));
}

// Each sign begins one of the conversions that messages know.
bool isMessage(std::u16string_view text) {
    for (std::size_t at = text.find(u'%'); at != std::u16string_view::npos; at = text.find(u'%', at)) {
        const std::u16string_view rest = text.substr(at + 1);
        const bool hasDigits = rest.size() > 2 && rest[0] == u'.' && rest[1] >= u'0' && rest[1] <= u'9';
        const std::u16string_view letters = hasDigits ? u"f" : u"sdf%";
        const std::size_t letterAt = hasDigits ? 2 : 0;
        if (letterAt >= rest.size() || letters.find(rest[letterAt]) == std::u16string_view::npos) {
            return false;
        }
        at += letterAt + 2;
    }
    return true;
}

TEST(HostTextsTest, TheFileOffersEnglishFirstThenGerman) {
    TranslationTable table;
    loadGerman(table);
    ASSERT_EQ(table.getLanguages().size(), 2U);
    EXPECT_EQ(table.getLanguages()[0].code.view(), "us") << "what users of other languages get";
    EXPECT_EQ(table.getLanguages()[1].code.view(), "de");
}

TEST(HostTextsTest, EveryTextHasAGermanOneThatTakesTheSameValues) {
    TranslationTable table;
    loadGerman(table);
    for (const TranslatedText& text : allTexts()) {
        const std::string key = toUtf8(text.key).value_or("");
        const char16_t* const german = table.lookup(text.key, TranslationTable::FallBack::null);
        ASSERT_NE(german, nullptr) << key;
        EXPECT_NE(*german, u'\0') << key;
        EXPECT_TRUE(takeSameArguments(text.key, german)) << key;
        EXPECT_TRUE(isMessage(text.key)) << key;
        EXPECT_TRUE(isMessage(german)) << key;
    }
}

TEST(HostTextsTest, TheFileHoldsNoTextThatNobodyUses) {
    std::set<std::u16string> keys;
    for (const TranslatedText& text : allTexts()) {
        EXPECT_TRUE(keys.insert(text.key).second) << toUtf8(text.key).value_or("") << " is there twice";
    }
    TranslationTable table;
    loadGerman(table);
    EXPECT_EQ(table.getStringCount(), keys.size());
}

} // namespace
} // namespace tessera::host
