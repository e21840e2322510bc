#include "persistence/objects/FObjectDocument.h"

#include "persistence/attributes/FIntList.h"
#include "persistence/objects/DocumentSupport.h"
#include "persistence/objects/FXmlObjectReader.h"
#include "persistence/objects/PersistenceHooks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using namespace test;

using testing::HasSubstr;
using testing::Not;

std::string inProject(const std::string& content) {
    return kDeclarationLine + "<Project>\r\n" + content + "</Project>\r\n";
}

std::string inRoot(const std::string& content) {
    return inProject("<rootObjects>\r\n<root name=\"a\">\r\n" + content + "</root>\r\n</rootObjects>\r\n");
}

// What reading the text ends with: a FXmlError, or "read" or "no root tag".
std::string resultOf(const std::string& text, const char* rootTag = "Project") {
    FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
    FXmlObjectReader reader(stream, rootTag);
    FAttributes objects;
    FAttributes trees;
    if (reader.readDocument(objects, trees, FStringRef())) {
        return "read";
    }
    const FString error = reader.getErrorText();
    return error.isEmpty() ? "no root tag" : std::string(error.view8());
}

constexpr const char* kMalformed = "Xml data malformed!";
constexpr const char* kUnexpected = "Unexpected tag or invalid attributes!";

TEST(FObjectDocument, ADocumentThatWasLoadedTwiceGoesThroughTheBinaryForm) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("SharedObjects.xml")));
    ASSERT_TRUE(load(document, goldenText("SharedObjects.xml")));
    FMemoryStream stream;
    ASSERT_TRUE(document.saveBinary(stream));
    stream.rewind();
    FObjectDocument read;
    ASSERT_TRUE(read.loadBinary(stream));
    EXPECT_EQ(stream.tell(), stream.getSize());
    EXPECT_EQ(read.getObjects().getCount(), document.getObjects().getCount());
}

TEST(FObjectDocument, HoldsItsRootsInOrderAndByName) {
    const auto one = newNode("one", 1);
    const auto two = newNode("two", 2);
    FAttributes tree;
    FObjectDocument document;
    EXPECT_TRUE(document.addObject("b", *one));
    EXPECT_TRUE(document.addObject("a", *two));
    EXPECT_TRUE(document.addObject("b", *two));
    EXPECT_TRUE(document.addTree("b", tree));
    EXPECT_EQ(document.getObject("b"), one.get());
    EXPECT_EQ(document.getTree("b"), &tree);
    EXPECT_EQ(document.getObject("c"), nullptr);
    EXPECT_EQ(document.getTree("c"), nullptr);
    EXPECT_EQ(document.getObjects().getCount(), 3);
    EXPECT_EQ(one->getReferenceCount(), 2u);
    document.clear();
    EXPECT_EQ(one->getReferenceCount(), 1u);
    EXPECT_EQ(document.getObjects().getCount() + document.getTrees().getCount(), 0);
}

TEST(FObjectDocument, ATreeIsWhatItsObjectStoresWhenSaved) {
    const auto node = newNode("before", 1);
    FObjectDocument document;
    document.addTree("node", *node);
    node->title = "after";
    FObjectDocument read;
    ASSERT_TRUE(load(read, saved(document)));
    TestNode copy;
    EXPECT_TRUE(read.getTreeInto("node", copy));
    EXPECT_EQ(copy.title.view8(), "after");
    EXPECT_FALSE(read.getTreeInto("another", copy));
}

TEST(FObjectDocument, ObjectsComeBackWithTheirValues) {
    const auto parent = newNode("parent");
    parent->children.emplace_back(newNode("child", 1).get());
    parent->next = parent->children[0].get();
    FObjectDocument document;
    document.addObject("parent", *parent);

    FObjectDocument read;
    ASSERT_TRUE(load(read, saved(document)));
    const auto* copy = cmCast<TestNode>(read.getObject("parent"));
    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->children.size(), 1u);
    EXPECT_EQ(copy->children[0], copy->next);
    EXPECT_EQ(copy->nextNode()->title.view8(), "child");
}

