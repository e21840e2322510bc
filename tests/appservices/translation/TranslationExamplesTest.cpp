// The example of docs/file-formats.md is a file that the table reads.
#include "appservices/translation/TranslationTable.h"
#include "support/PageExample.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using testing_support::pageExample;

TEST(TranslationExamples, TheFileIsReadAsItIsDescribed) {
    const std::string text = pageExample("translation.xml");
    TranslationTable table;
    table.setLanguage("de");
    ASSERT_TRUE(table.loadFromMemory(text.data(), text.size()));
    EXPECT_EQ(table.getStringCount(), 5u);
    ASSERT_EQ(table.getLanguages().size(), 2u);
    EXPECT_EQ(table.getLanguages()[1].name, FStringRef("Deutsch"));
    EXPECT_EQ(table.translateKey("Untitled"), FStringRef("Ohne Titel"));
    EXPECT_EQ(table.translateKey("This disk is full."), FStringRef(u"Dieser Datenträger ist voll."));
    EXPECT_EQ(table.translateKey("Copy{{Noun}}"), FStringRef("Kopie"));
    EXPECT_EQ(table.translateKey("Copy{{Verb}}"), FStringRef("Kopieren"));
    EXPECT_EQ(table.translateKey("%d bit"), FStringRef("%d Bit"));
}

TEST(TranslationExamples, WithoutATextTheKeyIsShown) {
    const std::string text = pageExample("translation.xml");
    TranslationTable table;
    table.setLanguage("fr");
    ASSERT_TRUE(table.loadFromMemory(text.data(), text.size()));
    EXPECT_EQ(table.translateKey("This disk is full."), FStringRef("Ce disque est plein."));
    EXPECT_EQ(table.translateKey("Untitled"), FStringRef("Untitled"));
    EXPECT_EQ(table.translateKey("Copy{{Noun}}"), FStringRef("Copy"));
}

} // namespace
} // namespace tessera
