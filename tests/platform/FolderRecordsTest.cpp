#include "platform/FolderRecords.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string_view>

namespace tessera::test {
namespace {

using platform::FolderChange;

// A buffer written by hand, record by record, at the places that the test names.
class RecordBuffer {
public:
    explicit RecordBuffer(std::size_t size) : bytes_(size) {}

    RecordBuffer& put(std::size_t at, std::uint32_t next, std::uint32_t action, std::u16string_view name) {
        put32(at, next);
        put32(at + 4, action);
        put32(at + 8, static_cast<std::uint32_t>(name.size() * 2));
        std::memcpy(bytes_.data() + at + 12, name.data(), name.size() * 2);
        return *this;
    }
    RecordBuffer& put32(std::size_t at, std::uint32_t value) {
        std::memcpy(bytes_.data() + at, &value, sizeof value);
        return *this;
    }
    std::vector<FolderChange> parse(std::size_t received) const {
        return platform::parseFolderRecords(std::span(bytes_).first(received));
    }
    std::vector<FolderChange> parse() const { return parse(bytes_.size()); }

private:
    std::vector<std::byte> bytes_;
};

using Changes = std::vector<FolderChange>;

TEST(FolderRecords, OneRecordIsOneChange) {
    EXPECT_EQ(RecordBuffer(22).put(0, 0, 1, u"a.wav").parse(), (Changes{{1, "a.wav"}}));
}

TEST(FolderRecords, ABurstOfTwoIsDelivered) {
    EXPECT_EQ(RecordBuffer(40).put(0, 20, 1, u"a").put(20, 0, 3, u"b").parse(), (Changes{{1, "a"}, {3, "b"}}));
}

TEST(FolderRecords, NextIsTakenFromTheStartOfTheBuffer) {
    // Three records of 20 bytes, chained as the system chains them: each offset counts from its own record. The second
    // one's 20 equals its own place in the buffer, which ends the walk.
    RecordBuffer chained(60);
    chained.put(0, 20, 1, u"a").put(20, 20, 1, u"b").put(40, 0, 1, u"c");
    EXPECT_EQ(chained.parse(), (Changes{{1, "a"}, {1, "b"}}));
    // Of other lengths: 24 more bytes are meant, byte 24 of the buffer is read, within the second record, where no
    // record stands: an action over 5.
    RecordBuffer uneven(80);
    uneven.put(0, 20, 1, u"a").put(20, 24, 1, u"second").put(44, 0, 1, u"c");
    EXPECT_EQ(uneven.parse(), (Changes{{1, "a"}, {1, "second"}}));
    // Chained from the start of the buffer all three are found.
    RecordBuffer absolute(80);
    absolute.put(0, 20, 1, u"a").put(20, 44, 1, u"second").put(44, 0, 1, u"c");
    EXPECT_EQ(absolute.parse(), (Changes{{1, "a"}, {1, "second"}, {1, "c"}}));
}

TEST(FolderRecords, AnActionOverFiveEndsTheWalk) {
    EXPECT_EQ(RecordBuffer(60).put(0, 20, 5, u"a").put(20, 40, 6, u"b").put(40, 0, 1, u"c").parse(),
              (Changes{{5, "a"}}));
    EXPECT_TRUE(RecordBuffer(20).put(0, 0, 0xffffffff, u"a").parse().empty());
}

TEST(FolderRecords, TheOffsetHasToLieSixteenBytesBeforeTheEnd) {
    RecordBuffer buffer(60);
    buffer.put(0, 24, 1, u"a").put(24, 0, 2, u"b");
    EXPECT_EQ(buffer.parse(40), (Changes{{1, "a"}}));
    EXPECT_EQ(buffer.parse(41).size(), 2u);
}

TEST(FolderRecords, ActionZeroStays) {
    EXPECT_EQ(RecordBuffer(20).put(0, 0, 0, u"a").parse(), (Changes{{0, "a"}}));
}

TEST(FolderRecords, NamesBecomeUtf8WithSlashes) {
    EXPECT_EQ(RecordBuffer(60).put(0, 0, 1, u"sub\\\u00e9\u4e2d\U0001f3b5").parse(),
              (Changes{{1, "sub/\u00e9\u4e2d\U0001f3b5"}}));
    const char16_t half[] = {0xd83c, u'x', 0xdfb5, 0};
    EXPECT_EQ(RecordBuffer(20).put(0, 0, 1, half).parse(), (Changes{{1, "\ufffdx\ufffd"}}));
}

TEST(FolderRecords, ReadsNothingBeyondTheReceivedBytes) {
    RecordBuffer buffer(32);
    buffer.put(0, 0, 1, u"abcd").put32(8, 0xffffffff);
    EXPECT_EQ(buffer.parse(16), (Changes{{1, "ab"}}));
    for (std::size_t size = 0; size < 12; ++size) {
        EXPECT_TRUE(buffer.parse(size).empty()) << size;
    }
    EXPECT_EQ(buffer.parse(13), (Changes{{1, ""}}));
}

TEST(FolderRecords, AWalkInCirclesEnds) {
    RecordBuffer buffer(4096);
    buffer.put(0, 100, 1, u"a").put(100, 50, 1, u"b").put(50, 100, 1, u"c");
    const Changes changes = buffer.parse();
    EXPECT_EQ(changes.size(), 4096u / 16 + 1);
}

} // namespace
} // namespace tessera::test
