#include "host/text/Text16.h"

#include <gtest/gtest.h>

namespace tessera::host {
namespace {

TEST(Text16, GoesThereAndBack) {
    EXPECT_EQ(toText16("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5"), u"a\u00E4\u20AC\U0001F3B5");
    EXPECT_EQ(toUtf8(u"a\u00E4\u20AC\U0001F3B5"), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5");
    EXPECT_EQ(toText16(""), u"");
    EXPECT_EQ(toUtf8(u""), "");
}

TEST(Text16, InvalidTextGivesNothing) {
    for (const char* text : {"\x80", "\xC3", "a\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
                             "\xF4\x90\x80\x80", "\xF0\x9F\x8E", "\xFF"}) {
        EXPECT_EQ(toText16(text), std::nullopt) << text;
    }
    const char16_t lone[] = {0xD83C, 0};
    const char16_t swapped[] = {0xDFB5, 0xD83C, 0};
    EXPECT_EQ(toUtf8(lone), std::nullopt);
    EXPECT_EQ(toUtf8(swapped), std::nullopt);
}

TEST(Text16, WhatDoesntFitTheBufferIsEmpty) {
    char16_t buffer[4] = {u'x', u'x', u'x', u'x'};
    writeText16("abc", buffer, 4);
    EXPECT_EQ(std::u16string(buffer), u"abc");
    writeText16("abcd", buffer, 4);
    EXPECT_EQ(std::u16string(buffer), u"");
    writeText16("\xFF", buffer, 4);
    EXPECT_EQ(std::u16string(buffer), u"");
}

} // namespace
} // namespace tessera::host
