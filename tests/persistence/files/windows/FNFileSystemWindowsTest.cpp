#include "persistence/files/FFileIterator.h"
#include "persistence/files/FNFileSystemFixture.h"
#include "support/ErrorNumbers.h"
#include "support/windows/Junction.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <windows.h>

#include <dbt.h>

namespace tessera {
namespace {

namespace fs = std::filesystem;
using testing_support::kErrorNumbers;
using testing_support::makeJunction;

// Greek, Japanese and a note beyond the first 65536 characters: no code page holds all three.
constexpr const char* kForeignName = "\xCE\xA9 \xE9\x9F\xB3\xE6\xA5\xBD \xF0\x9F\x8E\xB5.wav";

// As the long form of paths has it, through which the standard library reaches what lies deep.
fs::path longForm(const fs::path& path) {
    fs::path whole = path;
    return L"\\\\?\\" + whole.make_preferred().wstring();
}

class FNFileSystemWindowsTest : public FNFileSystemTest {
protected:
    FStream* open(const std::string& name, std::uint32_t mode, std::int32_t& error) {
        FNPath file = path(name);
        return files_.openFile(file, mode, &error);
    }
    std::set<std::string> namesIn(const FNPath& folder) {
        std::set<std::string> names;
        const auto iterator = FRefPtr<FFileIterator>::adopt(files_.newIterator(folder, false));
        while (FPath* entry = iterator->next()) {
            names.insert(utf8Of(entry->getName()));
        }
        return names;
    }
    bool isReadOnly(const std::string& name) {
        return (::GetFileAttributesW((scratch_ / name).c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
    }
    void makeReadOnly(const std::string& name) {
        EXPECT_TRUE(::SetFileAttributesW((scratch_ / name).c_str(), FILE_ATTRIBUTE_READONLY));
    }
};

// Drives and shares.

TEST_F(FNFileSystemWindowsTest, TheCaseOfADriveLetterMeansNothing) {
    scratch_.write("file", "12345");
    std::wstring text = (scratch_ / "file").wstring();
    ASSERT_EQ(text[1], L':');
    text[0] = static_cast<wchar_t>(std::tolower(static_cast<int>(text[0])));
    const FNPath file = pathOf(text);
    EXPECT_EQ(utf8Of(file.getFullPath()), utf8Of(path("file").getFullPath()));
    EXPECT_EQ(files_.getFileSize(file), 5);
}

TEST_F(FNFileSystemWindowsTest, ABareDriveIsItsRootAndNotItsPresentFolder) {
    scratch_.write("mine", "");
    const fs::path before = fs::current_path();
    fs::current_path(scratch_.path());
    const std::string drive = scratch_.path().root_name().string();
    const FNPath root(FStringRef(drive.c_str()), PathKind::folder);
    EXPECT_TRUE(files_.folderExists(root));
    EXPECT_TRUE(files_.isRootPath(drive.c_str()));
    EXPECT_FALSE(namesIn(root).contains("mine"));
    EXPECT_FALSE(namesIn(root).empty());
    EXPECT_TRUE(files_.createFolder(root));
    fs::current_path(before);
}

TEST_F(FNFileSystemWindowsTest, ARelativePathLiesInThePresentFolder) {
    scratch_.write("folder/file", "123");
    const fs::path before = fs::current_path();
    fs::current_path(scratch_.path());
    EXPECT_EQ(files_.getFileSize(FNPath(FStringRef(".\\folder\\file"), PathKind::file)), 3);
    EXPECT_EQ(files_.getFileSize(FNPath(FStringRef("folder\\..\\folder\\file"), PathKind::file)), 3);
    fs::current_path(before);
}

TEST_F(FNFileSystemWindowsTest, FilesOnAShareAreReached) {
    scratch_.write("inner/file", "123");
    // The machine's own drive as its administrators see it over the network.
    std::wstring text = (scratch_ / "").wstring();
    text[1] = L'$';
    const fs::path share = L"\\\\localhost\\" + text;
    if (!fs::exists(share)) {
        GTEST_SKIP() << "the drives of this machine aren't shared, or not with this user";
    }
    EXPECT_EQ(files_.getFileSize(pathOf(share / "inner/file")), 3);
    EXPECT_EQ(namesIn(folderOf(share)), std::set<std::string>{"inner"});
    EXPECT_TRUE(files_.createFolder(folderOf(share / "a/b")));
    EXPECT_TRUE(scratch_.has("a/b"));
    EXPECT_TRUE(files_.copyFile(pathOf(share / "inner/file"), pathOf(share / "a/copy"), nullptr));
    EXPECT_EQ(scratch_.read("a/copy"), "123");
    const std::wstring root = share.root_name().wstring() + L"\\" + text.substr(0, 3);
    const bool isRemote = ::GetDriveTypeW(root.c_str()) == DRIVE_REMOTE;
    EXPECT_EQ(files_.getVolumeKind(folderOf(share)), isRemote ? VolumeKind::network : VolumeKind::harddisk);
}

TEST_F(FNFileSystemWindowsTest, AShareThatIsntThereHasNothing) {
    const FNPath share(FStringRef("\\\\no-such-server.invalid\\share\\folder"), PathKind::folder);
    EXPECT_FALSE(files_.folderExists(share));
    EXPECT_EQ(files_.getVolumeKind(share), VolumeKind::none);
    EXPECT_FALSE(files_.deleteFolder(share));
}

// Names.

TEST_F(FNFileSystemWindowsTest, NamesHoldCharactersOutsideTheCodePage) {
    const std::string inFolder = std::string("\xE6\xA5\xBD/") + kForeignName;
    EXPECT_TRUE(save(inFolder, "123", FileOpenMode::write | FileOpenMode::createFolders));
    EXPECT_EQ(scratch_.read(inFolder), "123");
    EXPECT_EQ(namesIn(folder("\xE6\xA5\xBD")), std::set<std::string>{kForeignName});
    FNPath file = path(inFolder);
    EXPECT_TRUE(files_.rename(file, wideText(std::string("2 ") + kForeignName)));
    EXPECT_EQ(utf8Of(file.getName()), std::string("2 ") + kForeignName);
    EXPECT_TRUE(files_.copyFile(file, path(kForeignName), nullptr));
    EXPECT_EQ(scratch_.read(kForeignName), "123");
    EXPECT_TRUE(files_.deleteFolder(folder("\xE6\xA5\xBD")));
    EXPECT_FALSE(scratch_.has("\xE6\xA5\xBD"));
}

TEST_F(FNFileSystemWindowsTest, PathsMayBeLongerThanTheSystemsOldLimit) {
    std::string deep;
    for (int i = 0; i < 3; ++i) {
        deep += std::string(150, static_cast<char>('a' + i)) + "/";
    }
    const fs::path whole = longForm(scratch_ / deep);
    EXPECT_TRUE(save(deep + "file.txt", "12345", FileOpenMode::write | FileOpenMode::createFolders));
    EXPECT_EQ(fs::file_size(whole / "file.txt"), 5u);
    EXPECT_TRUE(files_.fileExists(path(deep + "file.txt")));
    EXPECT_EQ(files_.getFileSize(path(deep + "file.txt")), 5);
    EXPECT_EQ(namesIn(folder(deep)), std::set<std::string>{"file.txt"});
    std::int32_t error = 99;
    FStream* stream = open(deep + "file.txt", FileOpenMode::read, error);
    ASSERT_NE(stream, nullptr);
    files_.closeStream(stream);
    FNPath file = path(deep + "file.txt");
    EXPECT_TRUE(files_.rename(file, "other.txt"));
    EXPECT_TRUE(fs::exists(whole / "other.txt"));
    EXPECT_TRUE(files_.copyFile(file, path(deep + "copy.txt"), nullptr));
    EXPECT_TRUE(files_.move(file, path("short.txt")));
    EXPECT_EQ(scratch_.read("short.txt"), "12345");
    EXPECT_EQ(files_.countFiles(folder(""), true, true, nullptr), 5);
    EXPECT_EQ(files_.getVolumeKind(folder(deep)), files_.getVolumeKind(folder("")));
    scratch_.write("mover/inner", "x");
    FNPath mover = folder("mover");
    EXPECT_TRUE(files_.move(mover, folder(deep + "mover"))) << "a folder, which stays on its volume";
    EXPECT_TRUE(fs::exists(whole / "mover" / "inner"));
    EXPECT_TRUE(files_.copyFolder(folder(std::string(150, 'a')), folder("second"), nullptr));
    EXPECT_TRUE(files_.deleteFile(path(deep + "copy.txt")));
    EXPECT_TRUE(files_.deleteFolder(folder(std::string(150, 'a'))));
    EXPECT_TRUE(files_.deleteFolder(folder("second")));
    EXPECT_EQ(scratch_.entryCount(), 1u);
}

// From 248 characters on a folder needs the long form, from 260 on a file does.
TEST_F(FNFileSystemWindowsTest, TheLimitsThemselvesAreNoTrap) {
    const std::size_t before = scratch_.path().native().size() + 1;
    for (std::size_t length = 244; length <= 264; ++length) {
        const std::string name(length - before, 'n');
        EXPECT_TRUE(files_.createFolder(folder(name))) << length;
        EXPECT_TRUE(files_.folderExists(folder(name))) << length;
        EXPECT_TRUE(files_.deleteFolder(folder(name))) << length;
        EXPECT_TRUE(save(name, "x")) << length;
        EXPECT_TRUE(files_.fileExists(path(name))) << length;
        EXPECT_TRUE(files_.deleteFile(path(name))) << length;
    }
}

TEST_F(FNFileSystemWindowsTest, AnOpenedPathTakesTheNameAsItIsStored) {
    scratch_.write("Long Name Of A Take.wav", "x");
    FNPath file = path("LONG NAME of a take.WAV");
    FStream* stream = files_.openFile(file, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(utf8Of(file.getName()), "Long Name Of A Take.wav");
    EXPECT_EQ(utf8Of(cmCast<FFileStream>(stream)->getPath().getName()), "Long Name Of A Take.wav");
    files_.closeStream(stream);
}

TEST_F(FNFileSystemWindowsTest, AShortNameOpensTheFileWithTheLongOne) {
    const fs::path file = scratch_.write("A Name That Has A Short One.wav", "x");
    wchar_t shortPath[MAX_PATH] = {};
    ::GetShortPathNameW(file.c_str(), shortPath, MAX_PATH);
    const fs::path shortForm(shortPath);
    if (shortForm.filename() == file.filename()) {
        GTEST_SKIP() << "this volume keeps no short names";
    }
    FNPath path = pathOf(shortForm);
    FStream* stream = files_.openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    files_.closeStream(stream);
    EXPECT_EQ(utf8Of(path.getName()), "A Name That Has A Short One.wav");
}

TEST_F(FNFileSystemWindowsTest, OnlyTheCaseOfANameCanBeChanged) {
    scratch_.write("take.wav", "x");
    FNPath file = path("take.wav");
    EXPECT_TRUE(files_.rename(file, "Take.WAV"));
    scratch_.write("second", "");
    ::MoveFileW((scratch_ / "second").c_str(), (scratch_ / "SECOND").c_str());
    if (namesIn(folder("")).contains("second")) {
        GTEST_SKIP() << "this system's own renaming keeps the case";
    }
    EXPECT_TRUE(files_.deleteFile(path("second")));
    EXPECT_EQ(namesIn(folder("")), std::set<std::string>{"Take.WAV"});
}

TEST_F(FNFileSystemWindowsTest, ANameInTwoCasesIsOneFile) {
    scratch_.write("file", "x");
    EXPECT_TRUE(files_.isSameFile(path("file"), path("FILE")));
    EXPECT_FALSE(files_.copyFile(path("file"), path("FILE"), nullptr));
    EXPECT_EQ(scratch_.read("file"), "x");
}

TEST_F(FNFileSystemWindowsTest, NamesOfDevicesAreNoFiles) {
    std::int32_t error = 0;
    EXPECT_EQ(open("nul", FileOpenMode::read, error), nullptr);
    EXPECT_NE(error, 0);
}

// Read-only and hidden files.

TEST_F(FNFileSystemWindowsTest, AReadOnlyFileIsntWritten) {
    scratch_.write("file", "precious");
    makeReadOnly("file");
    if (std::ofstream(scratch_ / "file", std::ios::app)) {
        GTEST_SKIP() << "this system lets its administrator write to read-only files";
    }
    FNPath file = path("file");
    std::int32_t error = 0;
    EXPECT_EQ(files_.createFile(file, FileOpenMode::write, &error), nullptr);
    EXPECT_EQ(error, kErrorNumbers.noRight);
    EXPECT_EQ(open("file", FileOpenMode::write, error), nullptr);
    EXPECT_EQ(error, kErrorNumbers.noRight);
    EXPECT_EQ(scratch_.read("file"), "precious");
}

TEST_F(FNFileSystemWindowsTest, AFileInUseIsNeitherDeletedNorItsMarkTakenAway) {
    scratch_.write("file", "precious");
    makeReadOnly("file");
    std::int32_t error = 0;
    FStream* stream = open("file", FileOpenMode::read, error);
    ASSERT_NE(stream, nullptr);
    EXPECT_FALSE(files_.deleteFile(path("file")));
    EXPECT_TRUE(isReadOnly("file"));
    files_.closeStream(stream);
}

TEST_F(FNFileSystemWindowsTest, AReadOnlyFileInAFolderGoesWithIt) {
    scratch_.write("folder/inner/file", "x");
    makeReadOnly("folder/inner/file");
    makeReadOnly("folder/inner");
    EXPECT_TRUE(files_.deleteFolder(folder("folder")));
    EXPECT_FALSE(scratch_.has("folder"));
}

TEST_F(FNFileSystemWindowsTest, ACopyOverAReadOnlyFileIsReadOnlyInItsTurn) {
    scratch_.write("source", "new");
    scratch_.write("target", "old");
    makeReadOnly("target");
    EXPECT_TRUE(files_.copyFile(path("source"), path("target"), nullptr));
    EXPECT_EQ(scratch_.read("target"), "new");
    EXPECT_TRUE(isReadOnly("target"));
    EXPECT_EQ(scratch_.entryCount(), 2u);
}

TEST_F(FNFileSystemWindowsTest, ACopyThatCantTakeThePlaceLeavesEverythingAsItWas) {
    scratch_.write("source", "new");
    scratch_.write("target", "old");
    makeReadOnly("target");
    std::int32_t error = 0;
    FStream* stream = open("target", FileOpenMode::read | FileOpenMode::shareRead | FileOpenMode::shareWrite, error);
    ASSERT_NE(stream, nullptr);
    EXPECT_FALSE(files_.copyFile(path("source"), path("target"), nullptr));
    files_.closeStream(stream);
    EXPECT_EQ(scratch_.read("target"), "old");
    EXPECT_TRUE(isReadOnly("target"));
    EXPECT_EQ(scratch_.entryCount(), 2u);
}

TEST_F(FNFileSystemWindowsTest, ACopyIsHiddenOnlyIfItsOriginalIs) {
    scratch_.write("shown", "x");
    scratch_.write("hidden", "x");
    EXPECT_TRUE(::SetFileAttributesW((scratch_ / "hidden").c_str(), FILE_ATTRIBUTE_HIDDEN));
    EXPECT_TRUE(files_.copyFile(path("shown"), path("copy of shown"), nullptr));
    EXPECT_TRUE(files_.copyFile(path("hidden"), path("copy of hidden"), nullptr));
    EXPECT_EQ(::GetFileAttributesW((scratch_ / "copy of shown").c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_NE(::GetFileAttributesW((scratch_ / "copy of hidden").c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
}

// Sharing.

TEST_F(FNFileSystemWindowsTest, AnOpenFileIsSharedAsItsModeSays) {
    scratch_.write("file", "x");
    struct Row {
        std::uint32_t mode;
        bool readable;
        bool writable;
    };
    const Row rows[] = {
        {FileOpenMode::read, false, false},
        {FileOpenMode::read | FileOpenMode::shareRead, true, false},
        {FileOpenMode::read | FileOpenMode::shareWrite, false, true},
        {FileOpenMode::read | FileOpenMode::shareRead | FileOpenMode::shareWrite, true, true},
    };
    constexpr std::uint32_t kShareAll = FileOpenMode::shareRead | FileOpenMode::shareWrite;
    for (const Row& row : rows) {
        std::int32_t error = 0;
        FStream* first = open("file", row.mode, error);
        ASSERT_NE(first, nullptr);
        FStream* reader = open("file", FileOpenMode::read | kShareAll, error);
        EXPECT_EQ(reader != nullptr, row.readable) << row.mode;
        FStream* writer = open("file", FileOpenMode::write | kShareAll, error);
        EXPECT_EQ(writer != nullptr, row.writable) << row.mode;
        for (FStream* stream : {writer, reader, first}) {
            files_.closeStream(stream);
        }
    }
}

TEST_F(FNFileSystemWindowsTest, AnUnbufferedStreamTransfersWholeSectors) {
    scratch_.write("file", std::string(4196, 'x'));
    std::int32_t error = 0;
    FStream* stream = open("file", FileOpenMode::read | FileOpenMode::unbuffered, error);
    ASSERT_NE(stream, nullptr);
    const std::uint32_t sector = cmCast<FFileStream>(stream)->getSectorSize();
    ASSERT_EQ(4096 % sector, 0u);
    alignas(4096) static char block[4096];
    EXPECT_EQ(stream->read(block, sizeof block), 4096);
    EXPECT_EQ(block[4095], 'x');
    EXPECT_EQ(stream->read(block, sizeof block), 100) << "what is left";
    EXPECT_EQ(cmCast<FFileStream>(stream)->getLastError(), 0);
    files_.closeStream(stream);
}

// Links.

TEST_F(FNFileSystemWindowsTest, ALinkOfOursIsAShellLink) {
    scratch_.write(kForeignName, "x");
    FNPath link = path("to the take");
    EXPECT_TRUE(files_.createLink(link, path(kForeignName)));
    EXPECT_EQ(utf8Of(link.getName()), "to the take.lnk");
    // The size of the header, and the class of such links, {00021401-0000-0000-C000-000000000046}.
    const std::string start("\x4C\0\0\0\x01\x14\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 20);
    EXPECT_EQ(scratch_.read("to the take.lnk").substr(0, 20), start);
    EXPECT_TRUE(files_.resolveLink(link));
    EXPECT_EQ(utf8Of(link.getFullPath()), utf8Of(path(kForeignName).getFullPath()));
}

TEST_F(FNFileSystemWindowsTest, ALinkToAFolderIsResolvedByTheIterator) {
    fs::create_directory(scratch_ / "folder");
    FNPath link = path("to folder");
    EXPECT_TRUE(files_.createLink(link, folder("folder")));
    const auto iterator = FRefPtr<FFileIterator>::adopt(files_.newIterator(folder(""), true));
    int folders = 0;
    while (FPath* entry = iterator->next()) {
        folders += entry->isFolder() && utf8Of(entry->getName()) == "folder" ? 1 : 0;
    }
    EXPECT_EQ(folders, 2);
}

TEST_F(FNFileSystemWindowsTest, AFolderWithoutARightToWriteGetsNoLink) {
    FNPath link = path("missing/link");
    EXPECT_FALSE(files_.createLink(link, path("target")));
    EXPECT_EQ(utf8Of(link.getName()), "link");
}

// Folders that stand for others. Whoever deletes, counts or copies what holds them never enters them.

TEST_F(FNFileSystemWindowsTest, AJunctionIsNeverEntered) {
    scratch_.write("outside/precious.txt", "x");
    scratch_.write("folder/own.txt", "x");
    if (const char* reason = makeJunction(scratch_ / "folder/way-out", scratch_ / "outside")) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(files_.getFileSize(path("folder/way-out/precious.txt")), 1);
    EXPECT_EQ(files_.countFiles(folder("folder"), false, true, nullptr), 2) << "the junction counts as itself";
    EXPECT_TRUE(files_.copyFolder(folder("folder"), folder("copy"), nullptr));
    EXPECT_NE(::GetFileAttributesW((scratch_ / "copy/way-out").c_str()) & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
    EXPECT_EQ(files_.getFileSize(path("copy/way-out/precious.txt")), 1);
    EXPECT_FALSE(files_.copyFolder(folder("outside"), folder("folder/way-out/deeper"), nullptr)) << "into itself";
    EXPECT_TRUE(files_.deleteFolder(folder("folder")));
    EXPECT_TRUE(files_.deleteFolderContent(folder("copy"), true));
    EXPECT_EQ(scratch_.read("outside/precious.txt"), "x");
}

TEST_F(FNFileSystemWindowsTest, AJunctionGoesItself) {
    scratch_.write("outside/precious.txt", "x");
    for (const bool asFolder : {true, false}) {
        if (const char* reason = makeJunction(scratch_ / "junction", scratch_ / "outside")) {
            GTEST_SKIP() << reason;
        }
        EXPECT_TRUE(asFolder ? files_.deleteFolder(folder("junction")) : files_.deleteFile(path("junction")));
        EXPECT_EQ(::GetFileAttributesW((scratch_ / "junction").c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(scratch_.read("outside/precious.txt"), "x");
    }
}

// Volumes.

TEST_F(FNFileSystemWindowsTest, AFileMovesToAnotherVolume) {
    const fs::path drive = scratch_.path().root_name();
    fs::path other;
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        const std::wstring root = std::wstring(1, letter) + L":\\";
        std::error_code ignored;
        if (fs::path(root).root_name() != drive && ::GetDriveTypeW(root.c_str()) == DRIVE_FIXED &&
            fs::create_directory(root + L"tmp\\tesx-move", ignored)) {
            other = root + L"tmp\\tesx-move";
            break;
        }
    }
    if (other.empty()) {
        GTEST_SKIP() << "no second disk has a folder for temporary files";
    }
    scratch_.write("file", "12345");
    makeReadOnly("file");
    FNPath file = path("file");
    EXPECT_TRUE(files_.move(file, pathOf(other / "moved")));
    EXPECT_FALSE(scratch_.has("file"));
    EXPECT_EQ(fs::file_size(other / "moved"), 5u);
    scratch_.write("second", "x");
    FNPath second = path("second");
    EXPECT_FALSE(files_.move(second, pathOf(other / "moved"))) << "nothing is replaced";
    EXPECT_EQ(scratch_.read("second"), "x");
    EXPECT_EQ(std::distance(fs::directory_iterator(other), {}), 1);
    fs::create_directory(scratch_ / "folder");
    FNPath all = folder("folder");
    EXPECT_FALSE(files_.move(all, folderOf(other / "folder"))) << "folders stay on their volume";
    EXPECT_TRUE(files_.deleteFile(pathOf(other / "moved")));
    EXPECT_TRUE(fs::remove(other));
}

TEST_F(FNFileSystemWindowsTest, TheNumberOfADiskIsWhatItsDriverTells) {
    FString number("before");
    const std::wstring device = L"\\\\.\\" + scratch_.path().root_name().wstring();
    const HANDLE disk =
        ::CreateFileW(device.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD answer[3] = {};
    DWORD size = 0;
    const bool told = ::DeviceIoControl(disk, 2953344, nullptr, 0, answer, sizeof answer, &size, nullptr);
    ::CloseHandle(disk);
    EXPECT_EQ(files_.getDiskNumber(folder(""), number), told);
    EXPECT_EQ(utf8Of(number), told ? std::to_string(answer[1]) : "before");
}

class VolumeNews : public CmObject {
public:
    std::vector<std::string> received;

    std::int32_t receiveMessage(FMessage* message) override {
        const auto* root = cmCast<FNPath>(message->getObject(FStringRef("kRootPath")));
        received.push_back(std::string(message->getName()) + " " +
                           (root != nullptr && root->isFolder() ? utf8Of(root->getFullPath()) : "no folder"));
        return 0;
    }
};

DEV_BROADCAST_VOLUME recordOf(DWORD drives) {
    DEV_BROADCAST_VOLUME record = {};
    record.dbcv_size = sizeof record;
    record.dbcv_devicetype = DBT_DEVTYP_VOLUME;
    record.dbcv_unitmask = drives;
    record.dbcv_flags = DBTF_MEDIA;
    return record;
}

TEST_F(FNFileSystemWindowsTest, TheHiddenWindowPassesOnWhatTheSystemTellsOfVolumes) {
    VolumeNews news;
    auto* unknown = static_cast<IUpdateTarget*>(&news);
    files_.addVolumeListener(unknown);
    EXPECT_EQ(::FindWindowW(L"MarlgroveDevWnd", nullptr), nullptr);
    ASSERT_TRUE(files_.setVolumeMessages(true));
    EXPECT_TRUE(files_.setVolumeMessages(true)) << "once is enough";
    const HWND window = ::FindWindowW(L"MarlgroveDevWnd", nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(::IsWindowVisible(window));
    const auto send = [window](UINT message, WPARAM what, const DEV_BROADCAST_VOLUME& record) {
        ::SendMessageW(window, message, what, reinterpret_cast<LPARAM>(&record));
    };
    send(537, 0x8000, recordOf(1 << 23));
    send(537, 0x8004, recordOf((1 << 25) | (1 << 4)));
    EXPECT_EQ(news.received, (std::vector<std::string>{"VolMount X:", "VolUnmount E:"}));

    // No arrival, no media, no volume, no drive, no such message.
    send(537, 0x8001, recordOf(1));
    DEV_BROADCAST_VOLUME record = recordOf(1);
    record.dbcv_flags = DBTF_NET;
    send(537, 0x8000, record);
    record = recordOf(1);
    record.dbcv_devicetype = DBT_DEVTYP_PORT;
    send(537, 0x8000, record);
    send(537, 0x8000, recordOf(0));
    send(536, 0x8000, recordOf(1));
    ::SendMessageW(window, 537, 0x8000, 0);
    EXPECT_EQ(news.received.size(), 2u);

    EXPECT_TRUE(files_.setVolumeMessages(false));
    EXPECT_EQ(::FindWindowW(L"MarlgroveDevWnd", nullptr), nullptr);
    WNDCLASSW type = {};
    EXPECT_FALSE(::GetClassInfoW(::GetModuleHandleW(nullptr), L"MarlgroveDevWnd", &type)) << "the class goes, too";
    EXPECT_TRUE(files_.setVolumeMessages(true)) << "the switch works more than once";
    EXPECT_TRUE(files_.setVolumeMessages(false));
    files_.removeVolumeListener(unknown);
}

} // namespace
} // namespace tessera
