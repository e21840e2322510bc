#include "persistence/xml/FXmlParser.h"

#include "persistence/xml/RecordingParser.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::TextParser;

std::string eventsOf(std::string_view text) {
    TextParser parser(text);
    EXPECT_TRUE(parser.parse(nullptr)) << std::string(text.substr(0, 200));
    return parser.events;
}

TEST(FXmlParser, TagsWithAttributesAndTextAreCalledBack) {
    EXPECT_EQ(eventsOf("<?xml version=\"1.0\"?>\r\n<a>\r\n\t<b x=\"1\" y='2'/>\r\n<c>text</c></a>\r\n"),
              "<a><b x=1 y=2/><c>[text][]</c></a>");
}

} // namespace
} // namespace tessera
