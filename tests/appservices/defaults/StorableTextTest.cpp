#include "appservices/defaults/StorableText.h"

#include "appservices/defaults/FDefaults.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

bool isStorable(const std::u16string& text) {
    return isStorableText(FString(text.data(), static_cast<std::int32_t>(text.size())));
}

bool isStorable(const std::string& text) {
    return isStorableText(FString(text.data(), static_cast<std::int32_t>(text.size())));
}

TEST(StorableText, BecomesWideBeyondAscii) {
    EXPECT_FALSE(storableForm("plain").isWide());
    EXPECT_TRUE(storableForm(u"plain").isWide());
    const FString form = storableForm(testing_support::systemBytes(u"größe").c_str());
    ASSERT_TRUE(form.isWide());
    EXPECT_TRUE(form == u"größe");
}

TEST(StorableText, StaysAsItIsWhenItMeansNothing) {
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_FALSE(storableForm("\xff\xfe").isWide());
}

TEST(StorableText, MustFitAnAttributeUnlessItIsTooLongForOne) {
    EXPECT_TRUE(isStorable(std::string()));
    EXPECT_TRUE(isStorable(std::string(2047, 'x')));
    EXPECT_FALSE(isStorable(std::string(2048, 'x')));
    EXPECT_TRUE(isStorable(std::string(2049, 'x'))) << "it has a body of its own";
    EXPECT_TRUE(isStorable(std::u16string(682, u'\u6f22')));
    EXPECT_FALSE(isStorable(std::u16string(683, u'\u6f22')));
    EXPECT_TRUE(isStorable(std::u16string(2049, u'\u6f22')));
    EXPECT_TRUE(isStorable(std::u16string(1023, u'ä')));
    EXPECT_FALSE(isStorable(std::u16string(1024, u'ä')));
}

TEST(StorableText, CountsWhatIsWrittenForASign) {
    EXPECT_TRUE(isStorable(std::string(341, '"')));
    EXPECT_FALSE(isStorable(std::string(342, '"')));
    EXPECT_TRUE(isStorable(std::u16string(409, u'&')));
    EXPECT_FALSE(isStorable(std::u16string(410, u'&')));
    EXPECT_FALSE(isStorable(std::string(512, '<')));
    EXPECT_TRUE(isStorable(std::u16string(2047, u'$'))) << "only 8-bit text has a name for it";
    EXPECT_TRUE(isStorable(std::string(255, '$')));
    EXPECT_FALSE(isStorable(std::string(256, '$')));
    EXPECT_FALSE(isStorable(std::string(512, '\n'))) << "each is &nl;";
    EXPECT_FALSE(isStorable(std::string(342, '\xff'))) << "and each of these &yuml; or a number";
    EXPECT_TRUE(isStorable(std::string(2047, '\''))) << "this one stands for itself";
    std::u16string pairs;
    for (int i = 0; i < 511; ++i) {
        pairs += u"\U0001f3b5";
    }
    EXPECT_TRUE(isStorable(pairs));
    EXPECT_FALSE(isStorable(pairs + u"\U0001f3b5"));
}

TEST(StorableKey, MustFitTheNameOfAnAttribute) {
    EXPECT_FALSE(isStorableKey(FStringRef()));
    EXPECT_FALSE(isStorableKey(""));
    EXPECT_TRUE(isStorableKey("Preferences extraced"));
    EXPECT_TRUE(isStorableKey(std::string(47, 'x').c_str()));
    EXPECT_FALSE(isStorableKey(std::string(48, 'x').c_str()));
    EXPECT_TRUE(isStorableKey(std::u16string(47, u'x').c_str()));
    EXPECT_FALSE(isStorableKey(std::u16string(48, u'x').c_str()));
    EXPECT_FALSE(isStorableKey("\"\"\"\"\"\"\"\""));
    EXPECT_TRUE(isStorableKey(u"äää"));
    EXPECT_FALSE(isStorableKey(u"ääääääää")) << "each byte of it becomes a name or a number";
}

TEST(StorableKey, MustComeBackFromTheSystemsCodePage) {
    EXPECT_EQ(isStorableKey(u"\u6f22"), testing_support::whyNoUtf8() == nullptr);
    EXPECT_FALSE(isStorableKey(u"\xd800")) << "half a pair is lost in every one";
}

// The longest text and key of one character that may be set come back out of a document.
FString repeated(int c, std::int32_t count, bool wide) {
    return wide ? FString(std::u16string(static_cast<std::size_t>(count), static_cast<char16_t>(c)).c_str())
                : FString(std::string(static_cast<std::size_t>(count), static_cast<char>(c)).c_str());
}

template <class Accept>
std::int32_t longest(std::int32_t limit, Accept accept) {
    while (limit > 0 && !accept(limit)) {
        --limit;
    }
    return limit;
}

void expectToComeBack(int c, bool wide) {
    FDefaults group("group");
    const std::int32_t length =
        longest(2048, [&](std::int32_t count) { return group.setString("text", repeated(c, count, wide)); });
    const std::int32_t keyLength =
        longest(60, [&](std::int32_t count) { return group.setInt(repeated(c, count, wide), 1); });
    EXPECT_TRUE(group.setString("body", repeated(c, 2049, wide)));
    EXPECT_GE(length, 226);
    // A key that the system's code page can't hold isn't taken in the first place.
    const bool hasKey = c < 0x80 || isStorableKey(repeated(c, 1, wide));
    EXPECT_EQ(keyLength >= 2, hasKey);
    FMemoryStream stream;
    ASSERT_TRUE(FObjectDocument::saveObject(stream, "Defaults", group));
    stream.rewind();
    FDefaults restored;
    ASSERT_TRUE(FObjectDocument::loadObject(stream, "Defaults", restored)) << wide;
    FString text;
    EXPECT_TRUE(restored.getString("text", text));
    EXPECT_TRUE(text == repeated(c, length, wide)) << wide;
    EXPECT_TRUE(restored.getString("body", text));
    EXPECT_TRUE(text == repeated(c, 2049, wide)) << wide;
    EXPECT_EQ(restored.has(repeated(c, keyLength, wide)), hasKey) << wide;
}

TEST(LongestText, OfEachCharacterComesBack) {
    for (int c = 1; c < 0x80; ++c) {
        SCOPED_TRACE(c);
        expectToComeBack(c, false);
        expectToComeBack(c, true);
    }
}

TEST(LongestText, OfOtherScriptsComesBack) {
    for (const int c : {0x80, 0xe4, 0xff, 0x100, 0x7ff, 0x800, 0x6f22, 0xfffd}) {
        SCOPED_TRACE(c);
        expectToComeBack(c, true);
    }
}

} // namespace
} // namespace tessera
