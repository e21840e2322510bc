#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockGuard.h"
#include "foundation/threads/FThread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

namespace tessera::test {
namespace {

// [threads]
class PeakFinder : public FThread {
public:
    explicit PeakFinder(std::vector<float> samples) : FThread("peaks"), samples_(std::move(samples)) {}
    // The base doesn't wait, and run() uses this object: so the end is asked for and waited for here.
    ~PeakFinder() override {
        stop_ = true;
        join();
    }

    std::uint32_t run() override {
        for (const float sample : samples_) {
            if (stop_) {
                return 1;
            }
            const FLockGuard guard(lock_);
            peak_ = std::max(peak_, std::fabs(sample));
        }
        return 0;
    }

    float peakSoFar() {
        const FLockGuard guard(lock_);
        return peak_;
    }

private:
    const std::vector<float> samples_;
    std::atomic<bool> stop_ = false;
    FLock lock_;
    float peak_ = 0; // guarded by lock_
};
// [threads]

TEST(ThreadsExample, TheThreadFindsThePeak) {
    PeakFinder finder({0.25f, -0.75f, 0.5f});
    finder.start();
    EXPECT_TRUE(finder.join(20000));
    EXPECT_EQ(finder.peakSoFar(), 0.75f);
}

TEST(ThreadsExample, AFinderMayGoBeforeItIsDone) {
    PeakFinder finder(std::vector<float>(10'000'000));
    finder.start();
}

} // namespace
} // namespace tessera::test
