#include "foundation/containers/CmString.h"
#include "foundation/text/FString.h"
#include "persistence/streams/FMemoryStream.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tessera {
namespace {

using namespace std::string_literals;

std::string written(const FString& text) {
    FMemoryStream stream;
    EXPECT_TRUE(text.writeString(stream));
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

std::string withCount(std::int32_t count, const std::string& body) {
    return std::string(reinterpret_cast<const char*>(&count), sizeof count) + body;
}

class FStringStream : public testing::Test {
protected:
    // Reads over what the string held before.
    bool read(const std::string& bytes) {
        stream_ = FMemoryStream(bytes_.assign(bytes).data(), static_cast<std::int32_t>(bytes.size()));
        return text_.readString(stream_);
    }

    std::string bytes_;
    FMemoryStream stream_;
    FString text_{"old"};
};

TEST_F(FStringStream, AnEmptyStringIsItsCountAlone) {
    EXPECT_EQ(written(FString()), "\0\0\0\0"s);
    EXPECT_EQ(written(FString("")), "\0\0\0\0"s);
    EXPECT_TRUE(read("\0\0\0\0"s));
    EXPECT_TRUE(text_.isEmpty());
}

TEST_F(FStringStream, NarrowTextIsItsBytesAndANul) {
    EXPECT_EQ(written(FString("Take")), "\5\0\0\0Take\0"s);
    EXPECT_TRUE(read("\5\0\0\0Take\0"s));
    EXPECT_EQ(text_.view8(), "Take");
}

TEST_F(FStringStream, NarrowTextBeyondAsciiComesBackUnchanged) {
    EXPECT_TRUE(read(written(FString("caf\xe9"))));
    EXPECT_EQ(text_.view8(), "caf\xe9");
}

TEST_F(FStringStream, WideTextThatEndsAtOnceIsItsNulAndTheMark) {
    for (const FString& text : {FString(u"\0", 1), FString(u"\0more", 5)}) {
        EXPECT_EQ(written(text), "\4\0\0\0\0\xef\xbb\xbf"s);
    }
    EXPECT_TRUE(read("\4\0\0\0\0\xef\xbb\xbf"s));
    EXPECT_TRUE(text_.isEmpty());
}

TEST_F(FStringStream, WideTextIsUtf8WithAMarkBehindItsNul) {
    const FString wide(u"caf\u00e9");
    EXPECT_EQ(written(wide), "\x09\0\0\0caf\xc3\xa9\0\xef\xbb\xbf"s);
    EXPECT_TRUE(wide.isWide()) << "writing leaves the string as it is";
    EXPECT_TRUE(read("\x09\0\0\0caf\xc3\xa9\0\xef\xbb\xbf"s));
    EXPECT_EQ(text_.view16(), u"caf\u00e9");
    EXPECT_TRUE(read(written(FString(u"plain"))));
    EXPECT_EQ(text_.view16(), u"plain") << "wide text comes back wide";
}

TEST_F(FStringStream, AMarkInFrontCountsToo) {
    EXPECT_TRUE(read(withCount(6, "\xef\xbb\xbf\xc3\xa9\0"s)));
    EXPECT_EQ(text_.view16(), u"\u00e9");
    EXPECT_TRUE(read(withCount(3, "\xef\xbb\xbf")));
    EXPECT_TRUE(text_.isEmpty());
}

TEST_F(FStringStream, AMissingNulIsAdded) {
    EXPECT_TRUE(read(withCount(4, "Take")));
    EXPECT_EQ(text_.view8(), "Take");
    EXPECT_TRUE(read(withCount(5, "\xc3\xa9\xef\xbb\xbf")));
    EXPECT_EQ(text_.view16(), u"\u00e9");
}

TEST_F(FStringStream, OnlyTheLastNulIsTakenOff) {
    EXPECT_TRUE(read(withCount(4, "a\0b\0"s)));
    EXPECT_EQ(text_.view8(), "a\0b"s);
    EXPECT_TRUE(read(withCount(1, "\0"s)));
    EXPECT_TRUE(text_.isEmpty());
}

TEST_F(FStringStream, MarkedTextThatIsNoUtf8StaysBytes) {
    EXPECT_TRUE(read(withCount(5, "\xff\0\xef\xbb\xbf"s)));
    EXPECT_EQ(text_.view8(), "\xff");
}

TEST_F(FStringStream, ACountBelowOneIsTheEmptyString) {
    EXPECT_TRUE(read(withCount(-5, "rest")));
    EXPECT_TRUE(text_.isEmpty());
    EXPECT_EQ(stream_.tell(), 4);
}

TEST_F(FStringStream, FiftyThousandBytesAreReadAndOneMoreIsSkipped) {
    const std::string body = std::string(49999, 'x') + '\0';
    EXPECT_TRUE(read(withCount(50000, body) + "next"));
    EXPECT_EQ(text_.length(), 49999);
    EXPECT_EQ(stream_.tell(), 50004);

    text_ = "old";
    EXPECT_FALSE(read(withCount(50001, "x" + body) + "next"));
    EXPECT_EQ(text_.view8(), "old");
    char next[4];
    EXPECT_EQ(stream_.read(next, 4), 4);
    EXPECT_EQ(std::string_view(next, 4), "next");
}

TEST_F(FStringStream, ACountThatCantBeReadLeavesTheStreamAlone) {
    EXPECT_FALSE(read("\5\0"s));
    EXPECT_EQ(text_.view8(), "old");
}

TEST_F(FStringStream, ABodyThatComesShortLeavesTheStringEmpty) {
    EXPECT_FALSE(read(withCount(5, "Tak")));
    EXPECT_TRUE(text_.isEmpty());
}

TEST_F(FStringStream, WritingStopsWhereTheStreamTakesNoMore) {
    // Room for the count, for the text, and for the mark, each short of a byte.
    for (const std::int32_t room : {3, 8, 12}) {
        char memory[16];
        FMemoryStream full(memory, room);
        EXPECT_FALSE(FString(u"caf\u00e9").writeString(full)) << room;
    }
    char memory[16];
    FMemoryStream enough(memory, 13);
    EXPECT_TRUE(FString(u"caf\u00e9").writeString(enough));
}

TEST_F(FStringStream, ObjectStringsHaveTheSameForm) {
    FMemoryStream stream;
    EXPECT_TRUE(CmString(u"caf\u00e9").write(stream));
    stream.rewind();
    CmString back;
    EXPECT_TRUE(back.read(stream));
    EXPECT_EQ(back.string().view16(), u"caf\u00e9");
    EXPECT_FALSE(back.read(stream));
}

} // namespace
} // namespace tessera
