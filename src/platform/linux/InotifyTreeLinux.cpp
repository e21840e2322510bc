#include "platform/linux/InotifyTree.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tessera::platform {

namespace {

// What is deleted, but still open somewhere, tells no more: nothing follows the removal of a file.
constexpr std::uint32_t kWatched =
    IN_CREATE | IN_DELETE | IN_MODIFY | IN_ATTRIB | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR | IN_EXCL_UNLINK;
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;
constexpr std::size_t kLongestEvent = sizeof(inotify_event) + NAME_MAX + 1;
constexpr std::size_t kFirstBuffer = 64 * 1024;
// One delivery holds about so many bytes of events; more only while half of a rename is missing.
constexpr std::size_t kSoftLimit = 256 * 1024;
constexpr std::size_t kHardLimit = 8 * 1024 * 1024;
constexpr auto kHalfWait = std::chrono::milliseconds(20);

// A descriptor for the length of a scope.
class OpenFile {
public:
    explicit OpenFile(int file) : file_(file) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (file_ != -1) {
            close(file_);
        }
    }

    int get() const { return file_; }
    int release() { return std::exchange(file_, -1); }

private:
    int file_;
};

// Takes the descriptor over.
class FolderEntries {
public:
    explicit FolderEntries(int file) : stream_(fdopendir(file)) {
        if (stream_ == nullptr) {
            close(file);
        }
    }
    FolderEntries(const FolderEntries&) = delete;
    FolderEntries& operator=(const FolderEntries&) = delete;
    ~FolderEntries() {
        if (stream_ != nullptr) {
            closedir(stream_);
        }
    }

    const dirent* next() const {
        for (const dirent* entry = stream_ == nullptr ? nullptr : readdir(stream_); entry != nullptr;
             entry = readdir(stream_)) {
            const std::string_view name(entry->d_name);
            if (name != "." && name != "..") {
                return entry;
            }
        }
        return nullptr;
    }
    bool isFolder(const dirent& entry) const {
        if (entry.d_type != DT_UNKNOWN) {
            return entry.d_type == DT_DIR;
        }
        struct stat status;
        return fstatat(dirfd(stream_), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
    }
    int file() const { return dirfd(stream_); }

private:
    DIR* stream_;
};

std::string_view nameOf(const inotify_event& event) {
    return event.len == 0 ? std::string_view() : std::string_view(event.name);
}

} // namespace

std::unique_ptr<InotifyTree> InotifyTree::open(const std::string& path) {
    // Sub-folders are watched by their paths for as long as the tree lives, wherever the program goes meanwhile.
    std::error_code error;
    const std::string absolute = std::filesystem::absolute(path, error).string();
    const int file = error ? -1 : inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (file == -1) {
        return nullptr;
    }
    std::unique_ptr<InotifyTree> tree(new InotifyTree(file, absolute));
    const OpenFile folder(::open(absolute.c_str(), kOpenFolder));
    tree->root_ = folder.get() == -1 ? -1 : tree->watchNumber(folder.get());
    if (tree->root_ == -1) {
        return nullptr;
    }
    tree->buffer_.resize(kFirstBuffer);
    auto root = std::make_unique<Node>();
    root->watch = tree->root_;
    root->generation = tree->generation_;
    Node& first = *root;
    tree->nodes_.emplace(first.watch, std::move(root));
    tree->listAll({{&first, Telling::quiet}});
    return tree;
}

InotifyTree::~InotifyTree() {
    // All watches go with it.
    close(file_);
}

bool InotifyTree::read(std::vector<FolderChange>& changes) {
    changes_ = &changes;
    const std::size_t before = changes.size();
    if (readQueue()) {
        for (std::size_t at = 0; at < used_;) {
            const inotify_event& event = eventAt(at);
            process(event);
            at += sizeof(inotify_event) + event.len;
        }
    }
    finishPending();
    changes_ = nullptr;
    return changes.size() != before;
}

