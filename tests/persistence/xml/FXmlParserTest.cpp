#include "persistence/xml/FXmlParser.h"

#include "persistence/xml/OddStreams.h"
#include "persistence/xml/RecordingParser.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tessera {
namespace {

using test::OddStream;
using test::RecordingParser;
using test::TextParser;

std::string eventsOf(std::string_view text) {
    TextParser parser(text);
    EXPECT_TRUE(parser.parse(nullptr)) << text.substr(0, 200);
    EXPECT_EQ(parser.getErrorState(), FXmlError::none);
    return parser.events;
}

std::string eventsWith(std::string_view text, FXmlOption option) {
    TextParser parser(text);
    parser.setOption(option, true);
    EXPECT_TRUE(parser.parse(nullptr)) << text.substr(0, 200);
    return parser.events;
}

FXmlError errorOf(std::string_view text) {
    TextParser parser(text);
    const bool done = parser.parse(nullptr);
    EXPECT_EQ(done, parser.getErrorState() == FXmlError::none);
    return parser.getErrorState();
}

std::string attributeOf(std::string_view value) {
    TextParser parser("<a v=\"" + std::string(value) + "\"/>");
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_FALSE(parser.lastValue.isWide());
    return std::string(parser.lastValue.view8());
}

TEST(FXmlParser, TagsAttributesAndTextAreCalledBack) {
    EXPECT_EQ(eventsOf("<?xml version=\"1.0\"?>\r\n<a>\r\n\t<b x=\"1\" y='2'/>\r\n<c>text</c></a>\r\n"),
              "<a><b x=1 y=2/><c>[text][]</c></a>");
}

TEST(FXmlParser, AnEmptyStreamAndNoStreamAreASuccess) {
    EXPECT_EQ(eventsOf(""), "");
    RecordingParser parser(nullptr);
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "");
}

TEST(FXmlParser, OptionsAndErrorsHaveTheNumbersThatCallersStore) {
    EXPECT_EQ(static_cast<int>(FXmlOption::deliverComments), 1);
    EXPECT_EQ(static_cast<int>(FXmlOption::backslashEscapesQuote), 2);
    EXPECT_EQ(static_cast<int>(FXmlOption::commentsEndAtOnce), 4);
    EXPECT_EQ(static_cast<int>(FXmlOption::blanksAreText), 8);
    EXPECT_EQ(static_cast<int>(FXmlOption::endWithLastTag), 16);
    EXPECT_EQ(static_cast<int>(FXmlOption::widenEntityValues), 32);
    EXPECT_EQ(static_cast<int>(FXmlOption::secondEntityColumn), 64);
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(1)), "Xml data malformed!");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(2)), "Unexpected tag or invalid attributes!");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(3)), "Unexpected end of file!");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(4)), "Not enough actual attributes in tag!");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(5)), "Unexpected Tag!");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(0)), "");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(6)), "");
    EXPECT_STREQ(xmlErrorText(static_cast<FXmlError>(-98)), "");
}

// Attributes.

TEST(FXmlParser, EntitiesInValuesAreResolved) {
    EXPECT_EQ(attributeOf("&unknown;"), "&unknown;");
    EXPECT_EQ(attributeOf("&#233;"), "\xE9");
    EXPECT_EQ(attributeOf("&#8364;"), "\xAC");
    EXPECT_EQ(attributeOf("&quot;a&amp;b&nl;&eacute;"), "\"a&b\n\xE9");
    EXPECT_EQ(eventsOf("<a>x &amp; y</a>"), "<a>[x &amp; y][]</a>") << "but not in a text";
}

// Enough places for a value to be looked at in blocks.
TEST(FXmlParser, WhereInAValueSomethingSpecialStandsMakesNoDifference) {
    for (std::size_t place = 0; place < 40; ++place) {
        const std::string before(place, 'x');
        const std::string behind(40 - place, 'y');
        EXPECT_EQ(attributeOf(before + "&lt;" + behind), before + "<" + behind);
        EXPECT_EQ(attributeOf(before + "'" + behind), before + "'" + behind);
        EXPECT_EQ(attributeOf(before + "\\" + behind), before + "\\" + behind);
        TextParser parser("<a v=\"" + before + "\n" + behind + "\" w=\"" + before + "\"/>");
        EXPECT_TRUE(parser.parse(nullptr));
        EXPECT_EQ(parser.lineNumber(), 1) << place;
        EXPECT_EQ(parser.events, "<a v=" + before + "\n" + behind + " w=" + before + "/>");
    }
}

TEST(FXmlParser, ValuesKeepTheirBytesAndTheirOtherQuotes) {
    EXPECT_EQ(attributeOf("it's\r\n\t<>/ \xC3\xA9"), "it's\r\n\t<>/ \xC3\xA9");
    EXPECT_EQ(eventsOf("<a v='say \"yes\"'/>"), "<a v=say \"yes\"/>");
}

