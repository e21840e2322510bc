// The whole road of an edit, on real sound: the host's event goes out to a file, another program changes that, and what
// comes back is head, edit and tail, bit for bit.
#include "acceptance/ModuleFixture.h"
#include "acceptance/PeerDouble.h"
#include "acceptance/SoundBytes.h"
#include "support/FileSizeLimit.h"
#include "support/Skips.h"

#include <filesystem>

namespace tessera::acceptance {
namespace {

constexpr SoundFormat kFormats[] = {
    {".wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8},    {".wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16},
    {".wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24},   {".wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 32},
    {".wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 32},    {".wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 24},
    {".wav", SF_FORMAT_RF64 | SF_FORMAT_PCM_16, 16},  {".aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 8},
    {".aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 16},  {".aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 24},
    {".aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_32, 32},  {".aif", SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 32},
    {".flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_S8, 8},  {".flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16},
    {".flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24},
};

constexpr int kRate = 8000;
constexpr std::int64_t kFrames = 40001; // more than two blocks of the copy, and odd
constexpr const SoundFormat& k16Bit = kFormats[1];

Samples stretch(const Samples& samples, std::int64_t from, std::int64_t frames, int channels) {
    const auto begin = samples.begin() + from * channels;
    return {begin, begin + frames * channels};
}

Samples joined(const Samples& a, const Samples& b, const Samples& c) {
    Samples result = a;
    result.insert(result.end(), b.begin(), b.end());
    result.insert(result.end(), c.begin(), c.end());
    return result;
}

class EditRoad : public ModuleFixture {
protected:
    // A project with the file, its event trimmed to that stretch, selected.
    void makeProject(const std::string& file, std::int64_t offset, std::int64_t frames) {
        ASSERT_EQ(host().newProject(path("project"), {file}), "");
        ASSERT_EQ(host().trimEvent(1, static_cast<double>(offset) / kRate, static_cast<double>(frames) / kRate), "");
        ASSERT_EQ(host().select({1}), "");
    }
    void edit() {
        ASSERT_EQ(host().edit(), "") << output();
        ASSERT_EQ(host().waitForEdit(20), "") << output();
    }
    // It outlives the module, whose farewell it answers.
    PeerDouble& startPeer(PeerDouble::Editor editor) {
        peer_ = std::make_unique<PeerDouble>(std::move(editor));
        return *peer_;
    }
    void TearDown() override {
        ModuleFixture::TearDown();
        peer_.reset();
    }
    bool isLinked(const PeerDouble& peer) {
        return runUntil([&] { return peer.hasHeard("2;sendConnectionInfo;Harrow Max;9.0.20;true;"); });
    }

private:
    std::unique_ptr<PeerDouble> peer_;
};

TEST_F(EditRoad, HeadEditAndTailAreExactForEveryFormatAndLength) {
    Samples handedOut;
    Samples edited;
    SoundFormat format = {};
    int channels = 0;
    PeerDouble& peer = startPeer([&](const std::string& file) {
        const Sound sound = readSound(file);
        handedOut = sound.samples;
        EXPECT_EQ(sound.container, format.container) << file;
        writeSound(file, format, edited, channels, kRate);
        return true;
    });
    startModule();
    ASSERT_TRUE(isLinked(peer)) << output();
    unsigned seed = 0;
    for (const SoundFormat& row : kFormats) {
        for (const std::int64_t editedFrames : {16389, 16385, 3}) {
            SCOPED_TRACE(std::string(row.extension) + " " + std::to_string(row.container) + ", " +
                         std::to_string(editedFrames));
            format = row;
            channels = 1 + static_cast<int>(seed % 8);
            const Samples original = randomSamples(format, kFrames, channels, ++seed);
            edited = randomSamples(format, editedFrames, channels, ++seed);
            const std::string file = path("take" + std::to_string(seed) + format.extension);
            writeSound(file, format, original, channels, kRate);
            makeProject(file, 20003, 16385);
            edit();
            EXPECT_EQ(handedOut, stretch(original, 20003, 16385, channels));

            const std::string spliced = event(1)->ownClip()->path();
            EXPECT_EQ(std::filesystem::path(spliced).parent_path(), path("project/Audio"));
            const Sound result = readSound(spliced);
            EXPECT_EQ(result.container, format.container);
            EXPECT_EQ(result.channels, channels);
            EXPECT_EQ(result.sampleRate, kRate);
            ASSERT_EQ(result.samples, joined(stretch(original, 0, 20003, channels), edited,
                                             stretch(original, 20003 + 16385, kFrames - 20003 - 16385, channels)));
            EXPECT_NEAR(event(1)->place().length * kRate, static_cast<double>(editedFrames), 0.01);
            EXPECT_NEAR(event(1)->place().offset * kRate, 20003, 0.01);
            ASSERT_EQ(host().closeProject(), "");
        }
    }
}

TEST_F(EditRoad, UndoAndRedoExchangeTheEventsAndASecondResultFollowsThem) {
    const Samples original = randomSamples(k16Bit, kFrames, 1, 1);
    writeSound(path("a.wav"), k16Bit, original, 1, kRate);
    const Samples first = randomSamples(k16Bit, 5000, 1, 2);
    const Samples second = randomSamples(k16Bit, 5000, 1, 3);
    std::string exchange;
    PeerDouble& peer = startPeer([&](const std::string& file) {
        exchange = file;
        writeSound(file, k16Bit, first, 1, kRate);
        return true;
    });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 100, 5000);
    edit();
    const std::string spliced = event(1)->ownClip()->path();
    EXPECT_EQ(host().project()->events().size(), 1U);
    EXPECT_EQ(host().undoStack().nameToUndo(), "Edit in Tessera");
    EXPECT_EQ(host().project()->ownPool().parts().size(), 2U);

    ASSERT_EQ(host().undo(), "");
    EXPECT_EQ(event(1)->ownClip()->path(), path("a.wav"));
    ASSERT_EQ(host().redo(), "");
    EXPECT_EQ(event(1)->ownClip()->path(), spliced);

    // The user saves once more: the event that stands there now is exchanged again, from its own audio.
    writeSound(exchange, k16Bit, second, 1, kRate);
    peer.say(writeMessage({WireVerb::finishedFileEdit, exchange}));
    ASSERT_EQ(host().waitForEdit(20), "");
    EXPECT_NE(event(1)->ownClip()->path(), spliced);
    EXPECT_EQ(readSound(event(1)->ownClip()->path()).samples,
              joined(stretch(original, 0, 100, 1), second, stretch(original, 5100, kFrames - 5100, 1)));
    ASSERT_EQ(host().undo(), "");
    EXPECT_EQ(event(1)->ownClip()->path(), spliced);
    ASSERT_EQ(host().undo(), "");
    EXPECT_EQ(event(1)->ownClip()->path(), path("a.wav"));
    EXPECT_EQ(readSound(path("a.wav")).samples, original) << "the user's file is never touched";
}

TEST_F(EditRoad, ARangeSendsOnlyItsStretch) {
    const Samples original = randomSamples(k16Bit, kFrames, 2, 1);
    writeSound(path("a.wav"), k16Bit, original, 2, kRate);
    Samples handedOut;
    PeerDouble& peer = startPeer([&](const std::string& file) {
        handedOut = readSound(file).samples;
        return true;
    });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 8000, 24000);
    ASSERT_EQ(host().selectRange({1, 1.5}), "");
    edit();
    EXPECT_EQ(handedOut, stretch(original, 16000, 4000, 2));
    EXPECT_EQ(readSound(event(1)->ownClip()->path()).samples, original);
    EXPECT_NEAR(event(1)->place().length, 3, 1e-6);
}

struct NameRow {
    const char* what;
    std::string name;
};

TEST_F(EditRoad, UnusualNamesSurvive) {
    std::string umlauts;
    for (int i = 0; i < 100; ++i) {
        umlauts += "\xC3\xB6";
    }
    std::vector<NameRow> rows = {
        {"blanks", " my  take 1 .wav"},
        {"emoji", "\xF0\x9F\x8E\xB5 piano \xE2\x82\xAC.wav"},
        {"200 characters", std::string(196, 'x') + ".wav"},
        {"as many bytes as a name can have", umlauts + std::string(51, 'y') + ".wav"},
    };
    if (testing_support::whyNoOddNames() == nullptr) {
        rows.push_back({"quotes", "it's a \"take\".wav"});
    }
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    for (const NameRow& row : rows) {
        SCOPED_TRACE(row.what);
        const Samples original = randomSamples(k16Bit, 5000, 1, 1);
        writeSound(path(row.name), k16Bit, original, 1, kRate);
        makeProject(path(row.name), 0, 5000);
        edit();
        EXPECT_EQ(readSound(event(1)->ownClip()->path()).samples, original);
        ASSERT_EQ(host().closeProject(), "");
    }
}

TEST_F(EditRoad, AGivenUpEditLeavesTheProjectAlone) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 5000, 1, 1), 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return false; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 0, 5000);
    ASSERT_EQ(host().edit(), "");
    EXPECT_NE(host().waitForEdit(0.5), "");
    EXPECT_EQ(event(1)->ownClip()->path(), path("a.wav"));
    EXPECT_TRUE(std::filesystem::is_empty(path("project/Audio")));
}

