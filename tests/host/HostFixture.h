// HostFixture: a host without a module, with a folder of its own that goes with the test, and sound files made by hand.
#pragma once

#include "common/OpenSound.h"
#include "host/audio/AudioFormat.h"
#include "host/program/Application.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <sndfile.h>
#include <sstream>
#include <string>
#include <vector>

namespace tessera::host {

class HostFixture : public ::testing::Test {
protected:
    HostFixture() { application_ = makeApplication(); }

    std::unique_ptr<Application> makeApplication() {
        ApplicationSettings settings;
        settings.out = &output_;
        return std::make_unique<Application>(settings);
    }

    Application& host() { return *application_; }
    std::string output() const { return output_.str(); }
    std::vector<std::string> misuses() { return host().core()->watch->misuses(); }
    // As the system writes it.
    std::string path(const std::string& name) const {
        return testing_support::utf8OfPath((folder_ / name).make_preferred());
    }

    // Sample values 0, 1, 2, ... over all channels, so that each frame tells where it comes from.
    std::string makeSound(const std::string& name, int frames, int channels = 1, int sampleRate = 1000,
                          int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16, int first = 0) {
        std::vector<short> samples(static_cast<std::size_t>(frames * channels));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            samples[i] = static_cast<short>(first + static_cast<int>(i));
        }
        SF_INFO info = {};
        info.format = format;
        info.channels = channels;
        info.samplerate = sampleRate;
        SNDFILE* const file = programs::openSound(path(name), SFM_WRITE, &info);
        EXPECT_NE(file, nullptr) << sf_strerror(nullptr);
        EXPECT_EQ(sf_writef_short(file, samples.data(), frames), frames);
        sf_close(file);
        return path(name);
    }

    // All samples of a file, as 16 bits.
    static std::vector<short> samplesOf(const std::string& file) {
        SF_INFO info = {};
        SNDFILE* const opened = programs::openSound(file, SFM_READ, &info);
        EXPECT_NE(opened, nullptr) << file << ": " << sf_strerror(nullptr);
        if (opened == nullptr) {
            return {};
        }
        std::vector<float> floats(static_cast<std::size_t>(info.frames * info.channels));
        EXPECT_EQ(sf_readf_float(opened, floats.data(), info.frames), info.frames);
        sf_close(opened);
        std::vector<short> samples;
        for (const float value : floats) {
            samples.push_back(static_cast<short>(std::clamp(std::lround(value * 32768.0F), -32768L, 32767L)));
        }
        return samples;
    }

    void makeProject(const std::vector<std::string>& files) {
        ASSERT_EQ(host().newProject(path("project"), files), "");
    }
    std::shared_ptr<Event> event(int number) { return host().project()->eventByNumber(number); }

    template <class Interface>
    FRefPtr<Interface> service() {
        FRefPtr<Interface> result;
        EXPECT_EQ(host().context().queryService(Interface::iid, result.receive()), kResultOk);
        return result;
    }

private:
    testing_support::ScratchFolder folder_;
    std::ostringstream output_;
    std::unique_ptr<Application> application_;
};

} // namespace tessera::host
