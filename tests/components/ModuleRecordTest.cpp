#include "components/ModuleRecord.h"

#include "appservices/defaults/FDefaults.h"
#include "components/ComponentDoubles.h"
#include "components/FModule.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::classInfo;

ModuleRecord sampleRecord() {
    ModuleRecord record;
    setField(record.info.vendor, FString("Somebody"));
    setField(record.info.url, FString("https://example.invalid"));
    setField(record.info.email, FString("mailto:me@example.invalid"));
    record.info.flags = 16;
    ClassInfoWide info = classInfo(1, "Effect", "Echo", "1.2.3.4", "2.0");
    info.classFlags = 0xF0000001;
    info.cardinality = -1;
    setField(info.subcategories, FString("Delay|Stereo"));
    setField(info.vendor, FString(u"S\u00F6mebody \u97F3"));
    record.classes.push_back(info);
    record.classes.push_back(classInfo(2, "Service", "Clock"));
    return record;
}

bool sameBytes(const ModuleRecord& a, const ModuleRecord& b) {
    return std::memcmp(&a.info, &b.info, sizeof a.info) == 0 && a.classes.size() == b.classes.size() &&
           std::equal(a.classes.begin(), a.classes.end(), b.classes.begin(),
                      [](const auto& x, const auto& y) { return std::memcmp(&x, &y, sizeof x) == 0; });
}

FString textOf(const FDefaults& group, const char* key) {
    FString text("missing");
    group.getString(key, text);
    return text;
}

TEST(ModuleRecord, IsKeptUnderTheKeysThatFieldsHave) {
    FDefaults group;
    ASSERT_TRUE(writeModuleRecord(group, sampleRecord()));
    EXPECT_EQ(group.getCount(), 5 + 2 * 9);
    EXPECT_TRUE(textOf(group, "Vendor") == FStringRef("Somebody"));
    EXPECT_TRUE(textOf(group, "Url") == FStringRef("https://example.invalid"));
    EXPECT_TRUE(textOf(group, "Email") == FStringRef("mailto:me@example.invalid"));
    EXPECT_TRUE(textOf(group, "Class 00 - CID") == FStringRef("0000000100000000CC00000000000000"));
    EXPECT_TRUE(textOf(group, "Class 00 - Category") == FStringRef("Effect"));
    EXPECT_TRUE(textOf(group, "Class 00 - Name") == FStringRef("Echo"));
    EXPECT_TRUE(textOf(group, "Class 00 - SubCategories") == FStringRef("Delay|Stereo"));
    EXPECT_TRUE(textOf(group, "Class 00 - Vendor") == FStringRef(u"S\u00F6mebody \u97F3"));
    EXPECT_TRUE(textOf(group, "Class 00 - Version") == FStringRef("1.2.3.4"));
    EXPECT_TRUE(textOf(group, "Class 00 - SdkVersion") == FStringRef("2.0"));
    EXPECT_TRUE(textOf(group, "Class 01 - Name") == FStringRef("Clock"));
    const struct {
        const char* key;
        std::int64_t number;
    } numbers[] = {
        {"Flags", 16}, {"NumClasses", 2}, {"Class 00 - Cardinality", -1}, {"Class 00 - ClassFlags", 0xF0000001}};
    for (const auto& row : numbers) {
        std::int64_t number = 0;
        EXPECT_TRUE(group.getInt(row.key, number)) << row.key;
        EXPECT_EQ(number, row.number) << row.key;
    }
}

TEST(ModuleRecord, ReadsBackEqual) {
    FDefaults group;
    ASSERT_TRUE(writeModuleRecord(group, sampleRecord()));
    ModuleRecord read;
    ASSERT_TRUE(readModuleRecord(group, read));
    EXPECT_TRUE(sameBytes(read, sampleRecord()));
}

TEST(ModuleRecord, KeysHaveAtLeastTwoDigits) {
    ModuleRecord record;
    for (int i = 0; i < 101; ++i) {
        record.classes.push_back(classInfo(static_cast<std::uint8_t>(i), "Test", "Class"));
    }
    FDefaults group;
    ASSERT_TRUE(writeModuleRecord(group, record));
    EXPECT_TRUE(group.has("Class 09 - Name"));
    EXPECT_TRUE(group.has("Class 100 - Name"));
    ModuleRecord read;
    ASSERT_TRUE(readModuleRecord(group, read));
    EXPECT_TRUE(sameBytes(read, record));
}

TEST(ModuleRecord, WithoutClassesIsRefused) {
    FDefaults group;
    ModuleRecord record;
    EXPECT_FALSE(readModuleRecord(group, record));
    ASSERT_TRUE(writeModuleRecord(group, record));
    EXPECT_FALSE(readModuleRecord(group, record));
    group.setInt("NumClasses", -3);
    EXPECT_FALSE(readModuleRecord(group, record));
}

TEST(ModuleRecord, ACountBeyondTheClassesThatAreThereIsRefused) {
    for (const std::int64_t count : {std::int64_t{3}, std::int64_t{0x7fffffff}, std::int64_t{1} << 62}) {
        FDefaults group;
        ASSERT_TRUE(writeModuleRecord(group, sampleRecord()));
        group.setInt("NumClasses", count);
        ModuleRecord read;
        EXPECT_FALSE(readModuleRecord(group, read)) << count;
    }
}

