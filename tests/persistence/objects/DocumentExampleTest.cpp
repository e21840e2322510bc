// The example of docs/file-formats.md is what is read and written.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmString.h"
#include "persistence/objects/DocumentSupport.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using namespace test;

// The block behind the mark, with the line ends of a document; empty without one.
std::string example(const std::string& name) {
    std::ifstream file(FILE_FORMATS, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string start = "<!-- example: " + name + " -->\n```xml\n";
    const std::size_t found = text.find(start);
    if (found == text.npos) {
        return {};
    }
    const std::size_t from = found + start.size();
    std::string result;
    for (const char c : text.substr(from, text.find("```", from) - from)) {
        result += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return result;
}

TEST(DocumentExample, IsReadAndWrittenAsItStands) {
    const std::string text = example("Project.xml");
    FObjectDocument document;
    ASSERT_TRUE(load(document, text));
    // The one reference that leads nowhere loses its ID.
    std::string expected = text;
    expected.replace(expected.find("94003"), 5, "0");
    EXPECT_EQ(saved(document), expected);
}

TEST(DocumentExample, HoldsWhatThePageSays) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, example("Project.xml")));
    const FAttributes& view = *document.getTree("view");
    double gain = 0;
    EXPECT_TRUE(view.getFloat("gain", gain));
    EXPECT_EQ(gain, 0.1);
    EXPECT_EQ(view.getBinarySize("layout"), 4);
    EXPECT_EQ(view.getObject("selected"), nullptr);
    const auto* first = cmCast<CmArray>(document.getObject("first"));
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(first->getCount(), 2);
    EXPECT_EQ(first->at(0), first->at(1));
    EXPECT_EQ(cmCast<CmString>(first->at(0))->string().view8(), "one");
}

} // namespace
} // namespace tessera
