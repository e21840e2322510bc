// What nobody would write and somebody may hand in: depth, size, and breadth beyond all measure.
#include "persistence/objects/FXmlObjectReader.h"

#include "persistence/objects/DocumentSupport.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

namespace tessera {
namespace {

using namespace test;

struct Read {
    bool succeeded = false;
    std::string error;
    FRefPtr<FAttributes> members = FRefPtr<FAttributes>::adopt(new FAttributes);
    FXmlObjectReader::References references;
};

Read read(const std::string& text) {
    FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
    FXmlObjectReader reader(stream, "R");
    Read result;
    result.succeeded = reader.readObject(*result.members);
    result.error = FString(reader.getErrorText()).text8();
    result.references = reader.takeReferences();
    return result;
}

std::string repeated(const std::string& text, int count) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

constexpr int kDeep = 100000;

TEST(FXmlObjectReader, ElementsThatStandInEachOtherBeyondTheBoundAreRefused) {
    const std::pair<const char*, const char*> elements[] = {
        {"<member name=\"m\">", "</member>"},
        {"<obj class=\"TestNode\" name=\"o\" ID=\"5\">", "</obj>"},
        {"<list name=\"l\" type=\"list\"><item>", "</item></list>"},
        {"<list name=\"l\" type=\"obj\"><obj class=\"TestNode\" ID=\"5\">", "</obj></list>"},
        {"<root name=\"r\">", "</root>"},
        {"<bin name=\"b\">", "</bin>"},
        {"<string name=\"s\">", "</string>"},
    };
    for (const auto& [start, end] : elements) {
        const Read result = read("<R>" + repeated(start, kDeep) + repeated(end, kDeep) + "</R>");
        EXPECT_FALSE(result.succeeded) << start;
        EXPECT_EQ(result.error, "Unexpected tag or invalid attributes!") << start;
    }
}

TEST(FXmlObjectReader, ElementsThatHoldNothingOfTheirOwnMayStandInEachOther) {
    // These are no more than open tags to the parser.
    EXPECT_TRUE(read("<R>" + repeated("<member>", kDeep) + repeated("</member>", kDeep) + "</R>").succeeded);
    EXPECT_TRUE(read("<R>" + repeated("<rootObjects>", kDeep) + repeated("</rootObjects>", kDeep) + "</R>").succeeded);
}

TEST(FXmlObjectReader, SkippedElementsMayStandInEachOther) {
    EXPECT_TRUE(read("<R><obj class=\"TestNode\">" + repeated("<x>", kDeep) + repeated("</x>", kDeep) + "</obj></R>")
                    .succeeded);
}

TEST(FXmlObjectReader, AThousandLevelsAreReadAndNoMore) {
    // The document is the first of them.
    const std::string text = "<R>" + repeated("<member name=\"m\">", 999) + repeated("</member>", 999) + "</R>";
    EXPECT_TRUE(read(text).succeeded);
    EXPECT_FALSE(read("<R><member name=\"m\">" + text.substr(3, text.size() - 7) + "</member></R>").succeeded);
}

// How far apart the frames of its callbacks lie on the stack.
class FrameMeasure : public FXmlObjectReader {
public:
    using FXmlObjectReader::FXmlObjectReader;
    std::uintptr_t span() const { return highest_ - lowest_; }

protected:
    bool startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void* context) override {
        const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        lowest_ = std::min(lowest_, frame);
        highest_ = std::max(highest_, frame);
        return FXmlObjectReader::startElement(name, attributes, isEmpty, context);
    }

private:
    std::uintptr_t lowest_ = std::numeric_limits<std::uintptr_t>::max();
    std::uintptr_t highest_ = 0;
};

TEST(FXmlObjectReader, DepthCostsNoStack) {
    const std::pair<const char*, const char*> elements[] = {
        {"<member name=\"m\">", "</member>"},
        {"<obj class=\"TestNode\" name=\"o\" ID=\"5\">", "</obj>"},
        {"<string name=\"s\">", "</string>"},
    };
    for (const auto& [start, end] : elements) {
        const std::string text = "<R>" + repeated(start, 999) + repeated(end, 999) + "</R>";
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        FrameMeasure reader(stream, "R");
        FAttributes members;
        EXPECT_TRUE(reader.readObject(members)) << start;
        EXPECT_LT(reader.span(), 4096u) << start;
    }
}

TEST(FXmlObjectReader, AChainOfObjectsOfAnyLengthIsReadAndDropped) {
    std::string text = "<R><obj name=\"first\" ID=\"1\"/>";
    for (int i = 1; i <= kDeep; ++i) {
        text += "<obj class=\"TestNode\" ID=\"" + std::to_string(i) + "\"><obj name=\"next\" ID=\"" +
                std::to_string(i + 1) + "\"/></obj>";
    }
    Read result = read(text + "</R>");
    ASSERT_TRUE(result.succeeded);
    result.references.clear();
    const auto* first = cmCast<FXmlReference>(result.members->at(0)->getObject());
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first->getTarget(), nullptr);
    result.members.reset();
}