TEST(FObjectDocument, NothingIsBuiltUntilItIsAskedFor) {
    FObjectDocument document;
    const int before = TestNode::living;
    ASSERT_TRUE(load(document, goldenText("NestedObjects.xml")));
    EXPECT_EQ(TestNode::living, before);
    document.getObject("outermost");
    EXPECT_EQ(TestNode::living, before + 10);
}

TEST(FObjectDocument, LoadingAddsToWhatIsThere) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("Values.xml")));
    ASSERT_TRUE(load(document, goldenText("Lists.xml")));
    EXPECT_EQ(document.getTrees().getCount(), 2);
}

// IDs

TEST(FObjectDocument, AnObjectIsKnownByItsAddress) {
    const auto node = newNode("node");
    FObjectDocument document;
    document.addObject("node", *node);
    const std::string id = std::to_string(reinterpret_cast<std::uintptr_t>(static_cast<CmObject*>(node.get())));
    EXPECT_THAT(saved(document), HasSubstr("<root name=\"node\" ID=\"" + id + "\"/>"));
    EXPECT_THAT(saved(document), HasSubstr("<obj class=\"TestNode\" ID=\"" + id + "\">"));
}

TEST(FObjectDocument, WhatIsBuiltIsDefinedUnderItsAddressAndReferencesKeepTheOldId) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("Circle.xml")));
    auto* one = cmCast<TestNode>(document.getObject("circle"));
    ASSERT_NE(one, nullptr);
    const std::string text = saved(document);
    EXPECT_THAT(text, HasSubstr("<root name=\"circle\" ID=\"18446744073709551615\"/>"));
    EXPECT_THAT(text, Not(HasSubstr("class=\"TestNode\" ID=\"18446744073709551615\"")));
    // So the reference finds nothing in the document that was written.
    FObjectDocument again;
    EXPECT_TRUE(load(again, text));
    EXPECT_EQ(again.getObject("circle"), nullptr);
    again.unlink();
    one->nextNode()->next.reset();
}

TEST(FObjectDocument, AStoredObjectIsWrittenAsReadWhileOthersAreLive) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("SharedObjects.xml")));
    const auto live = newNode("live");
    document.addObject("live", *live);
    const std::string text = saved(document);
    EXPECT_THAT(text, HasSubstr("<obj class=\"TestNode\" name=\"next\" ID=\"4099\">"));
    EXPECT_THAT(text, HasSubstr("value=\"live\""));
}

// What stores a fresh object each time it is stored.
class Maker : public CmClass<Maker, CmObject> {
public:
    static FMetaClass metaClass;
    bool storeAttributes(FAttributes& attributes) const override {
        attributes.setObject("made", newNode("made").get());
        return true;
    }
};
FMetaClass Maker::metaClass("TestMaker", &CmObject::metaClass, createCmObject<Maker>);

TEST(FObjectDocument, ObjectsThatAreMadeForTheDocumentHaveIdsOfTheirOwn) {
    FObjectDocument document;
    constexpr int kMakers = 20;
    for (int i = 0; i < kMakers; ++i) {
        document.addTree("maker", *FRefPtr<Maker>::adopt(new Maker));
    }
    const std::string text = saved(document);
    std::size_t definitions = 0;
    for (std::size_t at = text.find("class=\""); at != text.npos; at = text.find("class=\"", at + 1)) {
        ++definitions;
    }
    EXPECT_EQ(definitions, std::size_t{kMakers}) << "none is taken for one that has gone";
}

TEST(FObjectDocument, TheIdOfARootMayBeASignedNumberOfThirtyTwoBits) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, inProject("<rootObjects><root name=\"a\" ID=\"-2\"/></rootObjects>"
                                         "<obj class=\"TestNode\" ID=\"4294967294\">"
                                         "<string name=\"title\" value=\"found\"/></obj>")));
    const auto* node = cmCast<TestNode>(document.getObject("a"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->title.view8(), "found");
}

TEST(FObjectDocument, OfTwoDefinitionsTheFirstCounts) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, inProject("<rootObjects><root name=\"a\" ID=\"5\"/></rootObjects>"
                                         "<obj class=\"TestNode\" ID=\"5\"><int name=\"number\" value=\"1\"/></obj>"
                                         "<obj class=\"TestNode\" ID=\"5\"><int name=\"number\" value=\"2\"/></obj>")));
    EXPECT_EQ(cmCast<TestNode>(document.getObject("a"))->number, 1);
}