TEST(FXmlParser, WhiteSpaceMayStandAroundAttributesAndTheirSigns) {
    EXPECT_EQ(eventsOf("<a\tx =\"1\"\r\n y= \"2\" \n z\t=\r\n'3' />"), "<a x=1 y=2 z=3/>");
    EXPECT_EQ(eventsOf("<a x=\"1\"y=\"2\">"), "<a x=1 y=2>") << "nor need there be any between them";
}

TEST(FXmlParser, EqualNamesAreKeptAndTheFirstIsFound) {
    EXPECT_EQ(eventsOf("<a x=\"1\" x=\"2\" x=\"\"/>"), "<a x=1 x=2 x=/>");
}

TEST(FXmlParser, AValueOf2047BytesIsReadAndOneOf2048IsMalformed) {
    EXPECT_EQ(attributeOf(std::string(2047, 'v')), std::string(2047, 'v'));
    EXPECT_EQ(errorOf("<a v=\"" + std::string(2048, 'v') + "\"/>"), FXmlError::malformed);
}

TEST(FXmlParser, ANameOf47BytesIsReadAndOneOf48IsMalformed) {
    EXPECT_EQ(eventsOf("<a " + std::string(47, 'n') + "=\"1\"/>"), "<a " + std::string(47, 'n') + "=1/>");
    EXPECT_EQ(errorOf("<a " + std::string(48, 'n') + "=\"1\"/>"), FXmlError::malformed);
}

TEST(FXmlParser, TheLimitCountsAValueBeforeItsEntitiesAreResolved) {
    std::string value;
    for (int i = 0; i < 409; ++i) {
        value += "&amp;";
    }
    EXPECT_EQ(attributeOf(value + "12"), std::string(409, '&') + "12");
    EXPECT_EQ(errorOf("<a v=\"" + value + "123\"/>"), FXmlError::malformed);
}

TEST(FXmlParser, AMalformedAttributeMakesTheTagMalformed) {
    for (const char* text :
         {"<a b>",     "<a b/>",     "<a b=>",       "<a b=1>",       "<a b=1 c=\"2\">", "<a b \"1\">", "<a \"1\">",
          "<a b=\"1>", "<a b=\"1'>", "<a b'=\"1\">", "<a b='=\"1\">", "<a b<c=\"1\">",   "<a / >",      "<a ?>",
          "<a ?",      "<a /",       "<a",           "<a b",          "<a b=\"1\"",      "<a b=\"1\" c"}) {
        TextParser parser(text);
        EXPECT_FALSE(parser.parse(nullptr)) << text;
        EXPECT_EQ(parser.getErrorState(), FXmlError::malformed) << text;
        EXPECT_EQ(parser.events, "") << text;
    }
}

TEST(FXmlParser, ABackslashEscapesTheNextQuoteIfTold) {
    EXPECT_EQ(eventsWith("<a v=\"x\\\"y\" w='\\'\\n\\\\'' u=\"c:\\\\'d\"/>", FXmlOption::backslashEscapesQuote),
              "<a v=x\\\"y w=\\'\\n\\\\' u=c:\\\\'d/>");
    EXPECT_EQ(eventsOf("<a v=\"c:\\\" w=\"\\\"/>"), "<a v=c:\\ w=\\/>");
    EXPECT_EQ(errorOf("<a v=\"x\\\"y\"/>"), FXmlError::malformed);
}

TEST(FXmlParser, TheSecondColumnIsUsedIfTold) {
    EXPECT_EQ(eventsWith("<a v=\"&auml;&#228;\"/>", FXmlOption::secondEntityColumn), "<a v=\x8A\xE4/>");
}

// What becomes of two bytes and of a character that come from entities, and between them of two bytes that stand there.
std::vector<FString> widenedValues() {
    TextParser parser("<a v=\"&#xC3;&#xA9;\"/><b v=\"\xC3\xA9\"/><c v=\"&#233;\"/>");
    parser.setOption(FXmlOption::widenEntityValues, true);
    std::vector<FString> values;
    parser.onStart = [&](const std::string&, bool, void*) {
        values.push_back(parser.lastValue);
        return true;
    };
    EXPECT_TRUE(parser.parse(nullptr));
    return values;
}

TEST(FXmlParser, AHighByteFromAnEntityWidensTheValueIfToldAndIfItMeansSomething) {
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    const std::vector<FString> values = widenedValues();
    ASSERT_EQ(values.size(), 3u);
    EXPECT_TRUE(values[0].isWide());
    EXPECT_EQ(values[0].view16(), u"\u00E9");
    EXPECT_EQ(values[1].view8(), "\xC3\xA9") << "bytes that stand there stay";
    EXPECT_EQ(values[2].view8(), "\xE9") << "this is no text of the system's code page";
}

TEST(FXmlParser, WhereEveryByteIsACharacterEachEntityWidensTheValue) {
    if (const char* reason = testing_support::whyNotWestern()) {
        GTEST_SKIP() << reason;
    }
    const std::vector<FString> values = widenedValues();
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0].view16(), u"\u00C3\u00A9");
    EXPECT_EQ(values[1].view8(), "\xC3\xA9") << "bytes that stand there stay";
    EXPECT_EQ(values[2].view16(), u"\u00E9");
}

