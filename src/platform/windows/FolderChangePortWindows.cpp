#include "platform/FolderChangePort.h"

#include "platform/FolderRecords.h"
#include "platform/windows/SystemPath.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <utility>

namespace tessera::platform {

namespace {

constexpr DWORD kListDirectory = 1;
constexpr DWORD kShareAll = 7;
constexpr DWORD kExisting = 3;
constexpr DWORD kFolderFlags = 0x42000000;
static_assert(kFolderFlags == (FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED));
constexpr DWORD kFilter = 83;
static_assert(kFilter == (FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME | FILE_NOTIFY_CHANGE_LAST_WRITE |
                          FILE_NOTIFY_CHANGE_CREATION));
constexpr std::size_t kBufferBytes = 4096;

// The counts of bytes by which a completion is told apart from data; no change fits into a single byte.
constexpr DWORD kFinishedBytes = 0;
constexpr DWORD kStopBytes = 1;

// How long the reads of folders that have been closed may take to come back.
constexpr DWORD kDrainMs = 1000;

// One folder, its read and what the read fills. It stays where it is until the system has given the read back.
struct WatchedRead {
    explicit WatchedRead(HANDLE folder) : handle(folder) {}
    WatchedRead(const WatchedRead&) = delete;
    WatchedRead& operator=(const WatchedRead&) = delete;
    ~WatchedRead() { close(); }

    void close() {
        if (handle != INVALID_HANDLE_VALUE) {
            CloseHandle(std::exchange(handle, INVALID_HANDLE_VALUE));
        }
    }
    bool start() {
        overlapped = {};
        isPending = ReadDirectoryChangesW(handle, buffer.data(), kBufferBytes, TRUE, kFilter, nullptr, &overlapped,
                                          nullptr) != 0;
        return isPending;
    }

    HANDLE handle;
    OVERLAPPED overlapped = {};
    bool isPending = false;
    DWORD received = 0; // bytes, once it isn't pending any more
    alignas(DWORD) std::array<std::byte, kBufferBytes> buffer;
};

} // namespace

struct FolderChangePort::State {
    explicit State(HANDLE completions) : port(completions) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        for (const auto& [key, read] : reads) {
            read->close();
        }
        takeBackReads();
        CloseHandle(port);
    }

    // The system writes into a buffer until its read has come back.
    void takeBackReads() {
        while (std::erase_if(reads, [](const auto& entry) { return !entry.second->isPending; }), !reads.empty()) {
            DWORD count = 0;
            ULONG_PTR key = 0;
            OVERLAPPED* overlapped = nullptr;
            GetQueuedCompletionStatus(port, &count, &key, &overlapped, kDrainMs);
            const auto read = reads.find(key);
            if (overlapped != nullptr && read != reads.end()) {
                read->second->isPending = false;
            } else if (overlapped == nullptr && key == 0 && count == 0) {
                break; // they don't come back
            }
        }
        for (auto& [key, read] : reads) {
            static_cast<void>(read.release()); // the system may still write there
        }
    }

    HANDLE port;
    std::unordered_map<Key, std::unique_ptr<WatchedRead>> reads; // under the caller's lock
    // The last completion, from wait() to the take() behind it.
    DWORD bytes = 0;
    bool isOfRead = false;
};

FolderChangePort::FolderChangePort(std::unique_ptr<State> state) : state_(std::move(state)) {}
FolderChangePort::~FolderChangePort() = default;

std::unique_ptr<FolderChangePort> FolderChangePort::create() {
    HANDLE port = CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 0);
    if (port == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<FolderChangePort>(new FolderChangePort(std::make_unique<State>(port)));
}

bool FolderChangePort::open(Key key, const std::string& path) {
    HANDLE folder =
        CreateFileW(systemPath(path).c_str(), kListDirectory, kShareAll, nullptr, kExisting, kFolderFlags, nullptr);
    if (folder == INVALID_HANDLE_VALUE) {
        return false;
    }
    auto read = std::make_unique<WatchedRead>(folder);
    if (CreateIoCompletionPort(folder, state_->port, static_cast<ULONG_PTR>(key), 0) == nullptr || !read->start()) {
        return false;
    }
    state_->reads[key] = std::move(read);
    return true;
}

void FolderChangePort::close(Key key) {
    // The read ends with its handle, and the completion takes the rest away.
    if (const auto read = state_->reads.find(key); read != state_->reads.end()) {
        read->second->close();
    }
}

FolderChangePort::Event FolderChangePort::wait(Key& key) {
    ULONG_PTR found = 0;
    OVERLAPPED* overlapped = nullptr;
    state_->bytes = 0;
    GetQueuedCompletionStatus(state_->port, &state_->bytes, &found, &overlapped, INFINITE);
    if (state_->bytes == kStopBytes) {
        return Event::stop;
    }
    // Without a record it is the wait that failed, or a word of this port to itself; with one it is a read, failed or
    // not.
    state_->isOfRead = overlapped != nullptr;
    key = found;
    return found == 0 ? Event::skip : Event::folder;
}

FolderChangePort::Read FolderChangePort::take(Key key, std::vector<FolderChange>& changes) {
    changes.clear();
    const auto found = state_->reads.find(key);
    if (found == state_->reads.end()) {
        return Read::finished;
    }
    WatchedRead& read = *found->second;
    if (state_->isOfRead) {
        read.isPending = false;
    }
    if (state_->bytes == kFinishedBytes || read.handle == INVALID_HANDLE_VALUE) {
        state_->reads.erase(found);
        return Read::finished;
    }
    if (read.overlapped.Internal != 0) {
        return Read::again;
    }
    changes = parseFolderRecords(std::span(read.buffer).first(state_->bytes));
    return Read::data;
}

void FolderChangePort::read(Key key) {
    const auto read = state_->reads.find(key);
    if (read != state_->reads.end() && !read->second->start()) {
        // Nothing would ever be heard of the folder again, so its end is told here.
        PostQueuedCompletionStatus(state_->port, kFinishedBytes, static_cast<ULONG_PTR>(key), nullptr);
    }
}

void FolderChangePort::postStop() {
    PostQueuedCompletionStatus(state_->port, kStopBytes, 0, nullptr);
}

} // namespace tessera::platform
