// What our own tables decide and another system may see otherwise.
#include "platform/CharacterMapping.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera::platform {
namespace {

TEST(CharacterMappingLinux, TheNextLineIsWhiteSpace) {
    EXPECT_TRUE(isWhiteSpace(u'\u0085'));
}

TEST(CharacterMappingLinux, TheKelvinSignIsACapitalK) {
    EXPECT_EQ(lowerCase(u'\u212a'), u'k');
}

TEST(CharacterMappingLinux, ComposeKeepsLoneHalves) {
    const std::u16string text = {static_cast<char16_t>(0xd83d), u'e', u'\u0301'};
    char16_t target[8];
    ASSERT_EQ(compose(text.data(), text.size(), target, 8), 2);
    EXPECT_EQ(std::u16string(target, 2), std::u16string({static_cast<char16_t>(0xd83d), u'\u00e9'}));
}

} // namespace
} // namespace tessera::platform