TEST(FXmlParser, AttributesAreRecycledUnlessTheReaderKeepsThem) {
    class KeepingParser : public TextParser {
    public:
        using TextParser::TextParser;
        FRefPtr<FXmlAttribute> kept;
        std::vector<const FXmlAttribute*> later;

    protected:
        bool startElement(const char*, const FXmlAttributeList& attributes, bool, void*) override {
            const FXmlAttribute* attribute = attributes.find("v");
            if (kept) {
                later.push_back(attribute);
            } else {
                kept = const_cast<FXmlAttribute*>(attribute);
            }
            return true;
        }
    };
    KeepingParser parser("<a v=\"1\"/><b v=\"2\"/><c v=\"3\"/>");
    ASSERT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.kept->getValue().view8(), "1");
    ASSERT_EQ(parser.later.size(), 2u);
    EXPECT_NE(parser.later[0], parser.kept.get());
    EXPECT_EQ(parser.later[1], parser.later[0]);
}

TEST(FXmlParser, ATagMayHaveAnyNumberOfAttributes) {
    std::string text = "<a";
    std::string expected = "<a";
    for (int i = 0; i < 20000; ++i) {
        text += " x=\"" + std::to_string(i) + "\"";
        expected += " x=" + std::to_string(i);
    }
    EXPECT_EQ(eventsOf(text + "/><b x=\"1\"/>"), expected + "/><b x=1/>");
}

// Text.

TEST(FXmlParser, ALessThanBeforeABlankIsDataAndBeforeALetterEndsTheText) {
    EXPECT_EQ(eventsOf("<a>1 < 2<b/></a>"), "<a>[1 < 2]<b/></a>");
    EXPECT_EQ(eventsOf("<a>1<b/></a>"), "<a>[1]<b/></a>");
    EXPECT_EQ(eventsOf("<a>< 2</a>"), "<a>[< 2][]</a>");
}

TEST(FXmlParser, ALessThanBeforeAnythingThatBeginsNoMarkupIsData) {
    EXPECT_EQ(eventsOf("<a><_x> <3 <<\xC3\xA9</a>"), "<a>[<_x> <3 <<\xC3\xA9][]</a>");
    EXPECT_EQ(eventsOf("x<"), "[x<]");
    EXPECT_EQ(eventsOf("<"), "[<]");
}

TEST(FXmlParser, MarkupEndsAText) {
    EXPECT_EQ(eventsOf("<a>x<!-- c -->y<?p q=\"1\"?>z</a>"), "<a>[x][y][z][]</a>");
}

TEST(FXmlParser, TheEndOfATextIsCalledBackWithLength0) {
    EXPECT_EQ(eventsOf("<a>x</a>"), "<a>[x][]</a>");
    EXPECT_EQ(eventsOf("<a>x<!-- c --></a>"), "<a>[x]</a>") << "where the element's end tag follows the text";
    EXPECT_EQ(eventsOf("<a>  \r\n</a>"), "<a></a>");
}

TEST(FXmlParser, WhiteSpaceInFrontOfATextIsDroppedAndBehindItKept) {
    EXPECT_EQ(eventsOf("<a>\r\n\t x \r\n y\t\r\n</a>"), "<a>[x \r\n y\t\r\n][]</a>");
}

TEST(FXmlParser, ARunOfBlanksEndsWhereItEndsWhateverItsLength) {
    for (std::size_t length = 0; length < 40; ++length) {
        for (std::size_t tab = 0; tab <= length; ++tab) {
            std::string blanks(length, ' ');
            blanks.replace(tab, tab < length ? 1 : 0, tab < length ? "\t" : "");
            ASSERT_EQ(eventsOf(blanks + "<a>" + blanks + "\r\n" + blanks + "t</a>" + blanks), "<a>[t][]</a>");
        }
    }
}

TEST(FXmlParser, BlanksBelongToTheTextIfTold) {
    EXPECT_EQ(eventsWith("<a x=\"1\" >\r\n\t x</a>", FXmlOption::blanksAreText), "<a x=1>[\t x][]</a>");
}

TEST(FXmlParser, ALongTextComesInPiecesAndLosesNothing) {
    // The second piece begins with blanks and line ends, which would be dropped in front of a text.
    const std::string text = std::string(4096, 'x') + " \r\n y" + std::string(5000, 'z');
    EXPECT_EQ(eventsOf("<a>" + text + "</a>"),
              "<a>[" + text.substr(0, 4096) + "][" + text.substr(4096, 4096) + "][" + text.substr(8192) + "][]</a>");
    EXPECT_EQ(eventsOf("<a>" + std::string(4096, 'x') + "</a>"), "<a>[" + std::string(4096, 'x') + "][]</a>");
    EXPECT_EQ(eventsOf("<a>" + std::string(4095, 'x') + "< y</a>"), "<a>[" + std::string(4095, 'x') + "<][ y][]</a>");
}

