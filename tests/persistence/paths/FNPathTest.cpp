#include "persistence/paths/FNPath.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/FileTypeRegistry.h"
#include "persistence/paths/IUniqueNamer.h"
#include "platform/NativePath.h"
#include "support/ScratchFolder.h"
#include "support/SystemText.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

namespace tessera {
namespace {

namespace fs = std::filesystem;

FNPath pathTo(const fs::path& native, PathKind kind = PathKind::file) {
    return FNPath(platform::fromNativePath(testing_support::utf8OfPath(native))->c_str(), kind);
}

// A folder that goes at the end of the test.
class FNPathFiles : public testing::Test {
protected:
    FNPathFiles() { fs::create_directories(folder); }
    ~FNPathFiles() override { fs::remove_all(folder); }

    void write(const char* name, const char* content) { std::ofstream(folder / name) << content; }

    fs::path folder = fs::temp_directory_path() / u8"paths \u00e4";
};

TEST(FNPath, IsCreatedByName) {
    const auto object =
        FRefPtr<CmObject>::adopt(static_cast<CmObject*>(ClassFactory::getInstance(true)->createInstance("FNPath")));
    ASSERT_NE(cmCast<FNPath>(object.get()), nullptr);
    EXPECT_TRUE(object->isTypeOf("FPath", true));
    EXPECT_FALSE(object->isA("FPath"));
}

TEST(FNPath, EmptyPathHasNothingButItsKind) {
    const FNPath path(PathKind::folder);
    EXPECT_EQ(nameOf(path), u"");
    EXPECT_EQ(folderOf(path), u"");
    EXPECT_EQ(path.getFlags(), 0);
    EXPECT_EQ(path.getKind(), PathKind::folder);
    EXPECT_FALSE(path.fileType().isDefined());
    EXPECT_TRUE(path.isVisible());
}

TEST(FNPath, ParsesFullTexts) {
    struct Row {
        const char16_t* text;
        const char16_t* folder;
        const char16_t* name;
        PathKind kind;
    };
    const Row rows[] = {
        {u"C:/x/y.txt", u"C:\\x\\", u"y.txt", PathKind::file},
        {u"c:\\x\\y.txt", u"C:\\x\\", u"y.txt", PathKind::file},
        {u"c:", u"C:", u"", PathKind::folder},
        {u"c:\\", u"C:", u"", PathKind::folder},
        {u".\\a", u"", u"a", PathKind::file},
        {u"./a/b", u"a\\", u"b", PathKind::file},
        {u"\\a", u"\\", u"a", PathKind::file},
        {u"/a/b", u"\\a\\", u"b", PathKind::file},
        {u"a", u"", u"a", PathKind::file},
        {u"ab", u"", u"ab", PathKind::file},
        {u".", u"", u".", PathKind::file},
        {u"..", u"", u"..", PathKind::file},
        {u"..\\a", u"..\\", u"a", PathKind::file},
        {u"a\\b\\", u"a\\", u"b", PathKind::file},
        {u"a\\b\\\\", u"a\\b\\", u"", PathKind::file},
        {u"\\", u"\\", u"", PathKind::folder},
        {u"/", u"\\", u"", PathKind::folder},
        {u"\\\\server\\share", u"\\\\server\\share", u"", PathKind::folder},
        {u"\\\\server\\share\\a\\b", u"\\\\server\\share\\a\\", u"b", PathKind::file},
        {u"1:\\a", u"1:\\", u"a", PathKind::file},
        {u"", u"", u"", PathKind::folder},
    };
    for (const Row& row : rows) {
        const FNPath path(row.text, PathKind::file);
        EXPECT_EQ(folderOf(path), row.folder) << testing::PrintToString(std::u16string(row.text));
        EXPECT_EQ(nameOf(path), row.name) << testing::PrintToString(std::u16string(row.text));
        EXPECT_EQ(path.getKind(), row.kind) << testing::PrintToString(std::u16string(row.text));
    }
}

TEST(FNPath, NullTextChangesNothing) {
    FNPath path(u"C:\\x\\y.txt", PathKind::file);
    path.setNativePath(FStringRef());
    EXPECT_EQ(fullOf(path), u"C:\\x\\y.txt");
}

TEST(FNPath, IsBuiltFromNameAndParent) {
    EXPECT_EQ(fullOf(FNPath(u"b", FNPath(u"C:\\a", PathKind::folder), PathKind::file)), u"C:\\a\\b");
    EXPECT_EQ(fullOf(FNPath(u"b", FNPath(u"C:", PathKind::folder), PathKind::file)), u"C:\\b");
    EXPECT_EQ(fullOf(FNPath(u"b", FNPath(u"\\", PathKind::folder), PathKind::file)), u"\\b");
    const FNPath relative(u"b", FNPath(PathKind::folder), PathKind::container);
    EXPECT_EQ(fullOf(relative), u"b");
    EXPECT_EQ(relative.getKind(), PathKind::container);
}

TEST(FNPath, CopiesAllFields) {
    FNPath source(u"C:\\a\\b.wav", PathKind::link);
    source.setFileType(FFileType("Wave", "wav"));
    source.setVisible(false);
    source.setKindMark(true);
    source.setCachedSize(77);
    const auto clone = FRefPtr<CmObject>::adopt(source.clone());
    const auto* copy = cmCast<FNPath>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(fullOf(*copy), u"C:\\a\\b.wav");
    EXPECT_TRUE(copy->isLink());
    EXPECT_TRUE(copy->hasKindMark());
    EXPECT_FALSE(copy->isVisible());
    EXPECT_EQ(copy->getCachedSize(), 77);
    EXPECT_TRUE(copy->fileType().isEqual(&source.fileType()));
    FNPath& self = source;
    source = self;
    EXPECT_EQ(fullOf(source), u"C:\\a\\b.wav");
}

TEST(FNPath, UnknownSizeIsZero) {
    FNPath path(u"a", PathKind::file);
    EXPECT_EQ(path.getCachedSize(), 0);
    path.setCachedSize(5);
    EXPECT_EQ(path.getCachedSize(), 5);
    path.setCachedSize(-2);
    EXPECT_EQ(path.getCachedSize(), -2);
}

TEST(FNPath, NativePathGoesIntoABufferOf260) {
    char16_t buffer[260];
    FNPath path(u"C:\\a", PathKind::file);
    path.getNativePath(buffer);
    EXPECT_EQ(std::u16string(buffer), u"C:\\a");

    path.setName(std::u16string(256, u'x').c_str());
    path.getNativePath(buffer);
    EXPECT_EQ(std::u16string(buffer).size(), 259u);

    path.setName(std::u16string(257, u'x').c_str());
    path.getNativePath(buffer);
    EXPECT_EQ(buffer[0], u'\0');
    EXPECT_EQ(fullOf(path).size(), 260u);
}

TEST(FNPath, EnsureExtensionAppendsTheTypesExtension) {
    struct Row {
        const char16_t* name;
        const char* extension;
        bool replace;
        const char16_t* result;
    };
    const Row rows[] = {
        {u"Take", "wav", false, u"Take.wav"},    {u"Take.wav", "wav", false, u"Take.wav"},
        {u"Take.WAV", "wav", true, u"Take.WAV"}, {u"Take.aif", "wav", false, u"Take.aif.wav"},
        {u"Take.aif", "wav", true, u"Take.wav"}, {u"Take 1.final mix", "wav", true, u"Take 1.final mix.wav"},
        {u"Take", "", false, u"Take"},           {u"Take.aif", "", true, u"Take.aif"},
        {u"Take.", "wav", false, u"Take..wav"},  {u"Take.", "wav", true, u"Take.wav"},
    };
    for (const Row& row : rows) {
        FNPath path(row.name, PathKind::file);
        path.setFileType(FFileType("Type", row.extension, 1u));
        path.ensureExtension(row.replace);
        EXPECT_EQ(nameOf(path), row.result) << row.extension;
    }
}

TEST(FNPath, EnsureExtensionCutsLongNames) {
    FNPath path(PathKind::file);
    path.setName(std::u16string(300, u'x').c_str());
    path.setFileType(FFileType("Wave", "wav"));
    path.ensureExtension(false);
    EXPECT_EQ(nameOf(path), std::u16string(256, u'x') + u".wav");
}

TEST(FNPath, TypeComesFromTheExtension) {
    FNPath path(u"a.QQx", PathKind::file);
    path.setFileType(FFileType("Old", "old", 3u, "old", "old", "old"));
    path.updateFileType(false);
    EXPECT_EQ(text(path.fileType().getDosType()), u"qqx");
    EXPECT_EQ(text(path.fileType().getUnixType()), u"qqx");
    EXPECT_TRUE(path.fileType().getMimeType().isEmpty());
    EXPECT_TRUE(path.fileType().getName().isEmpty());
    path.setName(u"none");
    path.updateFileType(false);
    EXPECT_EQ(text(path.fileType().getDosType()), u"???");
    EXPECT_EQ(text(path.fileType().getUnixType()), u"???");
}

TEST(FNPath, TypeOfAFolderIsCleared) {
    FNPath path(u"a.wav", PathKind::folder);
    path.setFileType(FFileType("Old", "old"));
    path.updateFileType(true);
    EXPECT_FALSE(path.fileType().isDefined());
}

TEST(FNPath, RegisteredTypeIsTakenWhole) {
    static const FFileType type("Known", "fnpathknown", 9u, "", "x/known");
    registerFileType(type);
    FNPath path(u"a.FnPathKnown", PathKind::file);
    path.updateFileType(false);
    EXPECT_EQ(text(path.fileType().getName()), u"Known");
    EXPECT_EQ(path.fileType().getMacType(), 9u);
}

const FFileType& detectedType() {
    static const FFileType& type = *new FFileType("By content", "content");
    return type;
}

const FFileType* detectByContent(const std::uint8_t* buffer, std::int32_t length) {
    return length >= 6 && std::memcmp(buffer, "fnpath", 6) == 0 ? &detectedType() : nullptr;
}

TEST_F(FNPathFiles, ContentTellsTheTypeIfItMayBeRead) {
    registerFileTypeDetector(detectByContent);
    write("file.zz1", "fnpath content");
    FNPath path = pathTo(folder / "file.zz1");
    path.updateFileType(false);
    EXPECT_EQ(text(path.fileType().getDosType()), u"zz1");
    path.updateFileType(true);
    EXPECT_EQ(text(path.fileType().getName()), u"By content");
    write("file.zz1", "something else");
    path.updateFileType(true);
    EXPECT_EQ(text(path.fileType().getDosType()), u"zz1");
    fs::remove(folder / "file.zz1");
    path.updateFileType(true);
    EXPECT_EQ(text(path.fileType().getDosType()), u"zz1");
}

FString translateForTest(const FStringRef& key) {
    FString result(u"T:");
    result.append(key);
    return result;
}

TEST_F(FNPathFiles, UsableTypeIsWorkedOutOnce) {
    write("file.zz2", "x");
    FNPath path = pathTo(folder / "file.zz2");
    EXPECT_EQ(text(path.getFileType().getDosType()), u"zz2");
    path.setName(u"other.zz3");
    EXPECT_EQ(text(path.getFileType().getDosType()), u"zz2");

    FNPath code(u"a.b", PathKind::file);
    code.setFileType(FFileType("", "", 1u));
    EXPECT_TRUE(code.getFileType().getDosType().isEmpty());
}

TEST(FNPath, FolderTypeIsNamedInTheUsersLanguage) {
    FNPath plain(u"C:\\a", PathKind::folder);
    EXPECT_EQ(text(plain.getFileType().getName()), u"Directory");
    EXPECT_FALSE(plain.fileType().isDefined());
    persistenceHooks.translate = translateForTest;
    FNPath translated(u"C:\\a", PathKind::container);
    EXPECT_EQ(text(translated.getFileType().getName()), u"T:Directory");
    FNPath named(u"C:\\a", PathKind::folder);
    named.setFileType(FFileType("Album", ""));
    EXPECT_EQ(text(named.getFileType().getName()), u"Album");
    persistenceHooks.translate = nullptr;
}

TEST_F(FNPathFiles, UnknownKindIsFoundOutWhenAsked) {
    write("file", "x");
    EXPECT_TRUE(pathTo(folder / "file", PathKind::unknown).isFile());
    EXPECT_TRUE(pathTo(folder, PathKind::unknown).isFolder());
    const FNPath missing = pathTo(folder / "missing", PathKind::unknown);
    EXPECT_FALSE(missing.isFile() || missing.isFolder() || missing.isLink() || missing.isContainer());
    EXPECT_FALSE(missing.hasKindMark());
    EXPECT_EQ(missing.getKind(), PathKind::unknown);
    write("missing", "x");
    EXPECT_TRUE(missing.isFile());
}

// Gives the names of a list in turn until one is valid and free, and remembers what it was asked for.
class ListNamer final : public IUniqueNamer {
public:
    bool makeName(const FStringRef& wantedBase, const FStringRef& wantedExtension, ICandidateChecker& checker,
                  FString& result) override {
        base = text(FString(wantedBase));
        extension = text(FString(wantedExtension));
        for (const std::u16string& name : names) {
            if (checker.isValid(name.c_str()) && !checker.isTaken(name.c_str())) {
                result = name.c_str();
                return true;
            }
        }
        return false;
    }

