// What a guest does with streams: copy from one to the other, through slots alone.
#include "host/HostFixture.h"

#include "foundation/object/FRefPtr.h"
#include "host/audio/ReadStream.h"
#include "host/audio/WriteStream.h"
#include "host/model/AudioClip.h"
#include "host/model/HostFile.h"
#include "shell/hostapi/IAudioClipAccess.h"
#include "shell/hostapi/IAudioWriterFactory.h"
#include "support/FileSizeLimit.h"
#include "support/Skips.h"

#include <filesystem>

namespace tessera::host {
namespace {

class Stream : public HostFixture {
protected:
    FRefPtr<IAudioStream> reader(const std::string& file) {
        const FRefPtr<IAudioClipAccess> access = service<IAudioClipAccess>();
        EXPECT_TRUE(access->bind(hostFile(file).get()));
        const FRefPtr<IAudioClip> clip = queryFor<IAudioClip>(access.get());
        FRefPtr<IAudioStream> stream(clip->stream());
        EXPECT_TRUE(stream->open());
        return stream;
    }

    FRefPtr<IAudioStream> writer(const std::string& file, int bits, int channels = 1, float rate = 1000) {
        const FRefPtr<IAudioWriterFactory> factory = service<IAudioWriterFactory>();
        factory->setSampleRate(rate);
        factory->setFile(hostFile(file).get());
        factory->setBitsPerSample(bits);
        factory->setChannels(channels);
        if (bits == 32) {
            factory->setSampleKind(2);
        }
        return FRefPtr<IAudioStream>::adopt(factory->create());
    }

    std::shared_ptr<HostFile> hostFile(const std::string& file) {
        return std::make_shared<HostFile>(host().core(), file);
    }

    static int copy(IAudioStream& from, IAudioStream& to, std::int32_t frames) {
        std::vector<std::uint8_t> buffer(static_cast<std::size_t>(frames * from.bytesPerFrame()));
        const std::int32_t got = from.read(frames, buffer.data());
        return to.write(got, buffer.data(), true);
    }

