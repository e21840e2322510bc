#include "persistence/xml/FXmlParser2.h"

#include "persistence/xml/OddStreams.h"
#include "persistence/xml/RecordingListener.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace tessera {
namespace {

using test::Notes;
using test::OddStream;
using test::RecordingListener;

// A parser over a text, with what it has told.
class Reading {
public:
    explicit Reading(std::string_view text, const char* encoding = nullptr)
        : text_(text), stream(text_), parser(std::make_unique<RecordingListener>(notes), encoding) {}

    std::string errorText() const {
        const FString text = parser.getErrorText();
        return std::string(text.view8());
    }

private:
    std::string text_;

public:
    OddStream stream;
    Notes notes;
    FXmlParser2 parser;
};

TEST(FXmlParser2, ADocumentIsToldToTheListener) {
    Reading reading("<?xml version=\"1.0\"?>\r\n<!-- c --><a x=\"1\" y='&lt;'>text &amp; <b/><![CDATA[<c>]]></a>\n");
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.notes.events, "{ c }<a x=1 y=<>text & <b></b><c></a>");
}

TEST(FXmlParser2, TextsComeAsUtf8WhateverTheEncoding) {
    Reading declared("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a v=\"\xE9\"/>");
    EXPECT_TRUE(declared.parser.parse(declared.stream));
    EXPECT_EQ(declared.notes.events, "<a v=\xC3\xA9></a>");
    Reading overridden("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a v=\"\xC3\xA9\"/>", "UTF-8");
    EXPECT_TRUE(overridden.parser.parse(overridden.stream));
    EXPECT_EQ(overridden.notes.events, "<a v=\xC3\xA9></a>");
}

TEST(FXmlParser2, WithoutAListenerADocumentIsJustChecked) {
    OddStream good("<a><!-- c -->x</a>");
    OddStream bad("<a>");
    EXPECT_TRUE(FXmlParser2(nullptr).parse(good));
    EXPECT_FALSE(FXmlParser2(nullptr).parse(bad));
}

TEST(FXmlParser2, AMalformedDocumentIsAFailureWithTextAndLine) {
    Reading reading("<a>\n<b>\n</c></a>");
    EXPECT_FALSE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.errorText(), "Xml Error: mismatched tag \r\nLine: 3");
    EXPECT_EQ(reading.parser.lineNumber(), 3);
}

TEST(FXmlParser2, ADocumentThatIsCutShortOrMissingIsAFailure) {
    for (const char* text : {"", "<a>", "<a", "<!-- x", "<?xml version=\"1.0\"?>"}) {
        Reading reading(text);
        EXPECT_FALSE(reading.parser.parse(reading.stream)) << text;
    }
}

TEST(FXmlParser2, AStreamThatFailsEndsTheDocument) {
    class FailingStream : public OddStream {
    public:
        using OddStream::OddStream;
        using OddStream::read;
        std::int32_t read(void*, std::int32_t) override { return -1; }
    };
    FailingStream stream("<a/>");
    EXPECT_FALSE(FXmlParser2(nullptr).parse(stream));
}

TEST(FXmlParser2, TheStreamStandsWhereASecondDocumentBegins) {
    for (const char* second : {"<b/>", "<?xml version=\"1.0\"?><b/>", "text"}) {
        const std::string text = std::string("<a>1</a>\r\n") + second;
        Reading reading(text);
        EXPECT_TRUE(reading.parser.parse(reading.stream)) << second;
        EXPECT_EQ(reading.notes.events, "<a>1</a>");
        EXPECT_EQ(reading.stream.tell(), 10) << second;
    }
}

TEST(FXmlParser2, DocumentsInOneStreamAreReadOneByOne) {
    // The documents end in blocks of their own, and one of them right where a block does.
    std::string text;
    std::string expected;
    for (int i = 0; i < 5; ++i) {
        const std::string content(static_cast<std::size_t>(FXmlParser2::kBlockSize - 7), static_cast<char>('p' + i));
        text += "<a>" + content + "</a>";
        expected += "<a>" + content + "</a>";
    }
    Reading reading(text);
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(reading.parser.parse(reading.stream)) << i << reading.errorText();
        ASSERT_TRUE(reading.parser.reset());
    }
    EXPECT_EQ(reading.notes.events, expected);
    EXPECT_FALSE(reading.parser.parse(reading.stream)) << "there is no further one";
}

TEST(FXmlParser2, AStreamThatCannotSeekLosesWhatWasReadAhead) {
    Reading reading("<a/><b/>");
    reading.stream.seeks = false;
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.stream.tell(), 8);
}

TEST(FXmlParser2, ReadsBlocksOf32768Bytes) {
    Reading reading("<a>" + std::string(100000, 'x') + "</a>");
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.stream.largestAsked, 32768);
    EXPECT_EQ(reading.stream.reads, 5);
}