TEST(FXmlParser, AMarkOfUtf8IsTextInFrontOfTheDocument) {
    EXPECT_EQ(eventsOf("\xEF\xBB\xBF<a/>"), "[\xEF\xBB\xBF]<a/>");
}

TEST(FXmlParser, ANulIsAByteLikeAnyOther) {
    const std::string nul(1, '\0');
    EXPECT_EQ(eventsOf("<a v=\"1" + nul + "2\">x" + nul + "y</a>"), "<a v=1" + nul + "2>[x" + nul + "y][]</a>");
}

// Tags.

TEST(FXmlParser, AnEndTagThatDoesNotMatchIsMalformed) {
    for (const char* text : {"<a></b>", "<a><b></a></b>", "</a>", "<a></aa>", "<a></>", "<a>x</A>"}) {
        TextParser parser(text);
        EXPECT_FALSE(parser.parse(nullptr)) << text;
        EXPECT_STREQ(parser.getErrorText().text8(), "Xml data malformed!");
    }
}

TEST(FXmlParser, ABlankInAnEndTagIsMalformed) {
    for (const char* text : {"<a></a >", "<a></ a>", "<a></a\n>", "<a></a", "<a></", "<a></a<b>"}) {
        EXPECT_EQ(errorOf(text), FXmlError::malformed) << text;
    }
}

TEST(FXmlParser, ANameOf4096BytesIsReadAndALongerOneIsMalformed) {
    const std::string name(4096, 'n');
    EXPECT_EQ(eventsOf("<" + name + "></" + name + ">"), "<" + name + "></" + name + ">");
    EXPECT_EQ(errorOf("<" + name + "n>"), FXmlError::malformed);
    EXPECT_EQ(errorOf("<a></" + name + "n>"), FXmlError::malformed);
    EXPECT_EQ(errorOf("<?" + name + "n?>"), FXmlError::malformed);
}

TEST(FXmlParser, AnAttributeOfTenMegabytesIsMalformedAfterOneToken) {
    const std::string text = "<a v=\"" + std::string(10 << 20, 'v') + "\"/>";
    OddStream stream(text);
    RecordingParser parser(&stream);
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_EQ(parser.getErrorState(), FXmlError::malformed);
    EXPECT_LE(stream.tell(), 3 * FXmlParser::kBlockSize);
}

TEST(FXmlParser, TheCurrentTagIsTheInnermostOpenOne) {
    TextParser parser("<a><b x=\"1\"><c/></b></a>");
    std::string tags;
    const auto note = [&] { tags += std::string(parser.getCurrentTag().view8()) + ";"; };
    parser.onStart = [&](const std::string&, bool, void*) { return note(), true; };
    parser.onEnd = [&](const std::string&, void*) { return note(), true; };
    note();
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(tags, ";a;b;b;a;;");
}

TEST(FXmlParser, TheEndOfTheStreamWithOpenTagsIsNoFailureOfTheOutermostParse) {
    EXPECT_EQ(eventsOf("<a><b>x"), "<a><b>[x]");
}

TEST(FXmlParser, AHundredThousandLevelsAreNoMatter) {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "<a>";
    }
    std::string ends;
    for (int i = 0; i < 100000; ++i) {
        ends += "</a>";
    }
    EXPECT_EQ(eventsOf(text + ends), text + ends);
    EXPECT_EQ(eventsOf(text), text);
}

// Declarations, comments, sections, types.

TEST(FXmlParser, OnlyThisSpellingOfTheEncodingSetsTheCodePage) {
    const auto pageOf = [](const char* declaration) {
        TextParser parser(declaration);
        EXPECT_TRUE(parser.parse(nullptr)) << declaration;
        return parser.getCodePage();
    };
    EXPECT_EQ(pageOf("<?xml version=\"1.0\" encoding=\"utf-8\"?>"), CodePage::utf8);
    EXPECT_EQ(pageOf("<?xml encoding='utf-8' ?><a/>"), CodePage::utf8);
    EXPECT_EQ(pageOf("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"), CodePage::system);
    EXPECT_EQ(pageOf("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>"), CodePage::system);
    EXPECT_EQ(pageOf("<?xml version=\"1.0\" encoding=\"utf-8 \"?>"), CodePage::system);
    EXPECT_EQ(pageOf("<?xml?>"), CodePage::system);
}

TEST(FXmlParser, AnInstructionThatIsNotMadeOfAttributesIsMalformed) {
    for (const char* text : {"<?php echo 1; ?>", "<?xml version?>", "<?xml version=\"1.0\">", "<?xml/>", "<?xml ?x?>",
                             "<?xml version=\"1.0\"/>"}) {
        EXPECT_EQ(errorOf(text), FXmlError::malformed) << text;
    }
}