// The splice needs room for the whole sound, where the stretch alone has fitted.
TEST_F(EditRoad, ADiskThatIsFullLeavesTheProjectAlone) {
    if (const char* reason = testing_support::whyNoFileSizeLimit()) {
        GTEST_SKIP() << reason;
    }
    const Samples original = randomSamples(k16Bit, kFrames, 1, 1);
    writeSound(path("a.wav"), k16Bit, original, 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 100, 5000);
    {
        const testing_support::FileSizeLimit limit(60000);
        ASSERT_EQ(host().edit(), "");
        EXPECT_TRUE(runUntil([&] { return output().find("what was written is taken back") != std::string::npos; }));
        EXPECT_NE(host().waitForEdit(0.2), "");
    }
    EXPECT_EQ(event(1)->ownClip()->path(), path("a.wav"));
    EXPECT_EQ(host().undoStack().nameToUndo(), "Trim event");
    EXPECT_EQ(readSound(path("a.wav")).samples, original);
}

TEST_F(EditRoad, ClosingTheProjectGivesTheEditUp) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 5000, 1, 1), 1, kRate);
    std::string exchange;
    PeerDouble& peer = startPeer([&](const std::string& file) {
        exchange = file;
        return true;
    });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 0, 5000);
    edit();
    ASSERT_EQ(host().closeProject(), "");
    EXPECT_TRUE(runUntil([&] { return peer.hasHeard("2;cancelFileEdit;" + exchange + ";"); }));
}

