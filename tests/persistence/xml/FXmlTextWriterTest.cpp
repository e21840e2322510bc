#include "persistence/xml/FXmlTextWriter.h"

#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/RecordingParser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace tessera {
namespace {

class FXmlTextWriterTest : public testing::Test {
protected:
    std::string written() const {
        return {reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize())};
    }

    FMemoryStream stream;
    FXmlTextWriter writer{&stream};
};

TEST_F(FXmlTextWriterTest, TheHeaderIsPlainOrMarkedAndWithEncoding) {
    EXPECT_TRUE(writer.writeHeader(false));
    EXPECT_TRUE(writer.writeHeader(true));
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?>\r\n"
                         "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n");
}

TEST_F(FXmlTextWriterTest, PiecesAreLinesIndentedWithTabs) {
    writer.startTag("a");
    writer.startTag("b", FXmlTagMode::selfClosing);
    writer.startTag("c");
    EXPECT_EQ(writer.getLevel(), 2);
    writer.text("raw <text/>");
    writer.comment("note");
    writer.endTag("c");
    EXPECT_TRUE(writer.endTag("a"));
    EXPECT_EQ(writer.getLevel(), 0);
    EXPECT_EQ(written(), "<a>\r\n\t<b/>\r\n\t<c>\r\n\t\traw <text/>\r\n\t\t<!-- note -->\r\n\t</c>\r\n</a>\r\n");
    EXPECT_EQ(static_cast<int>(FXmlTagMode::selfClosing), 1);
}

TEST_F(FXmlTextWriterTest, ThreeBlanksIndentIfTold) {
    FXmlTextWriter blanks(&stream, FXmlIndent::threeBlanks);
    blanks.startTag("a");
    blanks.startTag("b");
    blanks.text("x");
    blanks.endTag("b");
    blanks.endTag("a");
    EXPECT_EQ(written(), "<a>\r\n   <b>\r\n      x\r\n   </b>\r\n</a>\r\n");
}

TEST_F(FXmlTextWriterTest, AttributesOfEachKindGoIntoTheOpenTag) {
    writer.startTag("a");
    EXPECT_TRUE(writer.openTag("b"));
    EXPECT_TRUE(writer.attribute("text", std::string_view("a<\"&\xC3\xA9")));
    EXPECT_TRUE(writer.attribute("wide", std::u16string_view(u"\u20AC>")));
    EXPECT_TRUE(writer.attribute("least", std::numeric_limits<std::int64_t>::min()));
    EXPECT_TRUE(writer.attribute("most", std::numeric_limits<std::uint64_t>::max()));
    EXPECT_TRUE(writer.attribute("tenth", 0.1));
    EXPECT_TRUE(writer.closeTag(FXmlTagMode::selfClosing));
    writer.openTag("c");
    writer.closeTag();
    EXPECT_EQ(writer.getLevel(), 2);
    EXPECT_EQ(written(), "<a>\r\n"
                         "\t<b text=\"a&lt;&quot;&amp;\xC3\xA9\" wide=\"\xE2\x82\xAC&gt;\" "
                         "least=\"-9223372036854775808\" most=\"18446744073709551615\" "
                         "tenth=\"0.1000000000000000055511151231257827021181583404541\"/>\r\n"
                         "\t<c>\r\n");
}

TEST_F(FXmlTextWriterTest, InlineLeavesOutLineEndsUntilAnEndTag) {
    writer.startTag("a");
    writer.setInline(true);
    writer.startTag("b");
    writer.text("x");
    writer.endTag("b", true);
    EXPECT_TRUE(writer.isInline());
    writer.startTag("c");
    writer.endTag("c");
    EXPECT_FALSE(writer.isInline());
    writer.endTag("a");
    EXPECT_EQ(written(), "<a>\r\n\t<b>x</b><c></c>\r\n</a>\r\n");
}

TEST_F(FXmlTextWriterTest, AnEndTagTooManyStaysAtTheMargin) {
    writer.endTag("a");
    writer.startTag("b");
    EXPECT_EQ(written(), "</a>\r\n<b>\r\n");
}

TEST_F(FXmlTextWriterTest, AnInstanceHasAReferenceOfItsStream) {
    EXPECT_EQ(stream.getReferenceCount(), 2u);
}

TEST_F(FXmlTextWriterTest, AFailureStays) {
    char memory[8];
    FMemoryStream small(memory, sizeof memory);
    FXmlTextWriter failing(&small);
    EXPECT_TRUE(failing.startTag("a"));
    EXPECT_FALSE(failing.text("too long for the rest"));
    EXPECT_FALSE(failing.endTag("a"));
    EXPECT_FALSE(failing.openTag("b"));
    EXPECT_FALSE(FXmlTextWriter(nullptr).writeHeader(true));
}

TEST_F(FXmlTextWriterTest, WhatIsWrittenIsReadBack) {
    writer.writeHeader(true);
    writer.openTag("a");
    writer.attribute("v", std::string_view("<&\">'$\xC3\xA9"));
    writer.closeTag();
    writer.text("text");
    writer.endTag("a");
    stream.rewind();
    test::RecordingParser parser(&stream);
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "[\xEF\xBB\xBF]<a v=<&\">'$\xC3\xA9>[text\r\n][]</a>");
    EXPECT_EQ(parser.getCodePage(), CodePage::utf8);
}

} // namespace
} // namespace tessera
