#include "persistence/streams/FTypedStream.h"

#include "foundation/containers/CmBuffer.h"
#include "foundation/text/FString.h"
#include "persistence/streams/FBufferStream.h"
#include "persistence/streams/FIBStream.h"
#include "tests/persistence/streams/StreamBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <initializer_list>
#include <limits>

namespace tessera {
namespace {

struct ValueRow {
    const char* name;
    std::function<bool(FTypedStream&)> write;
    std::string plain;
    std::string swapped;
};

class FTypedStreamValues : public testing::TestWithParam<ValueRow> {};

TEST_P(FTypedStreamValues, GoesAsItStandsInMemory) {
    FMemoryStream stream;
    EXPECT_TRUE(GetParam().write(stream));
    EXPECT_EQ(bytesOf(stream), GetParam().plain);
}

TEST_P(FTypedStreamValues, GoesReversedUnderSwap) {
    FMemoryStream stream;
    stream.setSwap(1);
    EXPECT_TRUE(GetParam().write(stream));
    EXPECT_EQ(bytesOf(stream), GetParam().swapped);
}

const std::int16_t kInt16s[] = {1, -2};
const std::uint16_t kUInt16s[] = {0x0102, 0xfffe};
const std::int32_t kInt32s[] = {1, -2};
const std::uint32_t kUInt32s[] = {0x01020304u};
const std::int64_t kInt64s[] = {0x0102030405060708};
const std::uint64_t kUInt64s[] = {0x0102030405060708u};
const float kFloats[] = {1.0f, -2.5f};
const double kDoubles[] = {1.0};

INSTANTIATE_TEST_SUITE_P(
    All, FTypedStreamValues,
    testing::Values(
        ValueRow{"Char8", [](auto& s) { return s.writeChar8('a'); }, "a", "a"},
        ValueRow{"Int8", [](auto& s) { return s.writeInt8(-2); }, "\xfe", "\xfe"},
        ValueRow{"UInt8", [](auto& s) { return s.writeUInt8(0xfe); }, "\xfe", "\xfe"},
        ValueRow{"Int16", [](auto& s) { return s.writeInt16(-2); }, "\xfe\xff", "\xff\xfe"},
        ValueRow{"UInt16", [](auto& s) { return s.writeUInt16(0x0102); }, "\x02\x01", "\x01\x02"},
        ValueRow{"Int32", [](auto& s) { return s.writeInt32(-2); }, "\xfe\xff\xff\xff", "\xff\xff\xff\xfe"},
        ValueRow{"UInt32", [](auto& s) { return s.writeUInt32(0x01020304u); }, "\x04\x03\x02\x01", "\x01\x02\x03\x04"},
        ValueRow{"Int64", [](auto& s) { return s.writeInt64(-2); }, "\xfe\xff\xff\xff\xff\xff\xff\xff",
                 "\xff\xff\xff\xff\xff\xff\xff\xfe"},
        ValueRow{"UInt64", [](auto& s) { return s.writeUInt64(0x0102030405060708u); },
                 "\x08\x07\x06\x05\x04\x03\x02\x01", "\x01\x02\x03\x04\x05\x06\x07\x08"},
        ValueRow{"Float", [](auto& s) { return s.writeFloat(-2.5f); }, bytes("\0\0\x20\xc0"), bytes("\xc0\x20\0\0")},
        ValueRow{"Double", [](auto& s) { return s.writeDouble(1.0); }, bytes("\0\0\0\0\0\0\xf0\x3f"),
                 bytes("\x3f\xf0\0\0\0\0\0\0")},
        ValueRow{"True", [](auto& s) { return s.writeBool(true); }, bytes("\1\0"), bytes("\0\1")},
        ValueRow{"False", [](auto& s) { return s.writeBool(false); }, bytes("\0\0"), bytes("\0\0")},
        ValueRow{"Int16Array", [](auto& s) { return s.writeInt16Array(kInt16s, 2); }, bytes("\1\0\xfe\xff"),
                 bytes("\0\1\xff\xfe")},
        ValueRow{"UInt16Array", [](auto& s) { return s.writeUInt16Array(kUInt16s, 2); }, "\x02\x01\xfe\xff",
                 "\x01\x02\xff\xfe"},
        ValueRow{"Int32Array", [](auto& s) { return s.writeInt32Array(kInt32s, 2); }, bytes("\1\0\0\0\xfe\xff\xff\xff"),
                 bytes("\0\0\0\1\xff\xff\xff\xfe")},
        ValueRow{"UInt32Array", [](auto& s) { return s.writeUInt32Array(kUInt32s, 1); }, "\x04\x03\x02\x01",
                 "\x01\x02\x03\x04"},
        ValueRow{"Int64Array", [](auto& s) { return s.writeInt64Array(kInt64s, 1); },
                 "\x08\x07\x06\x05\x04\x03\x02\x01", "\x01\x02\x03\x04\x05\x06\x07\x08"},
        ValueRow{"UInt64Array", [](auto& s) { return s.writeUInt64Array(kUInt64s, 1); },
                 "\x08\x07\x06\x05\x04\x03\x02\x01", "\x01\x02\x03\x04\x05\x06\x07\x08"},
        ValueRow{"FloatArray", [](auto& s) { return s.writeFloatArray(kFloats, 2); }, bytes("\0\0\x80\x3f\0\0\x20\xc0"),
                 bytes("\x3f\x80\0\0\xc0\x20\0\0")},
        ValueRow{"DoubleArray", [](auto& s) { return s.writeDoubleArray(kDoubles, 1); }, bytes("\0\0\0\0\0\0\xf0\x3f"),
                 bytes("\x3f\xf0\0\0\0\0\0\0")},
        ValueRow{"NoElements", [](auto& s) { return s.writeInt32Array(kInt32s, -1); }, "", ""}),
    [](const auto& row) { return row.param.name; });

class FTypedStreamReading : public testing::TestWithParam<std::uint16_t> {};

TEST_P(FTypedStreamReading, GivesBackWhatWasWritten) {
    FMemoryStream stream;
    stream.setSwap(GetParam());
    stream.writeChar8('x');
    stream.writeInt8(-8);
    stream.writeUInt8(208);
    stream.writeInt16(-1600);
    stream.writeUInt16(61600);
    stream.writeInt32(-320000);
    stream.writeUInt32(4000000000u);
    stream.writeInt64(-64000000000);
    stream.writeUInt64(18000000000000000000u);
    stream.writeFloat(1.5f);
    stream.writeDouble(-0.1);
    stream.writeBool(true);
    stream.rewind();

    char c = 0;
    std::int8_t int8 = 0;
    std::uint8_t uint8 = 0;
    std::int16_t int16 = 0;
    std::uint16_t uint16 = 0;
    std::int32_t int32 = 0;
    std::uint32_t uint32 = 0;
    std::int64_t int64 = 0;
    std::uint64_t uint64 = 0;
    float single = 0;
    double real = 0;
    bool flag = false;
    EXPECT_TRUE(stream.readChar8(c) && stream.readInt8(int8) && stream.readUInt8(uint8) && stream.readInt16(int16) &&
                stream.readUInt16(uint16) && stream.readInt32(int32) && stream.readUInt32(uint32) &&
                stream.readInt64(int64) && stream.readUInt64(uint64) && stream.readFloat(single) &&
                stream.readDouble(real) && stream.readBool(flag));
    EXPECT_EQ(c, 'x');
    EXPECT_EQ(int8, -8);
    EXPECT_EQ(uint8, 208);
    EXPECT_EQ(int16, -1600);
    EXPECT_EQ(uint16, 61600);
    EXPECT_EQ(int32, -320000);
    EXPECT_EQ(uint32, 4000000000u);
    EXPECT_EQ(int64, -64000000000);
    EXPECT_EQ(uint64, 18000000000000000000u);
    EXPECT_EQ(single, 1.5f);
    EXPECT_EQ(real, -0.1);
    EXPECT_TRUE(flag);
    EXPECT_EQ(stream.tell(), stream.getSize());
}

INSTANTIATE_TEST_SUITE_P(BothOrders, FTypedStreamReading, testing::Values(0, 1));

TEST(FTypedStream, ShortReadClearsTheTarget) {
    FMemoryStream stream;
    fill(stream, "abc");
    std::int32_t value = 77;
    EXPECT_FALSE(stream.readInt32(value));
    EXPECT_EQ(value, 0);
    double real = 77;
    EXPECT_FALSE(stream.readDouble(real));
    EXPECT_EQ(real, 0.0);
    bool flag = true;
    EXPECT_FALSE(stream.readBool(flag));
    EXPECT_FALSE(flag);
}

TEST(FTypedStream, AnyWordButZeroIsTrue) {
    FMemoryStream stream;
    fill(stream, bytes("\0\x80"));
    bool flag = false;
    EXPECT_TRUE(stream.readBool(flag));
    EXPECT_TRUE(flag);
}

TEST(FTypedStream, ArrayStopsAtTheFirstFailureAndClearsThatElement) {
    FMemoryStream stream;
    fill(stream, bytes("\1\0\2\0\3"));
    std::int16_t values[] = {7, 7, 7, 7};
    EXPECT_FALSE(stream.readInt16Array(values, 4));
    EXPECT_EQ(values[0], 1);
    EXPECT_EQ(values[1], 2);
    EXPECT_EQ(values[2], 0);
    EXPECT_EQ(values[3], 7);
}

TEST(FTypedStream, WritingToAFullStreamFails) {
    char memory[3];
    FMemoryStream stream(memory, 3);
    EXPECT_FALSE(stream.writeInt32(1));
    EXPECT_TRUE(stream.isReadOnly());
}

TEST(FTypedStream, String8HasANulIfAsked) {
    FMemoryStream stream;
    EXPECT_TRUE(stream.writeString8("ab", false));
    EXPECT_TRUE(stream.writeString8("c", true));
    EXPECT_FALSE(stream.writeString8(nullptr, true));
    EXPECT_EQ(bytesOf(stream), bytes("abc\0"));
}

TEST(FTypedStream, Str8IsLengthWithNulThenBytes) {
    FMemoryStream stream;
    EXPECT_TRUE(stream.writeStr8("ab"));
    EXPECT_TRUE(stream.writeStr8(nullptr));
    EXPECT_TRUE(stream.writeStr8(""));
    EXPECT_EQ(bytesOf(stream), bytes("\3\0\0\0ab\0\0\0\0\0\1\0\0\0\0"));

    stream.rewind();
    EXPECT_STREQ(stream.readStr8().get(), "ab");
    EXPECT_EQ(stream.readStr8(), nullptr);
    EXPECT_STREQ(stream.readStr8().get(), "");
}

TEST(FTypedStream, Str8OfTheGreatestLengthIsRead) {
    FMemoryStream stream;
    stream.writeInt32(0x40000);
    const std::string text(0x40000 - 1, 'x');
    stream.writeString8(text.c_str(), true);
    stream.rewind();
    const auto read = stream.readStr8();
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(std::strlen(read.get()), 0x3ffffu);
}

TEST(FTypedStream, Str8RefusesLengthsOutOfRange) {
    for (const std::int32_t length : {0x40001, 0, -1, std::numeric_limits<std::int32_t>::max()}) {
        FMemoryStream stream;
        stream.writeInt32(length);
        stream.setSize(0x40010);
        stream.rewind();
        EXPECT_EQ(stream.readStr8(), nullptr) << length;
        EXPECT_EQ(stream.tell(), 4) << length;
    }
}

TEST(FTypedStream, Str8ThatComesShortIsNull) {
    FMemoryStream stream;
    fill(stream, bytes("\5\0\0\0abc\0"));
    EXPECT_EQ(stream.readStr8(), nullptr);
}

TEST(FTypedStream, Str8WithoutItsNulIsTerminated) {
    FMemoryStream stream;
    fill(stream, bytes("\2\0\0\0abc"));
    EXPECT_STREQ(stream.readStr8().get(), "ab");
}

TEST(FTypedStream, ReadLineEndsAtLineFeedAndNul) {
    FMemoryStream stream;
    fill(stream, bytes("one\r\ntwo\nthree\0\r\nlast"));
    char line[20];
    const char* const expected[] = {"one", "two", "three", "", "last", ""};
    for (const char* text : expected) {
        EXPECT_EQ(stream.readLine(line, sizeof line), static_cast<std::int32_t>(std::strlen(text)));
        EXPECT_STREQ(line, text);
    }
}

// Lines come out of memory in one piece, and byte by byte out of a stream that has to be read.
TEST(FTypedStream, LinesAreTheSameFromEveryStream) {
    const std::string content = bytes("one\r\n\r\ntwo\0\xef\xbb\xbf\xc3\xa4\nlonger than the buffer\r\nlast\r\0");
    FMemoryStream memory;
    CmBuffer bytesOfBuffer;
    bytesOfBuffer.append(content.data(), static_cast<std::int32_t>(content.size()));
    bytesOfBuffer.setSize(bytesOfBuffer.getFill());
    FBufferStream buffer(bytesOfBuffer);
    FMemoryStream hosts;
    FIBStream read(&hosts.hostView());
    for (FStream* stream : std::initializer_list<FStream*>{&memory, &buffer, &read}) {
        fill(memory, content);
        fill(hosts, content);
        stream->rewind();
        char line[10];
        for (const char* expected :
             {"one", "", "two", "\xef\xbb\xbf\xc3\xa4", "longer th", "an the bu", "ffer", "last\r"}) {
            EXPECT_EQ(stream->readLine(line, sizeof line), static_cast<std::int32_t>(std::strlen(expected)))
                << stream->getClassName();
            EXPECT_STREQ(line, expected) << stream->getClassName();
        }
        stream->rewind();
        FString text;
        for (const char16_t* expected : {u"one", u"", u"two", u"\u00e4", u"longer than the buffer", u"last\r"}) {
            EXPECT_TRUE(stream->readTextLine(text)) << stream->getClassName();
            EXPECT_EQ(std::u16string(text.text16()), expected) << stream->getClassName();
        }
        EXPECT_FALSE(stream->readTextLine(text)) << stream->getClassName();
    }
}

TEST(FTypedStream, ReadLineKeepsACarriageReturnInsideTheLine) {
    FMemoryStream stream;
    fill(stream, "a\rb\r\n");
    char line[20];
    EXPECT_EQ(stream.readLine(line, sizeof line), 3);
    EXPECT_STREQ(line, "a\rb");
}

TEST(FTypedStream, ReadLineLeavesWhatDoesNotFit) {
    FMemoryStream stream;
    fill(stream, "abcdef\n");
    char line[4];
    EXPECT_EQ(stream.readLine(line, 4), 3);
    EXPECT_STREQ(line, "abc");
    EXPECT_EQ(stream.readLine(line, 4), 3);
    EXPECT_STREQ(line, "def");
    EXPECT_EQ(stream.readLine(line, 1), 0);
    EXPECT_STREQ(line, "");
    EXPECT_EQ(stream.readLine(nullptr, 4), 0);
    EXPECT_EQ(stream.tell(), 6);
}

TEST(FTypedStream, WideTextGoesByUnits) {
    FMemoryStream stream;
    EXPECT_TRUE(stream.writeWide(u"a\u20ac", true));
    EXPECT_TRUE(stream.writeWide(u"b", false));
    EXPECT_FALSE(stream.writeWide(nullptr, true));
    EXPECT_EQ(bytesOf(stream), bytes("a\0\xac\x20\0\0b\0"));
}

TEST(FTypedStream, WideTextIsReversedUnderSwap) {
    FMemoryStream stream;
    stream.setSwap(1);
    EXPECT_TRUE(stream.writeWide(u"a\u20ac", true));
    EXPECT_EQ(bytesOf(stream), bytes("\0a\x20\xac\0\0"));
}

TEST(FTypedStream, TextLineOfAsciiGoesAsItIs) {
    FMemoryStream stream;
    EXPECT_TRUE(stream.writeTextLine(FString(u"plain")));
    EXPECT_TRUE(stream.writeTextLine(FString()));
    EXPECT_EQ(bytesOf(stream), bytes("plain\0\0"));
}

TEST(FTypedStream, TextLineOfOtherTextIsMarkedUtf8) {
    FMemoryStream stream;
    EXPECT_TRUE(stream.writeTextLine(FString(u"\u00e4b")));
    EXPECT_EQ(bytesOf(stream), bytes("\xef\xbb\xbf\xc3\xa4"
                                     "b\0"));
}

TEST(FTypedStream, TextLinesAreReadUpToNulOrLineEnd) {
    FMemoryStream stream;
    fill(stream, bytes("one\0two\r\n\xef\xbb\xbf\xc3\xa4\nlast"));
    FString line;
    EXPECT_TRUE(stream.readTextLine(line));
    EXPECT_FALSE(line.isWide());
    EXPECT_STREQ(line.text8(), "one");
    EXPECT_TRUE(stream.readTextLine(line));
    EXPECT_STREQ(line.text8(), "two");
    EXPECT_TRUE(stream.readTextLine(line));
    EXPECT_TRUE(line.isWide());
    EXPECT_EQ(std::u16string(line.text16()), u"\u00e4");
    EXPECT_TRUE(stream.readTextLine(line));
    EXPECT_STREQ(line.text8(), "last");
    EXPECT_FALSE(stream.readTextLine(line));
    EXPECT_TRUE(line.isEmpty());
}

TEST(FTypedStream, TextLineMayBeLongerThanABlock) {
    const std::string text(5000, 'x');
    FMemoryStream stream;
    EXPECT_TRUE(stream.writeTextLine(FString(text.c_str())));
    stream.rewind();
    FString line;
    EXPECT_TRUE(stream.readTextLine(line));
    EXPECT_EQ(line.text8(), text);
}

} // namespace
} // namespace tessera