TEST(ModuleRecord, ABadIdentifierIsRefused) {
    for (const char* id : {"", "0000000100000000CC0000000000000", "0000000100000000CC000000000000000",
                           "0000000100000000CC0000000000000G", "{0000000100000000CC00000000000000}"}) {
        FDefaults group;
        ASSERT_TRUE(writeModuleRecord(group, sampleRecord()));
        group.setString("Class 01 - CID", id);
        ModuleRecord read;
        EXPECT_FALSE(readModuleRecord(group, read)) << id;
    }
    FDefaults group;
    ASSERT_TRUE(writeModuleRecord(group, sampleRecord()));
    group.remove("Class 00 - CID");
    ModuleRecord read;
    EXPECT_FALSE(readModuleRecord(group, read));
}

TEST(ModuleRecord, FieldsThatAreMissingAreEmptyAndThoseThatAreTooLongAreCut) {
    FDefaults group;
    group.setInt("NumClasses", 1);
    group.setString("Class 00 - CID", "0123456789abcdefABCDEF0123456789");
    FString longText;
    longText.appendChar('x', 400);
    for (const char* key : {"Vendor", "Class 00 - Category", "Class 00 - Version", "Class 00 - SubCategories"}) {
        ASSERT_TRUE(group.setString(key, longText));
    }
    ModuleRecord read;
    ASSERT_TRUE(readModuleRecord(group, read));
    const ClassInfoWide& info = read.classes[0];
    EXPECT_EQ(fieldText(read.info.vendor).length(), 63);
    EXPECT_EQ(fieldText(info.category).length(), 31);
    EXPECT_EQ(fieldText(info.version).length(), 63);
    EXPECT_EQ(fieldText(info.subcategories).length(), 127);
    EXPECT_EQ(fieldText(info.name).length(), 0);
    EXPECT_EQ(fieldText(info.sdkVersion).length(), 0);
    EXPECT_EQ(info.cardinality, 0);
    EXPECT_EQ(read.info.flags, 0);
}

TEST(ModuleRecord, TextsEndAtTheirFirstZero) {
    FDefaults group;
    ASSERT_TRUE(writeModuleRecord(group, sampleRecord()));
    group.setString("Email", FStringRef("me\0you", 6));
    group.setString("Class 00 - Name", FStringRef(u"me\0you", 6));
    ModuleRecord read;
    ASSERT_TRUE(readModuleRecord(group, read));
    EXPECT_EQ(std::memcmp(read.info.email, "me\0\0\0\0", 7), 0);
    EXPECT_EQ(std::memcmp(read.classes[0].name, u"me\0\0\0\0", 14), 0);
}

TEST(ModuleRecord, FieldsWithoutAZeroAreReadToTheirEnd) {
    ClassInfoWide info;
    std::fill(std::begin(info.category), std::end(info.category), 'c');
    std::fill(std::begin(info.name), std::end(info.name), u'n');
    EXPECT_EQ(fieldText(info.category).length(), 32);
    EXPECT_EQ(fieldText(info.name).length(), 64);
    ModuleRecord record;
    record.classes.push_back(info);
    FDefaults group;
    ASSERT_TRUE(writeModuleRecord(group, record));
    EXPECT_EQ(textOf(group, "Class 00 - Name").length(), 64);
}

// The three generations of factories describe the same class as far as their records go.
TEST(ModuleRecord, ComesInTheNewestFormThatTheFactoryHas) {
    const auto describe = [](const char* name, ModuleRecord& record) {
        const auto path = test::nativePath(std::string(TEST_MODULES) + "/" + name + ".shlb");
        FModule module(path.get());
        IModuleFactory* factory = module.getFactory(true);
        ASSERT_NE(factory, nullptr) << name;
        ASSERT_TRUE(describeModule(*factory, record)) << name;
        ASSERT_EQ(record.classes.size(), 1u) << name;
        EXPECT_TRUE(fieldText(record.info.vendor) == FStringRef("Test Vendor"));
        EXPECT_TRUE(fieldText(record.classes[0].category) == FStringRef("Test"));
        EXPECT_EQ(record.classes[0].cardinality, 0x7fffffff);
        FString expected(name);
        expected.append(" 0");
        EXPECT_TRUE(fieldText(record.classes[0].name) == expected);
    };
    ModuleRecord record;
    describe("remembered", record);
    EXPECT_TRUE(fieldText(record.classes[0].vendor) == FStringRef(u"Class V\u00E9ndor \u97F3"));
    EXPECT_TRUE(fieldText(record.classes[0].version) == FStringRef("1.2.3.4"));
    EXPECT_EQ(record.classes[0].classFlags, 5u);
    describe("longer", record);
    EXPECT_TRUE(fieldText(record.classes[0].vendor) == FStringRef("Class Vendor"));
    EXPECT_TRUE(fieldText(record.classes[0].sdkVersion) == FStringRef("2.5.1"));
    EXPECT_TRUE(fieldText(record.classes[0].subcategories) == FStringRef("Sub|Category"));
    EXPECT_EQ(record.classes[0].classFlags, 5u);
    describe("narrow", record);
    EXPECT_TRUE(fieldText(record.classes[0].vendor).isEmpty());
    EXPECT_EQ(record.classes[0].classFlags, 0u);
}

} // namespace
} // namespace tessera