TEST_F(EditRoad, RemovingTheEventGivesTheEditUp) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 5000, 1, 1), 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 0, 5000);
    edit();
    ASSERT_EQ(host().removeEvent(1), "");
    EXPECT_TRUE(runUntil([&] { return !peer.heardVerb("cancelFileEdit").empty(); }));
}

TEST_F(EditRoad, AnEventWithProcessingIsRefusedWithTheOneMessage) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 5000, 1, 1), 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 0, 5000);
    ASSERT_EQ(host().restrictEvent(1, host::Restrictions::kEnvelopes), "");
    ASSERT_EQ(host().edit(), "");
    EXPECT_EQ(host().alerts().shown(),
              std::vector<std::string>{
                  "The selected audio event contains processing information that cannot be edited in Tessera. To be "
                  "able to use \"Edit in Tessera\", you must render or bounce the audio event first."});
    EXPECT_EQ(peer.heardVerb("openFile"), "");
}

TEST_F(EditRoad, NotesAndAnEmptySelectionCantBeEdited) {
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    ASSERT_EQ(host().newProject(path("project"), {}), "");
    ASSERT_EQ(host().addNotes({}), "");
    EXPECT_NE(host().edit().find("can't run now"), std::string::npos);
    ASSERT_EQ(host().select({1}), "");
    EXPECT_NE(host().edit().find("can't run now"), std::string::npos);
}

