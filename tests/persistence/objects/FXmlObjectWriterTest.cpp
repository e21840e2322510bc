#include "persistence/objects/FXmlObjectWriter.h"

#include "foundation/containers/CmBuffer.h"
#include "persistence/attributes/FAttrBuffer.h"
#include "persistence/objects/DocumentSupport.h"
#include "persistence/xml/FXmlParser.h"
#include "support/SystemText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using namespace test;

using testing::HasSubstr;
using testing::Not;

// What stands between the tags of the root.
std::string membersOf(const FAttributes& values) {
    const std::string text = savedObject(values, "R");
    const std::string start = kDeclarationLine + "<R>\r\n";
    const std::string end = "</R>\r\n";
    return text.starts_with(start) && text.ends_with(end)
               ? text.substr(start.size(), text.size() - start.size() - end.size())
               : text;
}

// Takes so many bytes and no more.
class NarrowStream : public FMemoryStream {
public:
    explicit NarrowStream(std::int32_t room) : room_(room) {}
    using FMemoryStream::write;
    std::int32_t write(const void* buffer, std::int32_t size) override {
        ++writes;
        if (size > room_) {
            return 0;
        }
        room_ -= size;
        return FMemoryStream::write(buffer, size);
    }

    int writes = 0;

private:
    std::int32_t room_;
};

TEST(FXmlObjectWriter, ADocumentWithoutRootsIsItsRootTag) {
    EXPECT_EQ(saved(FObjectDocument()), goldenText("Empty.xml"));
    EXPECT_EQ(membersOf(FAttributes()), "");
}

TEST(FXmlObjectWriter, ValuesKeepTheirOrderAndTheirRepeatedNames) {
    FAttributes values;
    values.setInt("z", 1);
    values.setInt("a", 2);
    values.setFloat("a", 0.25, AttributeFlags::kAppend);
    EXPECT_EQ(membersOf(values), lines({"   <int name=\"z\" value=\"1\"/>", "   <int name=\"a\" value=\"2\"/>",
                                        "   <float name=\"a\" value=\"0.25\"/>"}));
}

TEST(FXmlObjectWriter, TextsOfUpTo2048CharactersAreAttributes) {
    FAttributes values;
    const std::string text(2049, 'x');
    values.setString("t", FStringRef(text.c_str(), 2048));
    EXPECT_EQ(membersOf(values), "   <string name=\"t\" value=\"" + text.substr(1) + "\"/>\r\n");
    values.setString("t", text.c_str());
    EXPECT_EQ(membersOf(values), "   <string name=\"t\">\r\n" + text + "\r\n   </string>\r\n");
    const std::u16string wide(2049, u'x');
    values.setString("t", wide.c_str());
    EXPECT_EQ(membersOf(values), "   <string name=\"t\" wide=\"true\">\r\n" + text + "\r\n   </string>\r\n");
}

TEST(FXmlObjectWriter, CharactersAreCountedBeforeTheyAreEscaped) {
    FAttributes values;
    values.setString("t", std::string(2048, '&').c_str());
    EXPECT_THAT(membersOf(values), HasSubstr(" value=\"&amp;"));
}

TEST(FXmlObjectWriter, RawTextsAreWrittenLikeOwnOnes) {
    auto* record = new FStringIDAttribute("n");
    record->setString8("raw <8>", FAttributeValue::TextHolding::byReference);
    FAttributes values;
    values.append(record);
    record = new FStringIDAttribute("w");
    record->setString16(u"raw <16>", FAttributeValue::TextHolding::byReference);
    values.append(record);
    EXPECT_EQ(membersOf(values), lines({"   <string name=\"n\" value=\"raw &lt;8&gt;\"/>",
                                        "   <string name=\"w\" value=\"raw &lt;16&gt;\" wide=\"true\"/>"}));
}

TEST(FXmlObjectWriter, WideNamesAreWrittenInEightBits) {
    FAttributes values;
    values.setInt(u"Größe", 1);
    const bool isUtf8 = testing_support::whyNoUtf8() == nullptr;
    const std::string name = isUtf8 ? "Gr&#xc3;&#xb6;&#xc3;&#x9f;e" : "Gr&#xf6;&#xdf;e";
    EXPECT_EQ(membersOf(values), "   <int name=\"" + name + "\" value=\"1\"/>\r\n");
}

