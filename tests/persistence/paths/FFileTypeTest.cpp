#include "persistence/paths/FFileType.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

TEST(FFileType, IsCreatedEmptyByName) {
    const auto object =
        FRefPtr<CmObject>::adopt(static_cast<CmObject*>(ClassFactory::getInstance(true)->createInstance("FFileType")));
    const auto* type = cmCast<FFileType>(object.get());
    ASSERT_NE(type, nullptr);
    EXPECT_FALSE(type->isDefined());
}

TEST(FFileType, TakesTheFourCharacterCodeFromText) {
    EXPECT_EQ(FFileType::macTypeFromText("TEXT"), 0x54455854u);
    EXPECT_EQ(FFileType::macTypeFromText("TEXTS"), 0x54455854u);
    EXPECT_EQ(FFileType::macTypeFromText("AB"), 0x41420000u);
    EXPECT_EQ(FFileType::macTypeFromText(""), 0u);
    EXPECT_EQ(FFileType::macTypeFromText(nullptr), 0u);
    EXPECT_EQ(FFileType("Text", "txt", "TEXT").getMacType(), 0x54455854u);
}

TEST(FFileType, FoldsTypeStringsAndNotTheName) {
    FFileType type(u"My FILE", "WaV", 7u, u"\u00c4IF", "Audio/X-WAV", "AUDIO/wav");
    EXPECT_EQ(text(type.getDosType()), u"wav");
    EXPECT_EQ(text(type.getUnixType()), u"\u00e4if");
    EXPECT_EQ(text(type.getMimeType()), u"audio/x-wav");
    EXPECT_EQ(text(type.getMimeTypeAlt()), u"audio/wav");
    EXPECT_EQ(text(type.getName()), u"My FILE");
    type.setDosType("A");
    type.setUnixType("B");
    type.setMimeType("C");
    type.setMimeTypeAlt(u"\u00d6");
    EXPECT_EQ(text(type.getDosType()), u"a");
    EXPECT_EQ(text(type.getUnixType()), u"b");
    EXPECT_EQ(text(type.getMimeType()), u"c");
    EXPECT_EQ(text(type.getMimeTypeAlt()), u"\u00f6");
}

TEST(FFileType, AnyTypeStringOrTheCodeDefinesIt) {
    EXPECT_FALSE(FFileType("Name", "").isDefined());
    EXPECT_TRUE(FFileType("", "a").isDefined());
    EXPECT_TRUE(FFileType("", "", 1u).isDefined());
    EXPECT_TRUE(FFileType("", "", 0u, "a").isDefined());
    EXPECT_TRUE(FFileType("", "", 0u, "", "a").isDefined());
    EXPECT_TRUE(FFileType("", "", 0u, "", "", "a").isDefined());
}

TEST(FFileType, ClearLeavesNothing) {
    FFileType type("Name", "a", 1u, "b", "c", "d");
    type.clear();
    EXPECT_FALSE(type.isDefined());
    EXPECT_TRUE(type.getName().isEmpty());
}

TEST(FFileType, EqualityNeedsOnePairThatIsThereAndTheSame) {
    struct Row {
        const char* name;
        FFileType a;
        FFileType b;
        bool equal;
    };
    const Row rows[] = {
        {"both empty", FFileType(), FFileType(), false},
        {"same extension", FFileType("A", "wav", 1u), FFileType("B", "WAV", 2u), true},
        {"extension against second extension", FFileType("", "wav"), FFileType("", "", 0u, "wav"), false},
        {"same second extension", FFileType("", "a", 0u, "x"), FFileType("", "b", 0u, "x"), true},
        {"same MIME type", FFileType("", "a", 0u, "", "x/y"), FFileType("", "b", 0u, "", "x/y"), true},
        {"same code alone", FFileType("N", "", 7u), FFileType("N", "", 7u), false},
        {"same second MIME type alone", FFileType("N", "", 0u, "", "", "x/y"), FFileType("N", "", 0u, "", "", "x/y"),
         false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.a.isEqual(&row.b), row.equal) << row.name;
        EXPECT_EQ(row.b.isEqual(&row.a), row.equal) << row.name;
    }
}

TEST(FFileType, EmptyTypeIsUnequalToItself) {
    const FFileType type;
    EXPECT_FALSE(type.isEqual(&type));
}

TEST(FFileType, IsUnequalToOtherObjects) {
    const CmObject object;
    EXPECT_FALSE(FFileType("", "a").isEqual(&object));
    EXPECT_FALSE(FFileType("", "a").isEqual(static_cast<const CmObject*>(nullptr)));
}

TEST(FFileType, ReadsAHostRecord) {
    HostTypeRecord record{};
    record.macType = 0x54455854u;
    std::strcpy(record.extension, "TXT");
    std::strcpy(record.name, "Text File");
    FFileType type("Old", "old", 1u, "old", "old", "old");
    type.fromRecord(record);
    EXPECT_EQ(type.getMacType(), 0x54455854u);
    EXPECT_EQ(text(type.getDosType()), u"txt");
    EXPECT_EQ(text(type.getName()), u"Text File");
    EXPECT_TRUE(type.getUnixType().isEmpty());
    EXPECT_TRUE(type.getMimeType().isEmpty());
    EXPECT_TRUE(type.getMimeTypeAlt().isEmpty());
    EXPECT_TRUE(type.isEqual(record));
    EXPECT_FALSE(FFileType("", "wav").isEqual(record));
}

TEST(FFileType, HostRecordWithoutTerminatorsEndsWithItsFields) {
    HostTypeRecord record{};
    std::memset(record.extension, 'x', sizeof record.extension);
    std::memset(record.name, 'n', sizeof record.name);
    const FFileType type(record);
    EXPECT_EQ(text(type.getDosType()), u"xxxxxxxx");
    EXPECT_EQ(type.getName().length(), 64);
}

TEST(FFileType, WritesAHostRecordCutToItsFields) {
    const FFileType type(std::string(100, 'n').c_str(), "abcdefghij", 5u, "u", "m");
    HostTypeRecord record;
    std::memset(&record, 0xff, sizeof record);
    type.toRecord(record);
    EXPECT_EQ(record.macType, 5u);
    EXPECT_STREQ(record.extension, "abcdefg");
    EXPECT_EQ(std::string(record.name), std::string(63, 'n'));
}

TEST(FFileType, HostRecordCarriesNothingBehindItsTexts) {
    HostTypeRecord record;
    std::memset(&record, 0xff, sizeof record);
    FFileType("n", "x").toRecord(record);
    EXPECT_EQ(std::string(record.extension, 8), std::string("x\0\0\0\0\0\0\0", 8));
    EXPECT_EQ(std::string(record.name, 64), "n" + std::string(63, '\0'));
}

TEST(FFileType, HostRecordHoldsWholeCharactersAlone) {
    HostTypeRecord record;
    FFileType("", u"abcdef\u00e4").toRecord(record);
    EXPECT_STREQ(record.extension, "abcdef");
}

TEST(FFileType, HostRecordHoldsUtf8) {
    HostTypeRecord record;
    FFileType(u"T\u00f6ne", u"\u00e4").toRecord(record);
    EXPECT_STREQ(record.name, "T\xc3\xb6ne");
    const FFileType type(record);
    EXPECT_TRUE(type.getName() == u"T\u00f6ne");
    EXPECT_TRUE(type.getDosType() == u"\u00e4");
    EXPECT_TRUE(type.getName().isWide());
}

} // namespace
} // namespace tessera
