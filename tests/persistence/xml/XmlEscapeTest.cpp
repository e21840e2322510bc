#include "persistence/xml/XmlEscape.h"

#include "foundation/containers/FByteBuffer.h"
#include "persistence/xml/XmlEntities.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

std::string textOf(const FByteBuffer& buffer) {
    return {reinterpret_cast<const char*>(buffer.getData()), static_cast<std::size_t>(buffer.getFill())};
}

std::string escaped(std::string_view text, bool basicOnly) {
    FByteBuffer buffer;
    EXPECT_TRUE(escape8(buffer, text, basicOnly));
    return textOf(buffer);
}

std::string escaped(std::u16string_view text) {
    FByteBuffer buffer;
    EXPECT_TRUE(escapeWide(buffer, text));
    return textOf(buffer);
}

TEST(XmlEscape, TheBasicFormWritesFourEntitiesAndPassesTheRest) {
    EXPECT_EQ(escaped("a & b < c > d \" e ' $^`\n\r\xA0\xE9", true),
              "a &amp; b &lt; c &gt; d &quot; e ' $^`\n\r\xA0\xE9");
}

TEST(XmlEscape, TheFullFormWritesNamesAndHexadecimalNumbers) {
    EXPECT_EQ(escaped("&<>\"'$^`\n\r\xA0", false), "&amp;&lt;&gt;&quot;'&dollar;&circ;&grave;&nl;&cr;&nbsp;");
    EXPECT_EQ(escaped("\xE9\x80\xFF", false), "&#xe9;&#x80;&#xff;");
    EXPECT_EQ(escaped("\xC3\xA9", false), "&#xc3;&#xa9;") << "each byte of UTF-8 for itself";
    EXPECT_EQ(escaped("\x01\t\x7F", false), "\x01\t\x7F");
}

TEST(XmlEscape, EveryByteOfTheFullFormComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    std::string text = escaped(all, false);
    text.resize(resolveXmlEntities(text.data(), text.size(), FXmlEntityColumn::ansi));
    EXPECT_EQ(text, all);
}

TEST(XmlEscape, WideTextBecomesUtf8WithFourEntities) {
    EXPECT_EQ(escaped(u"<\"\u00E9\u20AC\U0001F3B5\">&'$\u00A0\n"),
              "&lt;&quot;\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5&quot;&gt;&amp;'$\xC2\xA0\n");
    EXPECT_EQ(escaped(std::u16string_view()), "");
}

TEST(XmlEscape, HalfAPairBecomesTheReplacementCharacter) {
    EXPECT_EQ(escaped(std::u16string_view(u"a\xD83C&", 3)), "a\xEF\xBF\xBD&amp;");
}

TEST(XmlEscape, AppendsToWhatTheBufferHolds) {
    FByteBuffer buffer(16);
    buffer.append("name=", 5);
    EXPECT_TRUE(escape8(buffer, std::string(1000, '<'), false));
    EXPECT_TRUE(escape8(buffer, "", false));
    EXPECT_TRUE(escapeWide(buffer, u"x"));
    EXPECT_EQ(buffer.getFill(), 5 + 4000 + 1);
    EXPECT_EQ(textOf(buffer).substr(0, 13), "name=&lt;&lt;");
}

} // namespace
} // namespace tessera
