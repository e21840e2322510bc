#include "platform/SmallFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessera::platform {

namespace {

class Descriptor {
public:
    Descriptor(const std::string& path, int flags) : number_(open(path.c_str(), flags | O_CLOEXEC, 0666)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

private:
    int number_;
};

bool isPlainFile(int descriptor) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

// Grown as bytes come: the limit is a bound, not an expectation.
constexpr std::size_t kBlock = 4096;

bool writeOver(int descriptor, std::string_view bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = write(descriptor, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR) {
            continue;
        }
        if (put <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(put);
    }
    return ftruncate(descriptor, static_cast<off_t>(bytes.size())) == 0;
}

// Written without a name first, so that nobody meets it half done.
bool publishNew(const std::string& path, std::string_view bytes) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    const Descriptor nameless(folder, O_WRONLY | O_TMPFILE);
    if (!nameless.isOpen() || !writeOver(nameless.number(), bytes)) {
        return false;
    }
    const std::string link = "/proc/self/fd/" + std::to_string(nameless.number());
    return linkat(AT_FDCWD, link.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

} // namespace

const std::string_view kLineEnding = "\n";

std::optional<std::string> readSmallFile(const std::string& path, std::size_t limit) {
    // Without O_NONBLOCK a pipe that lies in the folder would hold the caller for good.
    const Descriptor file(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    std::string bytes;
    char block[kBlock];
    while (bytes.size() < limit) {
        const std::size_t wanted = std::min(limit - bytes.size(), sizeof block);
        const ssize_t got = read(file.number(), block, wanted);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return std::nullopt;
        }
        bytes.append(block, static_cast<std::size_t>(got));
        if (static_cast<std::size_t>(got) < wanted) {
            break;
        }
    }
    // What gives bytes may be read; what gives none is asked whether it's a file at all.
    if (bytes.empty() && !isPlainFile(file.number())) {
        return std::nullopt;
    }
    return bytes;
}

bool writeSmallFile(const std::string& path, std::string_view bytes) {
    const Descriptor present(path, O_WRONLY | O_NONBLOCK);
    if (present.isOpen()) {
        return isPlainFile(present.number()) && writeOver(present.number(), bytes);
    }
    if (errno != ENOENT) {
        return false;
    }
    if (publishNew(path, bytes)) {
        return true;
    }
    // Somebody else was quicker, or the file system knows no nameless files.
    const Descriptor made(path, O_WRONLY | O_CREAT | O_NONBLOCK);
    return made.isOpen() && isPlainFile(made.number()) && writeOver(made.number(), bytes);
}

} // namespace tessera::platform
