#include "appservices/defaults/GlobalDefaults.h"
#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [settings]
void startSettings() {
    GlobalDefaults::load();    // false where there are none yet
    GlobalDefaults::restore(); // from here on save() writes
}

void setZoom(double zoom) {
    if (IDefaultPool* pool = FGlobalDefaultPool::getInstance()) { // null at the end of the process
        pool->setFloat("Mixer", "zoom", zoom);
    }
}

double getZoom() {
    double zoom = 1; // stays where nothing is kept
    if (IDefaultPool* pool = FGlobalDefaultPool::getInstance()) {
        pool->getFloat("Mixer", "zoom", zoom);
    }
    return zoom;
}

bool endSettings() {
    return GlobalDefaults::save(GlobalDefaults::RunSavers::yes);
}
// [settings]

// [paths in settings]
void rememberFolder(const FPath& folder) {
    folder.saveDefaultPath("Songs");
}

bool recallFolder(FPath& folder) {
    return folder.loadDefaultPath("Songs");
}
// [paths in settings]

// The pool is the process's: what a test has set goes with it.
class SettingsExample : public testing::Test {
protected:
    ~SettingsExample() override {
        for (const char* group : {"Mixer", "Default Paths"}) {
            FGlobalDefaultPool::getInstance()->removeGroup(group);
        }
    }
};

TEST_F(SettingsExample, WhatIsSetIsThereAtTheNextStart) {
    const SettingsFolder folder;
    startSettings();
    EXPECT_EQ(getZoom(), 1);
    setZoom(0.75);
    ASSERT_TRUE(endSettings());
    EXPECT_TRUE(folder.scratch().has("Defaults.xml"));
    setZoom(2);
    startSettings();
    EXPECT_EQ(getZoom(), 0.75);
}

TEST_F(SettingsExample, AFolderIsRememberedUnderAKey) {
    const SettingsFolder settings;
    startSettings();
    FNPath folder(PathKind::folder);
    EXPECT_FALSE(recallFolder(folder));
    rememberFolder(FNPath("/home/ada/songs", PathKind::folder));
    ASSERT_TRUE(recallFolder(folder));
    EXPECT_STREQ(folder.FPath::getFullPath().text8(), "\\home\\ada\\songs");
}

} // namespace
} // namespace tessera::test
