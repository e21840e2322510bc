#include "peer/EditJob.h"

#include "common/OpenSound.h"
#include "common/Utf8Path.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

namespace tessera::peer {
namespace {

namespace fs = std::filesystem;
using programs::nativePath;
using programs::openSound;
using programs::utf8Text;

const std::string kEditor = EDITOR_HELPER;

class EditJobTest : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(exchange_.parent_path());
        writeSound(exchange_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {1 << 8, 2 << 8, 3 << 8, 4 << 8});
    }
    void TearDown() override { fs::remove_all(root_); }

    static void writeSound(const fs::path& path, int format, int rate, int channels, const std::vector<int>& samples) {
        SF_INFO info = {};
        info.samplerate = rate;
        info.channels = channels;
        info.format = format;
        SNDFILE* file = openSound(utf8Text(path), SFM_WRITE, &info);
        ASSERT_NE(nullptr, file) << sf_strerror(nullptr);
        sf_write_int(file, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(file);
    }

    static std::string bytesOf(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    // The words stand between the helper's path and the two paths, each in quotes if there is a blank in it.
    static std::string editor(const std::string& words) { return kEditor + " " + words + " {in} {out}"; }
    static std::string quoted(const fs::path& path) { return '"' + path.generic_string() + '"'; }
    // Another file as the result.
    std::string taking(const fs::path& other) const { return editor("take " + quoted(other)); }

    std::unique_ptr<EditJob> start(const std::string& command) {
        std::string problem;
        const auto parsed = EditorCommand::parse(command, &problem);
        EXPECT_TRUE(parsed) << problem;
        auto job = std::make_unique<EditJob>(*parsed, utf8Text(exchange_), utf8Text(work_));
        job->start();
        return job;
    }

    std::unique_ptr<EditJob> finish(const std::string& command) {
        auto job = start(command);
        EXPECT_TRUE(job->join(20'000));
        EXPECT_TRUE(job->hasEnded());
        return job;
    }

    void expectUntouched(const std::string& before) {
        EXPECT_EQ(before, bytesOf(exchange_));
        EXPECT_EQ(1, std::distance(fs::directory_iterator(exchange_.parent_path()), fs::directory_iterator()));
    }

    const fs::path root_ = fs::temp_directory_path() / "edit job";
    const fs::path exchange_ = root_ / "TeEx" / nativePath("tak\xC3\xA9; 1.wav");
    const fs::path other_ = root_ / "other.wav";
    const fs::path work_ = root_ / "work";
};

TEST_F(EditJobTest, TheResultReplacesTheExchangeFile) {
    writeSound(other_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {9 << 8, 8 << 8});
    const auto job = finish(taking(other_));
    EXPECT_TRUE(job->succeeded()) << job->problem();
    EXPECT_FALSE(job->keptLength());
    expectUntouched(bytesOf(other_));
    EXPECT_FALSE(fs::exists(work_));
}

// The result lies beside the exchange file for a moment, and somebody's file may bear any name.
TEST_F(EditJobTest, NoOtherFileBesideTheExchangeFileIsTouched) {
    fs::path own = exchange_;
    own += ".edited";
    std::ofstream(own) << "a user's own";
    writeSound(other_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {9 << 8, 8 << 8});
    const auto job = finish(taking(other_));
    EXPECT_TRUE(job->succeeded()) << job->problem();
    EXPECT_EQ(bytesOf(other_), bytesOf(exchange_));
    EXPECT_EQ("a user's own", bytesOf(own));
    EXPECT_EQ(2, std::distance(fs::directory_iterator(exchange_.parent_path()), fs::directory_iterator()));
}

TEST_F(EditJobTest, AResultOfTheSameLengthIsToldApart) {
    writeSound(other_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {9 << 8, 8 << 8, 7 << 8, 6 << 8});
    const auto job = finish(taking(other_));
    EXPECT_TRUE(job->succeeded()) << job->problem();
    EXPECT_TRUE(job->keptLength());
}

TEST_F(EditJobTest, TheEditorWorksOnACopyUnderTheFilesOwnName) {
    const auto job = finish(editor("named \"" + utf8Text(exchange_.filename()) + "\" " + quoted(other_)));
    EXPECT_TRUE(job->succeeded()) << job->problem();
    EXPECT_TRUE(fs::exists(other_));
    EXPECT_GT(fs::file_size(exchange_), 0u) << "the original is safe, whatever the editor does to its input";
}

TEST_F(EditJobTest, AnEditorInPlaceEditsACopyToo) {
    writeSound(other_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {7 << 8, 7 << 8});
    const auto job = finish(kEditor + " take " + quoted(other_) + " {file}");
    EXPECT_TRUE(job->succeeded()) << job->problem();
    EXPECT_EQ(bytesOf(other_), bytesOf(exchange_));
}

TEST_F(EditJobTest, AnEditorInPlaceThatSavesNothingGivesTheEditUp) {
    const std::string before = bytesOf(exchange_);
    const auto job = finish(kEditor + " nothing {file}");
    EXPECT_EQ("the editor was closed without saving", job->problem());
    expectUntouched(before);
}

TEST_F(EditJobTest, AFailingEditorChangesNothing) {
    const std::string before = bytesOf(exchange_);
    EXPECT_EQ("the editor " + kEditor + " ended with code 3; its own message stands above",
              finish(editor("exit 3"))->problem());
    EXPECT_EQ("the editor " + kEditor + " wrote no file; its command has to write to {out}",
              finish(editor("nothing"))->problem());
    EXPECT_NE(std::string::npos, finish("/no/such/editor {in} {out}")->problem().find("cannot start the editor"));
    expectUntouched(before);
    EXPECT_FALSE(fs::exists(work_));
}

TEST_F(EditJobTest, AResultAtAnotherRateIsRefusedAndKept) {
    const std::string before = bytesOf(exchange_);
    writeSound(other_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 44100, 2, {9 << 8, 8 << 8});
    const auto job = finish(taking(other_));
    EXPECT_NE(std::string::npos, job->problem().find("44100 Hz")) << job->problem();
    EXPECT_NE(std::string::npos, job->problem().find("expected 48000 Hz")) << job->problem();
    expectUntouched(before);
    EXPECT_EQ(bytesOf(other_), bytesOf(work_ / "edited" / exchange_.filename()));
}

TEST_F(EditJobTest, AResultWithOtherChannelsIsRefused) {
    const std::string before = bytesOf(exchange_);
    writeSound(other_, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 1, {9 << 8});
    EXPECT_FALSE(finish(taking(other_))->succeeded());
    expectUntouched(before);
}

TEST_F(EditJobTest, AResultInAnotherSampleFormatIsConvertedBack) {
    writeSound(other_, SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 48000, 2, {5 << 16, 6 << 16});
    const fs::path expected = root_ / "expected.wav";
    writeSound(expected, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 2, {5 << 16, 6 << 16});
    const auto job = finish(taking(other_));
    EXPECT_TRUE(job->succeeded()) << job->problem();
    EXPECT_EQ(bytesOf(expected), bytesOf(exchange_));
}

TEST_F(EditJobTest, AResultThatIsNoSoundIsRefusedAndKept) {
    const std::string before = bytesOf(exchange_);
    const auto job = finish(editor("text"));
    EXPECT_NE(std::string::npos, job->problem().find("is no sound file")) << job->problem();
    expectUntouched(before);
    EXPECT_TRUE(fs::exists(work_ / "edited" / exchange_.filename()));
}

TEST_F(EditJobTest, AStoppedJobEndsByItselfAndChangesNothing) {
    const std::string before = bytesOf(exchange_);
    const auto job = start(editor("linger " + quoted(other_)));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!fs::exists(other_) && std::chrono::steady_clock::now() < deadline) {
        FThread::sleep(5);
    }
    job->stop();
    EXPECT_TRUE(job->join(20'000));
    EXPECT_TRUE(job->hasEnded());
    EXPECT_EQ("the edit was given up", job->problem());
    expectUntouched(before);
    EXPECT_FALSE(fs::exists(work_));
}

TEST_F(EditJobTest, LettingTheJobGoEndsTheEditor) {
    const std::string before = bytesOf(exchange_);
    auto job = start(editor("linger " + quoted(other_)));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!fs::exists(other_) && std::chrono::steady_clock::now() < deadline) {
        FThread::sleep(5);
    }
    job.reset();
    EXPECT_LT(std::chrono::steady_clock::now(), deadline);
    expectUntouched(before);
}

} // namespace
} // namespace tessera::peer
