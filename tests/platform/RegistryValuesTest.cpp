#include "platform/RegistryValues.h"

#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace tessera::platform {
namespace {

using testing_support::ScopedEnvironment;
using testing_support::ScratchFolder;

constexpr char16_t kKey[] = u"Software\\Vendor\\Product";

class RegistryValues : public testing::Test {
protected:
    std::u16string read(std::u16string_view key, std::u16string_view name) {
        return readRegistryValue(key, name).value_or(u"none");
    }

    ScratchFolder folder_;
    ScopedEnvironment environment_{"XDG_CONFIG_HOME", folder_.path().string()};
};

TEST_F(RegistryValues, AreReadAsTheyWereWritten) {
    EXPECT_EQ(read(kKey, u"Path"), u"none");
    EXPECT_TRUE(writeRegistryValue(kKey, u"Path", u"C:\\Program Files"));
    EXPECT_EQ(read(kKey, u"Path"), u"C:\\Program Files");
    EXPECT_TRUE(writeRegistryValue(kKey, u"Path", u"short"));
    EXPECT_EQ(read(kKey, u"Path"), u"short");
    EXPECT_EQ(readRegistryValue(kKey, u"Path", RegistryScope::user), u"short");
}

TEST_F(RegistryValues, EveryTextComesBack) {
    const std::u16string texts[] = {u"",
                                    u"\n",
                                    u"line\n\n",
                                    u"\r\n",
                                    u"größe",
                                    u"\U0001f3b5",
                                    std::u16string(1, 0xd800),
                                    std::u16string(u"a\0b", 3),
                                    u"\xdc00",
                                    std::u16string(100000, u'x')};
    for (const std::u16string& text : texts) {
        EXPECT_TRUE(writeRegistryValue(kKey, u"value", text));
        EXPECT_EQ(read(kKey, u"value"), text);
    }
}

TEST_F(RegistryValues, AnyNameWillDoAndAllAreApart) {
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

TEST_F(RegistryValues, AKeyAndAValueMayBearOneName) {
    for (const char16_t* name : {u"same", u"same.txt", u"%"}) {
        const std::u16string below = std::u16string(kKey) + u"\\" + name;
        EXPECT_TRUE(writeRegistryValue(kKey, name, u"value"));
        EXPECT_TRUE(writeRegistryValue(below, u"", u"own"));
        EXPECT_EQ(read(kKey, name), u"value");
        EXPECT_EQ(read(below, u""), u"own");
    }
}

TEST_F(RegistryValues, EmptyNamesInAKeyCountForNothing) {
    EXPECT_TRUE(writeRegistryValue(u"\\a\\\\b\\", u"v", u"text"));
    EXPECT_EQ(read(u"a\\b", u"v"), u"text");
    EXPECT_TRUE(writeRegistryValue(u"", u"top", u"text"));
    EXPECT_EQ(read(u"\\", u"top"), u"text");
}

TEST_F(RegistryValues, StandInPlainFiles) {
    writeRegistryValue(u"Software\\Marlgrove\\Shared Components", u"Path", u"/usr/größe");
    EXPECT_EQ(folder_.read("Marlgrove/Registry/Software/Marlgrove/Shared Components/Path.txt"), "/usr/größe\n");
    folder_.write("Marlgrove/Registry/Software/Marlgrove/Shared Components/Other.txt", "by hand");
    EXPECT_EQ(read(u"Software\\Marlgrove\\Shared Components", u"Other"), u"by hand");
}

TEST_F(RegistryValues, WhatIsNoTextIsNoValue) {
    folder_.write("Marlgrove/Registry/k/bad.txt", "\xff\xfe");
    EXPECT_EQ(read(u"k", u"bad"), u"none");
    folder_.write("Marlgrove/Registry/k/folder.txt/file", "");
    EXPECT_EQ(read(u"k", u"folder"), u"none");
    EXPECT_FALSE(writeRegistryValue(u"k", u"folder", u"x"));
    EXPECT_FALSE(deleteRegistryValue(u"k", u"folder"));
}

TEST_F(RegistryValues, AreLimitedInLength) {
    const std::u16string longest(kLongestRegistryValue, u'x');
    EXPECT_TRUE(writeRegistryValue(u"k", u"v", longest));
    EXPECT_EQ(read(u"k", u"v"), longest);
    EXPECT_FALSE(writeRegistryValue(u"k", u"v", longest + u"y"));
    EXPECT_EQ(read(u"k", u"v"), longest);
    folder_.write("Marlgrove/Registry/k/long.txt", std::string(kLongestRegistryValue + 2, 'x'));
    EXPECT_EQ(read(u"k", u"long"), u"none");
}

TEST_F(RegistryValues, GoWhenTheyAreDeleted) {
    writeRegistryValue(kKey, u"a", u"1");
    writeRegistryValue(kKey, u"b", u"2");
    EXPECT_TRUE(deleteRegistryValue(kKey, u"a"));
    EXPECT_EQ(read(kKey, u"a"), u"none");
    EXPECT_EQ(read(kKey, u"b"), u"2");
    EXPECT_TRUE(deleteRegistryValue(kKey, u"a")) << "it isn't there, which is what was asked";
    EXPECT_TRUE(deleteRegistryValue(u"no\\such\\key", u"a"));
}

TEST_F(RegistryValues, CantBeKeptWhereThereIsNoFolder) {
    folder_.write("file", "");
    const ScopedEnvironment blocked("XDG_CONFIG_HOME", folder_ / "file");
    EXPECT_FALSE(writeRegistryValue(kKey, u"a", u"1"));
    EXPECT_EQ(read(kKey, u"a"), u"none");
    EXPECT_TRUE(deleteRegistryValue(kKey, u"a"));
}

TEST_F(RegistryValues, AReaderMeetsTheOldOrTheNewText) {
    const std::u16string texts[] = {std::u16string(20000, u'a'), std::u16string(30000, u'b')};
    ASSERT_TRUE(writeRegistryValue(kKey, u"v", texts[0]));
    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;
    std::thread reader([&] {
        while (!stop) {
            const std::u16string found = read(kKey, u"v");
            wrong += found != texts[0] && found != texts[1] ? 1 : 0;
        }
    });
    for (int round = 0; round < 200; ++round) {
        EXPECT_TRUE(writeRegistryValue(kKey, u"v", texts[round % 2]));
    }
    stop = true;
    reader.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(folder_ / "Marlgrove/Registry/Software/Vendor/Product"), {}),
        1)
        << "nothing unfinished is left";
}

} // namespace
} // namespace tessera::platform