// Reads what there is, up to the limit, and on for as long as half of a rename is missing. False when there is nothing.
bool InotifyTree::readQueue() {
    used_ = 0;
    movedFrom_.clear();
    movedTo_.clear();
    for (;;) {
        const ssize_t count = ::read(file_, buffer_.data() + used_, buffer_.size() - used_);
        if (count > 0) {
            const std::size_t from = used_;
            const bool emptied = buffer_.size() - used_ - static_cast<std::size_t>(count) >= kLongestEvent;
            used_ += static_cast<std::size_t>(count);
            total_ += static_cast<std::uint64_t>(count);
            noteMoves(from);
            if (movedFrom_.empty() && (emptied || used_ >= kSoftLimit)) {
                break;
            }
        } else if (count == -1 && errno == EINTR) {
            continue;
        } else if (movedFrom_.empty() || errno != EAGAIN) {
            break;
        }
        if (!movedFrom_.empty() && !waitForMissingHalf()) {
            break;
        }
        if (buffer_.size() - used_ < kLongestEvent) {
            if (used_ >= kHardLimit) {
                break;
            }
            buffer_.resize(buffer_.size() * 2);
        }
    }
    std::sort(movedTo_.begin(), movedTo_.end(), [](const MovedTo& a, const MovedTo& b) { return a.cookie < b.cookie; });
    return used_ != 0;
}

void InotifyTree::noteMoves(std::size_t from) {
    const bool hadNone = movedFrom_.empty();
    for (std::size_t at = from; at < used_;) {
        const inotify_event& event = eventAt(at);
        if ((event.mask & IN_MOVED_FROM) != 0) {
            movedFrom_.push_back(event.cookie);
        } else if ((event.mask & IN_MOVED_TO) != 0) {
            movedTo_.push_back({event.cookie, at, false});
            // The first half came a moment ago: it is the last one or near it.
            const auto half = std::find(movedFrom_.rbegin(), movedFrom_.rend(), event.cookie);
            if (half != movedFrom_.rend()) {
                movedFrom_.erase(std::next(half).base());
            }
        }
        at += sizeof(inotify_event) + event.len;
    }
    if (hadNone && !movedFrom_.empty()) {
        halfDeadline_ = std::chrono::steady_clock::now() + kHalfWait;
    }
}

// The system tells the two halves of a rename one after the other, but other changes, or the end of what has been told
// so far, may come between them. True: there may be more to read.
bool InotifyTree::waitForMissingHalf() {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(halfDeadline_ - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
        return false;
    }
    pollfd asked{file_, POLLIN, 0};
    return poll(&asked, 1, static_cast<int>(left.count())) != 0;
}

const inotify_event& InotifyTree::eventAt(std::size_t offset) const {
    // The system pads the names: every event stands aligned in the aligned buffer.
    return *static_cast<const inotify_event*>(static_cast<const void*>(buffer_.data() + offset));
}

InotifyTree::MovedTo* InotifyTree::findMovedTo(std::uint32_t cookie) {
    const auto found = std::lower_bound(movedTo_.begin(), movedTo_.end(), cookie,
                                        [](const MovedTo& entry, std::uint32_t key) { return entry.cookie < key; });
    return found == movedTo_.end() || found->cookie != cookie ? nullptr : &*found;
}

void InotifyTree::process(const inotify_event& event) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        overflowed();
        return;
    }
    if ((event.mask & IN_IGNORED) != 0) {
        forget(event.wd);
        return;
    }
    Node* node = find(event.wd);
    const std::string_view name = nameOf(event);
    if (node == nullptr || name.empty() || !isInTree(*node)) {
        return;
    }
    const bool isFolder = (event.mask & IN_ISDIR) != 0;
    if ((event.mask & IN_CREATE) != 0) {
        tell(*node, name, FolderChange::kAdded);
        if (isFolder) {
            attach(*node, name, Telling::loud);
        }
    } else if ((event.mask & IN_DELETE) != 0) {
        tellFirst(*node, name);
        tell(*node, name, FolderChange::kRemoved);
        if (isFolder) {
            unlink(*node, name);
        }
    } else if ((event.mask & IN_MOVED_FROM) != 0) {
        movedFrom(*node, name, event);
    } else if ((event.mask & IN_MOVED_TO) != 0) {
        const MovedTo* half = findMovedTo(event.cookie);
        if (half == nullptr || !half->taken) {
            tell(*node, name, FolderChange::kAdded);
            if (isFolder) {
                attach(*node, name, Telling::quiet);
            }
        }
    } else if ((event.mask & (IN_MODIFY | IN_ATTRIB)) != 0) {
        tellFirst(*node, name);
        tell(*node, name, FolderChange::kModified);
    }
}