    static int containerOf(const std::string& file) {
        SF_INFO info = {};
        sf_close(programs::openSound(file, SFM_READ, &info));
        return info.format;
    }
};

TEST_F(Stream, TellsWhatItsFileIs) {
    const auto stream = reader(makeSound("a.wav", 30, 2, 44100, SF_FORMAT_WAV | SF_FORMAT_PCM_24));
    EXPECT_EQ(stream->frames(), 30);
    EXPECT_EQ(stream->sampleRate(), 44100.0F);
    EXPECT_EQ(stream->bytesPerFrame(), 6);
    EXPECT_EQ(stream->bitsPerSample(), 24);
    EXPECT_EQ(stream->channels(), 2);
}

TEST_F(Stream, ReadsOnFromWhereItWasSetTo) {
    const auto stream = reader(makeSound("a.wav", 10));
    short samples[16] = {}; // a read may touch all that it was asked for
    EXPECT_TRUE(stream->seek(7));
    EXPECT_EQ(stream->read(2, samples), 2);
    EXPECT_EQ(stream->read(8, samples + 2), 1);
    EXPECT_EQ(stream->read(8, samples + 3), 0);
    EXPECT_EQ(std::vector<short>(samples, samples + 3), (std::vector<short>{7, 8, 9}));
    EXPECT_TRUE(stream->seek(10));
    EXPECT_FALSE(stream->seek(11));
}

struct CopyRow {
    const char* source;
    int container;
    int bits;
    const char* target;
    int expected;
};

// The numbers that a guest can give don't tell 32-bit integers from floats, nor one kind of WAV from another.
TEST_F(Stream, ACopyIsOfTheVeryFormatOfItsSource) {
    const CopyRow rows[] = {
        {"a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8, "b.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8},
        {"a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 32, "b.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32},
        {"a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 32, "b.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT},
        {"a.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 64, "b.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE},
        {"a.wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 24, "b.wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24},
        {"a.aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_32, 32, "b.aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_32},
        {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24, "b.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
        {"noext", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 16, "noext2", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
    };
    for (const CopyRow& row : rows) {
        SCOPED_TRACE(row.source + std::to_string(row.container));
        const auto from = reader(makeSound(row.source, 20, 1, 1000, row.container));
        auto to = writer(path(row.target), row.bits);
        ASSERT_TRUE(to);
        EXPECT_TRUE(to->open());
        EXPECT_TRUE(to->seek(0));
        from->attach(to.get());
        EXPECT_EQ(copy(*from, *to, 20), 20);
        to.reset();
        EXPECT_EQ(containerOf(path(row.target)), row.expected);
        EXPECT_EQ(samplesOf(path(row.target)), samplesOf(path(row.source)));
        std::filesystem::remove(path(row.target));
    }
    EXPECT_TRUE(misuses().empty());
}

TEST_F(Stream, TheWriterMayBeTheOneThatAttaches) {
    const auto from = reader(makeSound("a.wav", 3, 1, 1000, SF_FORMAT_WAV | SF_FORMAT_PCM_32));
    auto to = writer(path("b.wav"), 32);
    to->attach(from.get());
    EXPECT_EQ(copy(*from, *to, 3), 3);
    to.reset();
    EXPECT_EQ(containerOf(path("b.wav")), SF_FORMAT_WAV | SF_FORMAT_PCM_32);
}

TEST_F(Stream, AReaderOfAnotherKindDeliversWhatTheWriterWants) {
    const auto first = reader(makeSound("a.wav", 2, 2, 1000, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    const auto second = reader(makeSound("edited.wav", 2, 1, 1000, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 100));
    auto to = writer(path("b.wav"), 16, 2);
    first->attach(to.get());
    second->attach(to.get());
    EXPECT_EQ(second->bytesPerFrame(), 4);
    EXPECT_EQ(copy(*first, *to, 2), 2);
    EXPECT_EQ(copy(*second, *to, 2), 2);
    to.reset();
    EXPECT_EQ(samplesOf(path("b.wav")), (std::vector<short>{0, 1, 2, 3, 100, 100, 101, 101}));
}

TEST_F(Stream, AnotherSampleRateIsWarnedOf) {
    const auto from = reader(makeSound("a.wav", 2, 1, 48000));
    const auto to = writer(path("b.wav"), 16, 1, 44100);
    from->attach(to.get());
    EXPECT_NE(output().find("another speed"), std::string::npos) << output();
}

TEST_F(Stream, AFileIsCompleteWhenItsLastReferenceHasGone) {
    auto to = writer(path("b.flac"), 16);
    const short samples[] = {1, 2, 3};
    EXPECT_EQ(to->write(2, samples, true), 2);
    EXPECT_EQ(to->write(1, samples + 2, true), 1);
    EXPECT_EQ(to->frames(), 3);
    to.reset();
    EXPECT_EQ(samplesOf(path("b.flac")), (std::vector<short>{1, 2, 3}));
}

TEST_F(Stream, ReadingAFileThatIsBeingWrittenCompletesIt) {
    const auto to = writer(path("b.flac"), 16);
    const short samples[] = {1, 2, 3};
    to->write(3, samples, true);
    EXPECT_EQ(reader(path("b.flac"))->frames(), 3);
    EXPECT_EQ(to->write(1, samples, true), 0);
    ASSERT_EQ(misuses().size(), 1U);
    EXPECT_NE(misuses().front().find("WriteStream.write"), std::string::npos);
}

TEST_F(Stream, ANewFileReservesItsNameAtOnce) {
    const auto first = writer(path("b.wav"), 16);
    EXPECT_TRUE(std::filesystem::exists(path("b.wav")));
    EXPECT_FALSE(writer(path("b.wav"), 16)) << "an existing file is never written over";
}

TEST_F(Stream, AWriterWithoutFramesLeavesASoundFileWithoutLength) {
    writer(path("b.wav"), 16).reset();
    EXPECT_TRUE(samplesOf(path("b.wav")).empty());
}

TEST_F(Stream, ASoundThatDoesNotFitOnTheDiskIsTakenBack) {
    if (const char* reason = testing_support::whyNoFileSizeLimit()) {
        GTEST_SKIP() << reason;
    }
    const std::vector<short> samples(16384, 7);
    auto to = writer(path("b.wav"), 16);
    {
        const testing_support::FileSizeLimit limit(100000);
        for (int block = 0; block < 4; ++block) {
            to->write(16384, samples.data(), false);
        }
        EXPECT_EQ(to->write(1, samples.data(), true), 0);
        EXPECT_FALSE(to->open());
        EXPECT_FALSE(to->seek(0));
    }
    to.reset();
    EXPECT_EQ(std::filesystem::file_size(path("b.wav")), 0u);
    const FRefPtr<IAudioClipAccess> access = service<IAudioClipAccess>();
    EXPECT_FALSE(access->bind(hostFile(path("b.wav")).get()));
    EXPECT_NE(output().find("what was written is taken back"), std::string::npos) << output();
    EXPECT_TRUE(misuses().empty());
}

TEST_F(Stream, AFileThatCantBeCompletedIsEmptied) {
    if (const char* reason = testing_support::whyNoFileSizeLimit()) {
        GTEST_SKIP() << reason;
    }
    const std::vector<short> samples(6000, 7);
    const auto write = [&](const std::string& name) { writer(path(name), 16)->write(6000, samples.data(), true); };
    write("whole.flac");
    {
        const testing_support::FileSizeLimit limit(std::filesystem::file_size(path("whole.flac")) - 1);
        write("b.flac");
    }
    EXPECT_EQ(std::filesystem::file_size(path("b.flac")), 0U);
    EXPECT_NE(output().find("what was written is taken back"), std::string::npos) << output();
    EXPECT_EQ(samplesOf(path("whole.flac")), samples);
}

TEST_F(Stream, WhatCantBeWrittenGivesNoWriter) {
    EXPECT_FALSE(writer(path("no such folder/b.wav"), 16));
    EXPECT_FALSE(writer(path("b.wav"), 12));
    EXPECT_FALSE(writer(path("b.wav"), 16, 0));
    EXPECT_FALSE(writer(path("b.flac"), 32));
    EXPECT_FALSE(std::filesystem::exists(path("b.flac")));
}

TEST_F(Stream, MisusedStreamsReportAndRefuse) {
    const auto from = reader(makeSound("a.wav", 2));
    const auto to = writer(path("b.wav"), 16);
    short sample = 0;
    EXPECT_EQ(from->write(1, &sample, true), 0);
    EXPECT_EQ(to->read(1, &sample), 0);
    EXPECT_EQ(from->read(-1, &sample), 0);
    EXPECT_EQ(from->read(1, nullptr), 0);
    EXPECT_EQ(to->write(1, nullptr, false), 0);
    from->attach(nullptr);
    to->attach(to.get());
    EXPECT_EQ(misuses().size(), 7U);
}

TEST_F(Stream, AClipThatCantBeReadFails) {
    const FRefPtr<IAudioClipAccess> access = service<IAudioClipAccess>();
    EXPECT_FALSE(access->bind(hostFile(path("missing.wav")).get()));
    EXPECT_TRUE(access->failed());
    EXPECT_FALSE(queryFor<IAudioClip>(access.get()));
}

TEST_F(Stream, AFileThatWasReplacedMeanwhileIsReadAnew) {
    const std::string file = makeSound("a.wav", 5);
    reader(file);
    makeSound("a.wav", 9, 2);
    const auto stream = reader(file);
    EXPECT_EQ(stream->frames(), 9);
    EXPECT_EQ(stream->channels(), 2);
}

} // namespace
} // namespace tessera::host