TEST(FObjectDocument, AReferenceToNothingGivesNothing) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("read/Unresolved.xml")));
    EXPECT_EQ(document.getObject("gone"), nullptr);
    EXPECT_EQ(document.getTree("a")->getObject("lost"), nullptr);
    EXPECT_NE(document.getTree("a")->find("lost"), nullptr);
}

TEST(FObjectDocument, AnUnknownClassIsReportedAndGivesNothing) {
    static std::vector<std::string> reported;
    reported.clear();
    persistenceHooks.report = [](std::int32_t code, const FStringRef& text) {
        reported.push_back(std::to_string(code) + " " + std::string(text.view8()));
    };
    FObjectDocument document;
    ASSERT_TRUE(load(document, inProject("<rootObjects><root name=\"a\" ID=\"5\"/></rootObjects>"
                                         "<obj class=\"NobodyKnows\" ID=\"5\"/>")));
    EXPECT_EQ(document.getObject("a"), nullptr);
    EXPECT_EQ(document.getObject("a"), nullptr);
    persistenceHooks.report = nullptr;
    EXPECT_THAT(reported, testing::ElementsAre("-98 NobodyKnows"));
    // It can't be written any more either, and is left out.
    EXPECT_EQ(saved(document),
              kDeclarationLine + lines({"<Project>", "   <rootObjects>", "   </rootObjects>", "</Project>"}));
}

TEST(FObjectDocument, AnObjectThatRefusesToBeRestoredIsGone) {
    FObjectDocument document;
    ASSERT_TRUE(
        load(document, inProject("<rootObjects><root name=\"a\" ID=\"5\"/></rootObjects><obj class=\"TestNode\" "
                                 "ID=\"5\"><string name=\"title\" value=\"refuses to be restored\"/></obj>")));
    const int before = TestNode::living;
    EXPECT_EQ(document.getObject("a"), nullptr);
    EXPECT_EQ(TestNode::living, before);
}

// One root out of many

TEST(FObjectDocument, OneRootIsReadAlone) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("SharedObjects.xml"), "Project", "second"));
    EXPECT_EQ(document.getObjects().getCount(), 1);
    EXPECT_EQ(document.getObject("first"), nullptr);
    const auto* second = cmCast<TestNode>(document.getObject("second"));
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->title.view8(), "second");
    EXPECT_EQ(second->next, nullptr) << "what it shares with another stands there";
    EXPECT_EQ(document.getTrees().getCount(), 1) << "trees are read all the same";
}

TEST(FObjectDocument, ObjectsWithinTheOneRootArePassedOverToo) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, goldenText("NestedObjects.xml"), "Project", "outermost"));
    const auto* node = cmCast<TestNode>(document.getObject("outermost"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->next, nullptr);
}

TEST(FObjectDocument, ReadingEndsWithTheOneRoot) {
    const std::string start =
        inProject("<rootObjects><root name=\"a\" ID=\"5\"/><root name=\"b\" ID=\"6\"/></rootObjects>"
                  "<obj class=\"TestNode\" ID=\"5\"/>");
    const std::string broken =
        start.substr(0, start.find("</Project>")) + "<obj class=\"TestNode\" ID=\"6\"></Project>";
    FObjectDocument document;
    EXPECT_TRUE(load(document, broken, "Project", "a"));
    EXPECT_NE(document.getObject("a"), nullptr);
    FObjectDocument other;
    EXPECT_FALSE(load(other, broken, "Project", "b"));
}

TEST(FObjectDocument, WhatHoldsTheOneRootIsKeptAsFarAsItWasRead) {
    FObjectDocument document;
    EXPECT_TRUE(
        load(document,
             inProject("<rootObjects><root name=\"a\" ID=\"5\"/><root name=\"tree\">"
                       "<member name=\"inner\"><obj class=\"TestNode\" name=\"node\" ID=\"5\"/><broken></member>"),
             "Project", "a"));
    ASSERT_NE(document.getObject("a"), nullptr);
    ASSERT_NE(document.getTree("tree"), nullptr);
    EXPECT_EQ(document.getTree("tree")->getTree("inner")->getObject("node"), document.getObject("a"));
}

