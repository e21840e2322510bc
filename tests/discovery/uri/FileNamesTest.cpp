#include "discovery/uri/FileNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace tessera::test {
namespace {

using namespace std::string_literals;

TEST(FileNames, ValidNames) {
    for (const std::string& name :
         {"a"s, "take 1.wav"s, "com0"s, "console"s, "lpt10"s, ".hidden"s, "a.b.c"s, "Gr\xc3\xbc\xc3\x9f"s, "-a"s,
          "com"s, "conx.txt"s, "a.con"s, std::string(255, 'x')}) {
        EXPECT_TRUE(isValidFileName(name)) << name;
    }
}

TEST(FileNames, InvalidNames) {
    for (const std::string& name : {""s,
                                    std::string(256, 'x'),
                                    "."s,
                                    ".."s,
                                    "a."s,
                                    "a "s,
                                    "a\t"s,
                                    "a\n"s,
                                    "a\r"s,
                                    "a<b"s,
                                    "a>b"s,
                                    "a\\b"s,
                                    "a/b"s,
                                    "a:b"s,
                                    "a*b"s,
                                    "a?b"s,
                                    "a|b"s,
                                    "a\"b"s,
                                    "a\x01"s + "b"s,
                                    "a\0b"s,
                                    "con"s,
                                    "CON.txt"s,
                                    "nul"s,
                                    "Prn.a"s,
                                    "aux"s,
                                    "com1"s,
                                    "COM9.x"s,
                                    "Lpt9.wav"s,
                                    "lpt1"s}) {
        EXPECT_FALSE(isValidFileName(name)) << name;
    }
}

TEST(FileNames, PortableNames) {
    for (const std::string& name : {"a"s, "Take_1-b.wav"s, std::string(255, 'x'), "_"s}) {
        EXPECT_TRUE(isPortableFileName(name)) << name;
    }
    for (const std::string& name : {""s, "-a"s, ".a"s, "."s, ".."s, "a b"s, "a:b"s, "Gr\xc3\xbc\xc3\x9f"s, "con.txt"s,
                                    "a."s, "a+b"s, std::string(256, 'x')}) {
        EXPECT_FALSE(isPortableFileName(name)) << name;
    }
}

TEST(FileNames, SanitizingReplaces) {
    EXPECT_EQ(sanitizeFileName("", '_'), "_");
    EXPECT_EQ(sanitizeFileName(".", '_'), "_");
    EXPECT_EQ(sanitizeFileName("..", '-'), "--");
    EXPECT_EQ(sanitizeFileName("a.", '_'), "a_");
    EXPECT_EQ(sanitizeFileName("a ", '_'), "a_");
    EXPECT_EQ(sanitizeFileName("a..", '_'), "a._");
    EXPECT_EQ(sanitizeFileName("con", '_'), "con_");
    EXPECT_EQ(sanitizeFileName("CON.txt", '_'), "CON.txt_");
    EXPECT_EQ(sanitizeFileName("con.", '_'), "con_") << "a bad end is mended, and nothing appended then";
    EXPECT_EQ(sanitizeFileName("a<b>c\\d/e:f*g?h|i\"j", '_'), "a_b_c_d_e_f_g_h_i_j");
    EXPECT_EQ(sanitizeFileName("fine name.wav", '_'), "fine name.wav");
}

TEST(FileNames, SanitizingCutsAt255Bytes) {
    EXPECT_EQ(sanitizeFileName(std::string(256, 'x'), '_'), std::string(255, 'x'));
    EXPECT_EQ(sanitizeFileName(std::string(255, 'x'), '_'), std::string(255, 'x'));
    EXPECT_EQ(sanitizeFileName(std::string(254, 'x') + " y", '_'), std::string(254, 'x') + "_");
}

TEST(FileNames, TheMildFormLeavesSomeCharacters) {
    EXPECT_EQ(sanitizeFileNameMildly("a<b>c\\d/e:f*g?h|i\"j\tk", '-'), "a<b>c\\d-e-f-g-h|i\"j-k");
    EXPECT_EQ(sanitizeFileNameMildly("nul", '-'), "nul-");
}

TEST(FileNames, TheOneCallFormUsesUnderscores) {
    EXPECT_EQ(sanitizeFileName("a/b|c."), "a_b_c_");
    EXPECT_EQ(sanitizeFileName("com1"), "com1_");
}

TEST(FileNames, WhatIsSanitizedIsMostlyValid) {
    for (const std::string& name : {""s, "."s, ".."s, "a."s, "con"s, "a\\b"s, std::string(300, '.'), "a b "s}) {
        EXPECT_TRUE(isValidFileName(sanitizeFileName(name))) << name;
    }
}

TEST(FileNames, UniqueNamesDiffer) {
    const std::string name = uniqueFileName();
    ASSERT_EQ(name.size(), 36u);
    for (std::size_t index = 0; index < name.size(); ++index) {
        if (index == 8 || index == 13 || index == 18 || index == 23) {
            EXPECT_EQ(name[index], '-');
        } else {
            EXPECT_TRUE(std::isxdigit(static_cast<unsigned char>(name[index]))) << name;
        }
    }
    EXPECT_NE(uniqueFileName(), name);
}

TEST(FileNames, PatternsKnowStarAndQuestionMark) {
    const auto fits = [](const char* name, const char* pattern) {
        return matchesPattern(name, pattern, NameCase::exact);
    };
    EXPECT_TRUE(fits("", ""));
    EXPECT_TRUE(fits("", "*"));
    EXPECT_FALSE(fits("", "?"));
    EXPECT_TRUE(fits("take.wav", "*.wav"));
    EXPECT_FALSE(fits("take.wavx", "*.wav"));
    EXPECT_TRUE(fits("take.wav", "t?ke.*"));
    EXPECT_TRUE(fits("aXbXc", "a*b*c"));
    EXPECT_TRUE(fits("abcabd", "*abd"));
    EXPECT_FALSE(fits("abc", "ab"));
    EXPECT_FALSE(fits("ab", "abc"));
    EXPECT_TRUE(fits("a", "**a**"));
}

TEST(FileNames, OtherCharactersOfPatternsStandForThemselves) {
    EXPECT_TRUE(matchesPattern("a+(b)[c].{d}^$|\\", "a+(b)[c].{d}^$|\\", NameCase::exact));
    EXPECT_FALSE(matchesPattern("aXb", "a.b", NameCase::exact));
    EXPECT_FALSE(matchesPattern("aab", "a+b", NameCase::exact));
}

TEST(FileNames, PatternsMayIgnoreCase) {
    EXPECT_TRUE(matchesPattern("TAKE.WAV", "*.wav", NameCase::ignored));
    EXPECT_FALSE(matchesPattern("TAKE.WAV", "*.wav", NameCase::exact));
}

TEST(FileNames, APatternOfManyStarsStaysQuick) {
    std::string pattern;
    for (int star = 0; star < 50; ++star) {
        pattern += "a*";
    }
    EXPECT_FALSE(matchesPattern(std::string(20000, 'a'), pattern + "b", NameCase::exact));
}

} // namespace
} // namespace tessera::test