TEST(FXmlObjectWriter, TextsInListsGoOutInUtf8WhateverTheirWidth) {
    const std::string narrow = testing_support::systemBytes(u"ä $");
    FAttributes values;
    values.appendString("narrow", narrow.c_str(), FAttributes::TextHolding::byReference);
    values.appendString("narrow", u"ä $", FAttributes::TextHolding::byReference);
    EXPECT_EQ(membersOf(values), lines({"   <list name=\"narrow\" type=\"string\">", "      <item value=\"ä $\"/>",
                                        "      <item value=\"ä $\"/>", "   </list>"}));
}

TEST(FXmlObjectWriter, AllThreeKindsOfBinaryDataAreWrittenAlike) {
    FAttributes values;
    const auto buffer = FRefPtr<CmBuffer>::adopt(new CmBuffer);
    buffer->append("\x01\x02", 2);
    values.setObject("b", buffer.get());
    const auto view = FRefPtr<FAttrBuffer>::adopt(new FAttrBuffer("\x03", 1));
    values.setObject("v", view.get());
    const auto stream = FRefPtr<FMemoryStream>::adopt(new FMemoryStream);
    stream->write("\xAB\xCD", 2);
    values.setObject("s", stream.get());
    EXPECT_EQ(membersOf(values), lines({"   <bin name=\"b\">", "\t\t0102", "   </bin>", "   <bin name=\"v\">", "\t\t03",
                                        "   </bin>", "   <bin name=\"s\">", "\t\tABCD", "   </bin>"}));
    EXPECT_EQ(stream->tell(), 2) << "the stream stays where it stands";
}

TEST(FXmlObjectWriter, ValuesThatHaveNoFormAreLeftOut) {
    FAttributes values;
    auto* record = new FStringIDAttribute("pointer");
    record->setPointer(&values);
    values.append(record);
    record = new FStringIDAttribute("foreign");
    record->setForeign(nullptr, 0);
    values.append(record);
    values.append(new FStringIDAttribute("nothing"));
    values.setObject("null", nullptr);
    values.setInt("n", 1);
    EXPECT_EQ(membersOf(values), "   <int name=\"n\" value=\"1\"/>\r\n");
}

TEST(FXmlObjectWriter, AnObjectIsWrittenUnderItsStoredClassName) {
    // The tree is stored under its second name.
    FAttributes values;
    values.appendObject("list", FRefPtr<FAttributes>::adopt(new FAttributes).get());
    EXPECT_THAT(membersOf(values), HasSubstr("      <obj class=\"Attributes\" ID=\""));
}

TEST(FXmlObjectWriter, ARootThatStandsInATreeIsDefinedAtTheEndAllTheSame) {
    const auto node = newNode("node");
    FAttributes tree;
    tree.setObject("node", node.get());
    FObjectDocument document;
    document.addTree("tree", tree);
    document.addObject("node", *node);
    EXPECT_EQ(renumbered(saved(document)),
              kDeclarationLine +
                  lines({"<Project>", "   <rootObjects>", "      <root name=\"node\" ID=\"1\"/>",
                         "      <root name=\"tree\">", "         <obj name=\"node\" ID=\"1\"/>", "      </root>",
                         "   </rootObjects>", "", "   <obj class=\"TestNode\" ID=\"1\">",
                         "      <string name=\"title\" value=\"node\"/>", "      <int name=\"number\" value=\"0\"/>",
                         "   </obj>", "", "</Project>"}));
}

TEST(FXmlObjectWriter, TwoRootsOfOneObjectNameOneDefinition) {
    const auto node = newNode("node");
    FObjectDocument document;
    document.addObject("a", *node);
    document.addObject("b", *node);
    const std::string text = renumbered(saved(document));
    EXPECT_THAT(text, HasSubstr("<root name=\"a\" ID=\"1\"/>\r\n      <root name=\"b\" ID=\"1\"/>"));
    EXPECT_EQ(text.find("class="), text.rfind("class="));
}

