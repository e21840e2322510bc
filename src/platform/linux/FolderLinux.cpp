#include "platform/Folder.h"

#include "platform/NativePath.h"
#include "platform/linux/UnfinishedName.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <optional>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tessera::platform {

struct Folder::State {
    explicit State(DIR* opened) : stream(opened), descriptor(dirfd(opened)) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { closedir(stream); }

    // Takes the descriptor; -1 stands for what errno tells.
    static Folder adopt(int descriptor, std::int32_t& error);

    DIR* stream;
    int descriptor;
    FolderEntry entry;
    std::u16string name;
    std::int32_t error = 0;
};

namespace {

// All but the bits that lend rights: setuid, setgid, sticky.
constexpr mode_t kFileMode = 0777;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kFolderMode = 0777;
constexpr std::string_view kLinkExtension = ".lnk";

bool isSpecialName(std::string_view name) {
    return name == "." || name == "..";
}

// The name of an entry as the system spells it. A name is a single component: nothing that leads elsewhere is one, and
// two characters like "a:" are a name here, though they are a drive as a path.
std::optional<std::string> nativeName(std::u16string_view name) {
    if (name.empty() || name.find_first_of(u"\\/") != name.npos) {
        return std::nullopt;
    }
    std::optional<std::string> native = toNativePath(u"\\" + std::u16string(name));
    if (native) {
        native->erase(0, 1);
        if (isSpecialName(*native)) {
            return std::nullopt;
        }
    }
    return native;
}

// Most names are ASCII, which takes no conversion. False for a name without a path form.
bool assignName(std::u16string& target, const char* native) {
    const std::size_t length = std::strlen(native);
    target.resize(length);
    std::size_t i = 0;
    for (; i < length && static_cast<unsigned char>(native[i]) < 0x80 && native[i] != '\\'; ++i) {
        target[i] = static_cast<char16_t>(native[i]);
    }
    if (i == length) {
        return true;
    }
    std::optional<std::u16string> converted = fromNativePath(std::string_view(native, length));
    if (!converted) {
        return false;
    }
    target = std::move(*converted);
    return true;
}

bool done(int result, std::int32_t& error) {
    error = result == 0 ? 0 : errno;
    return result == 0;
}

// For a name that has no form of the system: nothing is called so.
bool noSuchName(std::int32_t& error) {
    error = ENOENT;
    return false;
}

// One status call per entry, relative to the folder. Only a link whose own size is asked for, or that leads nowhere,
// and file systems that don't tell what is a link take a second one.
bool readStatus(int folder, const dirent& item, bool showLinks, struct stat& status, bool& isLink) {
    isLink = item.d_type == DT_LNK;
    if (item.d_type == DT_UNKNOWN) {
        if (fstatat(folder, item.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return false;
        }
        isLink = S_ISLNK(status.st_mode);
        if (!isLink) {
            return true;
        }
    }
    const bool follow = isLink && !showLinks;
    if (fstatat(folder, item.d_name, &status, follow ? 0 : AT_SYMLINK_NOFOLLOW) == 0) {
        return true;
    }
    return follow && fstatat(folder, item.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

// The first reason is kept. What has vanished since the folder was read isn't there.
void leaveOut(std::int32_t& kept, std::int32_t reason) {
    if (kept == 0 && reason != ENOENT) {
        kept = reason;
    }
}

} // namespace

bool hasLinkExtension(std::u16string_view name) {
    if (name.size() < kLinkExtension.size()) {
        return false;
    }
    name.remove_prefix(name.size() - kLinkExtension.size());
    return std::equal(name.begin(), name.end(), kLinkExtension.begin(), [](char16_t c, char expected) {
        const char16_t lower = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
        return lower == static_cast<char16_t>(expected);
    });
}

Folder::Folder() = default;
Folder::Folder(std::unique_ptr<State> state) : state_(std::move(state)) {}
Folder::Folder(Folder&& other) noexcept = default;
Folder& Folder::operator=(Folder&& other) noexcept = default;
Folder::~Folder() = default;

Folder Folder::State::adopt(int descriptor, std::int32_t& error) {
    error = descriptor == -1 ? errno : 0;
    if (descriptor == -1) {
        return Folder();
    }
    DIR* stream = fdopendir(descriptor);
    if (stream == nullptr) {
        error = errno;
        ::close(descriptor);
        return Folder();
    }
    return Folder(std::make_unique<State>(stream));
}

Folder Folder::open(std::u16string_view path, std::int32_t& error) {
    const auto native = toNativePath(path);
    if (!native) {
        noSuchName(error);
        return Folder();
    }
    return State::adopt(::open(native->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), error);
}

const FolderEntry* Folder::next() {
    if (!isOpen()) {
        return nullptr;
    }
    for (;;) {
        errno = 0;
        const dirent* item = readdir(state_->stream);
        if (item == nullptr) {
            leaveOut(state_->error, errno);
            return nullptr;
        }
        if (isSpecialName(item->d_name)) {
            continue;
        }
        if (!assignName(state_->name, item->d_name)) {
            leaveOut(state_->error, EILSEQ);
            continue;
        }
        struct stat status;
        FolderEntry& entry = state_->entry;
        if (!readStatus(state_->descriptor, *item, hasLinkExtension(state_->name), status, entry.isLink)) {
            leaveOut(state_->error, errno);
            continue;
        }
        entry.name = state_->name;
        entry.isFolder = S_ISDIR(status.st_mode);
        entry.size = entry.isFolder ? 0 : status.st_size;
        entry.modified = status.st_mtim.tv_sec;
        entry.isHidden = item->d_name[0] == '.';
        return &entry;
    }
}

std::int32_t Folder::error() const {
    return isOpen() ? state_->error : 0;
}

void Folder::rewind() {
    if (isOpen()) {
        rewinddir(state_->stream);
        state_->error = 0;
    }
}

Folder Folder::openFolder(std::u16string_view name, std::int32_t& error) const {
    const auto native = nativeName(name);
    if (!native) {
        noSuchName(error);
        return Folder();
    }
    const int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    return State::adopt(::openat(state_->descriptor, native->c_str(), flags), error);
}

Folder Folder::makeFolder(std::u16string_view name, std::int32_t& error) const {
    const auto native = nativeName(name);
    if (!native) {
        noSuchName(error);
        return Folder();
    }
    if (!done(::mkdirat(state_->descriptor, native->c_str(), kFolderMode), error)) {
        return Folder();
    }
    Folder folder = openFolder(name, error);
    if (!folder.isOpen()) {
        ::unlinkat(state_->descriptor, native->c_str(), AT_REMOVEDIR);
    }
    return folder;
}

File Folder::openFile(std::u16string_view name, std::int32_t& error) const {
    const auto native = nativeName(name);
    if (!native) {
        noSuchName(error);
        return File();
    }
    // Opening a pipe that somebody left here must not wait for its other end.
    const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    const int descriptor = ::openat(state_->descriptor, native->c_str(), flags);
    error = descriptor == -1 ? errno : 0;
    if (descriptor == -1) {
        return File();
    }
    File file = File::adopt(descriptor);
    struct stat status;
    if (::fstat(descriptor, &status) != 0) {
        error = errno;
        return File();
    }
    if (!S_ISREG(status.st_mode)) {
        error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return File();
    }
    return file;
}

File Folder::makeFile(std::u16string_view name, const File& like, std::int32_t& error) const {
    const auto native = nativeName(name);
    if (!native) {
        noSuchName(error);
        return File();
    }
    mode_t mode = kNewFileMode;
    if (like.isOpen()) {
        struct stat status;
        if (!done(::fstat(static_cast<int>(like.nativeHandle()), &status), error)) {
            return File();
        }
        mode = status.st_mode & kFileMode;
    }
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const int descriptor = ::openat(state_->descriptor, native->c_str(), flags, mode);
    error = descriptor == -1 ? errno : 0;
    return descriptor == -1 ? File() : File::adopt(descriptor);
}

File Folder::makeUnfinishedFile(const File& like, std::u16string& name, std::int32_t& error) const {
    // What stands under such a name already was left by a process that had this one's number and was killed.
    File file;
    do {
        const std::string native = unfinishedName();
        name.assign(native.begin(), native.end());
        file = makeFile(name, like, error);
    } while (error == EEXIST);
    return file;
}

bool Folder::copyLink(std::u16string_view name, const Folder& from, std::int32_t& error) const {
    const auto native = nativeName(name);
    if (!native) {
        return noSuchName(error);
    }
    char target[PATH_MAX + 1];
    const ssize_t length = ::readlinkat(from.state_->descriptor, native->c_str(), target, PATH_MAX);
    if (length == -1) {
        error = errno;
        return false;
    }
    target[length] = '\0';
    return done(::symlinkat(target, state_->descriptor, native->c_str()), error);
}

bool Folder::deleteFile(std::u16string_view name, std::int32_t& error) const {
    const auto native = nativeName(name);
    return native ? done(::unlinkat(state_->descriptor, native->c_str(), 0), error) : noSuchName(error);
}

bool Folder::deleteFolder(std::u16string_view name, std::int32_t& error) const {
    const auto native = nativeName(name);
    return native ? done(::unlinkat(state_->descriptor, native->c_str(), AT_REMOVEDIR), error) : noSuchName(error);
}

bool Folder::replaceFile(std::u16string_view file, std::u16string_view name, std::int32_t& error) const {
    const auto nativeFile = nativeName(file);
    const auto native = nativeName(name);
    if (!nativeFile || !native) {
        return noSuchName(error);
    }
    struct stat status;
    const bool there = done(::fstatat(state_->descriptor, native->c_str(), &status, AT_SYMLINK_NOFOLLOW), error);
    if (!there && error != ENOENT) {
        return false;
    }
    if (there && S_ISREG(status.st_mode) &&
        !done(::fchmodat(state_->descriptor, nativeFile->c_str(), status.st_mode & 07777, 0), error)) {
        return false;
    }
    return done(::renameat(state_->descriptor, nativeFile->c_str(), state_->descriptor, native->c_str()), error);
}

} // namespace tessera::platform
