#include "support/FailingCalls.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessera::testing_support {

namespace {

thread_local bool armed = false;
thread_local int calls = 0;
thread_local int failingCall = 0;
thread_local int failure = 0;
thread_local bool mayDie = false;
thread_local std::string failedName;
int renameError = 0;

bool fails(const char* name) {
    if (!armed || ++calls != failingCall) {
        return false;
    }
    if (mayDie) {
        raise(SIGKILL);
    }
    failedName = name;
    errno = failure;
    return true;
}

mode_t modeOf(int flags, std::va_list& arguments) {
    return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

} // namespace

void FailingCalls::arm(int number, int error) {
    calls = 0;
    failingCall = number;
    failure = error;
    failedName.clear();
    mayDie = false;
    armed = true;
}

void FailingCalls::armToDie(int lastCall) {
    arm(lastCall, 0);
    mayDie = true;
}

int FailingCalls::disarm() {
    armed = false;
    return calls;
}

std::string FailingCalls::failed() {
    return failedName;
}

void FailingCalls::setRenameError(int error) {
    renameError = error;
}

// The linker sends each call of our code to its __wrap_ name, and __real_ is the call itself.
extern "C" {

int __real_open(const char* path, int flags, mode_t mode);
int __wrap_open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("open") ? -1 : __real_open(path, flags, mode);
}

int __real_openat(int folder, const char* path, int flags, mode_t mode);
int __wrap_openat(int folder, const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("openat") ? -1 : __real_openat(folder, path, flags, mode);
}

// A close that fails has closed all the same.
int __real_close(int descriptor);
int __wrap_close(int descriptor) {
    const bool failing = fails("close");
    const int reason = errno;
    const int result = __real_close(descriptor);
    errno = failing ? reason : errno;
    return failing ? -1 : result;
}

ssize_t __real_read(int descriptor, void* buffer, size_t size);
ssize_t __wrap_read(int descriptor, void* buffer, size_t size) {
    return fails("read") ? -1 : __real_read(descriptor, buffer, size);
}

ssize_t __real_write(int descriptor, const void* buffer, size_t size);
ssize_t __wrap_write(int descriptor, const void* buffer, size_t size) {
    if (armed && mayDie && calls + 1 == failingCall) {
        static_cast<void>(!__real_write(descriptor, buffer, size / 2));
    }
    return fails("write") ? -1 : __real_write(descriptor, buffer, size);
}

int __real_fstat(int descriptor, struct stat* status);
int __wrap_fstat(int descriptor, struct stat* status) {
    return fails("fstat") ? -1 : __real_fstat(descriptor, status);
}

int __real_stat(const char* path, struct stat* status);
int __wrap_stat(const char* path, struct stat* status) {
    return fails("stat") ? -1 : __real_stat(path, status);
}

int __real_lstat(const char* path, struct stat* status);
int __wrap_lstat(const char* path, struct stat* status) {
    return fails("lstat") ? -1 : __real_lstat(path, status);
}

int __real_fstatat(int folder, const char* path, struct stat* status, int flags);
int __wrap_fstatat(int folder, const char* path, struct stat* status, int flags) {
    return fails("fstatat") ? -1 : __real_fstatat(folder, path, status, flags);
}

int __real_statx(int folder, const char* path, int flags, unsigned mask, struct statx* status);
int __wrap_statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) {
    return fails("statx") ? -1 : __real_statx(folder, path, flags, mask, status);
}

int __real_fchmod(int descriptor, mode_t mode);
int __wrap_fchmod(int descriptor, mode_t mode) {
    return fails("fchmod") ? -1 : __real_fchmod(descriptor, mode);
}

int __real_fchmodat(int folder, const char* path, mode_t mode, int flags);
int __wrap_fchmodat(int folder, const char* path, mode_t mode, int flags) {
    return fails("fchmodat") ? -1 : __real_fchmodat(folder, path, mode, flags);
}

int __real_futimens(int descriptor, const struct timespec* times);
int __wrap_futimens(int descriptor, const struct timespec* times) {
    return fails("futimens") ? -1 : __real_futimens(descriptor, times);
}

int __real_fsync(int descriptor);
int __wrap_fsync(int descriptor) {
    return fails("fsync") ? -1 : __real_fsync(descriptor);
}

int __real_fdatasync(int descriptor);
int __wrap_fdatasync(int descriptor) {
    return fails("fdatasync") ? -1 : __real_fdatasync(descriptor);
}

int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) {
    return fails("rename") ? -1 : __real_rename(from, to);
}

int __real_renameat(int fromFolder, const char* from, int toFolder, const char* to);
int __wrap_renameat(int fromFolder, const char* from, int toFolder, const char* to) {
    return fails("renameat") ? -1 : __real_renameat(fromFolder, from, toFolder, to);
}

int __real_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags);
int __wrap_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    if (fails("renameat2")) {
        return -1;
    }
    // What is finished in the target's folder gets its name there, on the same volume.
    const bool unfinished = std::string(from).find(".part") != std::string::npos;
    if (renameError != 0 && !(renameError == EXDEV && unfinished)) {
        errno = renameError;
        return -1;
    }
    return __real_renameat2(fromFolder, from, toFolder, to, flags);
}

int __real_linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags);
int __wrap_linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    return fails("linkat") ? -1 : __real_linkat(fromFolder, from, toFolder, to, flags);
}

int __real_unlink(const char* path);
int __wrap_unlink(const char* path) {
    return fails("unlink") ? -1 : __real_unlink(path);
}

int __real_unlinkat(int folder, const char* path, int flags);
int __wrap_unlinkat(int folder, const char* path, int flags) {
    return fails("unlinkat") ? -1 : __real_unlinkat(folder, path, flags);
}

int __real_mkdirat(int folder, const char* path, mode_t mode);
int __wrap_mkdirat(int folder, const char* path, mode_t mode) {
    return fails("mkdirat") ? -1 : __real_mkdirat(folder, path, mode);
}

int __real_symlink(const char* target, const char* path);
int __wrap_symlink(const char* target, const char* path) {
    return fails("symlink") ? -1 : __real_symlink(target, path);
}

int __real_symlinkat(const char* target, int folder, const char* path);
int __wrap_symlinkat(const char* target, int folder, const char* path) {
    return fails("symlinkat") ? -1 : __real_symlinkat(target, folder, path);
}

ssize_t __real_readlinkat(int folder, const char* path, char* buffer, size_t size);
ssize_t __wrap_readlinkat(int folder, const char* path, char* buffer, size_t size) {
    return fails("readlinkat") ? -1 : __real_readlinkat(folder, path, buffer, size);
}

DIR* __real_fdopendir(int descriptor);
DIR* __wrap_fdopendir(int descriptor) {
    return fails("fdopendir") ? nullptr : __real_fdopendir(descriptor);
}

} // extern "C"

} // namespace tessera::testing_support
