// Every step fails in turn: whatever call of the system goes wrong, no file of the user's is cut, half-written or lost.
#include "persistence/files/FNFileSystem.h"

#include "persistence/files/PathSupport.h"
#include "support/FailingCalls.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tessera {
namespace {

using testing_support::FailingCalls;
using testing_support::ScratchFolder;
namespace fs = std::filesystem;

// More than one block of the copy.
const std::string kNew(150000, 'n');
const std::string kOld(70000, 'o');

std::size_t openFiles() {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

bool hasUnfinishedFile(const fs::path& folder) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().filename().string().starts_with(".tesx-")) {
            return true;
        }
    }
    return false;
}

// What a file holds, by name: the contents are too long to be printed.
std::string contentOf(const ScratchFolder& folder, const std::string& name) {
    if (!folder.has(name)) {
        return "nothing";
    }
    const std::string bytes = folder.read(name);
    return bytes == kNew ? "new" : bytes == kOld ? "old" : "a part of " + std::to_string(bytes.size()) + " bytes";
}

class FNFileSystemFaults : public testing::Test {
protected:
    ~FNFileSystemFaults() override { FailingCalls::setRenameError(0); }

    using Work = std::function<bool(FFileSystem& files, const ScratchFolder& folder)>;
    using Check = std::function<void(bool succeeded, const ScratchFolder& folder)>;
    using Prepare = std::function<void(const ScratchFolder& folder)>;

    // Runs the work once without a failure, then once for each of its calls.
    static void failEveryStep(const Prepare& prepare, const Work& work, const Check& check) {
        const int calls = runOnce(prepare, work, check, 0);
        ASSERT_GT(calls, 0);
        for (int call = 1; call <= calls; ++call) {
            runOnce(prepare, work, check, call);
        }
    }

private:
    static int runOnce(const Prepare& prepare, const Work& work, const Check& check, int failingCall) {
        const ScratchFolder folder;
        prepare(folder);
        FFileSystem& files = *FFileSystem::getInstance();
        const std::size_t open = openFiles();
        FailingCalls::arm(failingCall, EIO);
        const bool succeeded = work(files, folder);
        const int calls = FailingCalls::disarm();
        SCOPED_TRACE("call " + std::to_string(failingCall) + " failed: " + FailingCalls::failed());
        EXPECT_EQ(openFiles(), open);
        if (failingCall == 0) {
            EXPECT_TRUE(succeeded);
        }
        // What can't be deleted stays, and nothing can be done about it.
        if (!FailingCalls::failed().starts_with("unlink")) {
            EXPECT_FALSE(hasUnfinishedFile(folder.path()));
        }
        check(succeeded, folder);
        return calls;
    }
};

TEST_F(FNFileSystemFaults, ACopyAppearsWholeOrNotAtAll) {
    failEveryStep([](const ScratchFolder& folder) { folder.write("source", kNew); },
                  [](FFileSystem& files, const ScratchFolder& folder) {
                      return files.copyFile(pathOf(folder / "source"), pathOf(folder / "target"), nullptr);
                  },
                  [](bool succeeded, const ScratchFolder& folder) {
                      EXPECT_EQ(contentOf(folder, "source"), "new");
                      EXPECT_EQ(contentOf(folder, "target"), succeeded ? "new" : "nothing");
                  });
}

TEST_F(FNFileSystemFaults, AReplacedFileIsTheOldOneOrTheNewOne) {
    failEveryStep(
        [](const ScratchFolder& folder) {
            folder.write("source", kNew);
            folder.write("target", kOld);
        },
        [](FFileSystem& files, const ScratchFolder& folder) {
            return files.copyFile(pathOf(folder / "source"), pathOf(folder / "target"), nullptr);
        },
        [](bool succeeded, const ScratchFolder& folder) {
            EXPECT_EQ(contentOf(folder, "source"), "new");
            EXPECT_EQ(contentOf(folder, "target"), succeeded ? "new" : "old");
        });
}

bool moveFile(FFileSystem& files, const ScratchFolder& folder) {
    FNPath path = pathOf(folder / "source");
    return files.move(path, pathOf(folder / "inner/target"));
}

void prepareMove(const ScratchFolder& folder) {
    folder.write("source", kNew);
    fs::create_directory(folder / "inner");
}

// One file, under the old name or the new one; two only where the one too many can't be deleted.
void checkMove(bool succeeded, const ScratchFolder& folder) {
    const std::string source = contentOf(folder, "source");
    const std::string target = contentOf(folder, "inner/target");
    if (succeeded) {
        EXPECT_EQ(target, "new");
        EXPECT_EQ(source, "nothing");
    } else {
        EXPECT_EQ(source, "new");
        EXPECT_THAT(target, testing::AnyOf("new", "nothing"));
    }
}

TEST_F(FNFileSystemFaults, AMovedFileHasOneName) {
    failEveryStep(prepareMove, moveFile, checkMove);
}

TEST_F(FNFileSystemFaults, AFileMovedToAnotherVolumeIsThereWholeOrHereWhole) {
    FailingCalls::setRenameError(EXDEV);
    failEveryStep(prepareMove, moveFile, checkMove);
}

TEST_F(FNFileSystemFaults, AFileMovedToAnotherVolumeHasItsNameOnTheDiskBeforeTheOldOneGoes) {
    FailingCalls::setRenameError(EXDEV);
    std::vector<std::string> steps;
    failEveryStep(prepareMove, moveFile, [&](bool, const ScratchFolder&) { steps.push_back(FailingCalls::failed()); });
    const auto named = std::find(steps.rbegin(), steps.rend(), "renameat2").base();
    EXPECT_NE(named, steps.begin());
    const auto flushed = std::find(named, steps.end(), "fsync");
    EXPECT_LT(flushed, std::find(named, steps.end(), "unlink")) << testing::PrintToString(steps);
}

