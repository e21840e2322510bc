#include "platform/FileEntries.h"

#include "platform/NativePath.h"
#include "platform/linux/UnfinishedName.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <limits.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace tessera::platform {

namespace {

constexpr std::size_t kCopyBlock = 0x10000;

bool done(int result, std::int32_t& error) {
    error = result == 0 ? 0 : errno;
    return result == 0;
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { static_cast<void>(close()); }

    explicit operator bool() const { return number_ != -1; }
    int get() const { return number_; }
    // 0, or -1 with errno: a failing close can be the first news of a full disk.
    int close() {
        const int number = number_;
        number_ = -1;
        return number == -1 ? 0 : ::close(number);
    }

private:
    int number_;
};

// Removes an unfinished file at the end of the scope.
class UnfinishedFile {
public:
    explicit UnfinishedFile(std::string path) : path_(std::move(path)) {}
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile() { ::unlink(path_.c_str()); }

private:
    std::string path_;
};

std::string folderOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    return separator == path.npos ? "./" : path.substr(0, separator + 1);
}

bool writeAll(int target, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = ::write(target, bytes, size);
        if (count == -1 && errno == EINTR) {
            continue;
        }
        if (count == -1) {
            return false;
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool copyBytes(int source, int target) {
    const auto block = std::make_unique<char[]>(kCopyBlock);
    for (;;) {
        const ssize_t count = ::read(source, block.get(), kCopyBlock);
        if (count == -1 && errno == EINTR) {
            continue;
        }
        if (count == -1) {
            return false;
        }
        if (count == 0) {
            return true;
        }
        if (!writeAll(target, block.get(), static_cast<std::size_t>(count))) {
            return false;
        }
    }
}

// Content, rights and times, on the disk. False with errno.
bool copyWhole(int source, const struct stat& status, Descriptor& target) {
    const std::array<timespec, 2> times = {status.st_atim, status.st_mtim};
    return copyBytes(source, target.get()) && ::fchmod(target.get(), status.st_mode & 07777) == 0 &&
           ::futimens(target.get(), times.data()) == 0 && ::fsync(target.get()) == 0 && target.close() == 0;
}

// Deletes the old name. If that fails the new one goes again: there is one file, here or there.
int giveUp(const char* from, const char* to) {
    if (::unlink(from) == 0) {
        return 0;
    }
    const int reason = errno;
    ::unlink(to);
    errno = reason;
    return -1;
}

// Without renameat2: a new link to the file fails where the name is taken, as it has to. Folders have no second links,
// nor have files on some volumes; for these there is a moment between the test and the renaming.
int renameByLink(const char* from, const char* to) {
    if (::linkat(AT_FDCWD, from, AT_FDCWD, to, 0) == 0) {
        return giveUp(from, to);
    }
    if (errno != EPERM && errno != EOPNOTSUPP && errno != EMLINK) {
        return -1;
    }
    struct stat status;
    if (::lstat(to, &status) == 0) {
        errno = EEXIST;
        return -1;
    }
    return errno == ENOENT ? ::rename(from, to) : -1;
}

int renameWithoutReplacing(const char* from, const char* to) {
    const int result = ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
    return result == -1 && (errno == EINVAL || errno == ENOSYS) ? renameByLink(from, to) : result;
}

// The entries of a folder. 0, or -1 with errno.
int flushEntries(const std::string& path) {
    const Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return -1;
    }
    int result = ::fsync(folder.get());
    while (result == -1 && errno == EINTR) {
        result = ::fsync(folder.get());
    }
    // Some file systems of the network keep their entries in order by themselves and refuse this.
    return result == -1 && errno == EINVAL ? 0 : result;
}

// The original is deleted last of all, when the copy's name is on the disk like its content. Where the name can't be
// brought there it goes again.
int moveAcrossVolumes(const std::string& from, const std::string& to) {
    struct stat status;
    if (::lstat(from.c_str(), &status) != 0) {
        return -1;
    }
    if (!S_ISREG(status.st_mode)) {
        errno = EXDEV;
        return -1;
    }
    const Descriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!source) {
        return -1;
    }
    const std::string part = folderOf(to) + unfinishedName();
    Descriptor target(::open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target) {
        return -1;
    }
    const UnfinishedFile unfinished(part);
    if (!copyWhole(source.get(), status, target) || renameWithoutReplacing(part.c_str(), to.c_str()) != 0) {
        return -1;
    }
    if (flushEntries(folderOf(to)) != 0) {
        const int reason = errno;
        ::unlink(to.c_str());
        errno = reason;
        return -1;
    }
    return giveUp(from.c_str(), to.c_str());
}

