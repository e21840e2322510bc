// Where the values of the registry are plain files: what the files are called and hold.
#include "platform/RegistryValues.h"

#include "support/OwnRegistry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tessera::platform {
namespace {

constexpr char16_t kKey[] = u"Software\\Vendor\\Product";

class RegistryValuesLinux : public testing::Test {
protected:
    std::u16string read(std::u16string_view key, std::u16string_view name) {
        return readRegistryValue(key, name).value_or(u"none");
    }

    testing_support::OwnRegistry registry_;
    const testing_support::ScratchFolder& folder_ = registry_.folder();
};

TEST_F(RegistryValuesLinux, AnyNameWillDoAndAllAreApart) {
    const std::u16string names[] = {u"",
                                    u".",
                                    u"..",
                                    u"../..",
                                    u"/",
                                    u"/etc/passwd",
                                    u"a/b",
                                    u"a%2Fb",
                                    u"%",
                                    u"%25",
                                    u"a.txt",
                                    u"a",
                                    u"a\\b",
                                    u".txt",
                                    u"größe",
                                    u"CON",
                                    u"\x01\x7f",
                                    std::u16string(u"a\0b", 3),
                                    u"\xd800",
                                    u"\xdc00",
                                    std::u16string(5000, u'n'),
                                    std::u16string(5001, u'n')};
    for (const std::u16string& name : names) {
        EXPECT_TRUE(writeRegistryValue(kKey, name, u"value of " + name));
        EXPECT_TRUE(writeRegistryValue(u"Keys\\" + name, u"v", u"below " + name));
    }
    for (const std::u16string& name : names) {
        EXPECT_EQ(read(kKey, name), u"value of " + name);
        if (!name.empty() && name != u"a\\b") {
            EXPECT_EQ(read(u"Keys\\" + name, u"v"), u"below " + name);
        }
    }
    EXPECT_EQ(folder_.entryCount(), 1u) << "nothing outside the vendor's folder";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "Marlgrove"), {}), 1);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "Marlgrove/Registry"), {}), 2);
}

TEST_F(RegistryValuesLinux, StandInPlainFiles) {
    writeRegistryValue(u"Software\\Marlgrove\\Shared Components", u"Path", u"/usr/größe");
    EXPECT_EQ(folder_.read("Marlgrove/Registry/Software/Marlgrove/Shared Components/Path.txt"), "/usr/größe\n");
    folder_.write("Marlgrove/Registry/Software/Marlgrove/Shared Components/Other.txt", "by hand");
    EXPECT_EQ(read(u"Software\\Marlgrove\\Shared Components", u"Other"), u"by hand");
}

TEST_F(RegistryValuesLinux, WhatIsNoTextIsNoValue) {
    folder_.write("Marlgrove/Registry/k/bad.txt", "\xff\xfe");
    EXPECT_EQ(read(u"k", u"bad"), u"none");
    folder_.write("Marlgrove/Registry/k/folder.txt/file", "");
    EXPECT_EQ(read(u"k", u"folder"), u"none");
    EXPECT_FALSE(writeRegistryValue(u"k", u"folder", u"x"));
    EXPECT_FALSE(deleteRegistryValue(u"k", u"folder"));
}

TEST_F(RegistryValuesLinux, AFileThatIsTooLongIsNoValue) {
    folder_.write("Marlgrove/Registry/k/long.txt", std::string(kLongestRegistryValue + 2, 'x'));
    EXPECT_EQ(read(u"k", u"long"), u"none");
}

TEST_F(RegistryValuesLinux, WritingLeavesNothingUnfinished) {
    EXPECT_TRUE(writeRegistryValue(kKey, u"v", u"one"));
    EXPECT_TRUE(writeRegistryValue(kKey, u"v", u"two"));
    const std::filesystem::path key = folder_ / "Marlgrove/Registry/Software/Vendor/Product";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(key), {}), 1);
}

} // namespace
} // namespace tessera::platform
