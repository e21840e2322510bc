#include "exportscripts/AudioExportScriptList.h"

#include "platform/DesktopFiles.h"
#include "support/ScratchFolder.h"
#include "support/SystemFolders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tessera {
namespace {

namespace fs = std::filesystem;
using testing_support::utf8OfPath;

std::string scriptOf(const std::string& name, const std::string& version, const std::string& path = "/opt/x") {
    return "<AudioExportPostProcess><Executable><Name>" + name + "</Name><Version>" + version + "</Version><Path>" +
           path + "</Path></Executable></AudioExportPostProcess>";
}

FNPath folderOf(const fs::path& native) {
    FString text;
    text.assignUtf8(utf8OfPath(native).c_str());
    return FNPath(text, PathKind::folder);
}

// "name major.minor.patch", in the order of the list.
std::vector<std::string> linesOf(const AudioExportScriptList& list) {
    std::vector<std::string> lines;
    for (const auto& [name, script] : list) {
        EXPECT_EQ(name, script.name);
        lines.push_back(name + " " + std::to_string(script.version.major) + "." + std::to_string(script.version.minor) +
                        "." + std::to_string(script.version.patch));
    }
    return lines;
}

class AudioExportScriptListTest : public testing::Test {
protected:
    AudioExportScriptList scan() const { return AudioExportScriptList(folderOf(scratch_.path())); }

    testing_support::ScratchFolder scratch_;
};

TEST_F(AudioExportScriptListTest, AMissingOrEmptyFolderGivesAnEmptyList) {
    EXPECT_TRUE(scan().isEmpty());
    EXPECT_TRUE(AudioExportScriptList(folderOf(scratch_ / "missing")).isEmpty());
    EXPECT_TRUE(AudioExportScriptList(FNPath()).isEmpty());
    EXPECT_TRUE(AudioExportScriptList::none().isEmpty());
}

TEST_F(AudioExportScriptListTest, OnlyAcceptedScriptsAreKept) {
    scratch_.write("peer.aepp", scriptOf("Tessera Max", "9.0.0"));
    scratch_.write("old.aepp", scriptOf("Tessera Max", "8.9.9.9"));
    scratch_.write("host.aepp", scriptOf("Harrow Max", "8.5.10"));
    scratch_.write("stranger.aepp", scriptOf("Stranger", "99"));
    scratch_.write("broken.aepp", "<AudioExport");
    scratch_.write("empty.aepp", "");
    scratch_.write("peer.xml", scriptOf("Tessera Lite", "9.0.0"));
    fs::create_directory(scratch_ / "folder.aepp");
    EXPECT_EQ(linesOf(scan()), (std::vector<std::string>{"Harrow Max 8.5.10", "Tessera Max 9.0.0"}));
}

TEST_F(AudioExportScriptListTest, AnExtensionInUpperCaseCounts) {
    scratch_.write("PEER.AEPP", scriptOf("Tessera Max", "9.0.0"));
    EXPECT_EQ(scan().count(), 1u);
}

TEST_F(AudioExportScriptListTest, ALinkLeadsToItsScript) {
    scratch_.write("elsewhere/peer.aepp", scriptOf("Tessera Max", "9.0.0"));
    fs::create_directory(scratch_ / "scripts");
    ASSERT_FALSE(platform::createShortcut(utf8OfPath(scratch_ / "elsewhere" / "peer.aepp"),
                                          utf8OfPath(scratch_ / "scripts" / "peer.lnk")));
    EXPECT_EQ(AudioExportScriptList(folderOf(scratch_ / "scripts")).count(), 1u);
}

TEST_F(AudioExportScriptListTest, ScriptsOfOneNameStandSideBySide) {
    scratch_.write("a.aepp", scriptOf("Tessera Max", "9.0.0"));
    scratch_.write("b.aepp", scriptOf("Tessera Max", "9.5.1"));
    const AudioExportScriptList list = scan();
    const auto [first, last] = list.scriptsOf("Tessera Max");
    EXPECT_EQ(std::distance(first, last), 2);
    EXPECT_EQ(list.count(), 2u);
    const auto [none, end] = list.scriptsOf("Tessera");
    EXPECT_EQ(none, end);
}

TEST_F(AudioExportScriptListTest, SelectingPeersLeavesTheHostsOut) {
    scratch_.write("max.aepp", scriptOf("Tessera Max", "9.0.0"));
    scratch_.write("max2.aepp", scriptOf("Tessera Max", "9.5.1"));
    scratch_.write("lite.aepp", scriptOf("Tessera Lite", "9.1"));
    scratch_.write("harrow.aepp", scriptOf("Harrow Max", "8.5.10"));
    scratch_.write("ostrey.aepp", scriptOf("Ostrey", "7.1.20"));
    const AudioExportScriptList list = scan();
    EXPECT_EQ(list.count(), 5u);
    const AudioExportScriptList peers = list.select(ScriptKind::peers);
    EXPECT_EQ(peers.count(), 3u);
    EXPECT_EQ(peers.begin()->first, "Tessera Lite");
    EXPECT_EQ(linesOf(list.select(ScriptKind::hosts)),
              (std::vector<std::string>{"Harrow Max 8.5.10", "Ostrey 7.1.20"}));
    EXPECT_TRUE(list.select(static_cast<ScriptKind>(2)).isEmpty());
}

TEST_F(AudioExportScriptListTest, SelectingKeepsTheOrderWithinAName) {
    for (const char* version : {"9.3", "9.1", "9.2", "9.1"}) {
        scratch_.write(std::string("v") + std::to_string(scratch_.entryCount()) + ".aepp",
                       scriptOf("Tessera Max", version));
    }
    const AudioExportScriptList list = scan();
    EXPECT_EQ(linesOf(list.select(ScriptKind::peers)), linesOf(list));
}

TEST_F(AudioExportScriptListTest, IsAPlainValue) {
    scratch_.write("max.aepp", scriptOf("Tessera Max", "9.0.0", "/opt/tessera"));
    AudioExportScriptList list = scan();
    AudioExportScriptList copy = list;
    const AudioExportScriptList moved = std::move(list);
    copy = copy.select(ScriptKind::peers);
    EXPECT_EQ(linesOf(copy), linesOf(moved));
    EXPECT_EQ(copy.begin()->second.path.getFullPath(), moved.begin()->second.path.getFullPath());
}

TEST(ScriptsFolder, LiesInTheVendorsFolderOfTheMachine) {
    const fs::path folder = testing_support::pathOfFolder(platform::KnownFolder::commonData) / "Marlgrove" /
                            "Audio Export Post Process Scripts";
    if (fs::exists(folder)) {
        GTEST_SKIP() << "this machine has such a folder, with scripts of its own";
    }
    EXPECT_TRUE(scriptsFolder().getFullPath().isEmpty());
    EXPECT_TRUE(AudioExportScriptList().isEmpty());
    fs::create_directories(folder);
    const FNPath found = scriptsFolder();
    EXPECT_TRUE(found.isFolder());
    EXPECT_EQ(found.getFullPath(), folderOf(folder).getFullPath());
    std::ofstream(folder / "peer.aepp") << scriptOf("Tessera Max", "9.0.0");
    EXPECT_EQ(AudioExportScriptList().count(), 1u);
    fs::remove_all(folder);
}

} // namespace
} // namespace tessera
