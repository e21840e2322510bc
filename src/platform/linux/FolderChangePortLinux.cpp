#include "platform/FolderChangePort.h"

#include "platform/linux/InotifyTree.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace tessera::platform {

namespace {

// In the queue of folders: the eventfd by which this process tells itself something.
constexpr FolderChangePort::Key kPostKey = 0;
// Among what is told: stop. Everything else is the key of a folder that has been closed.
constexpr FolderChangePort::Key kStopPost = 0;

} // namespace

struct FolderChangePort::State {
    // The eventfd counts as a semaphore does: one wait() per post.
    State() : queue(epoll_create1(EPOLL_CLOEXEC)), posted(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE)) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        for (const int file : {queue, posted}) {
            if (file != -1) {
                ::close(file);
            }
        }
    }

    bool add(int file, Key key) const {
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.u64 = key;
        return epoll_ctl(queue, EPOLL_CTL_ADD, file, &event) == 0;
    }
    void post(Key what) {
        {
            const std::lock_guard guard(guardPosts);
            posts.push_back(what);
        }
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t written = ::write(posted, &one, sizeof one);
    }

    int queue;
    int posted;
    std::unordered_map<Key, std::unique_ptr<InotifyTree>> trees; // under the caller's lock
    std::mutex guardPosts;
    std::deque<Key> posts; // under guardPosts
};

FolderChangePort::FolderChangePort(std::unique_ptr<State> state) : state_(std::move(state)) {}
FolderChangePort::~FolderChangePort() = default;

std::unique_ptr<FolderChangePort> FolderChangePort::create() {
    auto state = std::make_unique<State>();
    if (state->queue == -1 || state->posted == -1 || !state->add(state->posted, kPostKey)) {
        return nullptr;
    }
    return std::unique_ptr<FolderChangePort>(new FolderChangePort(std::move(state)));
}

bool FolderChangePort::open(Key key, const std::string& path) {
    auto tree = InotifyTree::open(path);
    if (tree == nullptr || !state_->add(tree->descriptor(), key)) {
        return false;
    }
    state_->trees[key] = std::move(tree);
    return true;
}

void FolderChangePort::close(Key key) {
    if (state_->trees.erase(key) != 0) {
        state_->post(key);
    }
}

FolderChangePort::Event FolderChangePort::wait(Key& key) {
    epoll_event event{};
    if (epoll_wait(state_->queue, &event, 1, -1) != 1) {
        return Event::skip;
    }
    key = event.data.u64;
    if (key != kPostKey) {
        return Event::folder;
    }
    std::uint64_t one = 0;
    if (::read(state_->posted, &one, sizeof one) != sizeof one) {
        return Event::skip;
    }
    const std::lock_guard guard(state_->guardPosts);
    key = state_->posts.front();
    state_->posts.pop_front();
    return key == kStopPost ? Event::stop : Event::folder;
}

FolderChangePort::Read FolderChangePort::take(Key key, std::vector<FolderChange>& changes) {
    changes.clear();
    const auto found = state_->trees.find(key);
    if (found == state_->trees.end()) {
        return Read::finished;
    }
    const bool hasChanges = found->second->read(changes);
    if (found->second->isGone()) {
        state_->trees.erase(found);
        if (hasChanges) {
            // First what was told before the folder went, and then, by a wait of its own, its end.
            state_->post(key);
            return Read::data;
        }
        return Read::finished;
    }
    return hasChanges ? Read::data : Read::again;
}

// The queue tells of a folder for as long as something waits there: there is nothing to start.
void FolderChangePort::read(Key) {}

void FolderChangePort::postStop() {
    state_->post(kStopPost);
}

} // namespace tessera::platform
