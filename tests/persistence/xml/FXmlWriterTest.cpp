#include "persistence/xml/FXmlWriter.h"

#include "foundation/object/ClassFactory.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/RecordingParser.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

class FXmlWriterTest : public testing::Test {
protected:
    std::string written() const {
        return {reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize())};
    }

    FMemoryStream stream;
    FXmlWriter writer{&stream};
    FXmlAttributeList none;
};

TEST_F(FXmlWriterTest, IsKnownByNameAndNotCreatedByIt) {
    EXPECT_STREQ(writer.getClassName(), "FXmlWriter");
    EXPECT_EQ(ClassFactory::getInstance(true)->findByName("FXmlWriter"), &FXmlWriter::metaClass);
    EXPECT_EQ(ClassFactory::getInstance(true)->createInstance("FXmlWriter"), nullptr);
}

TEST_F(FXmlWriterTest, ElementsAreLinesIndentedWithTabs) {
    FXmlAttributeList attributes;
    attributes.add("x", "1");
    attributes.add("y", "2");
    EXPECT_TRUE(writer.startElement("a", none, false));
    EXPECT_TRUE(writer.startElement("b", attributes, false));
    EXPECT_TRUE(writer.startElement("c", attributes, true));
    EXPECT_EQ(writer.getDepth(), 2);
    EXPECT_TRUE(writer.characters("text"));
    EXPECT_TRUE(writer.comment("note"));
    EXPECT_TRUE(writer.endElement("b"));
    EXPECT_TRUE(writer.endElement("a"));
    EXPECT_EQ(written(), "<a>\r\n"
                         "\t<b x=\"1\" y=\"2\">\r\n"
                         "\t\t<c x=\"1\" y=\"2\"/>\r\n"
                         "\t\ttext\r\n"
                         "\t\t<!-- note -->\r\n"
                         "\t</b>\r\n"
                         "</a>\r\n");
}

TEST_F(FXmlWriterTest, AnEndTagThatDoesNotMatchIsRefused) {
    EXPECT_FALSE(writer.endElement("a"));
    writer.startElement("a", none, false);
    EXPECT_FALSE(writer.endElement("b"));
    EXPECT_EQ(written(), "<a>\r\n");
    EXPECT_TRUE(writer.endElement(u"a"));
    EXPECT_FALSE(writer.endElement("a"));
}

TEST_F(FXmlWriterTest, ValuesAreEscapedUnlessSwitchedOff) {
    FXmlAttributeList attributes;
    attributes.add("v", "<\"&\n\xE9'$\xA0");
    writer.startElement("a", attributes, true);
    writer.setOption(FXmlWriterOption::escapeValues, false);
    writer.startElement("a", attributes, true);
    EXPECT_EQ(written(), "<a v=\"&lt;&quot;&amp;&nl;&#xe9;'&dollar;&nbsp;\"/>\r\n"
                         "<a v=\"<\"&\n\xE9'$\xA0\"/>\r\n");
}

TEST_F(FXmlWriterTest, WideTextBecomesUtf8) {
    FXmlAttributeList attributes;
    attributes.add(u"v\u00E9", u"\u20AC<\n");
    writer.startElement(u"\u00E9", attributes, false);
    writer.characters(u"\u20AC");
    writer.comment(u"\u20AC");
    writer.setOption(FXmlWriterOption::escapeValues, false);
    writer.startElement("b", attributes, true);
    writer.endElement(u"\u00E9");
    EXPECT_EQ(written(), "<\xC3\xA9 v\xC3\xA9=\"\xE2\x82\xAC&lt;\n\">\r\n"
                         "\t\xE2\x82\xAC\r\n"
                         "\t<!-- \xE2\x82\xAC -->\r\n"
                         "\t<b v\xC3\xA9=\"\xE2\x82\xAC<\n\"/>\r\n"
                         "</\xC3\xA9>\r\n");
}

TEST_F(FXmlWriterTest, EmptyValuesAreLeftOutIfTold) {
    FXmlAttributeList attributes;
    attributes.add("x", "");
    attributes.add("y", "1");
    writer.startElement("a", attributes, true);
    writer.setOption(FXmlWriterOption::skipEmptyValues, true);
    writer.startElement("a", attributes, true);
    EXPECT_EQ(written(), "<a x=\"\" y=\"1\"/>\r\n<a y=\"1\"/>\r\n");
    EXPECT_EQ(static_cast<int>(FXmlWriterOption::skipEmptyValues), 1);
    EXPECT_EQ(static_cast<int>(FXmlWriterOption::escapeValues), 2);
}

