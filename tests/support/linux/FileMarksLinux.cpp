#include "support/FileMarks.h"

#include <gtest/gtest.h>
#include <sys/time.h>

namespace tessera::testing_support {

void setModified(const std::filesystem::path& file, std::int64_t seconds, std::int32_t microseconds) {
    const timeval times[2] = {{0, 0}, {seconds, microseconds}};
    EXPECT_EQ(utimes(file.c_str(), times), 0);
}

void setHidden(const std::filesystem::path&) {}

// A program that runs can't be written to by anybody.
std::shared_ptr<void> writeUnwritable(const std::filesystem::path& file) {
    std::filesystem::create_symlink("/proc/self/exe", file);
    return nullptr;
}

void setSize(const std::filesystem::path& file, std::int64_t size) {
    std::filesystem::resize_file(file, static_cast<std::uintmax_t>(size));
}

} // namespace tessera::testing_support
