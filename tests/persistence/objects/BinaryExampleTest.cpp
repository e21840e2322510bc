// The example of docs/file-formats.md is what is written and read.
#include "foundation/containers/CmString.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/PageExample.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using testing_support::pageBytes;

TEST(BinaryExample, IsReadAndWrittenAsItStands) {
    std::string bytes = pageBytes("binary");
    ASSERT_FALSE(bytes.empty());
    FMemoryStream stream(bytes.data(), static_cast<std::int32_t>(bytes.size()));
    FObjectDocument document;
    ASSERT_TRUE(document.loadBinary(stream));
    EXPECT_EQ(stream.tell(), stream.getSize());
    FMemoryStream again;
    ASSERT_TRUE(document.saveBinary(again));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(again.getData()), static_cast<std::size_t>(again.getSize())),
              bytes);

    auto* take = cmCast<CmString>(document.getObject("take"));
    ASSERT_NE(take, nullptr);
    EXPECT_STREQ(take->getText8(), "Rain");
    ASSERT_NE(document.getTree("view"), nullptr);
    std::int64_t zoom = 0;
    EXPECT_TRUE(document.getTree("view")->getInt("zoom", zoom));
    EXPECT_EQ(zoom, 3);
    double value = 0;
    EXPECT_TRUE(document.getTree("view")->nextFloat("curve", value));
    EXPECT_EQ(value, 0.5);
}

TEST(BinaryExample, ADocumentOfBothFormsHasTheSameContent) {
    std::string bytes = pageBytes("binary");
    FMemoryStream stream(bytes.data(), static_cast<std::int32_t>(bytes.size()));
    FObjectDocument document;
    ASSERT_TRUE(document.loadBinary(stream));
    FMemoryStream xml;
    ASSERT_TRUE(document.saveDocument(xml, "Project"));
    xml.rewind();
    FObjectDocument read;
    ASSERT_TRUE(read.loadDocument(xml, "Project"));
    FMemoryStream binary;
    ASSERT_TRUE(read.saveBinary(binary));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(binary.getData()), static_cast<std::size_t>(binary.getSize())),
              bytes);
}

// Objects in a circle would stay behind with the document.
TEST(BinaryExample, UnlinkBreaksCircles) {
    FObjectDocument document;
    const auto instance = [&document](std::int32_t i) {
        return cmCast<FXmlInstance>(static_cast<FXmlReference*>(document.getObjects().at(i)->getObject())->getTarget());
    };
    const std::string circle = std::string("\1\0\0\0\2\0\0\0a\0\7\0\0\0\0\0\0\0", 18) +
                               std::string("\x08\0\0\0CmArray\0\7\0\0\0\0\0\0\0", 20) +
                               std::string("\1\0\0\0\4\0\0\0obj\0\2\0\x15\0\7\0\0\0\0\0\0\0", 24) +
                               std::string("\0\0\0\0", 4);
    FMemoryStream stream(static_cast<const void*>(circle.data()), static_cast<std::int32_t>(circle.size()));
    ASSERT_TRUE(document.loadBinary(stream));
    const FRefPtr<FXmlInstance> held(instance(0));
    ASSERT_TRUE(held);
    document.unlink();
    document.clear();
    EXPECT_EQ(held->getReferenceCount(), 1u);
}

} // namespace
} // namespace tessera