TEST_F(FNFileSystemFaults, AFileMovedWhereRenamingKnowsNoFlagsHasOneName) {
    FailingCalls::setRenameError(EINVAL);
    failEveryStep(prepareMove, moveFile, checkMove);
}

TEST_F(FNFileSystemFaults, ATargetThatIsThereStaysWhateverTheVolumeKnows) {
    for (const int error : {0, EXDEV, EINVAL}) {
        FailingCalls::setRenameError(error);
        const ScratchFolder folder;
        prepareMove(folder);
        folder.write("inner/target", kOld);
        EXPECT_FALSE(moveFile(*FFileSystem::getInstance(), folder)) << error;
        EXPECT_EQ(contentOf(folder, "source"), "new") << error;
        EXPECT_EQ(contentOf(folder, "inner/target"), "old") << error;
        EXPECT_FALSE(hasUnfinishedFile(folder.path())) << error;
    }
}

TEST_F(FNFileSystemFaults, AFileMovedToAnotherVolumeKeepsItsRightsAndTime) {
    FailingCalls::setRenameError(EXDEV);
    const ScratchFolder folder;
    prepareMove(folder);
    const auto time = fs::file_time_type::clock::now() - std::chrono::hours(50);
    fs::permissions(folder / "source", fs::perms(0640));
    fs::last_write_time(folder / "source", time);
    EXPECT_TRUE(moveFile(*FFileSystem::getInstance(), folder));
    EXPECT_EQ(fs::status(folder / "inner/target").permissions(), fs::perms(0640));
    EXPECT_EQ(fs::last_write_time(folder / "inner/target"), time);
}

TEST_F(FNFileSystemFaults, AFolderIsntMovedToAnotherVolume) {
    FailingCalls::setRenameError(EXDEV);
    const ScratchFolder folder;
    folder.write("source/file", kNew);
    FNPath path = folderOf(folder / "source");
    EXPECT_FALSE(FFileSystem::getInstance()->move(path, folderOf(folder / "target")));
    EXPECT_EQ(contentOf(folder, "source/file"), "new");
    EXPECT_FALSE(folder.has("target"));
}

TEST_F(FNFileSystemFaults, AFolderMovesWhereRenamingKnowsNoFlags) {
    FailingCalls::setRenameError(EINVAL);
    const ScratchFolder folder;
    folder.write("source/file", kNew);
    folder.write("taken/file", kOld);
    FNPath path = folderOf(folder / "source");
    EXPECT_FALSE(FFileSystem::getInstance()->move(path, folderOf(folder / "taken")));
    EXPECT_TRUE(FFileSystem::getInstance()->move(path, folderOf(folder / "target")));
    EXPECT_EQ(contentOf(folder, "target/file"), "new");
    EXPECT_EQ(contentOf(folder, "taken/file"), "old");
}

TEST_F(FNFileSystemFaults, ACopiedFolderIsWholeOrGone) {
    failEveryStep(
        [](const ScratchFolder& folder) {
            folder.write("source/a", kNew);
            folder.write("source/inner/b", kOld);
            fs::create_symlink("a", folder / "source/link");
        },
        [](FFileSystem& files, const ScratchFolder& folder) {
            return files.copyFolder(folderOf(folder / "source"), folderOf(folder / "target"), nullptr);
        },
        [](bool succeeded, const ScratchFolder& folder) {
            EXPECT_EQ(contentOf(folder, "source/a"), "new");
            EXPECT_EQ(contentOf(folder, "source/inner/b"), "old");
            if (succeeded) {
                EXPECT_EQ(contentOf(folder, "target/a"), "new");
                EXPECT_EQ(contentOf(folder, "target/inner/b"), "old");
                EXPECT_TRUE(fs::is_symlink(folder / "target/link"));
            } else {
                EXPECT_FALSE(folder.has("target"));
            }
        });
}

TEST_F(FNFileSystemFaults, DeletingAFolderTouchesNothingElse) {
    failEveryStep(
        [](const ScratchFolder& folder) {
            folder.write("outside/precious", kOld);
            folder.write("folder/a", kNew);
            folder.write("folder/inner/b", kNew);
            fs::create_directory_symlink(folder / "outside", folder / "folder/way-out");
        },
        [](FFileSystem& files, const ScratchFolder& folder) { return files.deleteFolder(folderOf(folder / "folder")); },
        [](bool succeeded, const ScratchFolder& folder) {
            EXPECT_EQ(contentOf(folder, "outside/precious"), "old");
            EXPECT_EQ(folder.has("folder"), !succeeded);
        });
}

TEST_F(FNFileSystemFaults, ALinkIsMadeOrNot) {
    failEveryStep([](const ScratchFolder& folder) { folder.write("target", kOld); },
                  [](FFileSystem& files, const ScratchFolder& folder) {
                      FNPath link = pathOf(folder / "link");
                      return files.createLink(link, pathOf(folder / "target"));
                  },
                  [](bool succeeded, const ScratchFolder& folder) {
                      EXPECT_EQ(contentOf(folder, "target"), "old");
                      EXPECT_EQ(folder.has("link.lnk"), succeeded);
                  });
}

} // namespace
} // namespace tessera
