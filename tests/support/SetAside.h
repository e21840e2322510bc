// SetAside: what lies at a path is out of the way for the length of a scope, and back at its end. For folders of the
// user or the machine that a program can't be kept from: the test begins without, and leaves what was there.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace tessera::testing_support {

class SetAside {
public:
    explicit SetAside(std::filesystem::path path) : path_(std::move(path)), aside_(path_), nothing_(path_) {
        aside_ += " (set aside by a test)";
        nothing_ += " (made by a test)";
        const bool oneWasEnded = std::filesystem::exists(aside_) || std::filesystem::exists(nothing_);
        if (std::filesystem::exists(path_)) {
            // Where one was ended in the middle, this is probably what that test has left, and perhaps the user's.
            std::filesystem::rename(path_, oneWasEnded ? unusedName() : aside_);
        } else if (!oneWasEnded) {
            std::filesystem::create_directories(nothing_);
        }
    }
    SetAside(const SetAside&) = delete;
    SetAside& operator=(const SetAside&) = delete;
    ~SetAside() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
        std::filesystem::remove(nothing_, ignored);
        if (std::filesystem::exists(aside_, ignored)) {
            std::filesystem::rename(aside_, path_, ignored);
        }
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path unusedName() const {
        for (int number = 1;; ++number) {
            std::filesystem::path name = path_;
            name += " (found by a test, " + std::to_string(number) + ")";
            if (!std::filesystem::exists(name)) {
                return name;
            }
        }
    }

    std::filesystem::path path_;
    std::filesystem::path aside_;
    // Tells, where nothing was to be set aside, that this is so.
    std::filesystem::path nothing_;
};

} // namespace tessera::testing_support