void InotifyTree::movedFrom(Node& node, std::string_view name, const inotify_event& event) {
    const bool isFolder = (event.mask & IN_ISDIR) != 0;
    tellFirst(node, name);
    MovedTo* half = findMovedTo(event.cookie);
    Node* target = half == nullptr ? nullptr : find(eventAt(half->offset).wd);
    if (target == nullptr || !isInTree(*target)) {
        tell(node, name, FolderChange::kRemoved);
        if (isFolder) {
            unlink(node, name);
        }
        return;
    }
    half->taken = true;
    const std::string_view newName = nameOf(eventAt(half->offset));
    tellFolder(*target);
    tell(node, name, FolderChange::kRenamedFrom);
    tell(*target, newName, FolderChange::kRenamedTo);
    if (isFolder) {
        relocate(node, name, *target, newName);
    }
}

void InotifyTree::relocate(Node& from, std::string_view oldName, Node& to, std::string_view newName) {
    const auto missed = from.missed.find(oldName);
    const Telling telling = missed == from.missed.end() ? Telling::quiet : missed->second.telling;
    if (missed != from.missed.end()) {
        from.missed.erase(missed);
    }
    const auto found = from.folders.find(oldName);
    if (found == from.folders.end()) {
        attach(to, newName, telling);
        return;
    }
    Node& folder = *found->second;
    if (isWithin(to, folder)) {
        rebuild_ = true;
        return;
    }
    link(folder, to, newName);
    // Is it really that one?
    const OpenFile above(openFolder(to));
    if (above.get() == -1) {
        unsure_ = true;
        suspects_.push_back(folder.watch);
        miss(to, newName, {Telling::loud, true});
        return;
    }
    const OpenFile there(openIn(above.get(), newName));
    if (there.get() == -1) {
        unsure_ = true;
        suspects_.push_back(folder.watch); // gone from there; a later event should tell where to
    } else if (watchNumber(there.get()) != folder.watch) {
        unsure_ = true;
        unlink(folder);
        attach(to, newName, Telling::loud);
    }
}

void InotifyTree::overflowed() {
    changes_->push_back({FolderChange::kOther, {}});
    rebuild_ = true;
}

// What had to wait until the queue was read up to a certain point.
void InotifyTree::finishPending() {
    checkSuspects();
    if (rebuild_) {
        rebuild();
    }
    if (!retry_.empty()) {
        retryMissed();
    }
    const auto isDue = [this](const Pending& pending) { return pending.boundary <= total_; };
    std::vector<Pending> due;
    const auto takeDue = [&](std::vector<Pending>& from) {
        due.clear();
        std::copy_if(from.begin(), from.end(), std::back_inserter(due), isDue);
        std::erase_if(from, isDue);
    };
    takeDue(arrivals_);
    for (const Pending& pending : due) {
        Node* node = find(pending.watch);
        if (node == nullptr || node->arrival == nullptr) {
            continue;
        }
        if (isInTree(*node)) {
            for (const std::string& name : node->arrival->found) {
                tellFirst(*node, name);
            }
        }
        node->arrival.reset();
    }
    takeDue(homeless_);
    for (const Pending& pending : due) {
        const Node* node = find(pending.watch);
        // One that has come to stand in another one without a place goes with that.
        if (node != nullptr && node->parent == nullptr && pending.watch != root_) {
            drop(pending.watch);
        }
    }
    if (unsure_ && queueEnd() == total_) {
        verify();
    }
}

// When all has been read, every folder should stand where we believe that it does. If one doesn't, events have been
// taken for those of another folder.
void InotifyTree::checkSuspects() {
    if (suspects_.empty() || queueEnd() != total_) {
        return;
    }
    for (const int watch : suspects_) {
        const Node* node = find(watch);
        if (node == nullptr || !isInTree(*node)) {
            continue;
        }
        const OpenFile folder(openFolder(*node));
        if (folder.get() == -1 && !rebuild_) {
            changes_->push_back({FolderChange::kOther, {}});
            rebuild_ = true;
        }
    }
    suspects_.clear();
}

