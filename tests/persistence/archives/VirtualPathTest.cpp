#include "persistence/archives/VirtualPath.h"

#include "persistence/archives/FArchiveManager.h"
#include "persistence/paths/FNPath.h"
#include "persistence/urls/FUrl.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

struct Row {
    const char* name;
    const char16_t* text;
    const char16_t* scheme; // null for none
    const char16_t* key;
    const char16_t* inner;
};

constexpr Row kRows[] = {
    {"in an archive", u"vfs:\\\\C:\\a.pak\\\\b\\c", u"vfs", u"C:\\a.pak", u"b\\c"},
    {"the root", u"vfs:\\\\C:\\a.pak", u"vfs", u"C:\\a.pak", u""},
    {"the root as a folder", u"vfs:\\\\C:\\a.pak\\", u"vfs", u"C:\\a.pak", u""},
    {"the root with a double separator", u"vfs:\\\\C:\\a.pak\\\\", u"vfs", u"C:\\a.pak", u""},
    {"below the root of the file tree", u"vfs:\\\\\\tmp\\a.pak\\\\b", u"vfs", u"\\tmp\\a.pak", u"b"},
    {"archive below the root of the file tree", u"vfs:\\\\\\tmp\\a.pak", u"vfs", u"\\tmp\\a.pak", u""},
    {"on a share", u"vfs:\\\\\\\\srv\\share\\a.pak\\\\b\\c", u"vfs", u"\\\\srv\\share\\a.pak", u"b\\c"},
    {"a bare share", u"vfs:\\\\\\\\srv\\share\\a.pak", u"vfs", u"\\\\srv\\share\\a.pak", u""},
    {"an archive in an archive", u"vfs:\\\\C:\\a.pak\\\\s\\b.pak\\\\c", u"vfs", u"vfs:\\\\C:\\a.pak\\\\s\\b.pak", u"c"},
    {"nothing behind the scheme", u"vfs:\\\\", u"vfs", nullptr, u""},
    {"no double separator", u"vfs:C:\\a.pak", nullptr, nullptr, u""},
    {"a double separator too late", u"vfs:C\\\\a.pak", nullptr, nullptr, u""},
    {"two double separators too late", u"vfs:C\\\\a.pak\\\\b", nullptr, nullptr, u""},
    {"a scheme of more than the prefix", u"vfs:x:\\\\C:\\a.pak\\\\b", u"vfs:x", nullptr, u""},
    {"another scheme", u"kpssound:\\\\lib\\x\\y", u"kpssound", u"LIB", u"\\x\\y"},
    {"another scheme's root", u"kpssound:\\\\lib", u"kpssound", u"LIB", u"\\"},
    {"another scheme without a key", u"kpssound:\\\\", u"kpssound", nullptr, u""},
    {"a separator ahead of the scheme", u"a\\kpssound:\\\\lib", u"a\\kpssound", nullptr, u""},
    {"no scheme in front", u":\\\\lib\\x", nullptr, u"LIB", u"\\x"},
    {"a native path", u"C:\\a.pak\\\\b", nullptr, nullptr, u""},
    {"nothing", u"", nullptr, nullptr, u""},
};

TEST(VirtualPath, IsTakenApart) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const auto scheme = virtualScheme(row.text);
        EXPECT_EQ(scheme, row.scheme != nullptr ? std::optional<std::u16string>(row.scheme) : std::nullopt);
        const auto key = archiveKey(row.text);
        EXPECT_EQ(key, row.key != nullptr ? std::optional<std::u16string>(row.key) : std::nullopt);
        EXPECT_EQ(innerPath(row.text), row.inner);
    }
}

TEST(VirtualPath, StartsWithOneOfFivePrefixes) {
    for (const char16_t* text : {u"kpssound:\\\\a", u"aurelix:", u"axf:x", u"vfs:\\\\C:\\a", u"archive:\\\\a"}) {
        EXPECT_TRUE(isVirtualText(text));
    }
    for (const char16_t* text : {u"", u"vfs", u"VFS:\\\\a", u"C:\\vfs:\\\\a", u"\\tmp\\archive:\\a", u"xvfs:"}) {
        EXPECT_FALSE(isVirtualText(text));
    }
}

TEST(VirtualPath, OfAPathTheFolderIsLookedAt) {
    EXPECT_TRUE(isVirtualPath(FNPath(FString(u"vfs:\\\\C:\\a.pak\\\\b"), PathKind::file)));
    FPath bare;
    bare.setName(FString(u"axf:one"));
    EXPECT_TRUE(isVirtualPath(bare));
    bare.setPath(FString(u"C:\\"));
    EXPECT_FALSE(isVirtualPath(bare)); // the prefix stands further in
    EXPECT_FALSE(isVirtualPath(FNPath(FString(u"C:\\vfs:\\x"), PathKind::file)));
}

TEST(VirtualPath, AUrlCountsWithBackslashes) {
    const FUrl url(FString("vfs:///tmp/a.pak//b/c"));
    EXPECT_TRUE(isVirtualPath(url));
    EXPECT_EQ(virtualTextOf(url), u"vfs:\\\\\\tmp\\a.pak\\\\b\\c");
    FString key;
    ASSERT_TRUE(FArchiveManager::getArchiveKey(url, key));
    EXPECT_TRUE(key == FString(u"\\tmp\\a.pak"));
    const FUrl drive(FString("vfs://C:/a.pak//b/c"));
    EXPECT_EQ(virtualTextOf(drive), u"vfs:\\\\C:\\a.pak\\\\b\\c");
    ASSERT_TRUE(FArchiveManager::getArchiveKey(drive, key));
    EXPECT_TRUE(key == FString(u"C:\\a.pak"));
    EXPECT_TRUE(FArchiveManager::getInnerPath(drive) == FString(u"b\\c"));
}

TEST(VirtualPath, WithoutAPartTheTextStaysAsItWas) {
    FString out("kept");
    const FNPath native(FString(u"C:\\a"), PathKind::file);
    EXPECT_FALSE(FArchiveManager::getScheme(native, out));
    EXPECT_FALSE(FArchiveManager::getArchiveKey(native, out));
    EXPECT_TRUE(out == "kept");
    EXPECT_TRUE(FArchiveManager::getInnerPath(native).isEmpty());
    EXPECT_TRUE(FArchiveManager::getScheme(FNPath(FString(u"axf:\\\\x"), PathKind::file), out));
    EXPECT_TRUE(out == "axf");
}

} // namespace
} // namespace tessera::test
