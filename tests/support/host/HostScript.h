// HostScript: what happened to a double of a host, call by call, and which call is to fail. Calls that can fail ask
// fails(); a test runs once to count them, and then lets the first, the second, ... fail.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace tessera::test {

class HostScript {
public:
    void note(std::string call) { calls_.push_back(std::move(call)); }
    // Notes the step, and tells whether it is the one that fails.
    bool fails(const char* step) {
        const bool failing = steps_++ == failing_;
        if (failing || step == failingName_) {
            failed_ = step;
            return true;
        }
        return false;
    }

    void failStep(int number) { failing_ = number; }
    // Every step of this name.
    void failAlways(std::string name) { failingName_ = std::move(name); }
    void succeed() {
        failing_ = -1;
        failingName_.clear();
    }

    void clear() {
        calls_.clear();
        steps_ = 0;
        failed_.clear();
    }
    const std::vector<std::string>& calls() const { return calls_; }
    int steps() const { return steps_; }
    // The step that failed last; empty if none did.
    const std::string& failed() const { return failed_; }
    auto count(const std::string& call) const { return std::ranges::count(calls_, call); }

private:
    std::vector<std::string> calls_;
    int steps_ = 0;
    int failing_ = -1;
    std::string failingName_;
    std::string failed_;
};

} // namespace tessera::test
