#include "persistence/paths/FHostPathView.h"

#include "foundation/object/FRefPtr.h"
#include "persistence/paths/FNPath.h"
#include "platform/NativePath.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace tessera {
namespace {

std::u16string nativeText(std::u16string text) {
    std::replace(text.begin(), text.end(), u'\\', platform::nativeSeparator());
    return text;
}

class FHostPathViewTest : public testing::Test {
protected:
    FRefPtr<FNPath> path = FRefPtr<FNPath>::adopt(new FNPath(u"\\a\\b.txt", PathKind::file));
    IHostPath& host = path->hostView();
    char16_t buffer[IHostPath::kPathLength] = {u'?'};
};

TEST_F(FHostPathViewTest, AnswersBothIdentifiersWithOneTable) {
    void* first = nullptr;
    void* second = nullptr;
    EXPECT_EQ(path->queryInterface(IHostPath::iid, &first), kResultOk);
    EXPECT_EQ(path->queryInterface(IHostPath::secondIid, &second), kResultOk);
    EXPECT_EQ(first, static_cast<void*>(&host));
    EXPECT_EQ(second, first);
    EXPECT_EQ(path->getReferenceCount(), 3u);
    host.release();
    host.release();
    EXPECT_EQ(queryFor<IBaseUnknown>(&host), queryFor<IBaseUnknown>(path.get()));
}

TEST_F(FHostPathViewTest, GivesPathAndNameInTheSystemsForm) {
    EXPECT_EQ(host.path(buffer), kResultOk);
    EXPECT_EQ(std::u16string(buffer), nativeText(u"\\a\\b.txt"));
    EXPECT_EQ(host.name(buffer), kResultOk);
    EXPECT_EQ(std::u16string(buffer), u"b.txt");
    EXPECT_EQ(host.path(nullptr), kInvalidArgument);
}

TEST_F(FHostPathViewTest, TextThatDoesNotFitIsEmpty) {
    path->setName(std::u16string(1020, u'x').c_str());
    EXPECT_EQ(host.path(buffer), kResultOk);
    path->setName(std::u16string(1021, u'x').c_str());
    EXPECT_EQ(host.path(buffer), kResultFalse);
    EXPECT_EQ(buffer[0], u'\0');
    EXPECT_EQ(host.name(buffer), kResultFalse);
    EXPECT_EQ(buffer[0], u'\0');
}

TEST_F(FHostPathViewTest, ExtensionOfThirtyTwoCharactersIsNotDelivered) {
    EXPECT_EQ(host.extension(buffer), kResultOk);
    EXPECT_EQ(std::u16string(buffer), u"txt");
    path->setName((u"a." + std::u16string(31, u'x')).c_str());
    EXPECT_EQ(host.extension(buffer), kResultOk);
    EXPECT_EQ(std::u16string(buffer), std::u16string(31, u'x'));
    path->setName((u"a." + std::u16string(32, u'x')).c_str());
    EXPECT_EQ(host.extension(buffer), kResultFalse);
    EXPECT_EQ(buffer[0], u'\0');
    path->setName(u"a");
    buffer[0] = u'?';
    EXPECT_EQ(host.extension(buffer), kResultOk);
    EXPECT_EQ(buffer[0], u'\0');
    EXPECT_EQ(host.extension(nullptr), kInvalidArgument);
}

TEST_F(FHostPathViewTest, SetPathParsesAndAppendDescends) {
    EXPECT_EQ(host.setPath(nativeText(u"\\x\\y").c_str(), 1), kResultOk);
    EXPECT_TRUE(path->isFolder());
    EXPECT_EQ(host.append(u"z.wav", 0), kResultOk);
    EXPECT_EQ(fullOf(*path), u"\\x\\y\\z.wav");
    EXPECT_TRUE(path->isFile());
    EXPECT_EQ(host.setName(u"q.wav"), kResultOk);
    EXPECT_EQ(fullOf(*path), u"\\x\\y\\q.wav");
    EXPECT_EQ(host.ascend(), kResultOk);
    EXPECT_EQ(fullOf(*path), u"\\x\\y");
    EXPECT_EQ(host.setPath(nullptr, 0), kInvalidArgument);
    EXPECT_EQ(host.append(nullptr, 0), kInvalidArgument);
    path->set(u"a", PathKind::file);
    path->setPath(u"");
    EXPECT_EQ(host.ascend(), kResultOk) << "that there is no folder shows in the path";
    EXPECT_EQ(fullOf(*path), u"a");
}

TEST_F(FHostPathViewTest, KindsGoBothWays) {
    std::int32_t kind = 0;
    for (const std::int32_t value : {0, 1, 2, 3}) {
        EXPECT_EQ(host.setKind(value), kResultOk);
        EXPECT_EQ(host.kind(&kind), kResultOk);
        EXPECT_EQ(kind, value);
    }
    EXPECT_EQ(host.kind(nullptr), kInvalidArgument);
}

TEST_F(FHostPathViewTest, NegativeKindIsFoundOut) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / "host path";
    fs::create_directory(folder);
    host.setPath(folder.u16string().c_str(), 0);
    EXPECT_EQ(host.setKind(-1), kResultOk);
    EXPECT_EQ(path->getKind(), PathKind::folder);
    host.append(u"missing", 1);
    EXPECT_EQ(host.setKind(-5), kResultOk);
    EXPECT_EQ(path->getKind(), PathKind::file);
    fs::remove(folder);
}

