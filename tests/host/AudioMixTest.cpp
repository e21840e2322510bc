#include "host/HostFixture.h"

#include "common/Utf8Path.h"
#include "host/GuestDoubles.h"
#include "host/text/Text16.h"
#include "shell/hostapi/AttributeValue.h"
#include "shell/hostapi/IAttributeList.h"
#include "shell/hostapi/IHostFile.h"
#include "support/FileSizeLimit.h"
#include "support/Skips.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tessera::host {
namespace {

class AudioMixTest : public HostFixture {
protected:
    NewEventPlace at(double start, int track) {
        NewEventPlace place;
        place.start = start;
        place.track = track;
        return place;
    }

    std::filesystem::path native(const std::string& name) const { return programs::nativePath(path(name)); }

    std::string contentOf(const std::string& name) const {
        std::ifstream file(native(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
};

TEST_F(AudioMixTest, EventsAreSummedWhereTheyStand) {
    makeProject({makeSound("a.wav", 4, 1, 1000, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 100)});
    makeSound("b.wav", 4, 1, 1000, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1000);
    ASSERT_EQ(host().addSound(path("b.wav"), at(0.002, 2)), "");
    NewEventPlace part = at(0.007, 2);
    part.offset = 0.001;
    part.length = 0.002;
    ASSERT_EQ(host().addSound(path("b.wav"), part), "");
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    EXPECT_EQ(samplesOf(path("mix.wav")), (std::vector<short>{100, 101, 1102, 1104, 1002, 1003, 0, 1001, 1002}));
}

TEST_F(AudioMixTest, AMonoClipSoundsOnAllChannels) {
    makeProject({makeSound("a.wav", 2, 1, 1000, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 100)});
    makeSound("b.wav", 2, 2);
    ASSERT_EQ(host().addSound(path("b.wav"), at(0, 2)), "");
    ASSERT_EQ(host().exportMix(path("mix.flac")), "");
    EXPECT_EQ(samplesOf(path("mix.flac")), (std::vector<short>{100, 101, 103, 104}));
}

TEST_F(AudioMixTest, AnEventLongerThanABlockIsWhole) {
    makeProject({makeSound("a.wav", 30000)});
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    EXPECT_EQ(samplesOf(path("mix.wav")), samplesOf(path("a.wav")));
}

TEST_F(AudioMixTest, ListenersHearOfItAndTheirAttributesTravelWithTheFile) {
    makeProject({makeSound("a.wav", 3000)});
    RecordingExportListener listener;
    ASSERT_EQ(host().exports().addListener(&listener), kResultOk);
    std::u16string file;
    listener.onPrepare = [&](IHostFile* exported, IProject* project, IAttributeList* attributes) {
        char16_t buffer[kHostPathUnits];
        exported->path(buffer);
        file = buffer;
        EXPECT_EQ(project, static_cast<IProject*>(host().project().get()));
        AttributeValue value;
        value.flags = AttributeValue::kText8;
        value.text8 = "/songs/song";
        EXPECT_EQ(attributes->set("GACProjectPath", &value, 0), kResultOk);
        value.flags = AttributeValue::kDouble;
        value.number = 1.25;
        EXPECT_EQ(attributes->set("GACAssetLength", &value, 0), kResultOk);
        value.flags = 64;
        EXPECT_EQ(attributes->set("other", &value, 0), kInvalidArgument);
        return kResultOk;
    };
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    EXPECT_EQ(listener.calls, "prepare finished 1 ");
    EXPECT_EQ(listener.assetStart, 0);
    EXPECT_EQ(listener.assetLength, 3);
    EXPECT_EQ(toUtf8(file), path("mix.wav"));
    SF_INFO info = {};
    SNDFILE* const opened = sf_open(path("mix.wav").c_str(), SFM_READ, &info);
    EXPECT_STREQ(sf_get_string(opened, SF_STR_COMMENT), "GACProjectPath=/songs/song; GACAssetLength=1.25");
    sf_close(opened);
    host().exports().removeListener(&listener);
    EXPECT_EQ(listener.references, 1U);
}

TEST_F(AudioMixTest, AFailedExportLeavesWhatWasThere) {
    makeProject({makeSound("a.wav", 10)});
    RecordingExportListener listener;
    host().exports().addListener(&listener);
    makeSound("b.wav", 10, 1, 44100);
    ASSERT_EQ(host().addSound(path("b.wav"), at(0, 2)), "");
    makeSound("mix.wav", 3);
    EXPECT_NE(host().exportMix(path("mix.wav")).find("one rate"), std::string::npos);
    EXPECT_EQ(samplesOf(path("mix.wav")), (std::vector<short>{0, 1, 2}));
    EXPECT_EQ(listener.calls, "prepare finished 0 ");
    EXPECT_FALSE(std::filesystem::exists(path("mix.wav.part")));
    host().exports().removeListener(&listener);
}

TEST_F(AudioMixTest, AFileThatWasReplacedByOneOfAnotherShapeIsNotMixed) {
    makeProject({makeSound("a.wav", 30000)});
    makeSound("mix.wav", 3);
    for (const int channels : {1, 8}) {
        makeSound("a.wav", 30000, channels, channels == 1 ? 44100 : 1000);
        const Complaint complaint = host().exportMix(path("mix.wav"));
        EXPECT_NE(complaint.find("\"" + path("a.wav") + "\" has changed"), std::string::npos) << complaint;
        EXPECT_EQ(samplesOf(path("mix.wav")), (std::vector<short>{0, 1, 2}));
    }
}

TEST_F(AudioMixTest, AFileThatWasReplacedByOneOfOtherSamplesIsMixedAsItIs) {
    makeProject({makeSound("a.wav", 3)});
    makeSound("a.wav", 3, 1, 1000, SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 500);
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    EXPECT_EQ(samplesOf(path("mix.wav")), (std::vector<short>{500, 501, 502}));
}

TEST_F(AudioMixTest, AFullDiskAtTheLastByteLeavesWhatWasThere) {
    if (const char* reason = testing_support::whyNoFileSizeLimit()) {
        GTEST_SKIP() << reason;
    }
    makeProject({makeSound("a.wav", 30000)});
    for (const std::string name : {"mix.flac", "mix.wav", "mix.aif"}) {
        ASSERT_EQ(host().exportMix(path(name)), "");
        const std::string before = contentOf(name);
        const testing_support::FileSizeLimit limit(before.size() - 1);
        EXPECT_NE(host().exportMix(path(name)).find("is the disk full?"), std::string::npos) << name;
        EXPECT_TRUE(contentOf(name) == before) << name;
        EXPECT_FALSE(std::filesystem::exists(native(name + ".part")));
    }
}

TEST_F(AudioMixTest, ASoundOfTheProjectIsNotReplaced) {
    makeProject({makeSound("a.wav", 10), makeSound("b.wav", 10)});
    const std::string sound = contentOf("b.wav");
    std::filesystem::create_hard_link(native("b.wav"), native("same.wav"));
    for (const std::string name : {"b.wav", "same.wav"}) {
        const Complaint complaint = host().exportMix(path(name));
        EXPECT_NE(complaint.find("\"" + path(name) + "\" is a sound of the project"), std::string::npos) << complaint;
    }
    ASSERT_EQ(host().removeEvent(2), "");
    EXPECT_NE(host().exportMix(path("b.wav")), "") << "the event can still come back";
    EXPECT_TRUE(contentOf("b.wav") == sound);
    std::filesystem::remove(native("b.wav"));
    EXPECT_NE(host().exportMix(path("b.wav")), "") << "the mix would pass for the sound that is missing";
    EXPECT_FALSE(std::filesystem::exists(native("b.wav")));
}

TEST_F(AudioMixTest, FilesOfSimilarNamesStay) {
    makeProject({makeSound("a.wav", 3)});
    std::ofstream(native("mix.wav.part")) << "of the user";
    ASSERT_EQ(host().exportMix(path("mix.wav")), "");
    EXPECT_EQ(contentOf("mix.wav.part"), "of the user");
    const std::string mix = contentOf("mix.wav");
    makeSound("a.wav", 3, 2);
    EXPECT_NE(host().exportMix(path("mix.wav")), "");
    EXPECT_EQ(contentOf("mix.wav.part"), "of the user");
    EXPECT_TRUE(contentOf("mix.wav") == mix);
    const std::filesystem::path folder = native("mix.wav").parent_path();
    const auto files = std::distance(std::filesystem::directory_iterator(folder), {});
    EXPECT_EQ(files, 4) << "the project's folder, its sound, the mix and the user's file";
}

TEST_F(AudioMixTest, SaysWhyThereIsNoExport) {
    EXPECT_NE(host().exportMix(path("mix.wav")).find("no project"), std::string::npos);
    makeProject({});
    EXPECT_NE(host().exportMix(path("mix.wav")).find("no audio"), std::string::npos);
    ASSERT_EQ(host().addSound(makeSound("a.wav", 10), {}), "");
    EXPECT_NE(host().exportMix(path("mix.mp3")).find("end the name in .wav"), std::string::npos);
    EXPECT_NE(host().exportMix(path("no/such/mix.wav")).find("can't be written"), std::string::npos);
}

} // namespace
} // namespace tessera::host
