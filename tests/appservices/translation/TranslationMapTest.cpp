#include "appservices/translation/TranslationMap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessera {
namespace {

std::u16string numbered(const char16_t* prefix, int number) {
    const std::string digits = std::to_string(number);
    return prefix + std::u16string(digits.begin(), digits.end());
}

TEST(TranslationMap, FindsWhatWasSet) {
    TranslationMap map;
    EXPECT_EQ(map.find(u"Open"), nullptr);
    map.set(u"Open", u"Öffnen");
    map.set(u"", u"leer");
    ASSERT_NE(map.find(u"Open"), nullptr);
    EXPECT_EQ(std::u16string(map.find(u"Open")), u"Öffnen");
    EXPECT_EQ(std::u16string(map.find(u"")), u"leer");
    EXPECT_EQ(map.find(u"open"), nullptr);
    EXPECT_EQ(map.find(u"Ope"), nullptr);
    EXPECT_EQ(map.size(), 2u);
}

TEST(TranslationMap, TheLastTextOfAKeyIsItsText) {
    TranslationMap map;
    const char16_t* const first = map.set(u"Open", u"Auf");
    map.set(u"Open", u"Öffnen");
    EXPECT_EQ(std::u16string(map.find(u"Open")), u"Öffnen");
    EXPECT_EQ(map.size(), 1u);
    // Somebody may still hold it.
    EXPECT_EQ(std::u16string(first), u"Auf");
}

TEST(TranslationMap, KeysThatDifferAnywhereAreApart) {
    TranslationMap map;
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            std::u16string key(length, u'a');
            key[at] = u'b';
            map.set(key, key);
        }
    }
    EXPECT_EQ(map.size(), 780u);
    EXPECT_EQ(map.find(u"aaaa"), nullptr);
    EXPECT_EQ(std::u16string(map.find(u"aaba")), u"aaba");
}

TEST(TranslationMap, HoldsManyAndTheirTextsStayInPlace) {
    constexpr int kCount = 20'000;
    TranslationMap map;
    std::vector<const char16_t*> texts;
    for (int i = 0; i < kCount; ++i) {
        texts.push_back(map.set(numbered(u"key ", i), numbered(u"text ", i)));
    }
    EXPECT_EQ(map.size(), static_cast<std::size_t>(kCount));
    for (int i = 0; i < kCount; ++i) {
        ASSERT_EQ(map.find(numbered(u"key ", i)), texts[static_cast<std::size_t>(i)]);
        ASSERT_EQ(std::u16string(texts[static_cast<std::size_t>(i)]), numbered(u"text ", i));
    }
    EXPECT_EQ(map.find(u"key 20000"), nullptr);
}

TEST(TranslationMap, TakesTextsBeyondABlock) {
    TranslationMap map;
    const std::u16string large(100'000, u'x');
    map.set(u"a", u"before");
    map.set(large, large);
    map.set(u"b", u"behind");
    EXPECT_EQ(std::u16string(map.find(large)), large);
    EXPECT_EQ(std::u16string(map.find(u"a")), u"before");
    EXPECT_EQ(std::u16string(map.find(u"b")), u"behind");
}

TEST(TranslationMap, TakesTextsWithoutData) {
    TranslationMap map;
    map.set({}, {});
    ASSERT_NE(map.find(u""), nullptr);
    EXPECT_EQ(*map.find(u""), u'\0');
    EXPECT_EQ(map.size(), 1u);
}

TEST(TranslationMap, IsEmptyAndUsableOnceCleared) {
    TranslationMap map;
    map.set(u"Open", u"Öffnen");
    map.clear();
    EXPECT_TRUE(map.isEmpty());
    EXPECT_EQ(map.find(u"Open"), nullptr);
    map.set(u"Open", u"Ouvrir");
    EXPECT_EQ(std::u16string(map.find(u"Open")), u"Ouvrir");
}

} // namespace
} // namespace tessera