TEST(FObjectDocument, ARootThatIsNotThereIsNoFailure) {
    FObjectDocument document;
    EXPECT_TRUE(load(document, goldenText("SharedObjects.xml"), "Project", "third"));
    EXPECT_EQ(document.getObjects().getCount(), 0);
}

// Refusals

TEST(FObjectDocument, AnotherRootTagIsMalformed) {
    EXPECT_EQ(resultOf(goldenText("Values.xml"), "Defaults"), kMalformed);
    EXPECT_EQ(resultOf(kDeclarationLine + "<other/>"), kMalformed);
}

TEST(FObjectDocument, AnUnknownTagBelowTheRootIsUnexpected) {
    EXPECT_EQ(resultOf(inProject("<other/>")), kUnexpected);
    EXPECT_EQ(resultOf(inRoot("<other/>")), kUnexpected);
    EXPECT_EQ(resultOf(inRoot("<list name=\"l\" type=\"list\"><item><other/></item></list>")), kUnexpected);
    EXPECT_EQ(resultOf(inRoot("<Project/>")), kUnexpected) << "the root tag is one in its place alone";
}

TEST(FObjectDocument, WithoutARootTagNothingIsRead) {
    EXPECT_EQ(resultOf(""), "no root tag");
    EXPECT_EQ(resultOf(kDeclarationLine), "no root tag");
    EXPECT_EQ(resultOf("only text"), "no root tag");
    EXPECT_EQ(resultOf("<rootObjects></rootObjects>"), "no root tag");
}

TEST(FObjectDocument, WhatAnElementNeedsIsDemanded) {
    const std::pair<const char*, const char*> rows[] = {
        {"a root without a name", "<root ID=\"5\"/>"},
        {"an object root without an ID", "<root name=\"r\"/>"},
        {"an object root with the ID 0", "<root name=\"r\" ID=\"0\"/>"},
        {"binary data without a name", "<bin>00</bin>"},
        {"a list without a name", "<list type=\"int\"></list>"},
        {"a list without a type", "<list name=\"l\"></list>"},
        {"an open item of integers", "<list name=\"l\" type=\"int\"><item value=\"1\"></item></list>"},
        {"an open item of floats", "<list name=\"l\" type=\"float\"><item value=\"1\"></item></list>"},
        {"an open item of texts", "<list name=\"l\" type=\"string\"><item value=\"1\"></item></list>"},
        {"an open item of objects", "<list name=\"l\" type=\"obj\"><item value=\"1\"></item></list>"},
        {"an empty item of trees", "<list name=\"l\" type=\"list\"><item/></list>"},
        {"an item of objects with the value 0", "<list name=\"l\" type=\"obj\"><item value=\"0\"/></list>"},
        {"an item of objects without a value", "<list name=\"l\" type=\"obj\"><item/></list>"},
    };
    for (const auto& [what, text] : rows) {
        EXPECT_EQ(resultOf(inRoot(text)), kUnexpected) << what;
    }
}

TEST(FObjectDocument, ADocumentThatIsCutIsReadUpToThere) {
    const std::string text = goldenText("SharedObjects.xml");
    EXPECT_EQ(resultOf(text.substr(0, text.find("</Project>"))), "read");
    EXPECT_EQ(resultOf(text.substr(0, text.find("<rootObjects>"))), "read");
    EXPECT_EQ(resultOf(text.substr(0, text.find("</root>"))), "Unexpected end of file!") << "within a tree";
    EXPECT_EQ(resultOf(text.substr(0, text.rfind("</obj>"))), "Unexpected end of file!") << "within an object";
}

// Where writer and reader disagree, and both stay as they are

