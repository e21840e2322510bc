// Paths and file types as trees of named values.
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/paths/FNPath.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

FFileType waveType() {
    return FFileType("Wave", "wav", 5u, "wave", "audio/x", "audio/y");
}

std::string textOf(const FAttributes& tree, const char* name) {
    FString text;
    return tree.getString(name, text) ? text.text8() : "missing";
}

std::int64_t numberOf(const FAttributes& tree, const char* name) {
    std::int64_t number = -99;
    tree.getInt(name, number);
    return number;
}

std::string fullPath(const FPath& path) {
    return FString(path.getFullPath()).text8();
}

class SavesFileTypes {
public:
    explicit SavesFileTypes(bool save) : before_(FPath::savesFileTypes()) { FPath::setSavesFileTypes(save); }
    ~SavesFileTypes() { FPath::setSavesFileTypes(before_); }

private:
    bool before_;
};

TEST(FFileTypeAttributes, AreWrittenUnderFourKeys) {
    FAttributes tree;
    EXPECT_TRUE(waveType().storeAttributes(tree));
    ASSERT_EQ(tree.getCount(), 4) << "the MIME types stay behind";
    EXPECT_TRUE(tree.at(0)->getKey() == "MacType");
    EXPECT_TRUE(tree.at(1)->getKey() == "DosType");
    EXPECT_TRUE(tree.at(2)->getKey() == "UnixType");
    EXPECT_TRUE(tree.at(3)->getKey() == "Name");
    EXPECT_EQ(numberOf(tree, "MacType"), 5);
    EXPECT_EQ(textOf(tree, "DosType"), "wav");
    EXPECT_EQ(textOf(tree, "UnixType"), "wave");
    EXPECT_EQ(textOf(tree, "Name"), "Wave");
}

TEST(FFileTypeAttributes, OfAnEmptyTypeAreNone) {
    FAttributes tree;
    EXPECT_TRUE(FFileType().storeAttributes(tree));
    EXPECT_EQ(tree.getCount(), 0);
}

TEST(FFileTypeAttributes, LeaveWhatTheyLack) {
    FFileType type = waveType();
    FAttributes tree;
    tree.setString("DosType", "aiff");
    EXPECT_TRUE(type.restoreAttributes(tree));
    EXPECT_TRUE(type.getDosType() == "aiff");
    EXPECT_EQ(type.getMacType(), 5u);
    EXPECT_TRUE(type.getUnixType() == "wave");
    EXPECT_TRUE(type.getName() == "Wave");
    EXPECT_TRUE(type.getMimeType() == "audio/x");
}

TEST(FFileTypeAttributes, KeepEveryCode) {
    for (const std::uint32_t code : {0x54455854u, 0xffffffffu, 0x80000000u}) {
        FFileType type;
        type.setMacType(code);
        FAttributes tree;
        type.storeAttributes(tree);
        FFileType restored;
        restored.restoreAttributes(tree);
        EXPECT_EQ(restored.getMacType(), code);
    }
}

TEST(FPathAttributes, HoldNameFolderKindAndType) {
    FNPath path(u"C:\\a\\b.wav", PathKind::container);
    path.setKind(PathKind::link);
    path.setFileType(waveType());
    FAttributes tree;
    EXPECT_TRUE(path.storeAttributes(tree));
    ASSERT_EQ(tree.getCount(), 4);
    EXPECT_EQ(textOf(tree, "Name"), "b.wav");
    EXPECT_EQ(textOf(tree, "Path"), "C:\\a\\");
    EXPECT_EQ(numberOf(tree, "Type"), 2);
    const FAttributes* type = tree.getTree("FileType");
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(textOf(*type, "DosType"), "wav");
    EXPECT_EQ(tree.find("PathType"), nullptr);
}

TEST(FPathAttributes, OfAnEmptyPathAreNone) {
    FAttributes tree;
    EXPECT_TRUE(FNPath().storeAttributes(tree));
    EXPECT_EQ(tree.getCount(), 0);
}

