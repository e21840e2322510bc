#include "platform/Files.h"

#include "platform/NativePath.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace tessera::platform {

namespace {

// What open and mkdir are given; the user's mask takes its share off.
constexpr mode_t kFileMode = 0666;
constexpr mode_t kFolderMode = 0777;

template <class Call>
auto repeatInterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

int accessOf(const FileOpenFlags& flags) {
    if (flags.write) {
        return flags.read ? O_RDWR : O_WRONLY;
    }
    return O_RDONLY;
}

int originOf(FileSeek mode) {
    switch (mode) {
    case FileSeek::fromStart:
        return SEEK_SET;
    case FileSeek::fromHere:
        return SEEK_CUR;
    case FileSeek::fromEnd:
        return SEEK_END;
    }
    return SEEK_SET;
}

// A folder isn't a file, and a pipe somebody left in a folder that is read must not hold the caller up. What remains
// beside regular files are devices, which are then read the ordinary, blocking way.
std::int32_t refuseOddKinds(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0) {
        return errno;
    }
    if (S_ISDIR(status.st_mode)) {
        return EISDIR;
    }
    if (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)) {
        return EINVAL;
    }
    if (!S_ISREG(status.st_mode)) {
        const int flags = ::fcntl(descriptor, F_GETFL);
        ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
    }
    return 0;
}

int descriptorOf(std::int64_t handle) {
    return static_cast<int>(handle);
}

int creationOf(FileDisposition disposition) {
    switch (disposition) {
    case FileDisposition::createAlways:
        return O_CREAT | O_TRUNC;
    case FileDisposition::createNew:
        return O_CREAT | O_EXCL;
    case FileDisposition::openExisting:
        break;
    }
    return 0;
}

} // namespace

File File::open(std::u16string_view path, const FileOpenFlags& flags, FileDisposition disposition,
                std::int32_t& error) {
    File file;
    const auto native = toNativePath(path);
    if (!native) {
        error = ENOENT;
        return file;
    }
    const int creation = creationOf(disposition);
    const int descriptor = repeatInterrupted([&] {
        return ::open(native->c_str(), accessOf(flags) | creation | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, kFileMode);
    });
    if (descriptor == -1) {
        error = errno;
        return file;
    }
    file.handle_ = descriptor;
    error = refuseOddKinds(descriptor);
    if (error != 0) {
        std::int32_t ignored = 0;
        file.close(ignored);
    } else if (flags.deleteOnClose) {
        // The name goes at once and the content with the handle: nothing is left behind, whatever ends the process.
        ::unlink(native->c_str());
    }
    return file;
}

bool File::close(std::int32_t& error) {
    error = 0;
    if (!isOpen()) {
        return true;
    }
    // Never repeated: an interrupted close has given the descriptor up already.
    if (::close(descriptorOf(std::exchange(handle_, kClosed))) == 0 || errno == EINTR) {
        return true;
    }
    error = errno;
    return false;
}

std::int64_t File::read(void* buffer, std::int64_t size, std::int32_t& error) {
    error = 0;
    std::int64_t done = 0;
    while (done < size) {
        const ssize_t count = repeatInterrupted([&] {
            return ::read(descriptorOf(handle_), static_cast<char*>(buffer) + done,
                          static_cast<std::size_t>(size - done));
        });
        if (count == -1) {
            error = errno;
            return done > 0 ? done : -1;
        }
        if (count == 0) {
            break;
        }
        done += count;
    }
    return done;
}

std::int64_t File::write(const void* buffer, std::int64_t size, std::int32_t& error) {
    error = 0;
    std::int64_t done = 0;
    while (done < size) {
        const ssize_t count = repeatInterrupted([&] {
            return ::write(descriptorOf(handle_), static_cast<const char*>(buffer) + done,
                           static_cast<std::size_t>(size - done));
        });
        if (count <= 0) {
            // Nothing taken and nothing said: a device that has no room.
            error = count == -1 ? errno : ENOSPC;
            return done > 0 ? done : -1;
        }
        done += count;
    }
    return done;
}

std::int64_t File::seek(std::int64_t offset, FileSeek mode, std::int32_t& error) {
    const off_t position = ::lseek(descriptorOf(handle_), offset, originOf(mode));
    error = position == -1 ? errno : 0;
    return position;
}

std::int64_t File::size(std::int32_t& error) {
    struct stat status;
    if (::fstat(descriptorOf(handle_), &status) != 0) {
        error = errno;
        return -1;
    }
    error = 0;
    return status.st_size;
}

bool File::truncate(std::int64_t length, std::int32_t& error) {
    const int result = repeatInterrupted([&] { return ::ftruncate(descriptorOf(handle_), length); });
    error = result == -1 ? errno : 0;
    return result == 0;
}

bool File::flush(std::int32_t& error) {
    const int result = repeatInterrupted([&] { return ::fdatasync(descriptorOf(handle_)); });
    error = result == -1 ? errno : 0;
    return result == 0;
}

FileKind fileKindOf(std::u16string_view path) {
    const auto native = toNativePath(path);
    struct stat status;
    if (!native || ::stat(native->c_str(), &status) != 0) {
        return FileKind::missing;
    }
    return S_ISDIR(status.st_mode) ? FileKind::folder : FileKind::file;
}

std::uint32_t sectorSizeOf(std::u16string_view path) {
    const auto native = toNativePath(path);
    struct statvfs status;
    if (!native || ::statvfs(native->c_str(), &status) != 0) {
        return 0;
    }
    return static_cast<std::uint32_t>(status.f_bsize);
}

bool createFolders(std::u16string_view path, std::int32_t& error) {
    const auto native = toNativePath(path);
    if (!native) {
        error = ENOENT;
        return false;
    }
    std::size_t end = 0;
    do {
        end = std::min(native->find('/', end + 1), native->size());
        const std::string folder = native->substr(0, end);
        if (::mkdir(folder.c_str(), kFolderMode) != 0 && errno != EEXIST) {
            // Folders on the way may lie where nothing may be made, and yet be there.
            error = errno;
            struct stat status;
            if (::stat(folder.c_str(), &status) != 0) {
                return false;
            }
        }
    } while (end < native->size());
    const bool made = fileKindOf(path) == FileKind::folder;
    error = made ? 0 : ENOTDIR;
    return made;
}

} // namespace tessera::platform
