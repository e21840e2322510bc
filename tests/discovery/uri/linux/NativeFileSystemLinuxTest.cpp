#include "discovery/uri/NativeFileSystem.h"

#include "discovery/uri/FileSystemFacade.h"
#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <sys/stat.h>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using testing_support::ScopedEnvironment;
using testing_support::ScratchFolder;

// As a URI spells a path: the unreserved characters of RFC 3986 and the "/" stand for themselves.
std::string percentEncoded(const std::string& path) {
    std::string encoded;
    for (const unsigned char byte : path) {
        if (std::isalnum(byte) != 0 || std::strchr("-_.~/", byte) != nullptr) {
            encoded += static_cast<char>(byte);
        } else {
            char text[4];
            std::snprintf(text, sizeof text, "%%%02X", byte);
            encoded += text;
        }
    }
    return encoded;
}

class NativeFileSystemLinuxTest : public testing::Test {
protected:
    Uri at(const std::string& name) const { return Uri::fromPath((scratch_ / name).string()); }

    ScratchFolder scratch_;
    FileSystem& files_ = fileSystem();
};

TEST_F(NativeFileSystemLinuxTest, APipeIsOfNoOtherKind) {
    ASSERT_EQ(mkfifo((scratch_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(files_.status(at("pipe")).value().kind, EntryKind::other);
}

TEST_F(NativeFileSystemLinuxTest, WalkMeetsALinkOnceAndDoesNotFollowIt) {
    scratch_.write("folder/inside", "");
    fs::create_directory_symlink(scratch_ / "folder", scratch_ / "link");
    std::multiset<std::string> names;
    const auto note = [&](const Uri& entry) {
        names.insert(entry.path.substr(scratch_.path().string().size() + 1));
        return true;
    };
    EXPECT_TRUE(files_.walk(at(""), note, kWalkSubfolders).ok());
    EXPECT_EQ(names, (std::multiset<std::string>{"folder", "folder/inside", "link"}));
}

TEST_F(NativeFileSystemLinuxTest, AShortcutIsALink) {
    scratch_.write("target", "x");
    EXPECT_TRUE(files_.createLink(at("target"), at("short")).ok());
    EXPECT_EQ(scratch_.read("short.lnk"), "x");
}

TEST_F(NativeFileSystemLinuxTest, CanonicalPathFollowsLinks) {
    scratch_.write("folder/file", "");
    fs::create_directory_symlink(scratch_ / "folder", scratch_ / "link");
    EXPECT_EQ(files_.canonicalPath(at("link/file")).value().path, fs::canonical(scratch_ / "folder/file").string());
    EXPECT_FALSE(files_.canonicalPath(at("absent")).ok());
}

TEST_F(NativeFileSystemLinuxTest, TheTrashKeepsWhatIsThrownAway) {
    const ScopedEnvironment home("XDG_DATA_HOME", (scratch_ / "data").string());
    scratch_.write("a b/file", "first");
    EXPECT_TRUE(files_.moveToTrash(at("a b/file")).ok());
    EXPECT_FALSE(scratch_.has("a b/file"));
    EXPECT_EQ(scratch_.read("data/Trash/files/file"), "first");
    const std::string info = scratch_.read("data/Trash/info/file.trashinfo");
    EXPECT_TRUE(info.starts_with("[Trash Info]\nPath=" + percentEncoded(scratch_.path().string()) +
                                 "/a%20b/file\nDeletionDate="))
        << info;
    scratch_.write("a b/file", "second");
    EXPECT_TRUE(files_.moveToTrash(at("a b/file")).ok());
    EXPECT_EQ(scratch_.read("data/Trash/files/file.2"), "second");
    EXPECT_FALSE(files_.moveToTrash(at("absent")).ok());
}

} // namespace
} // namespace tessera::test