TEST(FXmlObjectReader, AChainOfObjectsIsBuiltAsFarAsItGoes) {
    std::string text = "<R><obj name=\"next\" ID=\"1\"/>";
    for (int i = 1; i <= kDeep; ++i) {
        text += "<obj class=\"TestNode\" ID=\"" + std::to_string(i) + "\"><int name=\"number\" value=\"1\"/>" +
                "<obj name=\"next\" ID=\"" + std::to_string(i + 1) + "\"/></obj>";
    }
    TestNode head;
    EXPECT_TRUE(loadObject(head, text + "</R>", "R"));
    EXPECT_NE(head.nextNode(), nullptr);
}

TEST(FXmlObjectReader, AnAttributeOfTenMegabytesIsRefused) {
    const Read result = read("<R><string name=\"s\" value=\"" + std::string(10'000'000, 'x') + "\"/></R>");
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.error, "Xml data malformed!");
}

TEST(FXmlObjectReader, ABodyOfTenMegabytesIsRead) {
    const Read result = read("<R><string name=\"s\">" + std::string(10'000'000, 'x') + "</string></R>");
    ASSERT_TRUE(result.succeeded);
    EXPECT_EQ(result.members->at(0)->getText().length(), 10'000'000);
}

TEST(FXmlObjectReader, BinaryDataOfTenMegabytesIsRead) {
    const Read result = read("<R><bin name=\"b\">" + std::string(20'000'000, '5') + "</bin></R>");
    ASSERT_TRUE(result.succeeded);
    EXPECT_EQ(result.members->getBinarySize("b"), 10'000'000);
}

TEST(FXmlObjectReader, ATagNameOfTenMegabytesIsRefused) {
    EXPECT_FALSE(read("<R><" + std::string(10'000'000, 'x') + "/></R>").succeeded);
}

TEST(FXmlObjectReader, IdsThatFallTogetherCostNoMoreThanOthers) {
    std::string text = "<R>";
    for (int i = 0; i < kDeep; ++i) {
        text += "<obj class=\"TestNode\" ID=\"7\"/><obj name=\"o\" ID=\"7\"/>";
    }
    const auto start = std::chrono::steady_clock::now();
    const Read result = read(text + "</R>");
    EXPECT_TRUE(result.succeeded);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << "a walk of pairs takes minutes";
    EXPECT_EQ(result.references.front()->getTarget(), result.references.back()->getTarget());
}

// Bodies

std::string bodyOf(const std::string& text, const char* attributes = "") {
    const Read result = read("<R><string name=\"s\"" + std::string(attributes) + ">" + text + "</string></R>");
    if (!result.succeeded) {
        return result.error;
    }
    const FStringRef body = result.members->at(0)->getText();
    if (!body.isWide()) {
        return std::string(body.view8());
    }
    FString utf8(body);
    utf8.toMultiByte(CodePage::utf8);
    return "wide " + std::string(utf8.view8());
}

