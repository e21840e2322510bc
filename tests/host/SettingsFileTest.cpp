#include "host/program/SettingsFile.h"

#include "appservices/defaults/GlobalDefaults.h"
#include "appservices/translation/ProgramFolders.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <vector>

namespace tessera::host {
namespace {

namespace fs = std::filesystem;

class SettingsFileTest : public ::testing::Test {
protected:
    SettingsFileTest() {
        FGlobalDefaultPool::setBaseName(kHostFolderName);
        forget();
    }
    ~SettingsFileTest() override {
        forget();
        FGlobalDefaultPool::setBaseName("Defaults");
        GlobalDefaults::setSaveGate(nullptr);
    }

    fs::path file(const std::string& name) const { return folders_->user.path() / name; }
    void write(const std::string& name, const std::string& content) const {
        std::ofstream(file(name), std::ios::binary) << content;
    }
    std::string read(const std::string& name) const {
        std::ifstream in(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    // What the process knows of settings, as at the start of another one.
    void forget() {
        folders_.emplace();
        write("tesx-host.xml", documentWith(0));
        ASSERT_TRUE(GlobalDefaults::load());
        FGlobalDefaultPool::getInstance()->remove("Wait", "Seconds");
        folders_.reset();
        folders_.emplace();
    }

    static std::string documentWith(int seconds) {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Defaults><list name=\"Entries\" type=\"list\"><item>"
               "<string name=\"Group\" value=\"Wait\"/><member name=\"Values\"><float name=\"Seconds\" value=\"" +
               std::to_string(seconds) + "\"/></member></item></list></Defaults>";
    }
    static std::optional<double> seconds() {
        double value = 0;
        const bool isThere = FGlobalDefaultPool::getInstance()->getFloat("Wait", "Seconds", value);
        return isThere ? std::optional<double>(value) : std::nullopt;
    }

    void load() {
        told_.clear();
        loadSettings([this](const std::string& line) { told_.push_back(line); });
    }
    void save() {
        told_.clear();
        saveSettings([this](const std::string& line) { told_.push_back(line); });
    }

    std::optional<test::ProgramFolders> folders_;
    std::vector<std::string> told_;
};

using Lines = std::vector<std::string>;

TEST_F(SettingsFileTest, WhatIsSavedIsThereAtTheNextStart) {
    load();
    EXPECT_EQ(told_, Lines{}) << "a first start is nothing to tell";
    FGlobalDefaultPool::getInstance()->setFloat("Wait", "Seconds", 7);
    save();
    EXPECT_EQ(told_, Lines{});
    const std::string content = read("tesx-host.xml");
    forget();
    EXPECT_EQ(seconds(), std::nullopt);
    write("tesx-host.xml", content);
    load();
    EXPECT_EQ(told_, Lines{});
    EXPECT_EQ(seconds(), 7);
}

TEST_F(SettingsFileTest, ADamagedFileIsToldAndPutAside) {
    const std::string damaged = documentWith(3).substr(0, 150);
    write("tesx-host.xml", damaged);
    load();
    EXPECT_EQ(told_, Lines{"warning: the settings can't be read and are put aside as \"" +
                           file("tesx-host (Trashed).xml").string() + "\"; the host begins with new ones"});
    EXPECT_EQ(read("tesx-host (Trashed).xml"), damaged);
    EXPECT_EQ(seconds(), std::nullopt);
    FGlobalDefaultPool::getInstance()->setFloat("Wait", "Seconds", 7);
    save();
    EXPECT_EQ(told_, Lines{});
    EXPECT_NE(read("tesx-host.xml").find("value=\"7\""), std::string::npos);
    EXPECT_EQ(read("tesx-host (Trashed).xml"), damaged);
}

TEST_F(SettingsFileTest, ASaveThatWasBrokenOffLosesNothing) {
    const Lines warning{
        "warning: the last save of the settings wasn't finished; the host goes on with those before it"};
    write("tesx-host_old.xml", documentWith(4));
    load();
    EXPECT_EQ(told_, warning);
    EXPECT_EQ(seconds(), 4);
    EXPECT_EQ(read("tesx-host.xml"), documentWith(4));

    forget();
    write("tesx-host_old.xml", documentWith(5));
    write("tesx-host.xml", documentWith(6).substr(0, 100));
    load();
    EXPECT_EQ(told_, warning);
    EXPECT_EQ(seconds(), 5);
    EXPECT_EQ(read("tesx-host (Trashed).xml"), documentWith(6).substr(0, 100));
}

TEST_F(SettingsFileTest, ADamagedFileThatCannotBePutAsideIsLeftAlone) {
    write("tesx-host.xml", "damaged");
    fs::create_directory(file("tesx-host (Trashed).xml"));
    load();
    EXPECT_EQ(told_, Lines{"warning: the settings can't be read, nor put aside; nothing is kept of this run"});
    FGlobalDefaultPool::getInstance()->setFloat("Wait", "Seconds", 7);
    save();
    EXPECT_EQ(told_, Lines{});
    EXPECT_EQ(read("tesx-host.xml"), "damaged");
}

TEST_F(SettingsFileTest, SettingsThatCannotBeSavedAreTold) {
    load();
    const fs::path folder = folders_->user.path();
    fs::remove_all(folder);
    std::ofstream(folder) << "no folder";
    save();
    EXPECT_EQ(told_, Lines{"warning: the settings can't be saved in \"" + (folder / "tesx-host.xml").string() + "\""});
    fs::remove(folder);
    fs::create_directory(folder);
}

TEST_F(SettingsFileTest, WithoutAFolderThereIsNothingToTell) {
    applicationFoldersSource = nullptr;
    load();
    EXPECT_EQ(told_, Lines{});
    save();
    EXPECT_EQ(told_, Lines{});
}

} // namespace
} // namespace tessera::host