TEST(FXmlParser, ADeclarationThatIsCutShortIsAnUnexpectedEnd) {
    for (const char* text : {"<?", "<?xml", "<?xml ", "<?xml version", "<?xml version=\"1", "<?xml version=\"1.0\"",
                             "<?xml version=\"1.0\" ?"}) {
        EXPECT_EQ(errorOf(text), FXmlError::endOfFile) << text;
    }
}

TEST(FXmlParser, CommentsAreSkippedAndNest) {
    EXPECT_EQ(eventsOf("<a><!-- x --><b/><!----></a>"), "<a><b/></a>");
    EXPECT_EQ(eventsOf("<a><!-- x <!-- y --> <b/> -->z</a>"), "<a>[z][]</a>");
    EXPECT_EQ(eventsOf("<a><!-- <!--> --> --></a>"), "<a></a>") << "the marks don't share a byte";
    EXPECT_EQ(eventsOf("<!-- - -- ->-->"), "");
}

TEST(FXmlParser, CommentsEndAtTheFirstMarkIfTold) {
    EXPECT_EQ(eventsWith("<a><!-- x <!-- y -->z</a>", FXmlOption::commentsEndAtOnce), "<a>[z][]</a>");
}

TEST(FXmlParser, CommentsAreDeliveredIfTold) {
    EXPECT_EQ(eventsWith("<a><!-- x --><!----><!-- <!--y--> --></a>", FXmlOption::deliverComments),
              "<a>{ x }{}{ <!--y--> }</a>");
}

TEST(FXmlParser, ALongCommentComesInBlocksOfWhichTheLastIsMarked) {
    const std::string block(FXmlParser::kCommentBlockSize, 'c');
    EXPECT_EQ(FXmlParser::kCommentBlockSize, 4126);
    EXPECT_EQ(eventsWith("<!--" + block + "-->", FXmlOption::deliverComments), "{" + block + "}");
    EXPECT_EQ(eventsWith("<!--" + block + "x-->", FXmlOption::deliverComments), "{" + block + "..}{x}");
    EXPECT_EQ(eventsWith("<!--" + block + block + "->-->", FXmlOption::deliverComments),
              "{" + block + "..}{" + block + "..}{->}");
}

TEST(FXmlParser, CdataIsSkipped) {
    EXPECT_EQ(eventsOf("<a>x<![CDATA[<b>]] ]>]]]>y</a>"), "<a>[x][y][]</a>");
    EXPECT_EQ(errorOf("<![CDATE[]]>"), FXmlError::malformed);
    EXPECT_EQ(errorOf("<!x>"), FXmlError::malformed);
    EXPECT_EQ(errorOf("<!- x -->"), FXmlError::malformed);
}

TEST(FXmlParser, ADocumentTypeIsSkippedWithBracketsAndQuotes) {
    EXPECT_EQ(eventsOf("<!DOCTYPE a><a/>"), "<a/>");
    EXPECT_EQ(eventsOf("<!doctype a SYSTEM \"x>y\" '>'><a/>"), "<a/>");
    EXPECT_EQ(eventsOf("<!DOCTYPE a [<!ENTITY x \"]>\"><!ELEMENT a [ ]>]><a/>"), "<a/>");
}

TEST(FXmlParser, WhatIsCutShortInASectionIsAnUnexpectedEnd) {
    for (const char* text : {"<!--", "<!-- x --", "<!-- <!-- -->", "<![CDATA[", "<![CDATA[ ]]", "<!DOCTYPE",
                             "<!DOCTYPE a [ > ", "<!DOCTYPE a \">", "<!D"}) {
        TextParser parser(text);
        EXPECT_FALSE(parser.parse(nullptr)) << text;
        EXPECT_STREQ(parser.getErrorText().text8(), "Unexpected end of file!") << text;
    }
}

// Lines.

std::int64_t linesIn(std::string_view text) {
    TextParser parser(text);
    EXPECT_TRUE(parser.parse(nullptr));
    return parser.lineNumber();
}

TEST(FXmlParser, EachKindOfLineEndCountsOne) {
    EXPECT_EQ(linesIn("<a/>"), 0);
    EXPECT_EQ(linesIn("\n<a/>\r<b/>\r\n"), 3);
    EXPECT_EQ(linesIn("\r\r\n\n\r"), 4);
    EXPECT_EQ(linesIn("<a\r\nx=\"\r\n\r\"\n></a>"), 4);
    EXPECT_EQ(linesIn("<a>x\r\ny\rz\n\r\n</a>"), 4);
    EXPECT_EQ(linesIn("<!--\r\n\n--><![CDATA[\n]]><!DOCTYPE\r\n>"), 4);
}

TEST(FXmlParser, LinesAreCountedOverTheBordersOfBlocks) {
    for (int size = FXmlParser::kBlockSize - 4; size < FXmlParser::kBlockSize + 4; ++size) {
        const std::string filling(static_cast<std::size_t>(size), 'x');
        EXPECT_EQ(linesIn("<a>" + filling + "\r\n\r\n\r\ny</a>"), 3) << size;
        EXPECT_EQ(linesIn("<a>" + filling + "</a>\r\n\r\n\r\n<b/>"), 3) << size;
        EXPECT_EQ(linesIn("<!--" + filling + "\r\n\r\n\r\n-->"), 3) << size;
    }
}