TEST(FXmlObjectReader, ABodyIsWhatStandsBetweenItsTwoLineEnds) {
    EXPECT_EQ(bodyOf("\r\ntext\r\n   "), "text");
    EXPECT_EQ(bodyOf("\ntext\n"), "text");
    EXPECT_EQ(bodyOf("\rtext\r\t"), "text");
    EXPECT_EQ(bodyOf("text"), "text");
    EXPECT_EQ(bodyOf("\r\n  text  \r\n   "), "  text  ");
    EXPECT_EQ(bodyOf("\r\n\r\ntext\r\n\r\n   "), "\r\ntext\r\n");
    EXPECT_EQ(bodyOf("text   "), "text   ") << "blanks without a line end in front";
    EXPECT_EQ(bodyOf("   text"), "   text");
    EXPECT_EQ(bodyOf(""), "wide ");
    EXPECT_EQ(bodyOf("\r\n"), "wide ");
    EXPECT_EQ(bodyOf("\r\n\r\n"), "wide ");
    EXPECT_EQ(bodyOf("   "), "   ");
}

TEST(FXmlObjectReader, EntitiesOfABodyAreResolvedWhereverItIsCut) {
    for (int shift = 4080; shift < 4100; ++shift) {
        const std::string filling(static_cast<std::size_t>(shift), 'x');
        EXPECT_EQ(bodyOf(filling + "&amp;&lt;b&gt;"), filling + "&<b>") << shift;
        EXPECT_EQ(bodyOf(filling + "日本", " wide=\"true\""), "wide " + filling + "日本") << shift;
    }
}

TEST(FXmlObjectReader, TagsInABodyMeanNothing) {
    EXPECT_EQ(bodyOf("a < b"), "a < b");
    EXPECT_EQ(bodyOf("one<int name=\"n\" value=\"1\"/>two"), "onetwo");
    EXPECT_EQ(bodyOf("one<!-- comment -->two"), "onetwo");
    EXPECT_EQ(bodyOf("one <member name=\"m\"> x </member> two"), "one  two") << "nor does what they hold";
    EXPECT_EQ(bodyOf("one<other/>two"), "Unexpected tag or invalid attributes!");
}

TEST(FXmlObjectReader, TextsComeInTheWidthTheyAreKeptIn) {
    const Read result = read("<R><string name=\"a\" value=\"plain\"/><string name=\"w\" value=\"plain\" wide=\"true\"/>"
                             "<string name=\"u\" value=\"" +
                             testing_support::systemBytes(u"ä") + "\"/></R>");
    ASSERT_TRUE(result.succeeded);
    EXPECT_FALSE(result.members->at(0)->getText().isWide());
    EXPECT_EQ(result.members->at(1)->getText().view16(), u"plain");
    EXPECT_EQ(result.members->at(2)->getText().view16(), u"ä");
}

TEST(FXmlObjectReader, BytesThatMeanNothingStay) {
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    const Read result = read("<R><string name=\"n\" value=\"\xE4\"/></R>");
    ASSERT_TRUE(result.succeeded);
    EXPECT_EQ(result.members->at(0)->getText().view8(), "\xE4") << "means nothing in UTF-8";
}

TEST(FXmlObjectReader, NamedSignsMayMeanTheSecondSet) {
    const std::string text =
        "<R><rootObjects><root name=\"a\"><string name=\"s\" value=\"&Auml;\"/></root></rootObjects></R>";
    for (const auto& [column, byte] : {std::pair(FXmlEntityColumn::ansi, '\xC4'), {FXmlEntityColumn::second, '\x80'}}) {
        FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
        FObjectDocument document;
        ASSERT_TRUE(document.loadDocument(stream, "R", FStringRef(), column));
        EXPECT_EQ(FString(document.getTree("a")->at(0)->getText()).text8(), std::string(1, byte));
    }
}

} // namespace
} // namespace tessera
