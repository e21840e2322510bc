// Every step of a save fails in turn, and at every step in turn the process is killed: the old document or the new one
// is always there as a whole.
#include "persistence/objects/FObjectFiles.h"

#include "persistence/objects/DocumentFolders.h"
#include "persistence/objects/DocumentSupport.h"
#include "support/FailingCalls.h"
#include "support/HelperProcess.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

namespace tessera {
namespace {

using namespace test;
using testing_support::FailingCalls;
using testing_support::HelperProcess;
using testing_support::ScratchFolder;

// "old", "new", "a part of the new", "nothing", or what it isn't.
std::string kindOf(const ScratchFolder& folder, const std::string& name, const std::string& old,
                   const std::string& fresh) {
    if (!folder.has(name)) {
        return "nothing";
    }
    const std::string text = renumbered(folder.read(name));
    if (text == old) {
        return "old";
    }
    if (text == fresh) {
        return "new";
    }
    // Cut anywhere: all whole lines are those of the new document.
    const std::size_t lastLine = text.rfind("\r\n");
    return fresh.starts_with(text.substr(0, lastLine == text.npos ? 0 : lastLine)) ? "a part of the new"
                                                                                   : "something else";
}

std::string textOf(int number) {
    return renumbered(savedObject(*newFamily(number), "TestNode"));
}

class FObjectFilesFaults : public testing::Test {
protected:
    static std::string stateOf(const ScratchFolder& folder, int oldNumber, int newNumber) {
        const std::string old = textOf(oldNumber);
        const std::string fresh = textOf(newNumber);
        return kindOf(folder, "Mixer.xml", old, fresh) + ", beside it " + kindOf(folder, "Mixer_old.xml", old, fresh);
    }
};

TEST_F(FObjectFilesFaults, WhateverStepFailsTheOldDocumentOrTheNewOneIsThere) {
    int calls = 1;
    for (int call = 0; call <= calls; ++call) {
        const ScratchFolder folder;
        const DocumentFolders folders(folder.path(), folder.path());
        ASSERT_TRUE(FObjectFiles::saveObject("Mixer", "TestNode", *newFamily(1)));
        FailingCalls::arm(call, EIO);
        const bool saved = FObjectFiles::saveObject("Mixer", "TestNode", *newFamily(2));
        const int count = FailingCalls::disarm();
        calls = call == 0 ? count : calls;
        SCOPED_TRACE("call " + std::to_string(call) + " failed: " + FailingCalls::failed());
        const std::string state = stateOf(folder, 1, 2);
        if (saved) {
            // What can't be deleted stays.
            EXPECT_THAT(state, testing::AnyOf("new, beside it nothing", "new, beside it old"));
        } else {
            EXPECT_EQ(state, "old, beside it nothing");
        }
        EXPECT_EQ(saved, call == 0 || FailingCalls::failed() == "unlink" || FailingCalls::failed() == "close" ||
                             FailingCalls::failed() == "stat")
            << state;
    }
    EXPECT_GE(calls, 10) << "that there are several writes among them";
}

TEST_F(FObjectFilesFaults, KilledAtAnyStepItLeavesTheOldDocumentOrTheNewOne) {
    const ScratchFolder folder;
    const DocumentFolders folders(folder.path(), folder.path());
    ASSERT_TRUE(FObjectFiles::saveObject("Mixer", "TestNode", *newFamily(0)));
    // The order of the states that a save goes through, step by step.
    const std::vector<std::string> order = {"old, beside it nothing", "nothing, beside it old",
                                            "a part of the new, beside it old", "new, beside it old",
                                            "new, beside it nothing"};
    std::size_t reached = 0;
    bool finished = false;
    for (int step = 1; !finished && step < 1000; ++step) {
        const std::vector<std::string> arguments = {folder.path().string(), "1", std::to_string(step)};
        HelperProcess helper(SAVE_HELPER, arguments);
        finished = helper.hear() == "saved";
        helper.kill();
        const std::string state = stateOf(folder, 0, 1);
        SCOPED_TRACE("killed at step " + std::to_string(step));
        const auto found = std::find(order.begin(), order.end(), state);
        ASSERT_NE(found, order.end()) << state;
        const auto place = static_cast<std::size_t>(found - order.begin());
        EXPECT_GE(place, reached) << state;
        reached = place;
        // Reading takes what stands under the name, and never looks at the other file.
        TestNode read;
        const bool loaded = FObjectFiles::loadObject("Mixer", "TestNode", read);
        if (place != 2) {
            EXPECT_EQ(loaded, place != 1);
        }
        if (loaded && place != 2) {
            EXPECT_EQ(read.number, place == 0 ? 0 : 1);
        }
        // The next save succeeds whatever was left.
        ASSERT_TRUE(FObjectFiles::saveObject("Mixer", "TestNode", *newFamily(0)));
        ASSERT_EQ(stateOf(folder, 0, 1), "old, beside it nothing");
    }
    EXPECT_TRUE(finished);
    EXPECT_EQ(reached, order.size() - 1);
}

TEST_F(FObjectFilesFaults, WhateverStepOfARestoreFailsTheBackupGoesOnlyBehindAWholeDocument) {
    for (const bool documentIsThere : {true, false}) {
        int calls = 1;
        std::vector<std::string> failedWithTheDocumentThere;
        for (int call = 0; call <= calls; ++call) {
            const ScratchFolder folder;
            const DocumentFolders folders(folder.path(), folder.path());
            ASSERT_TRUE(FObjectFiles::saveObject("Mixer", "TestNode", *newFamily(1)));
            ASSERT_TRUE(FObjectFiles::backupDocument("Mixer"));
            ASSERT_TRUE(documentIsThere ? FObjectFiles::saveObject("Mixer", "TestNode", *newFamily(2))
                                        : FObjectFiles::deleteDocument("Mixer"));
            FailingCalls::arm(call, EIO);
            const bool restored = FObjectFiles::restoreDocument("Mixer");
            const int count = FailingCalls::disarm();
            calls = call == 0 ? count : calls;
            SCOPED_TRACE("call " + std::to_string(call) + " failed: " + FailingCalls::failed());
            const std::string document = kindOf(folder, "Mixer.xml", textOf(1), textOf(2));
            const std::string backup = kindOf(folder, "Mixer.xml.backup", textOf(1), textOf(2));
            EXPECT_EQ(backup, restored ? "nothing" : "old");
            EXPECT_THAT(document,
                        restored ? testing::Matcher<std::string>("old") : testing::AnyOf("old", "new", "nothing"));
            if (!restored && document == "old") {
                failedWithTheDocumentThere.push_back(FailingCalls::failed());
            }
        }
        EXPECT_THAT(failedWithTheDocumentThere, testing::IsSupersetOf({"fdatasync", "fsync", "unlink"}))
            << "the document is on the storage ahead of the backup's end";
    }
}

} // namespace
} // namespace tessera
