#include "persistence/streams/FFileStream.h"

#include "persistence/streams/IStreamWatcher.h"
#include "platform/NativePath.h"
#include "support/ErrorNumbers.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace tessera {
namespace {

// Counts what it sees, and refuses from a given transfer on.
class CountingWatcher final : public IStreamWatcher {
public:
    bool mayTransfer(std::int32_t) override { return admitted-- > 0; }
    void advance(std::int32_t size) override { total += size; }

    int admitted = 1000;
    std::int64_t total = 0;
};

class FFileStreamTest : public testing::Test {
protected:
    std::unique_ptr<FFileStream> open(std::uint32_t mode, platform::FileDisposition disposition) {
        const std::u16string text = *platform::fromNativePath(testing_support::utf8OfPath(native));
        platform::FileOpenFlags flags;
        flags.read = (mode & FileOpenMode::read) != 0;
        flags.write = (mode & FileOpenMode::write) != 0;
        flags.shareRead = (mode & FileOpenMode::shareRead) != 0;
        flags.deleteOnClose = (mode & FileOpenMode::temporary) != 0;
        std::int32_t error = 0;
        platform::File file = platform::File::open(text, flags, disposition, error);
        EXPECT_EQ(error, 0);
        return std::make_unique<FFileStream>(std::move(file), FNPath(text.c_str(), PathKind::file), mode);
    }

    std::unique_ptr<FFileStream> create() {
        return open(FileOpenMode::read | FileOpenMode::write, platform::FileDisposition::createAlways);
    }

