#include "platform/RegistryValues.h"

#include "support/OwnRegistry.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace tessera::platform {
namespace {

constexpr char16_t kKey[] = u"Software\\Vendor\\Product";

class RegistryValues : public testing::Test {
protected:
    std::u16string read(std::u16string_view key, std::u16string_view name) {
        return readRegistryValue(key, name).value_or(u"none");
    }

    testing_support::OwnRegistry registry_;
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

TEST_F(RegistryValues, NamesOfManyKindsAreApart) {
    const std::u16string names[] = {
        u"",      u".",  u"..",         u"../..",    u"/",      u"/etc/passwd", u"a/b",
        u"a%2Fb", u"%",  u"%25",        u"a.txt",    u"a",      u".txt",        u"größe",
        u"CON",   u"C:", u"\U0001f3b5", u"\x01\x7f", u"\xd800", u"\xdc00",      std::u16string(255, u'n')};
    for (const std::u16string& name : names) {
        EXPECT_TRUE(writeRegistryValue(kKey, name, u"value of " + name));
        EXPECT_TRUE(writeRegistryValue(u"Keys\\" + name, u"v", u"below " + name));
    }
    for (const std::u16string& name : names) {
        EXPECT_EQ(read(kKey, name), u"value of " + name);
        EXPECT_EQ(read(u"Keys\\" + name, u"v"), u"below " + name);
    }
    EXPECT_TRUE(writeRegistryValue(kKey, u"a\\b", u"no path"));
    EXPECT_EQ(read(kKey, u"a\\b"), u"no path");
    EXPECT_EQ(read(std::u16string(kKey) + u"\\a", u"b"), u"none");
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

TEST_F(RegistryValues, AreLimitedInLength) {
    const std::u16string longest(kLongestRegistryValue, u'x');
    EXPECT_TRUE(writeRegistryValue(u"k", u"v", longest));
    EXPECT_EQ(read(u"k", u"v"), longest);
    EXPECT_FALSE(writeRegistryValue(u"k", u"v", longest + u"y"));
    EXPECT_EQ(read(u"k", u"v"), longest);
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

TEST_F(RegistryValues, CantBeKeptWhereThereIsNoRegistry) {
    registry_.remove();
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
}

} // namespace
} // namespace tessera::platform
