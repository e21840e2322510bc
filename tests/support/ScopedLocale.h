// ScopedLocale: a locale of the C library that this machine need not have installed, for the length of a test.
//
// The system's own compiler of locales builds it in the run's temporary folder. isUsable() is false where that compiler
// or its sources are missing; a test skips then. The process's numbers follow the locale until the object goes.
#pragma once

#include "support/Environment.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tessera::test {

class ScopedLocale {
public:
    // For example "de_DE" and "UTF-8".
    ScopedLocale(const std::string& region, const std::string& codeset)
        : folder_(std::filesystem::temp_directory_path() / "locales"), name_(region + "." + codeset) {
        std::filesystem::create_directories(folder_);
        const std::string build =
            "localedef -i " + region + " -f " + codeset + " '" + (folder_ / name_).string() + "' >/dev/null 2>&1";
        // The compiler warns by its result where it still writes the locale, so what counts is the folder. Building
        // takes seconds, and the run's folder goes with the run: once is enough.
        usable_ = std::filesystem::exists(folder_ / name_);
        if (!usable_) {
            static_cast<void>(!std::system(build.c_str()));
            usable_ = std::filesystem::exists(folder_ / name_);
        }
        testing_support::setVariable("LOCPATH", folder_.string());
    }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
    ~ScopedLocale() {
        std::setlocale(LC_ALL, "C");
        testing_support::unsetVariable("LOCPATH");
    }

    bool isUsable() const { return usable_; }
    bool useForNumbers() const {
        if (usable_) {
            return std::setlocale(LC_NUMERIC, name_.c_str()) != nullptr;
        }
        // Other systems bring theirs along, by another name.
        return name_.starts_with("de_DE") && std::setlocale(LC_NUMERIC, "German_Germany") != nullptr;
    }
    const std::string& name() const { return name_; }
    const std::filesystem::path& folder() const { return folder_; }

private:
    std::filesystem::path folder_;
    std::string name_;
    bool usable_ = false;
};

} // namespace tessera::test