TEST_F(EditRoad, AnExportIsToldToThePeer) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 5000, 1, 1), 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 0, 5000);
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    EXPECT_TRUE(runUntil([&] { return peer.hasHeard("2;renderedFile;" + path("mix.wav") + ";"); }));
}

TEST_F(EditRoad, ASavedProjectTravelsWithItsExport) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 8000, 1, 1), 1, kRate);
    startModule();
    makeProject(path("a.wav"), 0, 8000);
    ASSERT_EQ(host().saveProject(path("song.tesxproject")), "");
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    SF_INFO info = {};
    SNDFILE* const file = programs::openSound(path("mix.wav"), SFM_READ, &info);
    EXPECT_EQ(sf_get_string(file, SF_STR_COMMENT),
              "GACProjectPath=" + path("song.tesxproject") + "; GACAssetStartTime=0; GACAssetLength=1");
    sf_close(file);
}

TEST_F(EditRoad, ThePeerOpensAProjectAndSetsTheCycle) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 8000, 1, 1), 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    makeProject(path("a.wav"), 0, 8000);
    ASSERT_EQ(host().saveProject(path("song.tesxproject")), "");
    ASSERT_EQ(host().closeProject(), "");
    peer.say(writeMessage({WireVerb::openProject, path("song.tesxproject"), "1.5", "0.25"}));
    EXPECT_TRUE(runUntil([&] { return host().transport().cycleRight().seconds() == 1.75; }));
    EXPECT_EQ(host().transport().cycleLeft().seconds(), 1.5);
    EXPECT_EQ(host().transport().position(), 1.5);
    ASSERT_NE(host().project(), nullptr);
    EXPECT_EQ(host().project()->filePath(), path("song.tesxproject"));
}

TEST_F(EditRoad, TheDriverGoesToThePeerAndBack) {
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    peer.say(writeMessage({WireVerb::requestKiteDriver, "the editor plays"}));
    EXPECT_TRUE(runUntil([&] { return !host().driver().hostHasDriver(); }));
    EXPECT_TRUE(runUntil([&] { return peer.hasHeard("the editor plays"); }));
    ASSERT_EQ(host().suspendDriver("the host plays"), "");
    EXPECT_TRUE(peer.hasHeard("2;suspendKiteDriver;the host plays;"));
    EXPECT_TRUE(host().driver().hostHasDriver());
}

TEST_F(EditRoad, ThePeerIsToldWhenTheModuleLeaves) {
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    ASSERT_EQ(host().stopModule(), "");
    EXPECT_TRUE(peer.hasHeard("2;sendConnectionInfo;Harrow Max;9.0.20;false;"));
}

TEST_F(EditRoad, AModuleThatIsStartedAgainFindsThePeerAgain) {
    writeSound(path("a.wav"), k16Bit, randomSamples(k16Bit, 5000, 1, 1), 1, kRate);
    PeerDouble& peer = startPeer([&](const std::string&) { return true; });
    startModule();
    ASSERT_TRUE(isLinked(peer));
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(host().stopModule(), "");
        ASSERT_EQ(host().startModule(), "");
        makeProject(path("a.wav"), 0, 5000);
        edit();
        EXPECT_NE(event(1)->ownClip()->path(), path("a.wav"));
        ASSERT_EQ(host().closeProject(), "");
    }
}

} // namespace
} // namespace tessera::acceptance
