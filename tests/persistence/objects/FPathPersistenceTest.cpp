#include "persistence/paths/FNPath.h"
#include "persistence/streams/FMemoryStream.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

template <std::size_t size>
void fill(FMemoryStream& stream, const char (&bytes)[size]) {
    stream.write(bytes, size - 1);
    stream.rewind();
}

TEST(FPathPersistence, WritesNameTypeTagKindAndFolder) {
    FPath path(PathKind::folder);
    path.setName("n");
    path.setPath(u"C:\\a");
    path.setFileType(FFileType("N", "d", 0x01020304u, "u", "mime/x"));
    FMemoryStream stream;
    EXPECT_TRUE(path.write(stream));
    const char expected[] = "\2\0\0\0n\0"
                            "\4\3\2\1"
                            "\2\0\0\0d\0"
                            "\2\0\0\0u\0"
                            "\2\0\0\0N\0"
                            "\1\0\0\0"
                            "\1\0"
                            "\x9\0\0\0C:\\a\\\0\xef\xbb\xbf";
    EXPECT_EQ(std::string(reinterpret_cast<char*>(stream.getData()), static_cast<std::size_t>(stream.getSize())),
              std::string(expected, sizeof expected - 1));
}

TEST(FPathPersistence, ReadsWhatItWrote) {
    FNPath path(u"C:\\a\\\u00e4.wav", PathKind::container);
    path.setFileType(FFileType("Wave", "wav", 5u, "wave"));
    FMemoryStream stream;
    EXPECT_TRUE(path.write(stream));
    stream.rewind();
    FNPath read;
    read.setFileType(FFileType("Old", "old", 1u, "old", "old/x", "old/y"));
    EXPECT_TRUE(read.read(stream));
    EXPECT_EQ(FPath::comparePaths(&read, &path, true), 0);
    EXPECT_TRUE(read.isContainer());
    EXPECT_TRUE(read.fileType().isEqual(&path.fileType()));
    EXPECT_EQ(read.fileType().getMacType(), 5u);
    EXPECT_TRUE(read.fileType().getName() == u"Wave");
    EXPECT_TRUE(read.fileType().getMimeType().isEmpty());
    EXPECT_EQ(stream.tell(), stream.getSize());
}

TEST(FPathPersistence, TagTwoHasTheFolderWithSlashes) {
    FMemoryStream stream;
    fill(stream, "\2\0\0\0n\0"
                 "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                 "\2\0\0\0"
                 "\0\0"
                 "\6\0\0\0C:/a/\0");
    FNPath path;
    EXPECT_TRUE(path.read(stream));
    EXPECT_EQ(std::u16string(path.getFullPath().text16()), u"C:\\a\\n");
}

TEST(FPathPersistence, ATypeThatOthersWroteInCapitalsIsFolded) {
    FMemoryStream stream;
    fill(stream, "\0\0\0\0"
                 "\4\0\0\0WAV\0"
                 "\5\0\0\0WAVE\0"
                 "\5\0\0\0Wave\0");
    FFileType type;
    EXPECT_TRUE(type.read(stream));
    EXPECT_TRUE(type.getDosType() == "wav");
    EXPECT_TRUE(type.getUnixType() == "wave");
    EXPECT_TRUE(type.getName() == "Wave");
    const FFileType wave("", "wav");
    EXPECT_TRUE(type.isEqual(&wave));
}

TEST(FPathPersistence, TagZeroIsAnOlderRecordWithoutFolder) {
    FMemoryStream stream;
    fill(stream, "\2\0\0\0n\0"
                 "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                 "\0\0\0\0"
                 "\1\0"
                 "0123456789012345678901234567890123456789"
                 "behind");
    FNPath path(u"C:\\old\\old", PathKind::file);
    EXPECT_TRUE(path.read(stream));
    EXPECT_TRUE(path.getName() == u"n");
    EXPECT_TRUE(path.getPath().isEmpty());
    EXPECT_TRUE(path.isFile()) << "the record's kind is passed over with the rest";
    EXPECT_EQ(stream.getSize() - stream.tell(), 6);
}

TEST(FPathPersistence, AnotherTagLeavesTheFolderEmpty) {
    FMemoryStream stream;
    fill(stream, "\2\0\0\0n\0"
                 "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                 "\3\0\0\0"
                 "\0\0\6\0\0\0C:\\a\\\0");
    FNPath path(u"C:\\old\\old", PathKind::file);
    EXPECT_TRUE(path.read(stream));
    EXPECT_TRUE(path.getName() == u"n");
    EXPECT_TRUE(path.getPath().isEmpty());
}

TEST(FPathPersistence, ARecordThatEndsEarlyIsFalse) {
    FNPath path(u"C:\\a\\b.wav", PathKind::file);
    FMemoryStream whole;
    path.write(whole);
    for (std::int32_t size = 0; size < whole.getSize(); ++size) {
        FMemoryStream cut(static_cast<const void*>(whole.getData()), size);
        FNPath read;
        EXPECT_FALSE(read.read(cut)) << size;
    }
}

} // namespace
} // namespace tessera
