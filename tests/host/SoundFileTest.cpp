#include "host/audio/SoundFileReader.h"
#include "host/audio/SoundFileWriter.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <sndfile.h>

namespace tessera::host {
namespace {

struct FormatRow {
    const char* name;
    const char* file;
    int container;
    int bytes;
    const char* description;
};

constexpr FormatRow kFormats[] = {
    {"unsigned 8 bit WAV", "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1, "WAV, 8 bit"},
    {"16 bit WAV", "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, "WAV, 16 bit"},
    {"24 bit WAV", "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 3, "WAV, 24 bit"},
    {"32 bit WAV", "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 4, "WAV, 32 bit"},
    {"float WAV", "a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 4, "WAV, 32 bit float"},
    {"double WAV", "a.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 8, "WAV, 64 bit float"},
    {"extensible WAV", "a.wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 3, "WAV, 24 bit"},
    {"RF64", "a.wav", SF_FORMAT_RF64 | SF_FORMAT_PCM_24, 3, "RF64, 24 bit"},
    {"W64", "a.w64", SF_FORMAT_W64 | SF_FORMAT_PCM_16, 2, "W64, 16 bit"},
    {"signed 8 bit AIFF", "a.aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 1, "AIFF, 8 bit"},
    {"16 bit AIFF", "a.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 2, "AIFF, 16 bit"},
    {"little-endian AIFF", "a.aifc", SF_FORMAT_AIFF | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE, 2, "AIFF, 16 bit"},
    {"24 bit AIFF", "a.aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 3, "AIFF, 24 bit"},
    {"32 bit AIFF", "a.aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_32, 4, "AIFF, 32 bit"},
    {"float AIFF", "a.aif", SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 4, "AIFF, 32 bit float"},
    {"8 bit FLAC", "a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_S8, 1, "FLAC, 8 bit"},
    {"16 bit FLAC", "a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 2, "FLAC, 16 bit"},
    {"24 bit FLAC", "a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 3, "FLAC, 24 bit"},
};

class SoundFile : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return testing_support::utf8OfPath(folder_ / name); }

    static std::vector<std::uint8_t> bytesOf(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    static std::vector<std::uint8_t> allFrames(SoundFileReader& reader) {
        std::vector<std::uint8_t> frames(static_cast<std::size_t>(reader.frames() * reader.format().bytesPerFrame()));
        EXPECT_EQ(reader.read(reader.frames(), frames.data()), reader.frames());
        return frames;
    }

    testing_support::ScratchFolder folder_;
};

// Any bytes are a good sample as integers. As floats only finite ones: what a not-a-number's bits are is nobody's
// promise.
std::vector<std::uint8_t> randomFrames(const AudioFormat& format, std::int64_t frames, unsigned seed) {
    std::mt19937 random(seed);
    const auto samples = static_cast<std::size_t>(frames * format.channels);
    std::vector<std::uint8_t> result(samples * static_cast<std::size_t>(factsOf(format.kind).bytes));
    for (std::size_t i = 0; i < samples; ++i) {
        const double value = std::uniform_real_distribution<double>(-2, 2)(random);
        const auto narrow = static_cast<float>(value);
        if (format.kind == SampleKind::float32) {
            std::memcpy(&result[i * 4], &narrow, 4);
        } else if (format.kind == SampleKind::float64) {
            std::memcpy(&result[i * 8], &value, 8);
        }
    }
    if (!factsOf(format.kind).isFloat) {
        for (std::uint8_t& byte : result) {
            byte = static_cast<std::uint8_t>(random());
        }
    }
    return result;
}

TEST_F(SoundFile, FramesTravelBitForBitInEveryFormatAndChannelCount) {
    constexpr std::int64_t kFrames = 5003;
    for (const FormatRow& row : kFormats) {
        for (int channels = 1; channels <= 8; ++channels) {
            SCOPED_TRACE(std::string(row.name) + ", " + std::to_string(channels));
            const AudioFormat format{row.container, sampleKindOf(row.container).value(), channels, 44100};
            const std::vector<std::uint8_t> frames = randomFrames(format, kFrames, static_cast<unsigned>(channels));
            {
                std::string error;
                const auto writer = SoundFileWriter::create(path(row.file), format, &error);
                ASSERT_NE(writer, nullptr) << error;
                EXPECT_EQ(writer->write(kFrames, frames.data()), kFrames);
            }
            std::string error;
            const auto reader = SoundFileReader::open(path(row.file), &error);
            ASSERT_NE(reader, nullptr) << error;
            EXPECT_EQ(reader->frames(), kFrames);
            EXPECT_EQ(reader->format().channels, channels);
            EXPECT_EQ(reader->format().sampleRate, 44100);
            EXPECT_EQ(reader->format().bytesPerFrame(), row.bytes * channels);
            ASSERT_EQ(allFrames(*reader), frames);
        }
    }
}

TEST_F(SoundFile, DescribesItself) {
    for (const FormatRow& row : kFormats) {
        const AudioFormat format{row.container, sampleKindOf(row.container).value(), 2, 48000};
        EXPECT_EQ(describe(format), std::string(row.description) + ", 2 channels, 48000 Hz");
    }
    EXPECT_EQ(describe({SF_FORMAT_WAV | SF_FORMAT_PCM_16, SampleKind::int16, 1, 8000}),
              "WAV, 16 bit, 1 channel, 8000 Hz");
}

// A whole WAV file by hand: unsigned 0, 128 and 255 are the signed -128, 0 and 127.
TEST_F(SoundFile, UnsignedBytesAreServedSigned) {
    const unsigned char wave[] = {'R', 'I', 'F', 'F', 39,  0,   0,   0,   'W', 'A', 'V', 'E', 'f', 'm', 't', ' ',
                                  16,  0,   0,   0,   1,   0,   1,   0,   64,  31,  0,   0,   64,  31,  0,   0,
                                  1,   0,   8,   0,   'd', 'a', 't', 'a', 3,   0,   0,   0,   0,   128, 255};
    std::ofstream(path("a.wav"), std::ios::binary).write(reinterpret_cast<const char*>(wave), sizeof wave);
    const auto reader = SoundFileReader::open(path("a.wav"), nullptr);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(allFrames(*reader), (std::vector<std::uint8_t>{0x80, 0x00, 0x7F}));
}

// All of an AIFF file by hand: 3 frames, and the byte that makes the length even is no frame.
TEST_F(SoundFile, ThePadByteOfAnAiffFileIsNoFrame) {
    const std::uint8_t frames[] = {1, 2, 3};
    const AudioFormat format{SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, SampleKind::int8, 1, 8000};
    SoundFileWriter::create(path("a.aif"), format, nullptr)->write(3, frames);
    EXPECT_EQ(bytesOf(path("a.aif")),
              (std::vector<std::uint8_t>{'F',  'O', 'R', 'M', 0,  0, 0, 50, 'A', 'I', 'F', 'F', 'C', 'O',  'M',
                                         'M',  0,   0,   0,   18, 0, 1, 0,  0,   0,   3,   0,   8,   0x40, 0x0B,
                                         0xFA, 0,   0,   0,   0,  0, 0, 0,  'S', 'S', 'N', 'D', 0,   0,    0,
                                         11,   0,   0,   0,   0,  0, 0, 0,  0,   1,   2,   3,   0}));
}

TEST_F(SoundFile, SeeksToEveryFrameAndTheEnd) {
    const AudioFormat format{SF_FORMAT_FLAC | SF_FORMAT_PCM_16, SampleKind::int16, 1, 8000};
    std::vector<short> samples(20000);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<short>(i);
    }
    SoundFileWriter::create(path("a.flac"), format, nullptr)->write(20000, samples.data());
    const auto reader = SoundFileReader::open(path("a.flac"), nullptr);
    ASSERT_NE(reader, nullptr);
    for (const std::int64_t frame : {19999, 0, 4096, 12345}) {
        ASSERT_TRUE(reader->seek(frame));
        short sample = -1;
        EXPECT_EQ(reader->read(1, &sample), 1);
        EXPECT_EQ(sample, frame);
    }
    EXPECT_TRUE(reader->seek(20000));
    short sample = 0;
    EXPECT_EQ(reader->read(1, &sample), 0);
    EXPECT_FALSE(reader->seek(20001));
    EXPECT_FALSE(reader->seek(-1));
}

// 13 hours of stereo at 48 kHz, all silence but one frame near the end; the file system keeps the silence for free.
TEST_F(SoundFile, ReadsBeyondFourGigabytes) {
    constexpr std::uint64_t kDataBytes = 9'000'000'000;
    constexpr int kHeaderBytes = 80;
    std::vector<std::uint8_t> header;
    const auto text = [&](const char* four) { std::copy_n(four, 4, std::back_inserter(header)); };
    const auto number = [&](std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            header.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    text("RF64"), number(0xFFFFFFFF, 4), text("WAVE");
    text("ds64"), number(28, 4), number(kDataBytes + kHeaderBytes - 8, 8), number(kDataBytes, 8);
    number(kDataBytes / 4, 8), number(0, 4);
    text("fmt "), number(16, 4), number(1, 2), number(2, 2), number(48000, 4), number(192000, 4), number(4, 2);
    number(16, 2);
    text("data"), number(0xFFFFFFFF, 4);
    ASSERT_EQ(header.size(), static_cast<std::size_t>(kHeaderBytes));
    constexpr std::uint64_t kLoudFrame = kDataBytes / 4 - 2;
    {
        std::ofstream out(path("long.wav"), std::ios::binary);
        out.write(reinterpret_cast<const char*>(header.data()), kHeaderBytes);
        out.seekp(static_cast<std::streamoff>(kHeaderBytes + kLoudFrame * 4));
        out.write("\x01\x02\x03\x04\x00\x00\x00\x00", 8);
    }
    const auto reader = SoundFileReader::open(path("long.wav"), nullptr);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->frames(), 2'250'000'000);
    ASSERT_TRUE(reader->seek(static_cast<std::int64_t>(kLoudFrame)));
    std::uint8_t frames[12] = {};
    EXPECT_EQ(reader->read(3, frames), 2);
    EXPECT_EQ(std::vector<std::uint8_t>(frames, frames + 8), (std::vector<std::uint8_t>{1, 2, 3, 4, 0, 0, 0, 0}));
}

struct RefusalRow {
    const char* name;
    const char* content;
    const char* message;
};

TEST_F(SoundFile, SaysWhyAFileCantBeRead) {
    std::string error;
    EXPECT_EQ(SoundFileReader::open(path("missing.wav"), &error), nullptr);
    EXPECT_EQ(error, "there is no file \"" + path("missing.wav") + "\"");
    EXPECT_EQ(SoundFileReader::open(folder_.path().string(), &error), nullptr);
    EXPECT_NE(error.find("is a folder"), std::string::npos) << error;
    for (const RefusalRow& row : {RefusalRow{"empty.wav", "", "can't be read as a sound file"},
                                  RefusalRow{"text.wav", "no sound at all", "expected WAV, AIFF or FLAC"},
                                  RefusalRow{"cut.wav", "RIFF\x10\0\0\0", "can't be read as a sound file"}}) {
        std::ofstream(path(row.name)) << row.content;
        EXPECT_EQ(SoundFileReader::open(path(row.name), &error), nullptr) << row.name;
        EXPECT_NE(error.find(row.message), std::string::npos) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    }
}

TEST_F(SoundFile, RefusesSamplesThatCantBeCutWithoutLoss) {
    SF_INFO info = {};
    info.format = SF_FORMAT_WAV | SF_FORMAT_ULAW;
    info.channels = 1;
    info.samplerate = 8000;
    sf_close(sf_open(path("u.wav").c_str(), SFM_WRITE, &info));
    std::string error;
    EXPECT_EQ(SoundFileReader::open(path("u.wav"), &error), nullptr);
    EXPECT_NE(error.find("convert it"), std::string::npos) << error;
}

// An encoder that writes to a pipe can't go back to the head of the file to say how many frames came.
TEST_F(SoundFile, RefusesAFileThatDoesntTellHowLongItIs) {
    const AudioFormat format{SF_FORMAT_FLAC | SF_FORMAT_PCM_16, SampleKind::int16, 1, 8000};
    const std::vector<std::uint8_t> frames = randomFrames(format, 100, 1);
    SoundFileWriter::create(path("a.flac"), format, nullptr)->write(100, frames.data());
    {
        // The 36 bits of the count end the first 26 bytes, with the depth of the samples (15) in front of them.
        std::fstream file(path("a.flac"), std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(21);
        file.write("\xF0\0\0\0\0", 5);
    }
    std::string error;
    EXPECT_EQ(SoundFileReader::open(path("a.flac"), &error), nullptr);
    EXPECT_NE(error.find("doesn't tell how long it is"), std::string::npos) << error;
}

TEST_F(SoundFile, TwoCopiesOfOneSoundAreTheSameBytes) {
    const AudioFormat format{SF_FORMAT_WAV | SF_FORMAT_FLOAT, SampleKind::float32, 1, 8000};
    const std::vector<std::uint8_t> frames = randomFrames(format, 100, 1);
    for (const char* name : {"a.wav", "b.wav"}) {
        SoundFileWriter::create(path(name), format, nullptr)->write(100, frames.data());
    }
    EXPECT_EQ(bytesOf(path("a.wav")), bytesOf(path("b.wav")));
}

TEST_F(SoundFile, WhatWasFlushedCanBeReadWhileTheWriterGoesOn) {
    const AudioFormat format{SF_FORMAT_WAV | SF_FORMAT_PCM_16, SampleKind::int16, 1, 8000};
    const auto writer = SoundFileWriter::create(path("a.wav"), format, nullptr);
    const short samples[] = {1, 2, 3};
    writer->write(3, samples);
    writer->flush();
    EXPECT_EQ(SoundFileReader::open(path("a.wav"), nullptr)->frames(), 3);
    writer->write(3, samples);
    writer->flush();
    EXPECT_EQ(SoundFileReader::open(path("a.wav"), nullptr)->frames(), 6);
}

struct ChoiceRow {
    const char* file;
    int source;
    SampleKind kind;
    std::int64_t bytes;
    int expected;
};

TEST(AudioFormat, TheNameDecidesTheKindOfFileAndTheSourceTheRest) {
    constexpr std::int64_t kSmall = 1000;
    constexpr std::int64_t kLarge = 5'000'000'000;
    const ChoiceRow rows[] = {
        {"a.wav", 0, SampleKind::int16, kSmall, SF_FORMAT_WAV | SF_FORMAT_PCM_16},
        {"a.WAV", 0, SampleKind::int8, kSmall, SF_FORMAT_WAV | SF_FORMAT_PCM_U8},
        {"a.aif", 0, SampleKind::int8, kSmall, SF_FORMAT_AIFF | SF_FORMAT_PCM_S8},
        {"a.flac", 0, SampleKind::int24, kSmall, SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
        {"a.wav", SF_FORMAT_WAVEX, SampleKind::int24, kSmall, SF_FORMAT_WAVEX | SF_FORMAT_PCM_24},
        {"a.wav", SF_FORMAT_RF64, SampleKind::int24, kSmall, SF_FORMAT_RF64 | SF_FORMAT_PCM_24},
        {"a.wav", SF_FORMAT_WAV, SampleKind::int32, kLarge, SF_FORMAT_RF64 | SF_FORMAT_PCM_32},
        {"a.w64", 0, SampleKind::float32, kLarge, SF_FORMAT_W64 | SF_FORMAT_FLOAT},
        {"a.aifc", SF_FORMAT_AIFF | SF_ENDIAN_LITTLE, SampleKind::int16, kSmall,
         SF_FORMAT_AIFF | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE},
        {"a.wav", SF_FORMAT_AIFF | SF_ENDIAN_LITTLE, SampleKind::int16, kSmall, SF_FORMAT_WAV | SF_FORMAT_PCM_16},
        {"noname", SF_FORMAT_FLAC, SampleKind::int16, kSmall, SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
        {"noname", 0, SampleKind::int16, kSmall, SF_FORMAT_WAV | SF_FORMAT_PCM_16},
    };
    for (const ChoiceRow& row : rows) {
        const auto format = formatForFile(row.file, {row.source, row.kind, 2, 48000}, row.bytes);
        ASSERT_TRUE(format.has_value()) << row.file;
        EXPECT_EQ(format->container, row.expected) << row.file << std::hex << format->container;
    }
}

TEST(AudioFormat, SomeKindsOfFileEndBelowFourGigabytes) {
    for (const int container : {SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_AIFF}) {
        const std::int64_t most = largestDataBytes(container | SF_FORMAT_PCM_24);
        EXPECT_LT(most, std::int64_t{1} << 32);
        EXPECT_GT(most, (std::int64_t{1} << 32) - (std::int64_t{1} << 21));
    }
    for (const int container : {SF_FORMAT_RF64, SF_FORMAT_W64, SF_FORMAT_FLAC}) {
        EXPECT_GT(largestDataBytes(container | SF_FORMAT_PCM_24), std::int64_t{1} << 40);
    }
}

TEST(AudioFormat, WhatAFileCantHoldGivesNothing) {
    EXPECT_FALSE(formatForFile("a.flac", {0, SampleKind::float32, 2, 48000}, 0));
    EXPECT_FALSE(formatForFile("a.flac", {0, SampleKind::int16, 9, 48000}, 0));
}

} // namespace
} // namespace tessera::host