    std::vector<std::u16string> names;
    std::u16string base;
    std::u16string extension;
};

TEST_F(FNPathFiles, MakeUniqueAsksForTheNameWithItsExtension) {
    write("a.wav", "x");
    write("b.wav", "x");
    fs::create_directory(folder / "d.wav");
    ListNamer namer;
    namer.names = {std::u16string(300, u'x'), u"a", u"b", u"c"};
    FNPath path = pathTo(folder / "take.wav");
    EXPECT_TRUE(path.makeUnique(namer));
    EXPECT_EQ(namer.base, u"take");
    EXPECT_EQ(namer.extension, u"wav");
    EXPECT_EQ(nameOf(path), u"c.wav");

    FNPath folderPath = pathTo(folder / "take.wav", PathKind::folder);
    namer.names = {u"d", u"e"};
    EXPECT_TRUE(folderPath.makeUnique(namer));
    EXPECT_EQ(nameOf(folderPath), u"e.wav");
}

TEST_F(FNPathFiles, MakeUniqueLeavesTheNameWhenTheNamerFails) {
    ListNamer namer;
    FNPath path = pathTo(folder / "take.wav");
    EXPECT_FALSE(path.makeUnique(namer));
    EXPECT_EQ(nameOf(path), u"take.wav");
}

TEST_F(FNPathFiles, MakeUniqueHasNamesForEmptyOnes) {
    ListNamer namer;
    namer.names = {u"free"};
    FNPath path(u"", pathTo(folder, PathKind::folder), PathKind::file);
    EXPECT_TRUE(path.makeUnique(namer));
    EXPECT_EQ(namer.base, u"Untitled");
    EXPECT_EQ(nameOf(path), u"free");

    FNPath dotted(u".wav", pathTo(folder, PathKind::folder), PathKind::file);
    EXPECT_TRUE(dotted.makeUnique(namer));
    EXPECT_EQ(namer.base, u"file");
    EXPECT_EQ(nameOf(dotted), u"free.wav");
}

TEST(FNPath, ANameOfBytesThatMeanNothingIsntTakenForItsFolder) {
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    const FNPath parent(u"\\a\\b", PathKind::folder);
    FNPath path("B\xe4r", parent, PathKind::file);
    EXPECT_EQ(fullOf(path), u"");
    char16_t buffer[260];
    path.getNativePath(buffer);
    EXPECT_EQ(std::u16string(buffer), u"");
    FNPath other("B\xf6r", parent, PathKind::file);
    EXPECT_FALSE(path.isEqual(&parent));
    EXPECT_FALSE(path.isEqual(&other));
    EXPECT_TRUE(path.isEqual(FRefPtr<CmObject>::adopt(path.clone()).get()));
    EXPECT_TRUE(parent.isParentOf(&path));
    path.setFileType(FFileType("Wave", "wav"));
    path.ensureExtension(true);
    EXPECT_EQ(path.getName().view8(), "B\xe4r");
    FString base;
    EXPECT_TRUE(path.getBaseName(base, true));
    EXPECT_EQ(base.view8(), "B\xe4r");
    // What lies below it isn't found in the parent or in the present folder either.
    EXPECT_EQ(fullOf(FNPath(u"c", path, PathKind::file)), u"");
    EXPECT_EQ(fullOf(FNPath(u"d", FNPath(u"c", path, PathKind::folder), PathKind::file)), u"");
    path.descend(u"c", PathKind::folder);
    EXPECT_EQ(fullOf(path), u"");
    path.descend(u"d", PathKind::file);
    EXPECT_EQ(fullOf(path), u"");
    EXPECT_FALSE(path.resolve(parent));
    // The folder above still has a name.
    EXPECT_TRUE(other.ascend());
    EXPECT_EQ(fullOf(other), u"\\a\\b");
}

TEST(FNPath, SanitizeCleansNameAndFolder) {
    FNPath path(PathKind::file);
    path.setPath(u"C:\\a?b\\");
    path.setName(u"x*y");
    EXPECT_TRUE(path.sanitize(0));
    EXPECT_EQ(fullOf(path), u"C:\\aSb\\x_y");
    EXPECT_FALSE(path.sanitize(0));
    path.setName(u"x*y");
    EXPECT_TRUE(path.sanitize(u'-'));
    EXPECT_EQ(nameOf(path), u"x-y");
}

} // namespace
} // namespace tessera
