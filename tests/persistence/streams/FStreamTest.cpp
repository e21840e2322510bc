#include "persistence/streams/FStream.h"

#include "foundation/containers/CmBuffer.h"
#include "persistence/streams/FBufferStream.h"
#include "tests/persistence/streams/StreamBytes.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

std::string longText() {
    std::string text;
    for (int i = 0; i < 700; ++i) {
        text += std::to_string(i) + ",";
    }
    return text;
}

// Takes only so many bytes.
class NarrowStream : public FMemoryStream {
public:
    explicit NarrowStream(std::int32_t room) : room_(room) {}

    using FMemoryStream::write;
    std::int32_t write(const void* buffer, std::int32_t size) override {
        const std::int32_t taken = FMemoryStream::write(buffer, std::min(size, room_));
        room_ -= taken;
        return taken;
    }

private:
    std::int32_t room_;
};

// A stream whose watcher refuses everything.
class RefusingStream : public FMemoryStream {
public:
    using FMemoryStream::read;
    std::int32_t read(void*, std::int32_t) override { return -1; }
};

TEST(FStream, CopyFromGoesOverBlocks) {
    const std::string text = longText();
    ASSERT_GT(text.size(), 2u * FStream::kCopyBlockSize);
    FMemoryStream source;
    fill(source, text);
    CmBuffer buffer;
    FBufferStream target(buffer);
    source.seek(5, SeekMode::fromStart);
    EXPECT_EQ(target.copyFrom(source, 2000), 2000);
    EXPECT_EQ(source.tell(), 2005);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(buffer.getData()), 2000), text.substr(5, 2000));
}

TEST(FStream, CopyFromEndsWithTheSource) {
    FMemoryStream source;
    fill(source, std::string(1500, 'x'));
    CmBuffer buffer;
    FBufferStream target(buffer);
    EXPECT_EQ(target.copyFrom(source, 1 << 20), 1500);
    EXPECT_EQ(target.copyFrom(source, 10), 0);
}

TEST(FStream, CopyFromTellsWhatAFullTargetTook) {
    CmBuffer buffer;
    buffer.append(longText().c_str(), 2000);
    buffer.setSize(2000);
    buffer.setFill(0);
    FBufferStream source(buffer);
    NarrowStream target(1100);
    EXPECT_EQ(target.copyFrom(source, 2000), 1100);
}

TEST(FStream, ARefusedReadEndsEveryLoop) {
    RefusingStream source;
    FMemoryStream target;
    EXPECT_EQ(static_cast<FStream&>(target).FStream::copyFrom(source, 10), 0);
    EXPECT_TRUE(source.writeTo(target));
    EXPECT_EQ(target.getSize(), 0);
    EXPECT_TRUE(FStream::compareStreams(source, target));
    char line[4];
    EXPECT_EQ(source.readLine(line, sizeof line), 0);
}

TEST(FStream, WriteToCopiesFromTheStart) {
    const std::string text = longText();
    FMemoryStream source;
    fill(source, text);
    source.seek(100, SeekMode::fromStart);
    FMemoryStream target;
    EXPECT_TRUE(source.writeTo(target));
    EXPECT_EQ(bytesOf(target), text);
}

TEST(FStream, WriteToOfWholeBlocksEndsThere) {
    FMemoryStream source;
    fill(source, std::string(2 * FStream::kCopyBlockSize, 'x'));
    FMemoryStream target;
    EXPECT_TRUE(source.writeTo(target));
    EXPECT_EQ(target.getSize(), 2 * FStream::kCopyBlockSize);
}

TEST(FStream, WriteToIsFalseWhenTheTargetTakesLess) {
    FMemoryStream source;
    fill(source, longText());
    NarrowStream target(1500);
    EXPECT_FALSE(source.writeTo(target));
    EXPECT_EQ(target.getSize(), 1500);
}

TEST(FStream, ComparesFromTheStart) {
    FMemoryStream a;
    FMemoryStream b;
    fill(a, longText());
    fill(b, longText());
    a.seek(50, SeekMode::fromStart);
    EXPECT_TRUE(FStream::compareStreams(a, b));
    EXPECT_TRUE(FStream::compareStreams(a, a));
}

TEST(FStream, ComparesContentAndLength) {
    FMemoryStream a;
    FMemoryStream b;
    fill(a, longText());
    fill(b, longText() + "x");
    EXPECT_FALSE(FStream::compareStreams(a, b));
    EXPECT_FALSE(FStream::compareStreams(b, a));
    fill(b, longText());
    b.seek(-1, SeekMode::fromEnd);
    b.write("x", 1);
    EXPECT_FALSE(FStream::compareStreams(a, b));
    fill(a, "");
    fill(b, "");
    EXPECT_TRUE(FStream::compareStreams(a, b));
}

TEST(FStream, OrderOfBytesStandsBehindTheTableOfRawOperations) {
    FMemoryStream stream;
    stream.setSwap(0x1234);
    std::uint16_t word = 0;
    const auto* typed = reinterpret_cast<const char*>(static_cast<FTypedStream*>(&stream));
    std::memcpy(&word, typed + sizeof(void*), sizeof word);
    EXPECT_EQ(word, 0x1234);
}

TEST(FStream, KeepsItsFileTypeAndOrder) {
    FMemoryStream stream;
    EXPECT_EQ(stream.getSwap(), 0);
    EXPECT_FALSE(stream.getFileType().isDefined());
    stream.setFileType(FFileType("Wave", "wav"));
    EXPECT_TRUE(stream.getFileType().getDosType() == "wav");
    EXPECT_TRUE(stream.flush());
}

} // namespace
} // namespace tessera
