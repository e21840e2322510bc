// Paths that are kept in the settings of the process.
#include "DefaultsFixture.h"
#include "persistence/paths/FNPath.h"

namespace tessera::test {
namespace {

constexpr const char* kGroup = "Default Paths";

std::string fullPath(const FPath& path) {
    return FString(path.getFullPath()).text8();
}

class FPathDefaults : public testing::Test {
protected:
    FPathDefaults() { pool_.removeGroup(kGroup); }

    FGlobalDefaultPool& pool_ = *FGlobalDefaultPool::getInstance();
};

TEST_F(FPathDefaults, AreKeptAsTextUnderTheirKey) {
    FNPath(u"C:\\Music\\a.wav", PathKind::file).saveDefaultPath("Audio");
    FString text;
    EXPECT_TRUE(pool_.getString(kGroup, "Audio", text));
    EXPECT_TRUE(text == u"C:\\Music\\a.wav");
    FNPath(u"D:\\Other", PathKind::folder).saveDefaultPath("Audio");
    EXPECT_TRUE(pool_.getString(kGroup, "Audio", text));
    EXPECT_TRUE(text.startsWith(u"D:\\Other"));
}

TEST_F(FPathDefaults, ComeBack) {
    FNPath(u"C:\\Musik f\u00fcr alle\\a.wav", PathKind::file).saveDefaultPath("Audio");
    FNPath path;
    EXPECT_TRUE(path.loadDefaultPath("Audio"));
    EXPECT_TRUE(path.getName() == u"a.wav");
    EXPECT_TRUE(path.getPath() == u"C:\\Musik f\u00fcr alle\\");
}

TEST_F(FPathDefaults, TakeOverFlagsAndKindOfThePathThatLoads) {
    FNPath(u"C:\\Music\\a", PathKind::file).saveDefaultPath("Audio");
    FNPath path(u"D:\\old\\old", PathKind::folder);
    path.setFlags(FPath::kHiddenFlag);
    path.setFileType(FFileType("Old", "old"));
    EXPECT_TRUE(path.loadDefaultPath("Audio"));
    EXPECT_EQ(path.getKind(), PathKind::folder);
    EXPECT_EQ(path.getFlags(), FPath::kHiddenFlag);
    EXPECT_EQ(fullPath(path).substr(0, 10), "C:\\Music\\a");
    EXPECT_FALSE(path.fileType().isDefined());
}

TEST_F(FPathDefaults, AreParsedAsNativePathsAlsoIntoAnotherForm) {
    pool_.setString(kGroup, "Audio", "c:/Music/a.wav");
    FPath path;
    EXPECT_TRUE(path.loadDefaultPath("Audio"));
    EXPECT_EQ(fullPath(path), "C:\\Music\\a.wav");
}

TEST_F(FPathDefaults, WithoutAKeyNothingIsKept) {
    const FNPath path(u"C:\\Music\\a.wav", PathKind::file);
    path.saveDefaultPath("");
    path.saveDefaultPath(nullptr);
    EXPECT_EQ(pool_.getGroup(kGroup, 0, kLeft), nullptr);
}

TEST_F(FPathDefaults, ThatAreMissingLeaveThePathAsItIs) {
    FNPath path(u"C:\\Music\\a.wav", PathKind::file);
    EXPECT_FALSE(path.loadDefaultPath("Audio"));
    EXPECT_EQ(pool_.getGroup(kGroup, 0, kLeft), nullptr) << "a question makes no group";
    pool_.setInt(kGroup, "number", 1);
    for (const char* key : {"Audio", "number", "", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(path.loadDefaultPath(key));
    }
    EXPECT_EQ(fullPath(path), "C:\\Music\\a.wav");
}

} // namespace
} // namespace tessera::test
