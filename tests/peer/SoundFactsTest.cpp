#include "peer/SoundFacts.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

namespace tessera::peer {
namespace {

class SoundFactsTest : public testing::Test {
protected:
    std::string path(const char* name) const { return (std::filesystem::temp_directory_path() / name).string(); }

    std::string write(const char* name, int format, int rate, int channels, const std::vector<int>& samples) {
        SF_INFO info = {};
        info.samplerate = rate;
        info.channels = channels;
        info.format = format;
        SNDFILE* file = sf_open(path(name).c_str(), SFM_WRITE, &info);
        EXPECT_NE(nullptr, file) << sf_strerror(nullptr);
        const auto count = static_cast<sf_count_t>(samples.size());
        EXPECT_EQ(count, sf_write_int(file, samples.data(), count));
        sf_close(file);
        return path(name);
    }

    std::vector<int> read(const std::string& file) {
        SF_INFO info = {};
        SNDFILE* sound = sf_open(file.c_str(), SFM_READ, &info);
        EXPECT_NE(nullptr, sound);
        std::vector<int> samples(static_cast<std::size_t>(info.frames * info.channels));
        sf_read_int(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(sound);
        return samples;
    }

    std::string problem_;
};

TEST_F(SoundFactsTest, TellsRateChannelsFormatAndLength) {
    const auto facts = readSoundFacts(
        write("a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {1 << 8, 2 << 8, 3 << 8, 4 << 8}), &problem_);
    ASSERT_TRUE(facts);
    EXPECT_EQ(2, facts->frames);
    EXPECT_EQ(48000, facts->rate);
    EXPECT_EQ(2, facts->channels);
    EXPECT_EQ("48000 Hz, 2 channels, WAV (Microsoft), Signed 24 bit PCM", facts->text());
}

TEST_F(SoundFactsTest, AFileThatIsNoSoundIsRefusedWithTheReason) {
    std::ofstream(path("b.wav")) << "hello";
    EXPECT_FALSE(readSoundFacts(path("b.wav"), &problem_));
    EXPECT_FALSE(problem_.empty());
    problem_.clear();
    EXPECT_FALSE(readSoundFacts(path("missing.wav"), &problem_));
    EXPECT_FALSE(problem_.empty());
}

TEST_F(SoundFactsTest, ConversionBackToTheSameContainerKeepsEveryBit) {
    const std::vector<int> samples{0, 0x12345600, -0x12345600, 0x7fffff00, static_cast<int>(0x80000000u)};
    const std::string aiff = write("c.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 44100, 1, samples);
    const auto wanted = readSoundFacts(write("c.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 44100, 1, {1 << 8}), &problem_);
    ASSERT_TRUE(wanted);
    ASSERT_TRUE(convertSound(aiff, path("d.wav"), *wanted, &problem_)) << problem_;
    const auto facts = readSoundFacts(path("d.wav"), &problem_);
    ASSERT_TRUE(facts);
    EXPECT_TRUE(facts->sameFormat(*wanted));
    EXPECT_EQ(samples, read(path("d.wav")));
}

TEST_F(SoundFactsTest, AnOddNumberOfBytesInAiffGetsNoFrameMore) {
    const std::vector<int> samples{1 << 24, 2 << 24, 3 << 24, 4 << 24, 5 << 24};
    const std::string source = write("i.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 1, samples);
    SoundFacts wanted;
    wanted.rate = 44100;
    wanted.channels = 1;
    wanted.format = SF_FORMAT_AIFF | SF_FORMAT_PCM_S8;
    ASSERT_TRUE(convertSound(source, path("j.aif"), wanted, &problem_)) << problem_;
    EXPECT_EQ(samples, read(path("j.aif")));
}

TEST_F(SoundFactsTest, FloatsAboveFullScaleAreClippedNotWrapped) {
    SF_INFO info = {};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = sf_open(path("e.wav").c_str(), SFM_WRITE, &info);
    ASSERT_NE(nullptr, file);
    const float samples[] = {2.0f, -2.0f, 0.5f};
    sf_write_float(file, samples, 3);
    sf_close(file);
    SoundFacts wanted;
    wanted.rate = 44100;
    wanted.channels = 1;
    wanted.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    ASSERT_TRUE(convertSound(path("e.wav"), path("f.wav"), wanted, &problem_)) << problem_;
    EXPECT_EQ((std::vector<int>{0x7fff0000, static_cast<int>(0x80000000u), 0x40000000}), read(path("f.wav")));
}

// Coded with loss, a full square wave comes back with peaks on both sides of full scale.
TEST_F(SoundFactsTest, PeaksOfALossyFormatAreClippedNotWrapped) {
    constexpr int kFrames = 8192;
    constexpr int kHalfWave = 200;
    std::vector<double> wave(kFrames);
    for (int i = 0; i < kFrames; ++i) {
        wave[static_cast<std::size_t>(i)] = i / kHalfWave % 2 == 0 ? 1.0 : -1.0;
    }
    SF_INFO info = {};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    SNDFILE* file = sf_open(path("k.ogg").c_str(), SFM_WRITE, &info);
    ASSERT_NE(nullptr, file) << sf_strerror(nullptr);
    ASSERT_EQ(kFrames, sf_write_double(file, wave.data(), kFrames));
    sf_close(file);
    std::vector<double> decoded(kFrames);
    file = sf_open(path("k.ogg").c_str(), SFM_READ, &info);
    ASSERT_NE(nullptr, file);
    ASSERT_EQ(kFrames, sf_read_double(file, decoded.data(), kFrames));
    sf_close(file);
    ASSERT_LT(1.0, *std::max_element(decoded.begin(), decoded.end()));
    ASSERT_GT(-1.0, *std::min_element(decoded.begin(), decoded.end()));

    SoundFacts wanted;
    wanted.rate = 44100;
    wanted.channels = 1;
    wanted.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    ASSERT_TRUE(convertSound(path("k.ogg"), path("l.wav"), wanted, &problem_)) << problem_;
    const std::vector<int> converted = read(path("l.wav"));
    ASSERT_EQ(decoded.size(), converted.size());
    for (std::size_t i = 0; i < converted.size(); ++i) {
        EXPECT_NEAR(std::clamp(decoded[i], -1.0, 1.0), converted[i] / 2147483648.0, 1.0 / 16384) << i;
    }
}

TEST_F(SoundFactsTest, AnImpossibleTargetLeavesNothingBehind) {
    const std::string source = write("g.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 1, {1 << 16});
    SoundFacts wanted;
    wanted.rate = 44100;
    wanted.channels = 1;
    wanted.format = SF_FORMAT_WAV | SF_FORMAT_VORBIS;
    EXPECT_FALSE(convertSound(source, path("h.wav"), wanted, &problem_));
    EXPECT_FALSE(problem_.empty());
    EXPECT_FALSE(std::filesystem::exists(path("h.wav")));
}

} // namespace
} // namespace tessera::peer