TEST(FPathAttributes, HaveNoTypeForAFolder) {
    FNPath path(u"C:\\a\\b", PathKind::folder);
    path.setFileType(waveType());
    FAttributes tree;
    path.storeAttributes(tree);
    EXPECT_EQ(numberOf(tree, "Type"), 1);
    EXPECT_EQ(tree.find("FileType"), nullptr);
}

TEST(FPathAttributes, HaveNoTypeWhileTheSwitchIsOff) {
    EXPECT_TRUE(FPath::savesFileTypes());
    const SavesFileTypes off(false);
    FNPath path(u"C:\\a\\b", PathKind::file);
    path.setFileType(waveType());
    FAttributes tree;
    path.storeAttributes(tree);
    EXPECT_EQ(tree.find("FileType"), nullptr);
}

TEST(FPathAttributes, ComeBack) {
    for (const PathKind kind : {PathKind::file, PathKind::folder, PathKind::link, PathKind::container}) {
        FNPath path(u"C:\\a\\\u00e4 b.wav", kind);
        path.setFileType(waveType());
        FAttributes tree;
        path.storeAttributes(tree);
        FNPath restored(u"D:\\old\\old", PathKind::file);
        EXPECT_TRUE(restored.restoreAttributes(tree));
        EXPECT_EQ(FPath::comparePaths(&restored, &path, true), 0);
        EXPECT_EQ(restored.getKind(), kind);
        EXPECT_EQ(restored.fileType().isDefined(), !path.isFolder());
    }
}

TEST(FPathAttributes, ThatAreMissingGiveAnEmptyPath) {
    FNPath path(u"C:\\a\\b", PathKind::folder);
    path.setFileType(waveType());
    FAttributes tree;
    EXPECT_TRUE(path.restoreAttributes(tree));
    EXPECT_TRUE(path.getName().isEmpty());
    EXPECT_TRUE(path.getPath().isEmpty());
    EXPECT_TRUE(path.isFile());
    EXPECT_TRUE(path.fileType().getDosType() == "wav") << "the type stays";
}

TEST(FPathAttributes, OfAFolderBringNoType) {
    FAttributes tree;
    tree.setInt("Type", 1);
    tree.setAttributes("FileType", waveType());
    FNPath path;
    path.restoreAttributes(tree);
    EXPECT_FALSE(path.fileType().isDefined());
}

TEST(FPathAttributes, WithAnotherPathTypeHaveSlashes) {
    for (const int pathType : {0, 2, -1}) {
        FAttributes tree;
        tree.setString("Name", "c/d");
        tree.setString("Path", "C:/a/b\\");
        tree.setInt("PathType", pathType);
        FNPath path;
        path.restoreAttributes(tree);
        EXPECT_EQ(fullPath(path), "C:\\a\\b\\c/d") << "the name stays as it is";
    }
    for (const bool stated : {true, false}) {
        FAttributes tree;
        tree.setString("Path", "C:/a/");
        if (stated) {
            tree.setInt("PathType", 1);
        }
        FNPath path;
        path.restoreAttributes(tree);
        EXPECT_EQ(fullPath(path), "C:/a/") << stated;
    }
}

TEST(FPathAttributes, CloseTheFolderInFrontOfAName) {
    FAttributes tree;
    tree.setString("Path", "C:\\a");
    FNPath path;
    path.restoreAttributes(tree);
    EXPECT_EQ(fullPath(path), "C:\\a") << "without a name the text stays";
    tree.setString("Name", "b");
    path.restoreAttributes(tree);
    EXPECT_EQ(fullPath(path), "C:\\a\\b");
    tree.setString("Path", "");
    path.restoreAttributes(tree);
    EXPECT_EQ(fullPath(path), "b");
}

} // namespace
} // namespace tessera
