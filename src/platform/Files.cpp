#include "platform/Files.h"

#include <utility>

namespace tessera::platform {

File::File(File&& other) noexcept : handle_(std::exchange(other.handle_, kClosed)) {}

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        std::int32_t ignored = 0;
        close(ignored);
        handle_ = std::exchange(other.handle_, kClosed);
    }
    return *this;
}

File::~File() {
    std::int32_t ignored = 0;
    close(ignored);
}

File File::adopt(std::int64_t handle) {
    File file;
    file.handle_ = handle;
    return file;
}

} // namespace tessera::platform
