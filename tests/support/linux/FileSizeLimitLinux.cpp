#include "support/FileSizeLimit.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace tessera::testing_support {

FileSizeLimit::FileSizeLimit(std::uint64_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    rlimit limit = {};
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    before_ = limit.rlim_cur;
    limit.rlim_cur = bytes;
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

FileSizeLimit::~FileSizeLimit() {
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = before_;
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, signal_);
}

} // namespace tessera::testing_support