// The last resort, once all events have been read.
void InotifyTree::verify() {
    const bool same = isAsOnDisk();
    if (queueEnd() != total_) {
        return; // it went on meanwhile; the comparison tells nothing
    }
    unsure_ = false;
    if (!same) {
        changes_->push_back({FolderChange::kOther, {}});
        rebuild();
    }
}

bool InotifyTree::isAsOnDisk() const {
    const auto root = nodes_.find(root_);
    std::vector<const Node*> left;
    if (root != nodes_.end()) {
        left.push_back(root->second.get());
    }
    while (!left.empty()) {
        const Node* const node = left.back();
        left.pop_back();
        if (!isAsOnDisk(*node)) {
            return false;
        }
        for (const auto& [name, folder] : node->folders) {
            left.push_back(folder);
        }
    }
    return true;
}

// Whether the sub-folders are just those that we know; that each is the right one shows when it is opened in its turn.
bool InotifyTree::isAsOnDisk(const Node& node) const {
    const int file = openFolder(node);
    if (file == -1) {
        return false;
    }
    std::size_t count = 0;
    const FolderEntries entries(file);
    while (const dirent* entry = entries.next()) {
        if (entries.isFolder(*entry)) {
            if (node.folders.find(entry->d_name) == node.folders.end()) {
                return false;
            }
            ++count;
        }
    }
    return count == node.folders.size();
}

// Sets every watch again, by what is on disk now. Folders that are still there keep theirs.
void InotifyTree::rebuild() {
    rebuild_ = false;
    ++generation_;
    arrivals_.clear();
    homeless_.clear();
    retry_.clear();
    suspects_.clear();
    for (auto& [watch, node] : nodes_) {
        node->parent = nullptr;
        node->folders.clear();
        node->missed.clear();
        node->unlisted.reset();
        node->arrival.reset();
    }
    if (Node* root = find(root_)) {
        root->generation = generation_;
        listAll({{root, Telling::quiet}});
    }
    std::vector<int> stale;
    for (const auto& [watch, node] : nodes_) {
        if (node->generation != generation_) {
            stale.push_back(watch);
        }
    }
    for (const int watch : stale) {
        drop(watch);
    }
}

// Tries again what had moved on. What is still to be read will make a further try; when nothing is, what is found now
// may be what the next one waited for.
void InotifyTree::retryMissed() {
    std::size_t rounds = retry_.size();
    do {
        std::vector<int> watches;
        watches.swap(retry_);
        std::sort(watches.begin(), watches.end());
        watches.erase(std::unique(watches.begin(), watches.end()), watches.end());
        for (const int watch : watches) {
            retryMissed(watch);
        }
    } while (!retry_.empty() && rounds-- != 0 && queueEnd() == total_);
}

void InotifyTree::retryMissed(int watch) {
    Node* node = find(watch);
    if (node == nullptr || !isInTree(*node)) {
        return; // listed whole should it come back
    }
    if (node->unlisted) {
        listAll({{node, *node->unlisted}});
    }
    std::vector<std::pair<std::string, Telling>> names;
    for (const auto& [name, missed] : node->missed) {
        if (missed.retry) {
            names.emplace_back(name, missed.telling);
        }
    }
    for (const auto& [name, telling] : names) {
        attach(*node, name, telling);
    }
}

void InotifyTree::miss(Node& parent, std::string_view name, Missed missed) {
    parent.missed.insert_or_assign(std::string(name), missed);
    if (missed.retry) {
        retry_.push_back(parent.watch);
    }
}

int InotifyTree::watchNumber(int folder) const {
    // By descriptor, so that it is this folder and no other. A watch that is there already gets its mask added to: one
    // that is set anew is empty for an instant, and what happens in it would never be told.
    return inotify_add_watch(file_, ("/proc/self/fd/" + std::to_string(folder)).c_str(), kWatched | IN_MASK_ADD);
}