// Blocks.

constexpr const char* kMixed = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!DOCTYPE a>\r\n<a>\r\n   <b x=\"&lt;1\" "
                               "y='2'/>\r\n<c>text < more<!-- c <!-- --> --></c><![CDATA[ ]]>\r\n</a>\r\n";

TEST(FXmlParser, WhereBlocksEndMakesNoDifference) {
    const std::string expected = eventsOf(kMixed);
    for (std::int32_t size = 1; size < 40; ++size) {
        OddStream stream{std::string_view(kMixed)};
        stream.largestRead = size;
        stream.seeks = false;
        RecordingParser parser(&stream);
        EXPECT_TRUE(parser.parse(nullptr)) << size;
        EXPECT_EQ(parser.events, expected) << size;
        EXPECT_EQ(parser.lineNumber(), 6) << size;
    }
}

TEST(FXmlParser, ADocumentMayEndAtAnyByteWithoutTrouble) {
    const std::string text = kMixed;
    for (std::size_t size = 0; size < text.size(); ++size) {
        TextParser parser(text.substr(0, size));
        parser.parse(nullptr);
        EXPECT_EQ(parser.getErrorText().isEmpty(), parser.getErrorState() == FXmlError::none);
    }
}

TEST(FXmlParser, ReadsBlocksOf2048Bytes) {
    const std::string text = "<a>" + std::string(10000, 'x') + "</a>";
    OddStream stream(text);
    RecordingParser parser(&stream);
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(stream.largestAsked, 2048);
    EXPECT_LE(stream.reads, 8);
}

TEST(FXmlParser, WithoutReadingAheadTheStreamStandsRightBehindTheDocument) {
    for (const char* document : {"<a><b/>x</a>", "<a/>", "<?xml?><!-- c --><a>< b</a>"}) {
        const std::string text = std::string(document) + "rest";
        OddStream stream(text);
        RecordingParser parser(&stream, FXmlReadAhead::none);
        parser.setOption(FXmlOption::endWithLastTag, true);
        EXPECT_TRUE(parser.parse(nullptr));
        EXPECT_EQ(stream.tell(), static_cast<std::int64_t>(text.size() - 4)) << document;
        EXPECT_EQ(stream.largestAsked, 1);
    }
}

TEST(FXmlParser, EndsWithTheLastTagIfTold) {
    EXPECT_EQ(eventsWith("<a></a><b/>", FXmlOption::endWithLastTag), "<a></a>");
    EXPECT_EQ(eventsOf("<a></a><b/>"), "<a></a><b/>");
}

TEST(FXmlParser, ASecondParseGoesOnBehindTheFirst) {
    TextParser parser("<a></a>\n<b/><c");
    parser.setOption(FXmlOption::endWithLastTag, true);
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a></a><b/>");
    EXPECT_FALSE(parser.parse(nullptr));
}

TEST(FXmlParser, AByteIsPutBackAndTheStreamMovedBackAtTheStartOfABlock) {
    OddStream stream("abcdef");
    RecordingParser parser(&stream, FXmlReadAhead::none);
    EXPECT_EQ(parser.nextByte(), 'a');
    EXPECT_EQ(parser.peekByte(), 'b');
    EXPECT_TRUE(parser.unreadByte());
    EXPECT_EQ(parser.nextByte(), 'a');
    EXPECT_EQ(parser.nextByte(), 'b');
    EXPECT_EQ(parser.nextByte(), 'c');
    EXPECT_EQ(parser.peekByte(), 'd');
    EXPECT_TRUE(parser.unreadByte());
    EXPECT_TRUE(parser.unreadByte()) << "the block holds one byte, so this one is read again";
    EXPECT_EQ(parser.nextByte(), 'b');
    EXPECT_EQ(parser.nextByte(), 'c');
    EXPECT_EQ(parser.nextByte(), 'd');
    EXPECT_EQ(parser.getErrorState(), FXmlError::none);
}

TEST(FXmlParser, PuttingBackWhereTheStreamCannotSeekIsAnUnexpectedEnd) {
    OddStream stream("abc");
    stream.seeks = false;
    RecordingParser parser(&stream, FXmlReadAhead::none);
    parser.nextByte();
    parser.nextByte();
    EXPECT_TRUE(parser.unreadByte());
    EXPECT_FALSE(parser.unreadByte());
    EXPECT_EQ(parser.getErrorState(), FXmlError::endOfFile);
    TextParser fresh("x");
    EXPECT_FALSE(fresh.unreadByte()) << "there is nothing in front of the stream";
}

// Callbacks that refuse, stop, and nest.