TEST_F(FHostPathViewTest, TypeGoesBothWays) {
    HostTypeRecord record{};
    std::strcpy(record.extension, "WAV");
    std::strcpy(record.name, "Wave");
    record.macType = 5;
    EXPECT_EQ(host.setFileType(&record), kResultOk);
    EXPECT_EQ(text(path->fileType().getDosType()), u"wav");
    HostTypeRecord back{};
    EXPECT_EQ(host.fileType(&back), kResultOk);
    EXPECT_STREQ(back.extension, "wav");
    EXPECT_STREQ(back.name, "Wave");
    EXPECT_EQ(back.macType, 5u);
    EXPECT_EQ(host.fileType(nullptr), kInvalidArgument);
    EXPECT_EQ(host.setFileType(nullptr), kInvalidArgument);
}

TEST_F(FHostPathViewTest, CloneIsAnObjectOfItsOwn) {
    IHostPath* out = nullptr;
    EXPECT_EQ(host.clone(&out), kResultOk);
    const auto copy = FRefPtr<IHostPath>::adopt(out);
    copy->setName(u"other");
    EXPECT_EQ(nameOf(*path), u"b.txt");
    copy->name(buffer);
    EXPECT_EQ(std::u16string(buffer), u"other");
    EXPECT_EQ(host.clone(nullptr), kInvalidArgument);
}

TEST_F(FHostPathViewTest, MakeUniqueCountsUpward) {
    namespace fs = std::filesystem;
    const fs::path taken = fs::temp_directory_path() / "unique.txt";
    std::ofstream(taken) << "x";
    host.setPath(taken.u16string().c_str(), 0);
    EXPECT_EQ(host.makeUnique(), kResultOk);
    EXPECT_NE(nameOf(*path), u"unique.txt");
    FString extension;
    EXPECT_TRUE(path->getExtension(extension));
    EXPECT_EQ(text(extension), u"txt");
    fs::remove(taken);
}

TEST_F(FHostPathViewTest, MakeUniqueSaysWhenThereIsNoFreeName) {
    path->setName((std::u16string(300, u'x') + u".txt").c_str());
    EXPECT_EQ(host.makeUnique(), kResultFalse);
    EXPECT_EQ(FPath().hostView().makeUnique(), kResultFalse);
}

TEST_F(FHostPathViewTest, PathIsBuiltFromAHostsPath) {
    HostTypeRecord record{};
    std::strcpy(record.extension, "wav");
    host.setFileType(&record);
    host.setKind(3);
    const FNPath copy(host);
    EXPECT_EQ(fullOf(copy), u"\\a\\b.txt");
    EXPECT_TRUE(copy.isContainer());
    EXPECT_EQ(text(copy.fileType().getDosType()), u"wav");
    host.setKind(7);
    EXPECT_EQ(FNPath(host).getKind(), PathKind::file);
}

} // namespace
} // namespace tessera
