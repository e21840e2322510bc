#include "discovery/uri/FileSystemRegistry.h"

#include "discovery/uri/FileSystemFacade.h"
#include "discovery/uri/FileSystemProvider.h"
#include "discovery/uri/NativeFileSystem.h"
#include "persistence/streams/FStream.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

constexpr const char* kNoFileSystem = "no filesystem registered to handle URI";

Uri uriOf(const char* scheme, const char* path = "/a") {
    Uri uri = Uri::fromPath(path);
    uri.scheme = scheme;
    return uri;
}

class Provider : public FileSystemProvider {
public:
    FileSystem* fileSystem(const Uri&) override { return &files; }
    NativeFileSystem files;
};

TEST(FileSystemRegistry, TheEmptySchemeAndFileLeadToTheSame) {
    auto& registry = FileSystemRegistry::getInstance();
    FileSystem* native = registry.defaultFileSystem();
    ASSERT_NE(native, nullptr);
    EXPECT_EQ(registry.resolve(uriOf("")).value(), native);
    EXPECT_EQ(registry.resolve(uriOf("file")).value(), native);
    EXPECT_EQ(registry.resolve("/some/path").value(), native);
    EXPECT_EQ(registry.fileSystemForScheme("file"), native);
    EXPECT_EQ(defaultFileSystem(), native);
}

TEST(FileSystemRegistry, AnUnknownSchemeIsAnError) {
    const auto result = FileSystemRegistry::getInstance().resolve(uriOf("http"));
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().message, kNoFileSystem);
    EXPECT_EQ(FileSystemRegistry::getInstance().fileSystemForScheme("http"), nullptr);
}

TEST(FileSystemRegistry, RegisteringReplacesAndUnregisteringTakesAllSchemes) {
    FileSystemRegistry registry;
    Provider first;
    Provider second;
    EXPECT_EQ(registry.defaultFileSystem(), nullptr);
    registry.registerProvider("", first);
    registry.registerProvider("a", first);
    registry.registerProvider("b", second);
    registry.registerProvider("a", second);
    EXPECT_EQ(registry.fileSystemForScheme("a"), &second.files);
    EXPECT_EQ(registry.defaultFileSystem(), &first.files);
    registry.unregisterProvider(second);
    EXPECT_EQ(registry.fileSystemForScheme("a"), nullptr);
    EXPECT_EQ(registry.fileSystemForScheme("b"), nullptr);
    EXPECT_EQ(registry.defaultFileSystem(), &first.files);
}

TEST(FileSystemFacade, HandsBackTheErrorOfTheLookUp) {
    const Uri unknown = uriOf("http");
    FileSystem& files = fileSystem();
    const auto expectRefused = [](const auto& result) {
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().message, kNoFileSystem);
    };
    expectRefused(files.canonicalPath(unknown));
    expectRefused(files.fileSize(unknown));
    expectRefused(files.lastWriteTime(unknown));
    expectRefused(files.status(unknown));
    expectRefused(files.walk(
        unknown, [](const Uri&) { return true; }, kWalkFolderAlone));
    expectRefused(files.volumeInfo(unknown));
    expectRefused(files.monitor(unknown));
    expectRefused(files.setCurrentDirectory(unknown));
    expectRefused(files.open(unknown, 1));
    expectRefused(files.createDirectory(unknown));
    expectRefused(files.createDirectories(unknown));
    expectRefused(files.createLink(unknown, unknown));
    expectRefused(files.copy(unknown, uriOf("")));
    expectRefused(files.copy(uriOf(""), unknown));
    expectRefused(files.copy(unknown, unknown, FileSystem::Overwrite::yes));
    expectRefused(files.rename(unknown, unknown));
    expectRefused(files.remove(unknown));
    expectRefused(files.removeAll(unknown));
    expectRefused(files.setLastWriteTime(unknown, {}));
    expectRefused(files.moveToTrash(unknown));
}

TEST(FileSystemFacade, WithoutADefaultNothingIsValid) {
    const FileSystemRegistry empty;
    const FileSystemFacade files(empty);
    EXPECT_FALSE(files.uriFromPath("/a").ok());
    EXPECT_FALSE(files.currentDirectory().ok());
    EXPECT_FALSE(files.temporaryDirectory().ok());
    EXPECT_FALSE(files.roots().ok());
    EXPECT_TRUE(files.isCaseSensitive());
    EXPECT_FALSE(files.isValidName("a"));
    EXPECT_FALSE(files.matchPattern("a", "a"));
    EXPECT_EQ(files.sanitizeName("a:b", '_'), "a:b");
    EXPECT_EQ(files.forbiddenNameCharacters(), "");
}

TEST(FileSystemFacade, RefusesToCopyBetweenTwoFileSystems) {
    FileSystemRegistry registry;
    Provider first;
    Provider second;
    registry.registerProvider("a", first);
    registry.registerProvider("b", second);
    FileSystemFacade files(registry);
    const auto result = files.copy(uriOf("a"), uriOf("b"));
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, static_cast<int>(std::errc::cross_device_link));
}

} // namespace
} // namespace tessera::test
