#include "appservices/defaults/StorableText.h"

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
    const FString form = storableForm("größe");
    ASSERT_TRUE(form.isWide());
    EXPECT_TRUE(form == u"größe");
    EXPECT_FALSE(storableForm("\xff\xfe").isWide()) << "what means nothing stays as it is";
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
    EXPECT_TRUE(isStorableKey(u"ää"));
    EXPECT_FALSE(isStorableKey(u"äää")) << "each is two bytes, and each byte may take a name such as &Atilde;";
}

} // namespace
} // namespace tessera
