// SetAside: what lies at a path is out of the way for the length of a scope, and back at its end. For folders of the
// user or the machine that a program can't be kept from: the test begins without, and leaves what was there.
#pragma once

#include <filesystem>
#include <utility>

namespace tessera::testing_support {

class SetAside {
public:
    explicit SetAside(std::filesystem::path path) : path_(std::move(path)), aside_(path_), nothing_(path_) {
        aside_ += " (set aside by a test)";
        nothing_ += " (made by a test)";
        // Where one was ended in the middle, it has left one of these, and what lies at the path is the test's.
        if (!std::filesystem::exists(aside_) && !std::filesystem::exists(nothing_)) {
            if (std::filesystem::exists(path_)) {
                std::filesystem::rename(path_, aside_);
            } else {
                std::filesystem::create_directories(nothing_);
            }
        }
        std::filesystem::remove_all(path_);
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
    std::filesystem::path path_;
    std::filesystem::path aside_;
    // Tells, where nothing was to be set aside, that this is so.
    std::filesystem::path nothing_;
};

} // namespace tessera::testing_support
