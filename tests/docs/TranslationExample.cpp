#include "appservices/translation/TranslatedText.h"
#include "appservices/translation/TranslationTable.h"
#include "foundation/text/FString.h"
#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [translation]
constinit TranslatedText untitled{u"Untitled"};
constinit TranslatedText countOfTakes{u"%d takes"};

FString titleOf(const FStringRef& title) {
    return title.isEmpty() ? FString(translate(untitled)) : FString(title);
}

FString textOf(std::int32_t takes) {
    FString text;
    text.printf(translateFormat(countOfTakes), static_cast<int>(takes)); // never a text that wants other arguments
    return text;
}
// [translation]

constexpr char kFile[] = R"(<?xml version="1.0" encoding="utf-8"?>
<Translation>
  <LanguageTable><language key="us">English</language><language key="de">Deutsch</language></LanguageTable>
  <StringTable>
    <String key="Untitled"><de>Ohne Titel</de></String>
    <String key="%d takes"><de>%d Aufnahmen</de></String>
  </StringTable>
</Translation>
)";

TEST(TranslationExample, TextsAreThoseOfTheUsersLanguage) {
    const SettingsFolder folder;
    folder.scratch().write("translation.xml", kFile);
    TranslationTable& table = *TranslationTable::getInstance();
    ASSERT_TRUE(table.reload("de"));
    EXPECT_TRUE(titleOf("") == u"Ohne Titel");
    EXPECT_TRUE(titleOf("Rain") == "Rain");
    EXPECT_TRUE(textOf(3) == u"3 Aufnahmen");
    ASSERT_TRUE(table.reload("us"));
    EXPECT_TRUE(titleOf("") == u"Untitled");
    EXPECT_TRUE(textOf(3) == u"3 takes");
}

} // namespace
} // namespace tessera::test