TEST(FObjectDocument, AnEmptyListVanishes) {
    FAttributes values;
    values.appendInt("list", 1);
    const auto empty = FRefPtr<FIntList>::adopt(new FIntList);
    values.setObject("empty", empty.get());
    FObjectDocument document;
    document.addTree("a", values);
    EXPECT_THAT(saved(document), Not(HasSubstr("empty")));
    FObjectDocument read;
    ASSERT_TRUE(load(read, saved(document)));
    EXPECT_EQ(read.getTree("a")->find("empty"), nullptr);
    EXPECT_EQ(read.getTree("a")->listCount("list"), 1);
}

std::string documentOf(const FAttributes& values) {
    FObjectDocument document;
    document.addTree("a", const_cast<FAttributes&>(values));
    return saved(document);
}

// "back", or how reading failed.
std::string wayOfText(const FStringRef& text) {
    FAttributes values;
    values.setString("text", text);
    const std::string written = documentOf(values);
    FObjectDocument read;
    FString back;
    if (!load(read, written)) {
        return resultOf(written);
    }
    return read.getTree("a")->getString("text", back) && back == text ? "back" : "changed";
}

TEST(FObjectDocument, ATextOfUpTo2048CharactersIsAnAttributeAndOneOf2048BytesIsRefused) {
    const std::string text(2049, 'x');
    EXPECT_EQ(wayOfText(FStringRef(text.c_str(), 2047)), "back");
    EXPECT_EQ(wayOfText(FStringRef(text.c_str(), 2048)), kMalformed);
    EXPECT_EQ(wayOfText(FStringRef(text.c_str(), 2049)), "back") << "a body";
}

TEST(FObjectDocument, ATextThatTakesMoreThan2047BytesOnceEscapedIsRefused) {
    EXPECT_EQ(wayOfText(std::string(1000, '&').c_str()), kMalformed);
    EXPECT_EQ(wayOfText(std::string(2049, '&').c_str()), "back") << "a body has no limit";
    // Three bytes each in UTF-8.
    EXPECT_EQ(wayOfText(std::u16string(682, u'日').c_str()), "back");
    EXPECT_EQ(wayOfText(std::u16string(683, u'日').c_str()), kMalformed);
    // An accented letter of 8-bit text is two bytes, each of which is written in six characters.
    std::string accented;
    for (int i = 0; i < 170; ++i) {
        accented += "\xC3\xA4";
    }
    EXPECT_EQ(wayOfText(accented.c_str()), "back");
    EXPECT_EQ(wayOfText((accented + "\xC3\xA4").c_str()), kMalformed);
}

TEST(FObjectDocument, ANameOf48BytesIsRefused) {
    FAttributes values;
    values.setInt(std::string(47, 'n').c_str(), 1);
    EXPECT_EQ(resultOf(documentOf(values)), "read");
    values.setInt(std::string(47, '&').c_str(), 1);
    EXPECT_EQ(resultOf(documentOf(values)), "read") << "what counts is the name, and not how it is written";
    values.setInt(std::string(48, 'n').c_str(), 1);
    EXPECT_EQ(resultOf(documentOf(values)), kMalformed);
}

TEST(FObjectDocument, AReferenceWithoutATargetIsWrittenAsZeroAndVanishes) {
    FAttributes values;
    const auto reference = FRefPtr<FXmlReference>::adopt(new FXmlReference(77));
    values.setObject("lost", reference.get());
    EXPECT_THAT(documentOf(values), HasSubstr("         <obj name=\"lost\" ID=\"0\"/>\r\n"));
    FObjectDocument read;
    ASSERT_TRUE(load(read, documentOf(values)));
    EXPECT_EQ(read.getTree("a")->find("lost"), nullptr);
    values.appendObject("list", reference.get());
    EXPECT_EQ(resultOf(documentOf(values)), kUnexpected) << "as an item it makes the document unreadable";
}

TEST(FObjectDocument, ClassNamesAreNotEscaped) {
    FAttributes values;
    auto* tree = new FAttributes;
    const auto instance = FRefPtr<FXmlInstance>::adopt(new FXmlInstance(5, "A&B<C>", tree));
    values.setObject("o", instance.get());
    EXPECT_THAT(documentOf(values), HasSubstr("<obj class=\"A&B<C>\" name=\"o\" ID=\"5\">"));
}

} // namespace
} // namespace tessera