TEST(FXmlParser, ARefusalIsAnUnexpectedTagUnlessTheReaderNamesAnother) {
    TextParser parser("<a><b/><c/></a>");
    parser.onStart = [](const std::string& name, bool, void*) { return name != "b"; };
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_STREQ(parser.getErrorText().text8(), "Unexpected tag or invalid attributes!");
    EXPECT_EQ(parser.events, "<a><b/>");

    TextParser second("<a>x</a>");
    second.onCharacters = [&](std::string_view) {
        second.setErrorState(FXmlError::missingAttributes);
        return false;
    };
    EXPECT_FALSE(second.parse(nullptr));
    EXPECT_STREQ(second.getErrorText().text8(), "Not enough actual attributes in tag!");
    EXPECT_EQ(second.events, "<a>[x]");
}

TEST(FXmlParser, ARefusedEndOfTextKeepsTheEndTagBack) {
    TextParser parser("<a>x</a>");
    parser.onCharacters = [](std::string_view text) { return !text.empty(); };
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a>[x][]");
}

TEST(FXmlParser, StopEndsTheParseAsASuccess) {
    TextParser parser("<a><b/><c/></a>");
    parser.onStart = [&](const std::string& name, bool, void*) {
        if (name == "b") {
            parser.stop(false);
        }
        return true;
    };
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a><b/>");
    EXPECT_TRUE(parser.parse(nullptr)) << "and so it stays while tags are open";
    EXPECT_EQ(parser.events, "<a><b/>");
}

TEST(FXmlParser, StopIsForgottenWhenADocumentBegins) {
    TextParser parser("<a/><b/>");
    parser.onStart = [&](const std::string&, bool, void*) {
        parser.stop(false);
        return true;
    };
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a/>");
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a/><b/>");
}

TEST(FXmlParser, ANestedParseEndsWithItsElementAndHasItsOwnContext) {
    TextParser parser("<a><b><c>x</c></b><d/></a>");
    int outer = 0;
    int inner = 0;
    std::string contexts;
    const auto note = [&](const std::string& name, const void* context) {
        contexts += name + (context == &inner ? "2" : "1");
    };
    parser.onStart = [&](const std::string& name, bool, void* context) {
        note(name, context);
        return name != "b" || parser.parse(&inner);
    };
    parser.onEnd = [&](const std::string& name, void* context) {
        note("/" + name, context);
        return true;
    };
    EXPECT_TRUE(parser.parse(&outer));
    EXPECT_EQ(contexts, "a1b1c2/c2/b2d1/a1");
    EXPECT_EQ(parser.events, "<a><b><c>[x][]</c></b><d/></a>");
}

TEST(FXmlParser, AttributesAndNameStandOverANestedParse) {
    class NestingParser : public TextParser {
    public:
        using TextParser::TextParser;
        std::string seen;

    protected:
        bool startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void*) override {
            const bool done = isEmpty || parse(nullptr);
            seen += std::string(name) + "=" + std::string(attributes.valueOf("v")->view8()) + ";";
            return done;
        }
    };
    NestingParser parser("<a v=\"1\"><averylongnameforanelementofadocument v=\"2\"><c v=\"3\"/></"
                         "averylongnameforanelementofadocument></a>");
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.seen, "c=3;averylongnameforanelementofadocument=2;a=1;");
}

TEST(FXmlParser, AFailureInANestedParseEndsAll) {
    TextParser parser("<a><b></c></a>");
    parser.onStart = [&](const std::string& name, bool, void*) {
        if (name == "b") {
            EXPECT_FALSE(parser.parse(nullptr));
        }
        return true;
    };
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_EQ(parser.getErrorState(), FXmlError::malformed);
    EXPECT_EQ(parser.events, "<a><b>");
}

TEST(FXmlParser, StopEndsNestedParsesAsWell) {
    TextParser parser("<a><b><c/><d/></b><e/></a>");
    parser.onStart = [&](const std::string& name, bool, void*) {
        if (name == "c") {
            parser.stop(false);
        }
        return name != "b" || parser.parse(nullptr);
    };
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a><b><c/>");
}

TEST(FXmlParser, TheEndOfTheStreamInANestedParseIsAFailure) {
    TextParser parser("<a><b><c/>");
    parser.onStart = [&](const std::string& name, bool, void*) { return name != "b" || parser.parse(nullptr); };
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_STREQ(parser.getErrorText().text8(), "Unexpected end of file!");
}

TEST(FXmlParser, ASubtreeIsSkippedWithoutACallback) {
    TextParser parser("<a><b x=\"1\"><c>text</c><!-- c --><b/></b><d/></a>");
    parser.setOption(FXmlOption::deliverComments, true);
    parser.onStart = [&](const std::string& name, bool, void*) { return name != "b" || parser.skipSubtree(); };
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a><b x=1><d/></a>");
}

TEST(FXmlParser, ASkippedSubtreeMustBeWellFormed) {
    TextParser parser("<a><b><c></b></a>");
    parser.onStart = [&](const std::string& name, bool, void*) { return name != "b" || parser.skipSubtree(); };
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_EQ(parser.getErrorState(), FXmlError::malformed);
}

