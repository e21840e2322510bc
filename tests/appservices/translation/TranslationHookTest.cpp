#include "appservices/translation/TranslationHook.h"

#include "ProgramFolders.h"
#include "appservices/translation/TranslationTable.h"
#include "persistence/files/FFileSystem.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(TranslationHook, GivesPersistenceItsTextsInTheLanguageOfTheUser) {
    test::ProgramFolders folders;
    folders.user.write("lang.cfg", "de");
    folders.module.write("translation.xml",
                         "\xEF\xBB\xBF<Translation><LanguageTable><language key='de'>Deutsch</language></LanguageTable>"
                         "<StringTable><String key='Untitled'><de>Ohne Titel</de></String>"
                         "<String key='MB'><de>Megabyte</de></String></StringTable></Translation>");
    EXPECT_EQ(translateText("Untitled"), FStringRef("Untitled"));
    installTranslation();
    EXPECT_EQ(translateText("Untitled"), FStringRef("Untitled"));
    ASSERT_TRUE(TranslationTable::getInstance()->load(false));
    EXPECT_EQ(translateText("Untitled"), FStringRef("Ohne Titel"));
    EXPECT_EQ(translateText("Something else"), FStringRef("Something else"));
    FString size;
    ASSERT_TRUE(formatByteCount(1'572'864, size, 4));
    EXPECT_EQ(size, FStringRef("1.500 Megabyte"));
    persistenceHooks.translate = nullptr;
    TranslationTable::getInstance()->load(true);
}

} // namespace
} // namespace tessera
