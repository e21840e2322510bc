// FileSizeLimit: while it lives, no file that this process writes can grow beyond so many bytes, as if the disk were
// full. Ask whyNoFileSizeLimit first.
#pragma once

#include <cstdint>

namespace tessera::testing_support {

class FileSizeLimit {
public:
    explicit FileSizeLimit(std::uint64_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*signal_)(int) = nullptr;
    std::uint64_t before_ = 0;
};

} // namespace tessera::testing_support
