#include "foundation/text/FString.h"
#include "persistence/streams/FMemoryStream.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [streams]
bool writeHeader(FStream& stream, std::int32_t channels, const FString& title) {
    return stream.writeInt32(channels) && title.writeString(stream);
}

bool readHeader(FStream& stream, std::int32_t& channels, FString& title) {
    return stream.readInt32(channels) && channels > 0 && channels <= 64 && title.readString(stream);
}
// [streams]

TEST(StreamsExample, WhatIsWrittenIsRead) {
    FMemoryStream stream;
    ASSERT_TRUE(writeHeader(stream, 2, FString(u"Größe")));
    EXPECT_EQ(stream.getData()[0], 2);
    EXPECT_EQ(stream.getData()[3], 0);
    stream.rewind();
    std::int32_t channels = 0;
    FString title;
    ASSERT_TRUE(readHeader(stream, channels, title));
    EXPECT_EQ(channels, 2);
    EXPECT_TRUE(title == u"Größe");
}

TEST(StreamsExample, AStreamThatEndsEarlyIsRefused) {
    FMemoryStream stream;
    ASSERT_TRUE(writeHeader(stream, 2, FString("Rain")));
    ASSERT_TRUE(stream.setSize(stream.getSize() - 3));
    stream.rewind();
    std::int32_t channels = 0;
    FString title;
    EXPECT_FALSE(readHeader(stream, channels, title));
}

} // namespace
} // namespace tessera::test
