#include "platform/NamedEvent.h"

#include "platform/TemporaryFolder.h"
#include "platform/linux/Futex.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>

namespace tessera::platform {

namespace {

constexpr std::uint32_t kSet = 1;
constexpr std::uint32_t kOneSleeper = 2;
constexpr std::size_t kSize = sizeof(std::uint32_t);
constexpr std::size_t kLongestName = 255;

std::uint32_t* wordOf(void* event) {
    return static_cast<std::uint32_t*>(event);
}

bool canNameFile(const char* name) {
    return std::strlen(name) <= kLongestName && std::strchr(name, '/') == nullptr && std::strcmp(name, ".") != 0 &&
           std::strcmp(name, "..") != 0;
}

// Where events lie, below the temporary folder.
constexpr const char* kFolders[] = {"/Marlgrove", "/Events"};

bool makeFolders(std::string folder) {
    for (const char* part : kFolders) {
        folder += part;
        if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
            return false;
        }
    }
    return true;
}

bool lock(int file, int operation) {
    while (flock(file, operation) != 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

// The first holder finds whatever its predecessors left. It writes over the word rather than cutting the file to
// nothing, so that there is never a moment at which somebody could map an empty file.
bool clearWord(int file) {
    const std::uint32_t unset = 0;
    return pwrite(file, &unset, kSize, 0) == static_cast<ssize_t>(kSize) && ftruncate(file, kSize) == 0;
}

bool joinHolders(int file) {
    if (lock(file, LOCK_EX | LOCK_NB)) {
        if (!clearWord(file)) {
            return false;
        }
    } else if (errno != EWOULDBLOCK) {
        return false;
    }
    // Going over from one lock to the other lets go for a moment. Another opener may get the exclusive one then, and
    // clear the word once more: nobody can have set it yet, since whoever opens holds the shared lock before it does.
    return lock(file, LOCK_SH);
}

bool hasTheWord(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size == static_cast<off_t>(kSize);
}

int openFile(const char* name) {
    const std::string base = temporaryFolder();
    if (base.empty()) {
        return -1;
    }
    const std::string path = base + kFolders[0] + kFolders[1] + "/" + name;
    const auto open = [&path] {
        return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    };
    int file = open();
    if (file == -1 && errno == ENOENT && makeFolders(base)) {
        file = open();
    }
    if (file == -1) {
        return -1;
    }
    if (!joinHolders(file) || !hasTheWord(file)) {
        ::close(file);
        return -1;
    }
    return file;
}

std::uint32_t* mapWord(int file) {
    const int flags = file == -1 ? MAP_SHARED | MAP_ANONYMOUS : MAP_SHARED;
    void* memory = mmap(nullptr, kSize, PROT_READ | PROT_WRITE, flags, file, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<std::uint32_t*>(memory);
}

// Somebody who writes the word as a whole may have wiped the count.
std::uint32_t withoutSleepers(std::uint32_t word, std::uint32_t sleepers) {
    return word - std::min(sleepers, word & ~kSet);
}

// Clears the flag if it's set, and takes the sleeper that this caller is off the count with it.
bool takeIfSet(std::atomic_ref<std::uint32_t> word, std::uint32_t sleepers) {
    std::uint32_t seen = word.load();
    while ((seen & kSet) != 0) {
        if (word.compare_exchange_weak(seen, withoutSleepers(seen, sleepers) & ~kSet)) {
            return true;
        }
    }
    return false;
}

// Takes the sleeper off in any case, and the flag if it's set: whether it was.
bool giveUp(std::atomic_ref<std::uint32_t> word) {
    std::uint32_t seen = word.load();
    while (!word.compare_exchange_weak(seen, withoutSleepers(seen, kOneSleeper) & ~kSet)) {
    }
    return (seen & kSet) != 0;
}

} // namespace

NamedEvent NamedEvent::open(const char* name, Reset) {
    NamedEvent event;
    if (name != nullptr && *name != '\0') {
        event.detail_ = canNameFile(name) ? openFile(name) : kNoDetail;
        if (event.detail_ == kNoDetail) {
            return event;
        }
    }
    event.event_ = mapWord(event.detail_);
    return event;
}

bool NamedEvent::signal() {
    if (event_ == nullptr) {
        return false;
    }
    const std::uint32_t before = std::atomic_ref(*wordOf(event_)).fetch_or(kSet);
    if (before >= kOneSleeper) {
        // All of them, though only one will find the flag: the one that is woken may be killed before it looks.
        futexWake(wordOf(event_), INT_MAX, FutexScope::shared);
    }
    return true;
}

NamedEvent::WaitResult NamedEvent::wait(std::uint32_t timeoutMs) {
    if (event_ == nullptr) {
        return WaitResult::failed;
    }
    std::atomic_ref word(*wordOf(event_));
    if (takeIfSet(word, 0)) {
        return WaitResult::signalled;
    }
    if (timeoutMs == 0) {
        return WaitResult::timedOut;
    }
    const Deadline deadline(timeoutMs);
    std::uint32_t seen = word.fetch_add(kOneSleeper) + kOneSleeper;
    while (!takeIfSet(word, kOneSleeper)) {
        // Should the flag have been set and taken since the last look, this comes back at once.
        if (!futexWait(wordOf(event_), seen & ~kSet, deadline, FutexScope::shared)) {
            return giveUp(word) ? WaitResult::signalled : WaitResult::timedOut;
        }
        seen = word.load();
    }
    return WaitResult::signalled;
}

void NamedEvent::close() {
    if (event_ != nullptr) {
        munmap(std::exchange(event_, nullptr), kSize);
    }
    if (detail_ != kNoDetail) {
        ::close(std::exchange(detail_, kNoDetail));
    }
}

void NamedEvent::abandon() {
    event_ = nullptr;
    detail_ = kNoDetail;
}

} // namespace tessera::platform