std::int64_t secondsOf(const statx_timestamp& time) {
    return time.tv_sec;
}

} // namespace

std::optional<FileStatus> fileStatus(std::u16string_view path, std::int32_t& error) {
    const auto native = toNativePath(path);
    if (!native) {
        error = ENOENT;
        return std::nullopt;
    }
    struct statx found;
    const unsigned wanted = STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME;
    if (!done(::statx(AT_FDCWD, native->c_str(), AT_SYMLINK_NOFOLLOW, wanted, &found), error)) {
        return std::nullopt;
    }
    FileStatus status;
    status.isLink = S_ISLNK(found.stx_mode);
    status.isHidden = (*native)[native->rfind('/') + 1] == '.';
    struct statx followed;
    if (status.isLink && ::statx(AT_FDCWD, native->c_str(), 0, wanted, &followed) == 0) {
        found = followed;
    }
    status.isFolder = S_ISDIR(found.stx_mode);
    status.size = status.isFolder ? 0 : static_cast<std::int64_t>(found.stx_size);
    status.modified = secondsOf(found.stx_mtime);
    status.created = (found.stx_mask & STATX_BTIME) != 0 ? secondsOf(found.stx_btime) : status.modified;
    return status;
}

bool isSameFile(std::u16string_view a, std::u16string_view b) {
    const auto nativeA = toNativePath(a);
    const auto nativeB = toNativePath(b);
    struct stat statusA;
    struct stat statusB;
    return nativeA && nativeB && ::stat(nativeA->c_str(), &statusA) == 0 && ::stat(nativeB->c_str(), &statusB) == 0 &&
           statusA.st_dev == statusB.st_dev && statusA.st_ino == statusB.st_ino;
}

std::optional<std::u16string> canonicalPath(std::u16string_view path) {
    const auto native = toNativePath(path);
    if (!native) {
        return std::nullopt;
    }
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(native->c_str(), nullptr), std::free);
    return resolved ? fromNativePath(resolved.get()) : std::nullopt;
}

std::optional<std::u16string> storedName(std::u16string_view) {
    return std::nullopt;
}

bool deleteFile(std::u16string_view path, std::int32_t& error) {
    const auto native = toNativePath(path);
    if (!native) {
        error = ENOENT;
        return false;
    }
    return done(::unlink(native->c_str()), error);
}

bool moveEntry(std::u16string_view from, std::u16string_view to, std::int32_t& error) {
    const auto nativeFrom = toNativePath(from);
    const auto nativeTo = toNativePath(to);
    if (!nativeFrom || !nativeTo) {
        error = ENOENT;
        return false;
    }
    int result = renameWithoutReplacing(nativeFrom->c_str(), nativeTo->c_str());
    if (result == -1 && errno == EXDEV) {
        result = moveAcrossVolumes(*nativeFrom, *nativeTo);
    }
    return done(result, error);
}

bool flushFolder(std::u16string_view path, std::int32_t& error) {
    const auto native = toNativePath(path);
    if (!native) {
        error = ENOENT;
        return false;
    }
    return done(flushEntries(*native), error);
}

bool createLink(std::u16string_view path, std::u16string_view target, std::int32_t& error) {
    const auto native = toNativePath(path);
    const auto nativeTarget = toNativePath(target);
    if (!native || !nativeTarget) {
        error = ENOENT;
        return false;
    }
    return done(::symlink(nativeTarget->c_str(), native->c_str()), error);
}

std::optional<std::u16string> readLink(std::u16string_view path) {
    const auto native = toNativePath(path);
    if (!native) {
        return std::nullopt;
    }
    char target[PATH_MAX];
    const ssize_t length = ::readlink(native->c_str(), target, sizeof target);
    // A text that fills the buffer may have been cut.
    if (length <= 0 || length == static_cast<ssize_t>(sizeof target)) {
        return std::nullopt;
    }
    const std::string_view said(target, static_cast<std::size_t>(length));
    return fromNativePath(said.front() == '/' ? std::string(said) : folderOf(*native) + std::string(said));
}

} // namespace tessera::platform