TEST_F(FXmlWriterTest, TextIsWrittenLineByLineAndAsItIs) {
    writer.startElement("a", none, false);
    EXPECT_TRUE(writer.characters("one\r\ntwo\n\n\rthree <&>\r\n"));
    EXPECT_TRUE(writer.characters(""));
    writer.endElement("a");
    EXPECT_EQ(written(), "<a>\r\n\tone\r\n\ttwo\r\n\tthree <&>\r\n</a>\r\n");
}

TEST_F(FXmlWriterTest, ACommentLosesItsControlCharacters) {
    EXPECT_TRUE(writer.comment("a\tb\r\nc\x7F"));
    EXPECT_TRUE(writer.comment("\r\n\t"));
    EXPECT_TRUE(writer.comment(""));
    EXPECT_EQ(written(), "<!-- abc -->\r\n");
}

TEST_F(FXmlWriterTest, WhatIsWrittenIsReadBack) {
    FXmlAttributeList attributes;
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    attributes.add("v", all.c_str());
    writer.startElement("a", attributes, false);
    writer.startElement("b", attributes, true);
    writer.endElement("a");
    stream.rewind();
    test::RecordingParser parser(&stream);
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a v=" + all + "><b v=" + all + "/></a>");
}

TEST_F(FXmlWriterTest, AStreamThatTakesNothingIsTold) {
    FXmlWriter nowhere(nullptr);
    EXPECT_FALSE(nowhere.startElement("a", none, false));
    EXPECT_EQ(nowhere.getDepth(), 0);
    EXPECT_FALSE(nowhere.comment("x"));
    EXPECT_FALSE(nowhere.characters("x\ny"));
    const char memory[1] = {};
    FMemoryStream full(static_cast<const void*>(memory), 1);
    FXmlWriter second(&full);
    EXPECT_FALSE(second.startElement("a", none, true));
}

TEST_F(FXmlWriterTest, LinesGoThroughOneOperationThatCanBeReplaced) {
    class LineWriter : public FXmlWriter {
    public:
        using FXmlWriter::FXmlWriter;
        std::string lines;

    protected:
        bool writeLine(std::string_view text, std::int32_t depth) override {
            lines += std::to_string(depth) + ":" + std::string(text) + ";";
            return true;
        }
    };
    LineWriter lines(nullptr);
    lines.startElement("a", none, false);
    lines.characters("x\n\ny");
    lines.comment("c");
    lines.endElement("a");
    EXPECT_EQ(lines.lines, "0:<a>;1:x;1:;1:y;1:<!-- c -->;0:</a>;");
}

TEST_F(FXmlWriterTest, AHostReachesItByInterface) {
    const FRefPtr<IXmlWriter> host = queryFor<IXmlWriter>(&writer);
    ASSERT_TRUE(host);
    const char* const attributes[] = {"x", "1<", "y", "2", nullptr};
    EXPECT_EQ(host->openElement("a", attributes, false), kResultOk);
    EXPECT_EQ(host->openElement("b", nullptr, true), kResultOk);
    EXPECT_EQ(host->addText("text"), kResultOk);
    EXPECT_EQ(host->addComment("note"), kResultOk);
    EXPECT_EQ(host->closeElement("b"), kResultFailure);
    EXPECT_EQ(host->closeElement("a"), kResultOk);
    EXPECT_EQ(written(), "<a x=\"1&lt;\" y=\"2\">\r\n\t<b/>\r\n\ttext\r\n\t<!-- note -->\r\n</a>\r\n");
    EXPECT_EQ(host->openElement(nullptr, nullptr, true), kInvalidArgument);
    EXPECT_EQ(host->closeElement(nullptr), kInvalidArgument);
    EXPECT_EQ(host->addText(nullptr), kInvalidArgument);
    EXPECT_EQ(host->addComment(nullptr), kInvalidArgument);
}

TEST_F(FXmlWriterTest, HoldsAReferenceOfItsStream) {
    EXPECT_EQ(stream.getReferenceCount(), 2u);
}

} // namespace
} // namespace tessera