TEST(FXmlParser2, AFinalStopIsAFailureOneLineAhead) {
    Reading reading("<a>\n<b/>\n<c/>\n</a>");
    reading.notes.onStart = [](IXmlParser& parser, const std::string& name) {
        if (name == "b") {
            parser.stop(false);
        }
    };
    EXPECT_FALSE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.notes.events, "<a>\n<b></b>") << "the end of an empty element still comes";
    EXPECT_EQ(reading.errorText(),
              "Xml Error: parsing aborted \r\nLine: " + std::to_string(reading.parser.lineNumber() - 1));
    EXPECT_FALSE(reading.parser.resume());
}

TEST(FXmlParser2, AResumableStopIsASuccessThatGoesOn) {
    const std::string filling(100000, 'x');
    Reading reading("<a>\n<b/>" + filling + "<b/><c/></a>");
    reading.notes.onStart = [](IXmlParser& parser, const std::string& name) {
        if (name == "b") {
            parser.stop(true);
        }
    };
    EXPECT_FALSE(reading.parser.resume()) << "nothing to resume";
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.notes.events, "<a>\n<b></b>");
    EXPECT_TRUE(reading.parser.resume());
    EXPECT_EQ(reading.notes.events, "<a>\n<b></b>" + filling + "<b></b>");
    EXPECT_TRUE(reading.parser.resume());
    EXPECT_EQ(reading.notes.events, "<a>\n<b></b>" + filling + "<b></b><c></c></a>");
    EXPECT_FALSE(reading.parser.resume());
}

// The library looks at the long comment only when the stream has ended, so that the stop comes with its last block.
TEST(FXmlParser2, AResumeBehindTheStreamsEndIsASuccess) {
    for (const char* end : {"<b/></a>", "<b/><b/></a>"}) {
        Reading reading("<a><!--" + std::string(100000, 'x') + "-->" + end);
        reading.notes.onStart = [](IXmlParser& parser, const std::string& name) {
            if (name == "b") {
                parser.stop(true);
            }
        };
        EXPECT_TRUE(reading.parser.parse(reading.stream));
        EXPECT_TRUE(reading.parser.resume());
        if (!reading.notes.events.ends_with("</a>")) {
            EXPECT_TRUE(reading.parser.resume());
        }
        EXPECT_TRUE(reading.notes.events.ends_with("</b></a>"));
        EXPECT_FALSE(reading.parser.resume());
    }
}

TEST(FXmlParser2, AnErrorBehindAResumeIsAFailureAndASecondDocumentIsNone) {
    const auto stopAtB = [](IXmlParser& parser, const std::string& name) {
        if (name == "b") {
            parser.stop(true);
        }
    };
    Reading bad("<a><b/></c>");
    bad.notes.onStart = stopAtB;
    EXPECT_TRUE(bad.parser.parse(bad.stream));
    EXPECT_FALSE(bad.parser.resume());
    Reading two("<a><b/></a><d/>");
    two.notes.onStart = stopAtB;
    EXPECT_TRUE(two.parser.parse(two.stream));
    EXPECT_TRUE(two.parser.resume());
    EXPECT_EQ(two.stream.tell(), 11);
}

TEST(FXmlParser2, AResetParserTakesAnotherEncoding) {
    Reading reading("<a v=\"\xE9\"/>");
    EXPECT_FALSE(reading.parser.parse(reading.stream)) << "this is no UTF-8";
    reading.stream.rewind();
    reading.notes.events.clear();
    ASSERT_TRUE(reading.parser.reset("ISO-8859-1"));
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.notes.events, "<a v=\xC3\xA9></a>");
    EXPECT_EQ(reading.errorText().substr(0, 11), "Xml Error: ");
}

TEST(FXmlParser2, AParserThatHasReadADocumentNeedsAReset) {
    Reading reading("<a/>");
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    reading.stream.rewind();
    EXPECT_FALSE(reading.parser.parse(reading.stream));
}

TEST(FXmlParser2, HoldsAReferenceOfTheStreamThatItReads) {
    Reading reading("<a/>");
    EXPECT_TRUE(reading.parser.parse(reading.stream));
    EXPECT_EQ(reading.stream.getReferenceCount(), 2u);
}

TEST(FXmlParser2, HostileDocumentsNeitherCrashNorEatTheMemory) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    OddStream levels(deep);
    EXPECT_FALSE(FXmlParser2(nullptr).parse(levels));

    const std::string wide = "<a v=\"" + std::string(10 << 20, 'v') + "\"/>";
    OddStream value(wide);
    EXPECT_TRUE(FXmlParser2(nullptr).parse(value));
    EXPECT_EQ(value.largestAsked, FXmlParser2::kBlockSize);

    std::string laughs = "<!DOCTYPE a [<!ENTITY x0 \"" + std::string(100, 'x') + "\">";
    for (int i = 1; i < 12; ++i) {
        laughs += "<!ENTITY x" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j) {
            laughs += "&x" + std::to_string(i - 1) + ";";
        }
        laughs += "\">";
    }
    laughs += "]><a>&x11;</a>";
    OddStream entities(laughs);
    EXPECT_FALSE(FXmlParser2(nullptr).parse(entities));
}

} // namespace
} // namespace tessera
