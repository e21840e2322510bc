// FileSizeLimit: while it lives, no file that this process writes can grow beyond so many bytes, as if the disk were
// full.
#pragma once

#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace tessera::testing_support {

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*signal_)(int);
    rlimit before_ = {};
};

} // namespace tessera::testing_support
