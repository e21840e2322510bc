#include "persistence/streams/FMemoryStream.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "tests/persistence/streams/StreamBytes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <utility>

namespace tessera {
namespace {

TEST(FMemoryStream, IsCreatedByName) {
    const auto object = FRefPtr<CmObject>::adopt(
        static_cast<CmObject*>(ClassFactory::getInstance(true)->createInstance("FMemoryStream")));
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isTypeOf("FStream", true));
    EXPECT_STREQ(object->getClassName(), "FMemoryStream");
}

TEST(FMemoryStream, GrowsByPages) {
    struct Row {
        std::int32_t size;
        std::int32_t allocated;
    };
    for (const Row row : {Row{1, 4096}, Row{4096, 4096}, Row{4097, 8192}, Row{8193, 12288}}) {
        FMemoryStream stream;
        EXPECT_TRUE(stream.setSize(row.size));
        EXPECT_EQ(stream.getSize(), row.size);
        EXPECT_EQ(stream.getAllocated(), row.allocated);
    }
}

TEST(FMemoryStream, KeepsItsPagesWhenTheSizeFits) {
    FMemoryStream stream;
    stream.setSize(5000);
    stream.setSize(10);
    EXPECT_EQ(stream.getAllocated(), 8192);
    stream.seek(0, SeekMode::fromEnd);
    stream.write("abc", 3);
    EXPECT_EQ(stream.getSize(), 13);
    EXPECT_EQ(stream.getAllocated(), 8192);
}

TEST(FMemoryStream, NewBytesAreZero) {
    FMemoryStream stream;
    stream.write("abcdef", 6);
    stream.setSize(2);
    stream.setSize(5);
    EXPECT_EQ(bytesOf(stream), bytes("ab\0\0\0"));
}

TEST(FMemoryStream, SizeBelowOneFreesTheBlock) {
    for (const std::int32_t size : {0, -1}) {
        FMemoryStream stream;
        stream.write("abc", 3);
        EXPECT_TRUE(stream.setSize(size));
        EXPECT_EQ(stream.getData(), nullptr);
        EXPECT_EQ(stream.getSize(), 0);
        EXPECT_EQ(stream.getAllocated(), 0);
        EXPECT_EQ(stream.tell(), 0);
    }
}

TEST(FMemoryStream, ReadIsCutToWhatIsLeft) {
    FMemoryStream stream;
    fill(stream, "abcde");
    char buffer[8] = {};
    EXPECT_EQ(stream.read(buffer, 3), 3);
    EXPECT_EQ(stream.read(buffer, 8), 2);
    EXPECT_EQ(std::string(buffer, 2), "de");
    EXPECT_EQ(stream.read(buffer, 8), 0);
    EXPECT_EQ(stream.tell(), 5);
}

TEST(FMemoryStream, ReadBehindTheEndComesBackToIt) {
    FMemoryStream stream;
    fill(stream, "abc");
    stream.seek(100, SeekMode::fromStart);
    char c = 0;
    EXPECT_EQ(stream.read(&c, 1), 0);
    EXPECT_EQ(stream.tell(), 3);
}

TEST(FMemoryStream, NothingIsReadOrWrittenAtANegativePosition) {
    FMemoryStream stream;
    fill(stream, "abc");
    stream.seek(-1, SeekMode::fromStart);
    char c = 0;
    EXPECT_EQ(stream.read(&c, 1), 0);
    EXPECT_EQ(stream.write("x", 1), 0);
    EXPECT_EQ(stream.tell(), -1);
    EXPECT_EQ(bytesOf(stream), "abc");
}

TEST(FMemoryStream, NullAndEmptyTransfersDoNothing) {
    FMemoryStream stream;
    fill(stream, "abc");
    char c = 0;
    EXPECT_EQ(stream.write(nullptr, 1), 0);
    EXPECT_EQ(stream.write("x", 0), 0);
    EXPECT_EQ(stream.write("x", -1), 0);
    EXPECT_EQ(stream.read(nullptr, 1), 0);
    EXPECT_EQ(stream.read(&c, -1), 0);
    EXPECT_EQ(stream.tell(), 0);
    EXPECT_EQ(bytesOf(stream), "abc");
}

TEST(FMemoryStream, WriteBehindTheEndLeavesZeros) {
    FMemoryStream stream;
    fill(stream, "abcdef");
    stream.setSize(2);
    stream.seek(4, SeekMode::fromStart);
    EXPECT_EQ(stream.write("xy", 2), 2);
    EXPECT_EQ(bytesOf(stream), bytes("ab\0\0xy"));
}

TEST(FMemoryStream, WritePastTheLargestSizeIsRefused) {
    FMemoryStream stream;
    fill(stream, "abc");
    for (const std::int64_t position :
         {std::int64_t{0x7fffffff}, std::int64_t{0x80000000}, std::numeric_limits<std::int64_t>::max()}) {
        stream.seek(position, SeekMode::fromStart);
        EXPECT_EQ(stream.write("x", 1), 0);
    }
    EXPECT_EQ(bytesOf(stream), "abc");
    EXPECT_FALSE(stream.isReadOnly());
}

TEST(FMemoryStream, SeekIsUncheckedFromTheStartAndFromHere) {
    FMemoryStream stream;
    fill(stream, "abc");
    EXPECT_EQ(stream.seek(100, SeekMode::fromStart), 100);
    EXPECT_EQ(stream.seek(-200, SeekMode::fromHere), -100);
    EXPECT_EQ(stream.tell(), -100);
}

TEST(FMemoryStream, SeekFromTheEndStaysAtSize) {
    FMemoryStream stream;
    fill(stream, "abcde");
    EXPECT_EQ(stream.seek(1, SeekMode::fromEnd), 5);
    EXPECT_EQ(stream.seek(0, SeekMode::fromEnd), 5);
    EXPECT_EQ(stream.seek(-2, SeekMode::fromEnd), 3);
    EXPECT_EQ(stream.seek(-9, SeekMode::fromEnd), -4);
    EXPECT_EQ(stream.seek(std::numeric_limits<std::int64_t>::min(), SeekMode::fromEnd),
              std::numeric_limits<std::int64_t>::min() + 5);
}

TEST(FMemoryStream, ForeignMemoryIsWrittenInPlace) {
    char memory[] = "abcde";
    {
        FMemoryStream stream(memory, 5);
        EXPECT_FALSE(stream.ownsMemory());
        EXPECT_EQ(stream.getSize(), 5);
        EXPECT_EQ(stream.getAllocated(), 5);
        stream.seek(1, SeekMode::fromStart);
        EXPECT_EQ(stream.write("XY", 2), 2);
    }
    EXPECT_STREQ(memory, "aXYde");
}

TEST(FMemoryStream, WritePastForeignMemoryFailsAndMarksReadOnly) {
    char memory[] = "abcde";
    FMemoryStream stream(memory, 5);
    stream.seek(4, SeekMode::fromStart);
    EXPECT_EQ(stream.write("XY", 2), 0);
    EXPECT_TRUE(stream.isReadOnly());
    EXPECT_STREQ(memory, "abcde");
    stream.rewind();
    EXPECT_EQ(stream.write("X", 1), 0);
    char c = 0;
    EXPECT_EQ(stream.read(&c, 1), 1);
}

TEST(FMemoryStream, NewSizeOfForeignMemoryFailsAndMarksReadOnly) {
    char memory[] = "abcde";
    FMemoryStream stream(memory, 5);
    EXPECT_TRUE(stream.setSize(5));
    EXPECT_FALSE(stream.isReadOnly());
    EXPECT_FALSE(stream.setSize(3));
    EXPECT_TRUE(stream.isReadOnly());
    EXPECT_EQ(stream.getSize(), 5);
}

TEST(FMemoryStream, ConstantMemoryIsReadOnlyFromTheStart) {
    const char memory[] = "abcde";
    FMemoryStream stream(static_cast<const void*>(memory), 5);
    EXPECT_TRUE(stream.isReadOnly());
    EXPECT_EQ(stream.write("X", 1), 0);
    EXPECT_EQ(bytesOf(stream), "abcde");
}

TEST(FMemoryStream, TruncateGivesTheRestOfThePagesBack) {
    FMemoryStream stream;
    fill(stream, "abc");
    EXPECT_EQ(stream.getAllocated(), 4096);
    stream.truncate();
    EXPECT_EQ(stream.getAllocated(), 3);
    EXPECT_EQ(bytesOf(stream), "abc");
    stream.seek(0, SeekMode::fromEnd);
    EXPECT_EQ(stream.write("d", 1), 1);
    EXPECT_EQ(stream.getAllocated(), 4096);
    EXPECT_EQ(bytesOf(stream), "abcd");
}

TEST(FMemoryStream, TruncateToCursorMakesThePositionTheEnd) {
    FMemoryStream stream;
    fill(stream, "abcde");
    stream.seek(2, SeekMode::fromStart);
    stream.truncateToCursor();
    EXPECT_EQ(bytesOf(stream), "ab");
    EXPECT_EQ(stream.getAllocated(), 2);
    EXPECT_EQ(stream.tell(), 2);
    stream.rewind();
    stream.truncateToCursor();
    EXPECT_EQ(stream.getSize(), 0);
    EXPECT_EQ(stream.getData(), nullptr);
}

TEST(FMemoryStream, DetachedBlockBelongsToTheCaller) {
    FMemoryStream stream;
    stream.write("abc", 3);
    std::uint8_t* block = stream.detach();
    EXPECT_EQ(std::string(reinterpret_cast<char*>(block), 3), "abc");
    std::free(block);
    EXPECT_EQ(stream.getData(), nullptr);
    EXPECT_EQ(stream.getAllocated(), 0);
    EXPECT_EQ(stream.getSize(), 0);
    EXPECT_EQ(stream.tell(), 0);
    EXPECT_TRUE(stream.ownsMemory());
    char c = 0;
    EXPECT_EQ(stream.read(&c, 1), 0);
}

TEST(FMemoryStream, MoveTakesTheBlock) {
    char memory[] = "abcde";
    FMemoryStream source(memory, 5);
    source.seek(2, SeekMode::fromStart);
    FMemoryStream target;
    target.write("old", 3);
    target = std::move(source);
    EXPECT_FALSE(target.ownsMemory());
    EXPECT_EQ(target.getSize(), 5);
    EXPECT_EQ(target.tell(), 2);
    EXPECT_EQ(source.getData(), nullptr);
    EXPECT_EQ(source.getSize(), 0);
    EXPECT_TRUE(source.ownsMemory());
    EXPECT_EQ(source.write("new", 3), 3);
    EXPECT_STREQ(memory, "abcde");
}

TEST(FMemoryStream, CopyHasItsOwnBytesTypeAndOrder) {
    FMemoryStream source;
    source.setSwap(1);
    source.setFileType(FFileType("Text", "txt"));
    source.write("abc", 3);
    const auto copy = FRefPtr<CmObject>::adopt(source.clone());
    auto* stream = cmCast<FMemoryStream>(copy.get());
    ASSERT_NE(stream, nullptr);
    source.rewind();
    source.write("X", 1);
    EXPECT_EQ(bytesOf(*stream), "abc");
    EXPECT_EQ(stream->getSwap(), 1);
    EXPECT_TRUE(stream->getFileType().getDosType() == "txt");
    EXPECT_EQ(stream->tell(), 0);
}

TEST(FMemoryStream, CopyFromMemoryMovesBothPositions) {
    FMemoryStream source;
    fill(source, "abcdef");
    source.seek(1, SeekMode::fromStart);
    FMemoryStream target;
    EXPECT_EQ(target.copyFrom(source, 3), 3);
    EXPECT_EQ(bytesOf(target), "bcd");
    EXPECT_EQ(source.tell(), 4);
    EXPECT_EQ(target.copyFrom(source, 100), 2);
    EXPECT_EQ(bytesOf(target), "bcdef");
    EXPECT_EQ(target.copyFrom(source, 1), 0);
    EXPECT_EQ(target.copyFrom(source, -1), 0);
}

TEST(FMemoryStream, CopyFromItselfReadsWhatItWrites) {
    FMemoryStream stream;
    fill(stream, "abc");
    EXPECT_EQ(stream.copyFrom(stream, 2), 2);
    EXPECT_EQ(bytesOf(stream), "abab");
}

TEST(FMemoryStream, ObjectFormIsCountAndBytes) {
    FMemoryStream content;
    content.write("abc", 3);
    FMemoryStream stream;
    EXPECT_TRUE(content.write(stream));
    EXPECT_TRUE(FMemoryStream().write(stream));
    EXPECT_EQ(bytesOf(stream), bytes("\3\0\0\0abc\0\0\0\0"));

    stream.rewind();
    char memory[] = "foreign";
    FMemoryStream loaded(memory, 7);
    EXPECT_TRUE(loaded.read(stream));
    EXPECT_TRUE(loaded.ownsMemory());
    EXPECT_EQ(loaded.tell(), 0);
    EXPECT_EQ(bytesOf(loaded), "abc");
    EXPECT_TRUE(loaded.read(stream));
    EXPECT_EQ(loaded.getSize(), 0);
    EXPECT_FALSE(loaded.read(stream));
}

TEST(FMemoryStream, ObjectFormThatComesShortIsEmpty) {
    for (const std::string& content :
         {bytes("\4\0\0\0abc"), bytes("\xff\xff\xff\xff"), bytes("\xff\xff\xff\x7f"), bytes("\1\0")}) {
        FMemoryStream stream;
        fill(stream, content);
        FMemoryStream loaded;
        loaded.write("old", 3);
        EXPECT_FALSE(loaded.read(stream));
        EXPECT_EQ(loaded.getSize(), 0);
        // A count is no proof of bytes: no memory is taken for more than a block beyond what has come.
        EXPECT_LE(loaded.getAllocated(), 0);
    }
}

TEST(FMemoryStream, ObjectFormOfSeveralBlocksComesWhole) {
    FMemoryStream content;
    content.setSize(200000);
    content.seek(150000, SeekMode::fromStart);
    content.write("mark", 4);
    FMemoryStream stream;
    EXPECT_TRUE(content.write(stream));
    stream.rewind();
    FMemoryStream loaded;
    EXPECT_TRUE(loaded.read(stream));
    EXPECT_EQ(bytesOf(loaded), bytesOf(content));
}

} // namespace
} // namespace tessera
