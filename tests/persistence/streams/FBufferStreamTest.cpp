#include "persistence/streams/FBufferStream.h"

#include "foundation/containers/CmBuffer.h"
#include "foundation/object/ClassFactory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

namespace tessera {
namespace {

// A buffer that holds the text and nothing behind it, with the cursor at its start.
void fillBuffer(CmBuffer& buffer, const char* text) {
    buffer.append(text, static_cast<std::int32_t>(std::strlen(text)));
    buffer.setSize(buffer.getFill());
    buffer.setFill(0);
}

TEST(FBufferStream, IsKnownByNameAndNotCreatedByIt) {
    ClassFactory* factory = ClassFactory::getInstance(true);
    for (const char* name : {"FBufferStream", "FIBStream", "FStream"}) {
        EXPECT_NE(factory->findByName(name), nullptr) << name;
        EXPECT_EQ(factory->createInstance(name), nullptr) << name;
    }
}

TEST(FBufferStream, WriteAppendsAndGivesTheSizeAsTaken) {
    CmBuffer buffer;
    FBufferStream stream(buffer);
    EXPECT_EQ(stream.write("abc", 3), 3);
    EXPECT_EQ(stream.write("de", 2), 2);
    EXPECT_EQ(stream.tell(), 5);
    EXPECT_EQ(buffer.getFill(), 5);
    EXPECT_EQ(std::memcmp(buffer.getData(), "abcde", 5), 0);
}

TEST(FBufferStream, ReadCutsAtTheEndOfTheData) {
    CmBuffer buffer;
    fillBuffer(buffer, "abcde");
    FBufferStream stream(buffer);
    char text[8] = {};
    EXPECT_EQ(stream.read(text, 3), 3);
    EXPECT_EQ(stream.tell(), 3);
    EXPECT_EQ(stream.read(text + 3, 5), 2);
    EXPECT_STREQ(text, "abcde");
}

TEST(FBufferStream, ReadWithNothingLeftGoesToTheStart) {
    CmBuffer buffer;
    fillBuffer(buffer, "abc");
    FBufferStream stream(buffer);
    char text[8];
    stream.read(text, 3);
    EXPECT_EQ(stream.read(text, 1), 0);
    EXPECT_EQ(stream.tell(), 0);
}

TEST(FBufferStream, ReadOfNothingLeavesTheCursor) {
    CmBuffer buffer;
    fillBuffer(buffer, "abc");
    FBufferStream stream(buffer);
    char text[8] = {};
    stream.read(text, 2);
    EXPECT_EQ(stream.read(text, 0), 0);
    EXPECT_EQ(stream.read(text, -1), 0);
    EXPECT_EQ(stream.read(nullptr, 1), 0);
    EXPECT_EQ(stream.tell(), 2);
}

TEST(FBufferStream, SeekFromTheStartGrowsTheBuffer) {
    CmBuffer buffer;
    FBufferStream stream(buffer);
    EXPECT_EQ(stream.seek(10, SeekMode::fromStart), 10);
    EXPECT_EQ(buffer.getSize(), 10);
    EXPECT_EQ(stream.tell(), 10);
    EXPECT_EQ(stream.seek(2, SeekMode::fromStart), 2);
    EXPECT_EQ(buffer.getSize(), 10);
}

TEST(FBufferStream, SeekFromHereGrowsTheBuffer) {
    CmBuffer buffer;
    fillBuffer(buffer, "abc");
    FBufferStream stream(buffer);
    stream.seek(2, SeekMode::fromStart);
    EXPECT_EQ(stream.seek(5, SeekMode::fromHere), 7);
    EXPECT_EQ(buffer.getSize(), 7);
    EXPECT_EQ(stream.seek(-6, SeekMode::fromHere), 1);
}

TEST(FBufferStream, SeekFromTheEndCountsBackwards) {
    CmBuffer buffer;
    fillBuffer(buffer, "abcde");
    FBufferStream stream(buffer);
    EXPECT_EQ(stream.seek(2, SeekMode::fromEnd), 3);
    EXPECT_EQ(stream.seek(0, SeekMode::fromEnd), 5);
}

TEST(FBufferStream, PositionsOutsideTheBufferAreRefused) {
    CmBuffer buffer;
    fillBuffer(buffer, "abc");
    FBufferStream stream(buffer);
    stream.seek(1, SeekMode::fromStart);
    EXPECT_EQ(stream.seek(-1, SeekMode::fromStart), -1);
    EXPECT_EQ(stream.seek(-2, SeekMode::fromHere), -1);
    EXPECT_EQ(stream.seek(-1, SeekMode::fromEnd), -1);
    EXPECT_EQ(stream.seek(4, SeekMode::fromEnd), -1);
    EXPECT_EQ(stream.seek(std::int64_t{1} << 31, SeekMode::fromStart), -1);
    for (const std::int64_t far :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        for (const SeekMode mode : {SeekMode::fromStart, SeekMode::fromHere, SeekMode::fromEnd}) {
            EXPECT_EQ(stream.seek(far, mode), -1);
        }
    }
    EXPECT_EQ(stream.tell(), 1);
    EXPECT_EQ(buffer.getSize(), 3);
}

TEST(FBufferStream, WhatWasWrittenIsReadOnceTheSizeIsCutToIt) {
    CmBuffer buffer;
    FBufferStream stream(buffer);
    EXPECT_TRUE(stream.writeInt32(42));
    buffer.setSize(buffer.getFill());
    stream.rewind();
    std::int32_t value = 0;
    EXPECT_TRUE(stream.readInt32(value));
    EXPECT_EQ(value, 42);
    EXPECT_FALSE(stream.readInt32(value));
}

} // namespace
} // namespace tessera