TEST(FXmlObjectWriter, ListsOfObjectsKnowNoLimitOfDepth) {
    const auto outermost = newNode("0");
    TestNode* inner = outermost.get();
    for (int i = 1; i < 20; ++i) {
        inner->children.emplace_back(newNode("n", i).get());
        inner = static_cast<TestNode*>(inner->children[0].get());
    }
    const std::string text = savedObject(*outermost, "R");
    EXPECT_THAT(text, Not(HasSubstr("<item")));
    EXPECT_THAT(text, HasSubstr(std::string(3 * 38, ' ') + "<obj class=\"TestNode\" ID="));
}

// Failures

TEST(FXmlObjectWriter, AnObjectThatRefusesFailsTheWholeDocument) {
    const auto outer = newNode("outer");
    const auto inner = newNode("inner");
    inner->refusesToStore = true;
    outer->next = inner.get();
    EXPECT_EQ(savedObject(*outer, "R"), "(not saved)");
    FObjectDocument document;
    document.addTree("inner", *inner);
    EXPECT_EQ(saved(document), "(not saved)");
}

TEST(FXmlObjectWriter, AStreamThatTakesNoMoreFailsAtEveryLine) {
    const auto node = newFamily(1, 4);
    FAttributes values;
    values.setString("body", std::string(3000, 'x').c_str());
    values.setBinary("bytes", "0123456789", 10, BinaryHolding::copied);
    values.setFloat("f", 1);
    values.appendInt("i", 1);
    values.appendFloat("g", 1);
    values.appendString("s", "x");
    values.appendSub("t", new FAttributes);
    values.setObject("node", node.get());
    FObjectDocument document;
    document.addTree("values", values);
    document.addObject("node", *node);
    const auto whole = static_cast<std::int32_t>(saved(document).size());
    int failures = 0;
    for (std::int32_t room = 0; room < whole; ++room) {
        NarrowStream stream(room);
        const bool written = document.saveDocument(stream, "Project");
        failures += written ? 0 : 1;
        ASSERT_FALSE(written) << room;
    }
    EXPECT_EQ(failures, whole);
    NarrowStream stream(whole);
    EXPECT_TRUE(document.saveDocument(stream, "Project"));
}

TEST(FXmlObjectWriter, EachLineGoesToTheStreamInOnePiece) {
    NarrowStream stream(1 << 20);
    FAttributes values;
    values.setString("long", std::u16string(2048, u'日').c_str());
    values.setInt("n", 1);
    ASSERT_TRUE(FObjectDocument::saveObject(stream, "R", values));
    EXPECT_EQ(stream.writes, 5);
}

TEST(FXmlObjectWriter, NestsAsDeepAsAReaderGoesAndNoDeeper) {
    const auto treeOf = [](int depth) {
        auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        for (int i = 1; i < depth; ++i) {
            auto outer = FRefPtr<FAttributes>::adopt(new FAttributes);
            outer->setObject("m", tree.get());
            tree = outer;
        }
        return tree;
    };
    const auto deepest = treeOf(FXmlParser::kMaximumNesting);
    const std::string text = savedObject(*deepest, "R");
    FAttributes read;
    EXPECT_TRUE(loadObject(read, text, "R"));
    EXPECT_EQ(savedObject(read, "R"), text);
    EXPECT_EQ(savedObject(*treeOf(FXmlParser::kMaximumNesting + 1), "R"), "(not saved)");
    EXPECT_EQ(savedObject(*treeOf(100000), "R"), "(not saved)");
}

TEST(FXmlObjectWriter, AChainOfObjectsInListsIsBoundToo) {
    const auto outermost = newNode("0");
    TestNode* inner = outermost.get();
    for (int i = 1; i < 2000; ++i) {
        inner->children.emplace_back(newNode("n", i).get());
        inner = static_cast<TestNode*>(inner->children[0].get());
    }
    EXPECT_EQ(savedObject(*outermost, "R"), "(not saved)");
}

} // namespace
} // namespace tessera