// Reads each element by a parse of its own; gives how deep it came.
int deepestParse(int levels, FXmlError& error) {
    std::string text;
    for (int i = 0; i < levels; ++i) {
        text += "<a>";
    }
    for (int i = 0; i < levels; ++i) {
        text += "</a>";
    }
    TextParser parser(text);
    int depth = 0;
    parser.onStart = [&](const std::string&, bool, void*) {
        ++depth;
        return parser.parse(nullptr);
    };
    const bool done = parser.parse(nullptr);
    EXPECT_EQ(done, parser.getErrorState() == FXmlError::none);
    error = parser.getErrorState();
    return depth;
}

TEST(FXmlParser, NestingOfParsesIsBounded) {
    FXmlError error = FXmlError::none;
    EXPECT_EQ(deepestParse(FXmlParser::kMaximumNesting - 1, error), 999);
    EXPECT_EQ(error, FXmlError::none);
    EXPECT_EQ(deepestParse(FXmlParser::kMaximumNesting, error), 1000);
    EXPECT_EQ(error, FXmlError::unexpectedTag);
    EXPECT_EQ(deepestParse(100000, error), 1000);
    EXPECT_EQ(error, FXmlError::unexpectedTag);
}

TEST(FXmlParser, RawTextKeepsWhatStandsInFrontOfIt) {
    TextParser parser("<a>\r\n <s>\r\n  x < y\r\n </s><s></s><s>\n\n<!-- c -->\t</s> </a>");
    const auto setRaw = [&](const std::string& name, bool on) {
        if (name == "s") {
            parser.setRawText(on);
        }
        return true;
    };
    parser.onStart = [&](const std::string& name, bool, void*) { return setRaw(name, true); };
    parser.onEnd = [&](const std::string& name, void*) { return setRaw(name, false); };
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<a><s>[\r\n  x < y\r\n ][]</s><s></s><s>[\n\n][\t][]</s></a>");
}

TEST(FXmlParserDeathTest, AParseFromAnEmptyElementIsAMistake) {
    TextParser parser("<a><b/></a>");
    parser.onStart = [&](const std::string&, bool isEmpty, void*) { return !isEmpty || parser.parse(nullptr); };
    EXPECT_DEBUG_DEATH(parser.parse(nullptr), "end tag");
}

// Reuse and reports.

TEST(FXmlParser, AnotherStreamIsAnotherDocument) {
    OddStream next("<d>\n</d>");
    TextParser parser("<?xml encoding=\"utf-8\"?>\n<a><b></c>");
    EXPECT_FALSE(parser.parse(nullptr));
    EXPECT_EQ(parser.lineNumber(), 1);
    parser.setStream(&next);
    EXPECT_EQ(parser.lineNumber(), 0);
    EXPECT_EQ(parser.getCodePage(), CodePage::system);
    EXPECT_TRUE(parser.getCurrentTag().isEmpty());
    parser.events.clear();
    EXPECT_TRUE(parser.parse(nullptr));
    EXPECT_EQ(parser.events, "<d></d>");
    EXPECT_TRUE(parser.getErrorText().isEmpty());
}

TEST(FXmlParser, HoldsAReferenceOfItsStream) {
    auto* stream = new FMemoryStream;
    {
        FXmlParser parser(stream);
        EXPECT_EQ(stream->getReferenceCount(), 2u);
        parser.setStream(nullptr);
        EXPECT_EQ(stream->getReferenceCount(), 1u);
        parser.setStream(stream);
    }
    EXPECT_EQ(stream->getReferenceCount(), 1u);
    stream->release();
}

// The listener is taken out again at the end of the test.
class Reports {
public:
    Reports() {
        FXmlParser::setErrorListener([this](const FStringRef& report) { texts.emplace_back(report.view8()); });
    }
    ~Reports() { FXmlParser::setErrorListener(nullptr); }

    std::vector<std::string> texts;
};

TEST(FXmlParser, AMalformedDocumentIsReportedWithItsPlace) {
    const Reports reports;
    TextParser parser("<a><b></c>\r\nrest");
    EXPECT_FALSE(parser.parse(nullptr));
    ASSERT_EQ(reports.texts.size(), 1u);
    EXPECT_EQ(reports.texts[0], "Error Message:     Xml data malformed!\n"
                                "Current Start Tag: a\n"
                                "Current Token:     c\n"
                                "------------------------------------------------------------------------\n"
                                "\n"
                                "\r\nrest");
}

TEST(FXmlParser, NothingIsReportedWhenSwitchedOffOrWhenAReaderRefuses) {
    const Reports reports;
    TextParser silent("</a>");
    silent.setReportErrors(false);
    EXPECT_FALSE(silent.parse(nullptr));
    TextParser refusing("<a/>");
    refusing.onStart = [](const std::string&, bool, void*) { return false; };
    EXPECT_FALSE(refusing.parse(nullptr));
    EXPECT_TRUE(reports.texts.empty());
}

} // namespace
} // namespace tessera