    std::string content() {
        std::ifstream file(native, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void TearDown() override { std::filesystem::remove(native); }

    std::filesystem::path native = std::filesystem::temp_directory_path() / u8"stream \u00e4.bin";
};

TEST_F(FFileStreamTest, WritesAndReadsAFile) {
    const auto stream = create();
    EXPECT_TRUE(stream->isOpen());
    EXPECT_TRUE(stream->writeInt32(42));
    EXPECT_EQ(stream->write("abc", 3), 3);
    EXPECT_EQ(stream->tell(), 7);
    EXPECT_EQ(stream->getSize(), 7);
    stream->rewind();
    std::int32_t value = 0;
    EXPECT_TRUE(stream->readInt32(value));
    EXPECT_EQ(value, 42);
    char text[8] = {};
    EXPECT_EQ(stream->read(text, 8), 3);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(stream->read(text, 8), 0);
    EXPECT_EQ(stream->getLastError(), 0);
    stream->close();
    EXPECT_FALSE(stream->isOpen());
    EXPECT_EQ(content(), std::string("\x2a\0\0\0abc", 7));
}

TEST_F(FFileStreamTest, SeeksFromStartHereAndEnd) {
    const auto stream = create();
    stream->write("abcdef", 6);
    EXPECT_EQ(stream->seek(2, SeekMode::fromStart), 2);
    EXPECT_EQ(stream->seek(1, SeekMode::fromHere), 3);
    EXPECT_EQ(stream->seek(-1, SeekMode::fromEnd), 5);
    EXPECT_EQ(stream->seek(std::int64_t{1} << 33, SeekMode::fromStart), std::int64_t{1} << 33);
    EXPECT_EQ(stream->seek(0, static_cast<SeekMode>(3)), -1);
}

TEST_F(FFileStreamTest, KnowsItsEnd) {
    const auto stream = create();
    EXPECT_TRUE(stream->isEndOfFile());
    stream->write("ab", 2);
    EXPECT_TRUE(stream->isEndOfFile());
    stream->seek(1, SeekMode::fromStart);
    EXPECT_FALSE(stream->isEndOfFile());
    stream->seek(5, SeekMode::fromStart);
    EXPECT_TRUE(stream->isEndOfFile());
}

TEST_F(FFileStreamTest, TruncateKeepsThePosition) {
    const auto stream = create();
    stream->write("abcdef", 6);
    stream->seek(5, SeekMode::fromStart);
    EXPECT_TRUE(stream->truncate(2));
    EXPECT_EQ(stream->tell(), 5);
    EXPECT_EQ(stream->getSize(), 2);
    EXPECT_TRUE(stream->truncate(4));
    stream->close();
    EXPECT_EQ(content(), std::string("ab\0\0", 4));
}

TEST_F(FFileStreamTest, SizeOfAnUnbufferedWriterComesFromItsEnd) {
    const auto stream = open(FileOpenMode::read | FileOpenMode::write | FileOpenMode::unbuffered,
                             platform::FileDisposition::createAlways);
    stream->write("abcdef", 6);
    stream->seek(1, SeekMode::fromStart);
    EXPECT_EQ(stream->getSize(), 6);
    EXPECT_EQ(stream->tell(), 1);
}

TEST_F(FFileStreamTest, FirstErrorIsKept) {
    create()->write("abc", 3);
    const auto stream = open(FileOpenMode::read, platform::FileDisposition::openExisting);
    EXPECT_EQ(stream->write("x", 1), 0);
    EXPECT_EQ(stream->getLastError(), testing_support::kErrorNumbers.wrongDirection);
    EXPECT_EQ(stream->seek(-1, SeekMode::fromStart), -1);
    EXPECT_EQ(stream->getLastError(), testing_support::kErrorNumbers.wrongDirection);
    char c = 0;
    EXPECT_EQ(stream->read(&c, 1), 1);
    EXPECT_EQ(c, 'a');
}

TEST_F(FFileStreamTest, WatcherSeesEveryTransferAndCanRefuse) {
    const auto stream = create();
    CountingWatcher watcher;
    stream->setWatcher(&watcher);
    stream->write("abcdef", 6);
    stream->rewind();
    char text[4];
    EXPECT_EQ(stream->read(text, 4), 4);
    EXPECT_EQ(watcher.total, 10);
    watcher.admitted = 0;
    EXPECT_EQ(stream->read(text, 1), -1);
    EXPECT_EQ(stream->write("x", 1), -1);
    EXPECT_EQ(watcher.total, 10);
    stream->setWatcher(nullptr);
    EXPECT_EQ(stream->read(text, 2), 2);
}

TEST_F(FFileStreamTest, WritersAndSharersOfWritingTellTheirChanges) {
    EXPECT_TRUE(create()->tellsChanges());
    EXPECT_TRUE(
        open(FileOpenMode::read | FileOpenMode::shareWrite, platform::FileDisposition::openExisting)->tellsChanges());
    const auto reader = open(FileOpenMode::read | FileOpenMode::shareRead, platform::FileDisposition::openExisting);
    EXPECT_FALSE(reader->tellsChanges());
    EXPECT_TRUE(reader->flush());
}

TEST_F(FFileStreamTest, FlushHandsOutWhatWasWritten) {
    const auto stream = open(FileOpenMode::read | FileOpenMode::write | FileOpenMode::shareRead,
                             platform::FileDisposition::createAlways);
    stream->write("abc", 3);
    EXPECT_TRUE(stream->flush());
    EXPECT_EQ(content(), "abc");
}

TEST_F(FFileStreamTest, TemporaryFileIsGoneWhenItIsClosed) {
    const auto stream = open(FileOpenMode::read | FileOpenMode::write | FileOpenMode::temporary,
                             platform::FileDisposition::createAlways);
    EXPECT_EQ(stream->write("abc", 3), 3);
    stream->rewind();
    char text[4] = {};
    EXPECT_EQ(stream->read(text, 3), 3);
    EXPECT_STREQ(text, "abc");
    stream->close();
    EXPECT_FALSE(std::filesystem::exists(native));
}

TEST_F(FFileStreamTest, StreamWithoutAFileDoesNothing) {
    FFileStream stream;
    char c = 0;
    EXPECT_EQ(stream.read(&c, 1), 0);
    EXPECT_EQ(stream.write(&c, 1), 0);
    EXPECT_EQ(stream.seek(0, SeekMode::fromStart), -1);
    EXPECT_EQ(stream.tell(), -1);
    EXPECT_EQ(stream.getSize(), 0);
    EXPECT_FALSE(stream.truncate(0));
    EXPECT_TRUE(stream.flush());
    stream.close();
    EXPECT_EQ(stream.getLastError(), 0);
}

TEST_F(FFileStreamTest, StreamThatGoesClosesItsFile) {
    create()->write("abc", 3);
    EXPECT_EQ(content(), "abc");
}

} // namespace
} // namespace tessera
