#include "link/PeerLocation.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tessera {
namespace {

using Texts = std::vector<std::string>;

struct Installed {
    std::string name;
    std::string version;
    std::string path;
};

// A folder of scripts, read as the module reads it.
AudioExportScriptList peersOf(const std::vector<Installed>& installed) {
    static int folders = 0;
    const auto folder = std::filesystem::temp_directory_path() / ("scripts" + std::to_string(folders++));
    std::filesystem::create_directories(folder);
    for (std::size_t i = 0; i < installed.size(); ++i) {
        std::ofstream(folder / (std::to_string(i) + ".aepp"))
            << "<AudioExportPostProcess><Executable><Name>" << installed[i].name << "</Name><Version>"
            << installed[i].version << "</Version><Path>" << installed[i].path
            << "</Path><Argument>\"$PATH\"</Argument></Executable></AudioExportPostProcess>";
    }
    std::string native = testing_support::utf8OfPath(folder);
    std::ranges::replace(native, '/', '\\');
    FString text;
    text.assignUtf8(native.c_str());
    return AudioExportScriptList(FNPath(text, PathKind::folder)).select(ScriptKind::peers);
}

TEST(PeerLocation, WithoutPeersTheChoiceIsEmpty) {
    const AudioExportScript peer = choosePeer(AudioExportScriptList::none());
    EXPECT_EQ(peer.name, "");
    EXPECT_EQ(peer.version, AppVersion());
}

TEST(PeerLocation, TheFirstEditionWinsWhateverTheVersions) {
    const auto peers = peersOf({{"Tessera Max", "9.0.0", "/max"}, {"Tessera Lite", "10.0.0", "/lite"}});
    const AudioExportScript peer = choosePeer(peers);
    EXPECT_EQ(peer.name, "Tessera Max");
    EXPECT_EQ(peer.version, (AppVersion{0, 0, 0, 9}));
    EXPECT_EQ(peer.arguments, Texts{"\"$PATH\""});
}

TEST(PeerLocation, WithinAnEditionTheNewestWins) {
    const auto peers =
        peersOf({{"Tessera Lite", "9.1.0", "/a"}, {"Tessera Lite", "9.10.0", "/b"}, {"Tessera Lite", "9.9.9", "/c"}});
    EXPECT_EQ(choosePeer(peers).version, (AppVersion{0, 0, 10, 9}));
}

TEST(PeerLocation, AmongEqualVersionsTheFirstStays) {
    const auto peers = peersOf({{"Tessera Max", "9.0.0", "/a"}, {"Tessera Max", "9.0.0", "/b"}});
    const auto [first, last] = peers.scriptsOf("Tessera Max");
    ASSERT_EQ(std::distance(first, last), 2);
    EXPECT_TRUE(choosePeer(peers).path.isEqual(&first->second.path));
}

struct Row {
    const char* name;
    Texts templates;
    std::string file;
    Texts arguments;
};

class LaunchArguments : public testing::TestWithParam<Row> {};

TEST_P(LaunchArguments, AreFilledTemplates) {
    EXPECT_EQ(launchArguments(GetParam().templates, GetParam().file), GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LaunchArguments,
    testing::Values(Row{"QuotedPlaceholder", {"\"$PATH\""}, "/a b.wav", {"--tesx", "/a b.wav"}},
                    Row{"BeforeTheLast", {"-a", "$PATH", "-b"}, "F", {"-a", "F", "--tesx", "-b"}},
                    Row{"NoTemplates", {}, "F", {}},
                    Row{"SecondPlaceholderStays", {"$PATH=$PATH"}, "F", {"--tesx", "F=$PATH"}},
                    Row{"QuotedAndPlain", {"\"$PATH\" $PATH \"$PATH\""}, "F", {"--tesx", "F $PATH $PATH"}},
                    Row{"EmptyFile", {"-o", "\"$PATH\"", "$PATH.x"}, "", {"-o", "", ".x"}},
                    Row{"NoPlaceholder", {"-v"}, "F", {"--tesx", "-v"}},
                    Row{"PathThatHoldsThePlaceholder", {"$PATH"}, "/$PATH/x", {"--tesx", "/$PATH/x"}},
                    Row{"Utf8", {"--open=$PATH"}, "/t\xC3\xA4ke", {"--tesx", "--open=/t\xC3\xA4ke"}}),
    [](const auto& row) { return row.param.name; });

} // namespace
} // namespace tessera