// -1 when something else, or nothing, has its path by now.
int InotifyTree::openFolder(const Node& node) const {
    const bool isRoot = node.parent == nullptr;
    const std::string path = isRoot ? path_ : path_ + "/" + relativePath(*node.parent, node.name);
    OpenFile folder(::open(path.c_str(), kOpenFolder | (isRoot ? 0 : O_NOFOLLOW)));
    if (folder.get() == -1) {
        return -1;
    }
    const int watch = watchNumber(folder.get());
    if (watch == node.watch) {
        return folder.release();
    }
    if (watch != -1 && nodes_.find(watch) == nodes_.end()) {
        inotify_rm_watch(file_, watch); // whatever it is: it gets its watch when its own event is read
    }
    return -1;
}

int InotifyTree::openIn(int folder, std::string_view name) const {
    return ::openat(folder, std::string(name).c_str(), kOpenFolder | O_NOFOLLOW);
}

// The folder of that name has come up: watch it and all below it.
void InotifyTree::attach(Node& parent, std::string_view name, Telling telling) {
    const OpenFile above(openFolder(parent));
    if (above.get() == -1) {
        unsure_ = true;
        miss(parent, name, {telling, true});
        return;
    }
    std::vector<ToList> folders;
    place(above.get(), parent, name, telling, folders);
    listAll(std::move(folders));
}

// Finds out by its watch which folder has the name now, and puts it there, to be listed unless it is known with all
// that it holds. One that has had a watch before is listed for its sub-folders alone: its own events have told the
// rest.
void InotifyTree::place(int folder, Node& parent, std::string_view name, Telling telling,
                        std::vector<ToList>& further) {
    const OpenFile opened(openIn(folder, name));
    const int watch = opened.get() == -1 ? -1 : watchNumber(opened.get());
    if (watch == -1) {
        // Gone already, which its own event will tell, or not for us to see.
        miss(parent, name, {telling, false});
        return;
    }
    Node* node = find(watch);
    const bool isNew = node == nullptr;
    if (isNew) {
        auto made = std::make_unique<Node>();
        made->watch = watch;
        node = made.get();
        nodes_.emplace(watch, std::move(made));
    }
    if (node->parent != &parent || node->name != name) {
        if (isWithin(parent, *node)) {
            // A folder within itself: what we believe doesn't fit any more what is.
            rebuild_ = rebuild_ || watch != root_;
            return;
        }
        if (node->parent != nullptr) {
            // It has moved here since, or never was what we took it for: then nobody has seen yet what was there.
            unsure_ = true;
            miss(*node->parent, node->name, {Telling::loud, false});
        }
        link(*node, parent, name);
    }
    if (node->generation != generation_) {
        node->generation = generation_;
        further.push_back({node, isNew ? telling : node->unlisted.value_or(Telling::quiet)});
    }
}

void InotifyTree::list(Node& node, Telling telling, std::vector<ToList>& further) {
    if (telling == Telling::loud && node.arrival == nullptr) {
        // From now on, also while the listing has to wait: its watch may tell of what the list then shows.
        node.arrival = std::make_unique<Arrival>();
    }
    const int file = openFolder(node);
    if (file == -1) {
        unsure_ = true;
        node.unlisted = telling;
        retry_.push_back(node.watch);
        return;
    }
    node.unlisted.reset();
    Arrival* const arrival = telling == Telling::loud ? node.arrival.get() : nullptr;
    const FolderEntries entries(file);
    while (const dirent* entry = entries.next()) {
        if (arrival != nullptr) {
            arrival->found.emplace_back(entry->d_name);
        }
        if (entries.isFolder(*entry)) {
            place(entries.file(), node, entry->d_name, telling, further);
        }
    }
    if (arrival != nullptr) {
        arrivals_.push_back({node.watch, queueEnd()});
    }
}

void InotifyTree::listAll(std::vector<ToList> folders) {
    // By a list of our own: nobody says how deep the folders are.
    while (!folders.empty()) {
        const ToList next = folders.back();
        folders.pop_back();
        list(*next.node, next.telling, folders);
    }
}

void InotifyTree::link(Node& node, Node& parent, std::string_view name) {
    if (node.parent != nullptr) {
        node.parent->folders.erase(node.name);
        node.parent = nullptr;
    }
    unlink(parent, name);
    node.parent = &parent;
    node.name = name;
    parent.folders.emplace(node.name, &node);
}

