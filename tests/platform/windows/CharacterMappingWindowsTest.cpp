// The calls of the system, held against its calls for whole texts.
#include "platform/CharacterMapping.h"

#include "platform/windows/WideText.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <string>
#include <windows.h>

namespace tessera::platform {
namespace {

std::u16string allUnits() {
    std::u16string units;
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        units.push_back(static_cast<char16_t>(unit));
    }
    return units;
}

TEST(CharacterMappingWindows, CaseIsTheSystems) {
    const std::u16string units = allUnits();
    std::u16string lower = units;
    std::u16string upper = units;
    ::CharLowerBuffW(wide(lower.data()), static_cast<DWORD>(lower.size()));
    ::CharUpperBuffW(wide(upper.data()), static_cast<DWORD>(upper.size()));
    for (std::size_t i = 0; i < units.size(); ++i) {
        ASSERT_EQ(lowerCase(units[i]), lower[i]) << std::hex << i + 1;
        ASSERT_EQ(upperCase(units[i]), upper[i]) << std::hex << i + 1;
    }
    EXPECT_EQ(lowerCase(u'\u0416'), u'\u0436');
    EXPECT_EQ(lowerCase(u'\0'), u'\0');
}

TEST(CharacterMappingWindows, CaseOfBytesIsThatOfTheSystemsPage) {
    for (int byte = 1; byte < 256; ++byte) {
        char lower = static_cast<char>(byte);
        char upper = static_cast<char>(byte);
        ::CharLowerBuffA(&lower, 1);
        ::CharUpperBuffA(&upper, 1);
        EXPECT_EQ(lowerCase(static_cast<char>(byte)), lower) << byte;
        EXPECT_EQ(upperCase(static_cast<char>(byte)), upper) << byte;
    }
    if (::GetACP() == 1252) {
        EXPECT_EQ(lowerCase('\xC4'), '\xE4');
        EXPECT_EQ(upperCase('\xE4'), '\xC4');
    }
}

// As the runtime's own comparison, which folds ASCII alone unless somebody sets a locale.
TEST(CharacterMappingWindows, ComparisonsFoldAsTheRuntimeDoes) {
    EXPECT_FALSE(comparesByLowerCase());
    for (const char16_t unit : allUnits()) {
        const wchar_t own[] = {static_cast<wchar_t>(unit), 0};
        const wchar_t folded[] = {static_cast<wchar_t>(comparisonCase(unit)), 0};
        ASSERT_EQ(::_wcsicmp(own, folded), 0) << static_cast<int>(unit);
        const wchar_t lower[] = {static_cast<wchar_t>(lowerCase(unit)), 0};
        ASSERT_EQ(::_wcsicmp(own, lower) == 0, comparisonCase(unit) == comparisonCase(lowerCase(unit)))
            << static_cast<int>(unit);
    }
    EXPECT_EQ(comparisonCase(u'Z'), u'z');
    EXPECT_EQ(comparisonCase(u'\u00C4'), u'\u00C4');
}

TEST(CharacterMappingWindows, CompositionIsTheSystems) {
    const std::u16string text = u"a\u0308 e\u0301 \u30cf\u309a x\u0308";
    char16_t composed[16] = {};
    char16_t expected[16] = {};
    const int units =
        ::FoldStringW(MAP_PRECOMPOSED, wide(text.data()), static_cast<int>(text.size()), wide(expected), 16);
    ASSERT_EQ(compose(text.data(), text.size(), composed, 16), units);
    EXPECT_EQ(std::u16string_view(composed), std::u16string_view(expected));
    EXPECT_TRUE(std::u16string_view(composed).starts_with(u"\u00e4 \u00e9 \u30d1 "));
    EXPECT_EQ(compose(text.data(), text.size(), composed, 3), units) << "only measured";
}

} // namespace
} // namespace tessera::platform
