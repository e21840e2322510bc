// The three programs together, as processes: the host, the module in it, and the stand-in peer with an editor of the
// command line.
#include "acceptance/ModuleFixture.h"
#include "acceptance/SoundBytes.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"
#include "support/ScopedEnvironment.h"
#include "support/SetAside.h"
#include "support/Skips.h"
#include "support/SystemFolders.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>

namespace tessera::acceptance {
namespace {

namespace fs = std::filesystem;
using platform::KnownFolder;
using testing_support::HelperProcess;
using testing_support::pathOfFolder;
using testing_support::pathOfUtf8;
using testing_support::utf8OfPath;
using testing_support::whyNoLanguageInVariables;

constexpr SoundFormat k24Bit = {".wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24};
constexpr int kRate = 8000;
constexpr const char* kReverse = "'" TESX_SOX "' -R -V1 {in} {out} reverse";
constexpr const char* kEnglish = "C";

class Programs : public ModuleFixture {
protected:
    struct Run {
        int exitCode;
        std::string output;
    };

    // A peer that the module started leaves by itself when the host has gone; the next test begins without one.
    void TearDown() override {
        ModuleFixture::TearDown();
        EXPECT_TRUE(testing_support::eventually([] { return !fs::exists(record()); }));
    }

    // The host program on a script, with its output and its messages together. It speaks English unless the locale is
    // another one; where no variable names that, the user's language is English.
    Run runHost(const std::string& script, std::vector<std::string> options = {}, const char* locale = kEnglish) {
        std::optional<testing_support::ScopedEnvironment> language;
        if (whyNoLanguageInVariables() == nullptr) {
            language.emplace("LC_ALL", locale);
        }
        options.insert(options.begin(), {"--module", TESX_MODULE_FILE});
        HelperProcess& program = hosts_.emplace_back(TESX_HOST, options, HelperProcess::Messages::amongLines);
        program.say(script);
        Run run;
        run.exitCode = program.finish(run.output);
        // Where a program's standard streams are text, its lines end so.
        std::erase(run.output, '\r');
        return run;
    }

    // As an installation of the peer would.
    void installPeer(const std::string& editor) {
        fs::create_directories(scripts());
        HelperProcess program(TESX_PEER, {"--print-script", "--editor", editor});
        std::string script;
        ASSERT_EQ(program.finish(script), 0);
        std::ofstream(scripts() / "peer.aepp", std::ios::binary) << script;
    }

    // In the system's own form, as the programs print it.
    std::string path(const std::string& name) const { return utf8OfPath((folder_ / name).make_preferred()); }

    std::string makeTake(const std::string& name) {
        take_ = randomSamples(k24Bit, 12000, 2, 7);
        writeSound(path(name), k24Bit, take_, 2, kRate);
        return path(name);
    }

    // The take with one second, from the half second on, played backwards.
    Samples expectedResult() const {
        Samples result = take_;
        for (int frame = 0; frame < kRate; ++frame) {
            for (int channel = 0; channel < 2; ++channel) {
                result[static_cast<std::size_t>((4000 + frame) * 2 + channel)] =
                    take_[static_cast<std::size_t>((4000 + kRate - 1 - frame) * 2 + channel)];
            }
        }
        return result;
    }

    std::string songScript(const std::string& then, const std::string& song = "my song",
                           const std::string& take = "take.wav") {
        return "new \"" + path(song) + "\" \"" + makeTake(take) + "\"\ntrim 1 0.5 1\nselect 1\n" + then;
    }

    std::vector<std::string> splicedFiles(const std::string& song = "my song") {
        std::vector<std::string> files;
        for (const auto& entry : fs::directory_iterator(pathOfUtf8(path(song)) / "Audio")) {
            files.push_back(utf8OfPath(entry.path()));
        }
        return files;
    }

    // Whatever lies among the user's settings, and in the vendor's folder there at any depth.
    static std::set<fs::path> settings() {
        std::set<fs::path> entries;
        for (const auto& entry : fs::directory_iterator(pathOfFolder(KnownFolder::userData))) {
            entries.insert(entry.path());
        }
        if (fs::exists(vendorSettings())) {
            for (const auto& entry : fs::recursive_directory_iterator(vendorSettings())) {
                entries.insert(entry.path());
            }
        }
        return entries;
    }

    static fs::path vendorSettings() { return pathOfFolder(KnownFolder::userData) / "Marlgrove"; }
    static fs::path record() {
        return fs::temp_directory_path() / "Marlgrove" / "ServiceDiscovery" / "com.marlgrove.tessera";
    }
    // While it lives it has its copies of what is edited in a folder of its own.
    static bool isPeerAtWork() {
        const fs::directory_iterator entries(fs::temp_directory_path() / "Marlgrove" / "TesxPeer");
        return std::any_of(begin(entries), end(entries), [](const fs::directory_entry& entry) {
            return utf8OfPath(entry.path().filename()).starts_with("work-");
        });
    }
    const fs::path& settingsFolder() const { return settings_.path(); }
    const fs::path& scripts() const { return scripts_.path(); }

    Samples take_;

private:
    // All of a test's: a peer has the streams of the host that started it, and may speak when that has gone.
    std::deque<HelperProcess> hosts_;
    const testing_support::SetAside settings_{vendorSettings() / "tesx-host"};
    const testing_support::SetAside scripts_{pathOfFolder(KnownFolder::commonData) / "Marlgrove" /
                                             "Audio Export Post Process Scripts"};
};

TEST_F(Programs, TheModuleStartsThePeerAndTheEditComesBack) {
    installPeer(kReverse);
    const Run run = runHost(songScript("edit\nwait 60\nshow\nundo\nshow\nredo\nsave\nquit\n"));
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_EQ(splicedFiles().size(), 1U) << run.output;
    EXPECT_EQ(readSound(splicedFiles().front()).samples, expectedResult());
    EXPECT_EQ(readSound(path("take.wav")).samples, take_);
    EXPECT_NE(run.output.find("undone: Edit in Tessera"), std::string::npos) << run.output;
    EXPECT_EQ(run.output.find("misuse"), std::string::npos) << run.output;

    const Run again = runHost("open \"" + path("my song/my song.tesxproject") + "\"\nshow\n");
    EXPECT_EQ(again.exitCode, 0) << again.output;
    EXPECT_NE(again.output.find("plays \"" + splicedFiles().front() + "\" from 0.500 s"), std::string::npos)
        << again.output;
}

TEST_F(Programs, APeerThatRunsAlreadyGetsTheFileOverTheLink) {
    HelperProcess peer(TESX_PEER, {"--once", "--editor", kReverse});
    // A host that starts between the peer's record and its signal would take the signal for its end.
    ASSERT_EQ("tesx-peer: ready; waiting for the host's files", peer.hear());
    const Run run = runHost(songScript("edit\nwait 60\nidle 1\nquit\n"));
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_EQ(splicedFiles().size(), 1U) << run.output;
    EXPECT_EQ(readSound(splicedFiles().front()).samples, expectedResult());
}

TEST_F(Programs, NamesWithBlanksAndLettersOfManyScriptsGoAllTheWay) {
    const std::string song = "Lieder für Zoë, 東京";
    installPeer("'" EDITOR_HELPER "' reverse {in} {out}");
    const Run run = runHost(songScript("edit\nwait 60\nshow\nsave\nquit\n", song, "Übung 1 żółć 🎵.wav"));
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_EQ(splicedFiles(song).size(), 1U) << run.output;
    EXPECT_EQ(readSound(splicedFiles(song).front()).samples, expectedResult());
    EXPECT_NE(run.output.find("plays \"" + splicedFiles(song).front() + "\" from 0.500 s"), std::string::npos)
        << run.output;

    const Run again = runHost("", {"-c", "open \"" + path(song + "/" + song + ".tesxproject") + "\"", "-c", "show"});
    EXPECT_EQ(again.exitCode, 0) << again.output;
    EXPECT_NE(again.output.find(splicedFiles(song).front()), std::string::npos) << again.output;
}

TEST_F(Programs, AnInstalledEditorMayStandInDoubleQuotes) {
    const fs::path editor = folder_ / "an editor" / fs::path(EDITOR_HELPER).filename();
    fs::create_directories(editor.parent_path());
    fs::copy_file(EDITOR_HELPER, editor);
    installPeer("\"" + utf8OfPath(editor) + "\" reverse {in} {out}");
    const Run run = runHost(songScript("edit\nwait 60\n"));
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_EQ(splicedFiles().size(), 1U) << run.output;
    EXPECT_EQ(readSound(splicedFiles().front()).samples, expectedResult());
}

TEST_F(Programs, AnEditorThatFailsLeavesTheProjectAlone) {
    installPeer("'" EDITOR_HELPER "' exit 1 {in} {out}");
    const Run run = runHost(songScript("edit\nwait 3\n"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("tesx-host: line 5: the edit didn't come back within 3.000 s"), std::string::npos)
        << run.output;
    EXPECT_TRUE(splicedFiles().empty());
}

TEST_F(Programs, WithoutAPeerTheCommandCantRun) {
    const Run run = runHost(songScript("commands\nedit\n"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("Audio > Edit in Tessera (can't run now)"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("can't run now; select one audio event"), std::string::npos) << run.output;
}

TEST_F(Programs, TheHostGoesOnAfterAFailureOnlyIfItIsToldTo) {
    EXPECT_EQ(runHost("undo\nshow\n").output.find("no project is open"), std::string::npos);
    const Run run = runHost("undo\nshow\n", {"--keep-going"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("line 1: there is nothing to undo"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("no project is open"), std::string::npos) << run.output;
}

TEST_F(Programs, AHostThatIsNotAdmittedIsTold) {
    const Run run = runHost("", {"--name", "Somebody"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("start it as an admitted one with --name and --host-version"), std::string::npos)
        << run.output;
}

TEST_F(Programs, CommandsComeFromArgumentsAsWell) {
    const Run run = runHost(
        "", {"-c", "new \"" + path("my song") + "\" \"" + makeTake("take.wav") + "\"", "-c", "show", "-c", "quit"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("1  0.000 to 1.500 s  take.wav"), std::string::npos) << run.output;
}

TEST_F(Programs, TheHostSpeaksTheLanguageOfTheLocale) {
    if (const char* reason = whyNoLanguageInVariables()) {
        GTEST_SKIP() << reason;
    }
    const std::string script = songScript("show\nundo\ndance\n");
    const Run german = runHost(script, {"--keep-going"}, "de_DE.UTF-8");
    EXPECT_EQ(german.exitCode, 1);
    for (const char* text :
         {"Modul: Tessera Exchange", "Projekt \"", "  Spur 1\n", "1 Clip im Pool", "0.000 bis 1.000 s"}) {
        EXPECT_NE(german.output.find(text), std::string::npos) << text << " in " << german.output;
    }
    EXPECT_NE(german.output.find("rückgängig gemacht: Event zuschneiden\n"), std::string::npos) << german.output;
    EXPECT_NE(german.output.find("tesx-host: Zeile 6: den Befehl \"dance\" gibt es nicht"), std::string::npos)
        << german.output;
    EXPECT_NE(runHost("help\n", {}, "de_DE.UTF-8").output.find("new ORDNER [KLANGDATEI...]"), std::string::npos);

    for (const char* locale : {"sw_KE.UTF-8", kEnglish, "en_GB.UTF-8"}) {
        fs::remove_all(path("my song"));
        const Run english = runHost(script, {"--keep-going"}, locale);
        EXPECT_NE(english.output.find("undone: Trim event\n"), std::string::npos) << english.output;
        EXPECT_NE(english.output.find("tesx-host: line 6: there is no command \"dance\""), std::string::npos)
            << english.output;
    }
}

TEST_F(Programs, AChosenLanguageHoldsFromThenOn) {
    const Run chosen = runHost("language\nlanguage de\nundo\n");
    EXPECT_NE(chosen.output.find("language us (English); there are: us, de\n"), std::string::npos) << chosen.output;
    EXPECT_NE(chosen.output.find("Sprache de (Deutsch); es gibt: us, de\n"), std::string::npos) << chosen.output;
    EXPECT_NE(chosen.output.find("es gibt nichts rückgängig zu machen"), std::string::npos) << chosen.output;
    EXPECT_TRUE(fs::exists(settingsFolder() / "lang.cfg"));
    EXPECT_NE(runHost("undo\n").output.find("es gibt nichts rückgängig zu machen"), std::string::npos);
    runHost("language us\n");
    EXPECT_NE(runHost("undo\n", {}, "de_DE.UTF-8").output.find("there is nothing to undo"), std::string::npos);
}

TEST_F(Programs, WhatTheHostRemembersHoldsForTheNextRun) {
    EXPECT_EQ(runHost(songScript("save\nset wait 0.125\n")).exitCode, 0);
    const Run run = runHost("settings\nopen\nrecent\nshow\nwait\n");
    EXPECT_NE(run.output.find("wait 0.125  "), std::string::npos) << run.output;
    EXPECT_NE(run.output.find(path("my song/my song.tesxproject") + "\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("project \"" + path("my song") + "\""), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("didn't come back within 0.125 s"), std::string::npos) << run.output;
}

TEST_F(Programs, DamagedSettingsArePutAsideAndTheHostGoesOn) {
    ASSERT_EQ(runHost("set wait 5\n").exitCode, 0);
    const fs::path file = settingsFolder() / "tesx-host.xml";
    const std::uintmax_t half = fs::file_size(file) / 2;
    fs::resize_file(file, half);
    const Run run = runHost("settings\nset wait 6\n");
    EXPECT_EQ(run.exitCode, 0);
    const std::string warning = "tesx-host: warning: the settings can't be read and are put aside as \"" +
                                utf8OfPath(settingsFolder() / "tesx-host (Trashed).xml") + "\"";
    EXPECT_EQ(run.output.find(warning), 0U) << run.output;
    EXPECT_NE(run.output.find("wait 60.000"), std::string::npos) << run.output;
    EXPECT_EQ(fs::file_size(settingsFolder() / "tesx-host (Trashed).xml"), half);
    const Run next = runHost("settings\n");
    EXPECT_EQ(next.output.find("warning"), std::string::npos) << next.output;
    EXPECT_NE(next.output.find("wait 6.000"), std::string::npos) << next.output;
}

TEST_F(Programs, NothingOfTheHostLiesAmongOtherSettings) {
    std::set<fs::path> expected = settings();
    ASSERT_EQ(runHost("set wait 5\n").exitCode, 0);
    expected.insert({vendorSettings(), settingsFolder(), settingsFolder() / "tesx-host.xml"});
    EXPECT_EQ(settings(), expected);
}

TEST_F(Programs, AHostThatIsKilledTakesPeerAndEditorWithIt) {
    const fs::path mark = folder_ / "editor is at work";
    installPeer("'" EDITOR_HELPER "' linger '" + utf8OfPath(mark) + "' {in} {out}");
    HelperProcess killed(TESX_HOST, {"--module", TESX_MODULE_FILE});
    killed.say(songScript("save\nedit\nwait 60"));
    EXPECT_TRUE(testing_support::eventually([&] { return fs::exists(mark); }));
    killed.kill();
    EXPECT_TRUE(testing_support::eventually([] { return !fs::exists(record()); }));
    EXPECT_TRUE(testing_support::eventually([] { return !isPeerAtWork(); }));
    EXPECT_EQ(readSound(path("take.wav")).samples, take_);
    EXPECT_TRUE(splicedFiles().empty());

    installPeer(kReverse);
    const Run next = runHost("open \"" + path("my song/my song.tesxproject") + "\"\nselect 1\nedit\nwait 60\nsave\n");
    EXPECT_EQ(next.exitCode, 0) << next.output;
    ASSERT_EQ(splicedFiles().size(), 1U) << next.output;
    EXPECT_EQ(readSound(splicedFiles().front()).samples, expectedResult());
}

// Without an installed peer the command can run only while the link is open.
TEST_F(Programs, APeerThatComesAndIsKilledIsNoticed) {
    startModule();
    ASSERT_EQ(host().newProject(path("my song"), {makeTake("take.wav")}), "");
    ASSERT_EQ(host().select({1}), "");
    const auto canEdit = [&] { return host().commandTarget().mayRun("Tessera Exchange", "Edit in Tessera"); };
    EXPECT_FALSE(canEdit());
    for (int round = 0; round < 3; ++round) {
        HelperProcess peer(TESX_PEER, {"--editor", kReverse});
        EXPECT_TRUE(runUntil(canEdit)) << "comes, round " << round;
        peer.kill();
        EXPECT_TRUE(runUntil([&] { return !canEdit(); })) << "goes, round " << round;
    }
    fs::remove(record()); // nobody else takes away what a killed program leaves
}

} // namespace
} // namespace tessera::acceptance
