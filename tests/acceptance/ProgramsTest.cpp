// The three programs together, as processes: the host, the module in it, and the stand-in peer with an editor of the
// command line.
#include "acceptance/ModuleFixture.h"
#include "acceptance/SoundBytes.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tessera::acceptance {
namespace {

namespace fs = std::filesystem;

constexpr SoundFormat k24Bit = {".wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24};
constexpr int kRate = 8000;

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
        fs::remove_all(scripts());
        fs::remove_all(settingsFolder());
    }

    // The host program on a script, with its output and its messages together. It speaks English unless the locale is
    // another one.
    Run runHost(const std::string& script, const std::string& options = "", const std::string& locale = "C") {
        folder_.write("script", script);
        const std::string command = "LC_ALL=" + locale + " '" TESX_HOST "' --module '" TESX_MODULE_FILE "' " + options +
                                    " < '" + path("script") + "' > '" + path("output") + "' 2>&1";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder_.read("output")};
    }

    // As an installation of the peer would.
    void installPeer(const std::string& editor) {
        fs::create_directories(scripts());
        const std::string script = (scripts() / "peer.aepp").string();
        const std::string command =
            std::string("'" TESX_PEER "' --print-script --editor '") + editor + "' > '" + script + "'";
        ASSERT_EQ(std::system(command.c_str()), 0);
    }

    std::string makeTake() {
        take_ = randomSamples(k24Bit, 12000, 2, 7);
        writeSound(path("take.wav"), k24Bit, take_, 2, kRate);
        return path("take.wav");
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

    std::string songScript(const std::string& then) {
        return "new \"" + path("my song") + "\" \"" + makeTake() + "\"\ntrim 1 0.5 1\nselect 1\n" + then;
    }

    std::vector<std::string> splicedFiles() {
        std::vector<std::string> files;
        for (const auto& entry : fs::directory_iterator(path("my song/Audio"))) {
            files.push_back(entry.path().string());
        }
        return files;
    }

    static fs::path settingsFolder() { return fs::path(std::getenv("XDG_CONFIG_HOME")) / "Marlgrove" / "tesx-host"; }
    static fs::path record() {
        return fs::temp_directory_path() / "Marlgrove" / "ServiceDiscovery" / "com.marlgrove.tessera";
    }
    static fs::path scripts() {
        return fs::path(std::getenv("XDG_DATA_DIRS")) / "Marlgrove" / "Audio Export Post Process Scripts";
    }

    Samples take_;
};

TEST_F(Programs, TheModuleStartsThePeerAndTheEditComesBack) {
    installPeer("sox -R -V1 {in} {out} reverse");
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
    testing_support::HelperProcess peer(TESX_PEER, {"--once", "--editor", "sox -R -V1 {in} {out} reverse"});
    // A host that starts between the peer's record and its signal would take the signal for its end.
    ASSERT_EQ("tesx-peer: ready; waiting for the host's files", peer.hear());
    const Run run = runHost(songScript("edit\nwait 60\nidle 1\nquit\n"));
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_EQ(splicedFiles().size(), 1U) << run.output;
    EXPECT_EQ(readSound(splicedFiles().front()).samples, expectedResult());
}

TEST_F(Programs, AnEditorThatFailsLeavesTheProjectAlone) {
    installPeer("false {in} {out}");
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
    const Run run = runHost("undo\nshow\n", "--keep-going");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("line 1: there is nothing to undo"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("no project is open"), std::string::npos) << run.output;
}

TEST_F(Programs, AHostThatIsNotAdmittedIsTold) {
    const Run run = runHost("", "--name Somebody");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("start it as an admitted one with --name and --host-version"), std::string::npos)
        << run.output;
}

TEST_F(Programs, CommandsComeFromArgumentsAsWell) {
    const Run run = runHost("", "-c 'new \"" + path("my song") + "\" \"" + makeTake() + "\"' -c show -c quit");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("1  0.000 to 1.500 s  take.wav"), std::string::npos) << run.output;
}

TEST_F(Programs, TheHostSpeaksTheLanguageOfTheLocale) {
    const std::string script = songScript("show\nundo\ndance\n");
    const Run german = runHost(script, "--keep-going", "de_DE.UTF-8");
    EXPECT_EQ(german.exitCode, 1);
    for (const char* text :
         {"Modul: Tessera Exchange", "Projekt \"", "  Spur 1\n", "1 Clip im Pool", "0.000 bis 1.000 s"}) {
        EXPECT_NE(german.output.find(text), std::string::npos) << text << " in " << german.output;
    }
    EXPECT_NE(german.output.find("rückgängig gemacht: Event zuschneiden\n"), std::string::npos) << german.output;
    EXPECT_NE(german.output.find("tesx-host: Zeile 6: den Befehl \"dance\" gibt es nicht"), std::string::npos)
        << german.output;
    EXPECT_NE(runHost("help\n", "", "de_DE.UTF-8").output.find("new ORDNER [KLANGDATEI...]"), std::string::npos);

    for (const char* locale : {"sw_KE.UTF-8", "C", "en_GB.UTF-8"}) {
        fs::remove_all(path("my song"));
        const Run english = runHost(script, "--keep-going", locale);
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
    EXPECT_NE(runHost("undo\n", "", "de_DE.UTF-8").output.find("there is nothing to undo"), std::string::npos);
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
                                (settingsFolder() / "tesx-host (Trashed).xml").string() + "\"";
    EXPECT_EQ(run.output.find(warning), 0U) << run.output;
    EXPECT_NE(run.output.find("wait 60.000"), std::string::npos) << run.output;
    EXPECT_EQ(fs::file_size(settingsFolder() / "tesx-host (Trashed).xml"), half);
    const Run next = runHost("settings\n");
    EXPECT_EQ(next.output.find("warning"), std::string::npos) << next.output;
    EXPECT_NE(next.output.find("wait 6.000"), std::string::npos) << next.output;
}

TEST_F(Programs, NothingOfTheHostLiesAmongOtherSettings) {
    ASSERT_EQ(runHost("set wait 5\n").exitCode, 0);
    for (const auto& entry : fs::recursive_directory_iterator(std::getenv("XDG_CONFIG_HOME"))) {
        EXPECT_TRUE(entry.is_directory() || entry.path() == settingsFolder() / "tesx-host.xml") << entry.path();
    }
}

// Without an installed peer the command can run only while the link is open.
TEST_F(Programs, APeerThatComesAndIsKilledIsNoticed) {
    startModule();
    ASSERT_EQ(host().newProject(path("my song"), {makeTake()}), "");
    ASSERT_EQ(host().select({1}), "");
    const auto canEdit = [&] { return host().commandTarget().mayRun("Tessera Exchange", "Edit in Tessera"); };
    EXPECT_FALSE(canEdit());
    for (int round = 0; round < 3; ++round) {
        testing_support::HelperProcess peer(TESX_PEER, {"--editor", "sox -R -V1 {in} {out} reverse"});
        EXPECT_TRUE(runUntil(canEdit)) << "comes, round " << round;
        peer.kill();
        EXPECT_TRUE(runUntil([&] { return !canEdit(); })) << "goes, round " << round;
    }
    fs::remove(record()); // nobody else takes away what a killed program leaves
}

} // namespace
} // namespace tessera::acceptance
