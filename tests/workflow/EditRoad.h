// EditRoad: a fixture for the whole road of an edit: a host with one event on a clip, a session, and a peer whose
// messages are kept as texts.
#pragma once

#include "support/SystemFolders.h"
#include "support/host/FakeHost.h"
#include "workflow/EditSession.h"
#include "workflow/HostText.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tessera {

class FakePeerLink final : public IPeerLink {
public:
    bool isPeerAvailable() override { return available; }
    void openAudioFile(IHostFile* file) override { sent.push_back("open " + pathOf(file)); }
    IHostFile* editSelection() override { return edited; }
    void cancelAudioFile(IHostFile* file) override { sent.push_back("cancel " + pathOf(file)); }
    std::int32_t suspendDriver(const char16_t* text) override {
        sent.push_back("suspend " + utf8Of(text));
        return 0;
    }

    bool available = true;
    IHostFile* edited = nullptr;
    std::vector<std::string> sent;
};

class EditRoad : public testing::Test {
protected:
    using Bytes = std::vector<std::uint8_t>;
    static constexpr test::SoundFormat kFormat{2, 1000, 24};
    // Ten seconds.
    static constexpr std::int64_t kFrames = 10000;

    EditRoad() {
        host_.store.add(u"/audio/take.wav", kFormat, bytesOf(kFrames, 1));
        event_ = host_.addEvent(u"/audio/take.wav", {30, 33, 2});
        host_.selection->select(1, event_.get());
        session_.start(&peer_);
    }
    ~EditRoad() override { session_.stop(); }

    // Bytes that differ from place to place and from seed to seed.
    static Bytes bytesOf(std::int64_t frames, std::uint32_t seed) {
        Bytes bytes(static_cast<std::size_t>(frames * kFormat.bytesPerFrame()));
        std::uint32_t state = seed;
        for (std::uint8_t& byte : bytes) {
            state = state * 1664525 + 1013904223;
            byte = static_cast<std::uint8_t>(state >> 24);
        }
        return bytes;
    }
    static Bytes slice(const Bytes& bytes, std::int64_t first, std::int64_t frames) {
        const auto width = static_cast<std::ptrdiff_t>(kFormat.bytesPerFrame());
        return {bytes.begin() + first * width, bytes.begin() + (first + frames) * width};
    }
    static Bytes joined(std::initializer_list<Bytes> parts) {
        Bytes all;
        for (const Bytes& part : parts) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }

    static std::u16string exchange(const std::u16string& name) {
        // The folder in the system's own form, and behind it the separator of the host's files.
        std::filesystem::path folder = testing_support::temporaryPath() / "Marlgrove" / "TeEx";
        return wideOf(testing_support::utf8OfPath(folder.make_preferred())) + u"/" + name;
    }
    const Bytes& original() const { return host_.store.find(u"/audio/take.wav")->bytes; }
    // The peer writes the edited file in place.
    void edit(const std::u16string& path, Bytes bytes) { host_.store.find(path)->bytes = std::move(bytes); }
    // The file that the event on the track plays.
    std::u16string playedFile() {
        IAudioClip* clip = host_.track->events.at(0)->audioPart()->clip();
        return widePathOf(clip->file());
    }
    const Bytes& playedBytes() { return host_.store.find(playedFile())->bytes; }

    test::FakeHost host_;
    FRefPtr<test::FakeEvent> event_;
    FakePeerLink peer_;
    EditSession session_;
};

} // namespace tessera