void InotifyTree::unlink(Node& node) {
    if (node.parent == nullptr) {
        return;
    }
    node.parent->folders.erase(node.name);
    node.parent = nullptr;
    // Should it come back it is listed anew, with all below it: what happens in between isn't looked at.
    std::vector<Node*> below{&node};
    while (!below.empty()) {
        Node* const each = below.back();
        below.pop_back();
        each->generation = 0;
        for (const auto& [name, folder] : each->folders) {
            below.push_back(folder);
        }
    }
    homeless_.push_back({node.watch, queueEnd()});
}

void InotifyTree::unlink(Node& parent, std::string_view name) {
    if (const auto missed = parent.missed.find(name); missed != parent.missed.end()) {
        parent.missed.erase(missed);
    }
    if (const auto found = parent.folders.find(name); found != parent.folders.end()) {
        unlink(*found->second);
    }
}

// The system has let go of the watch.
void InotifyTree::forget(int watch) {
    Node* node = find(watch);
    if (node == nullptr) {
        return;
    }
    while (!node->folders.empty()) {
        unlink(*node->folders.begin()->second);
    }
    if (node->parent != nullptr) {
        node->parent->folders.erase(node->name);
    }
    nodes_.erase(watch);
}

// The other way round, for a folder without a place and all below it.
void InotifyTree::drop(int watch) {
    std::vector<int> watches{watch};
    for (std::size_t i = 0; i < watches.size(); ++i) {
        if (const Node* node = find(watches[i])) {
            for (const auto& [name, folder] : node->folders) {
                watches.push_back(folder->watch);
            }
        }
    }
    for (const int each : watches) {
        inotify_rm_watch(file_, each);
        nodes_.erase(each);
    }
}

InotifyTree::Node* InotifyTree::find(int watch) {
    const auto found = nodes_.find(watch);
    return found == nodes_.end() ? nullptr : found->second.get();
}

bool InotifyTree::isInTree(const Node& node) const {
    const Node* top = &node;
    while (top->parent != nullptr) {
        top = top->parent;
    }
    return top->watch == root_;
}

bool InotifyTree::isWithin(const Node& node, const Node& ancestor) const {
    const Node* current = &node;
    while (current != nullptr && current != &ancestor) {
        current = current->parent;
    }
    return current != nullptr;
}

void InotifyTree::tell(Node& node, std::string_view name, std::uint32_t action) {
    tellFolder(node);
    if (node.arrival != nullptr) {
        node.arrival->told.emplace(name);
    }
    FolderChange change{action, relativePath(node, name)};
    // A write and the new time that comes with it are one change.
    if (action == FolderChange::kModified && !changes_->empty() && changes_->back() == change) {
        return;
    }
    changes_->push_back(std::move(change));
}

// An entry that was there before its folder was watched is told as added before anything else about it.
void InotifyTree::tellFirst(Node& node, std::string_view name) {
    if (node.arrival != nullptr && node.arrival->told.find(name) == node.arrival->told.end()) {
        tell(node, name, FolderChange::kAdded);
    }
}

// The same for the folder itself and those above it.
void InotifyTree::tellFolder(Node& node) {
    for (Node* folder = &node; folder->parent != nullptr; folder = folder->parent) {
        Node& parent = *folder->parent;
        if (parent.arrival != nullptr && parent.arrival->told.find(folder->name) == parent.arrival->told.end()) {
            tell(parent, folder->name, FolderChange::kAdded);
            return; // which has told those above
        }
    }
}

std::string InotifyTree::relativePath(const Node& node, std::string_view name) const {
    std::size_t length = name.size();
    for (const Node* folder = &node; folder->parent != nullptr; folder = folder->parent) {
        length += folder->name.size() + 1;
    }
    std::string path(length, '/');
    std::size_t end = length - name.size();
    name.copy(path.data() + end, name.size());
    for (const Node* folder = &node; folder->parent != nullptr; folder = folder->parent) {
        end -= folder->name.size() + 1;
        folder->name.copy(path.data() + end, folder->name.size());
    }
    return path;
}

std::uint64_t InotifyTree::queueEnd() const {
    int waiting = 0;
    ioctl(file_, FIONREAD, &waiting);
    return total_ + static_cast<std::uint64_t>(std::max(waiting, 0));
}

} // namespace tessera::platform
