// InotifyTree: one folder with all its sub-folders under watch, over an inotify instance of its own.
//
// inotify watches single folders, by inode, and tells of a folder only once it is watched; so the tree of watches is
// built by hand and runs behind what happens on disk. What keeps it right:
//
// - A folder made while we watch gets its watch and is then listed. What the list shows has been made since. It is told
//   when all that the queue held at the end of the listing has been processed, unless an event has told it by then; an
//   event about a name that nobody has told yet (it was made before the watch was set) tells it first.
// - inotify_add_watch gives the same number for the same folder. So whenever an event puts a folder in a place, the
//   watch is set there again, and the number tells which folder really has that name by now. The folder above is opened
//   and known by its number first, so nothing is looked for in a folder that has moved on.
// - What has moved on is tried again after each read: the events that tell where to are on their way. Once all events
//   have been read, a folder that couldn't be seen in its place is looked for there; if it isn't there the tree is
//   built anew.
// - Wherever a folder wasn't found where its events put it, the whole tree is compared with the disk as soon as all
//   events have been read, and built anew if they differ: renames that overtake each other leave no folder unwatched.
// - A folder that has lost its place keeps its watch until the queue has been read up to that point: a later event may
//   give it a new one.
//
// One thread at a time.
#pragma once

#include "platform/FolderChange.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct inotify_event;

namespace tessera::platform {

class InotifyTree {
public:
    // Null when the path is no folder that can be watched.
    static std::unique_ptr<InotifyTree> open(const std::string& path);
    InotifyTree(const InotifyTree&) = delete;
    InotifyTree& operator=(const InotifyTree&) = delete;
    ~InotifyTree();

    // Readable when there is something to read.
    int descriptor() const { return file_; }
    // Never waits, but for the missing half of a rename. Appends to `changes`; false when it hasn't.
    bool read(std::vector<FolderChange>& changes);
    // The folder is no more; nothing further comes.
    bool isGone() const { return nodes_.find(root_) == nodes_.end(); }

private:
    using Names = std::set<std::string, std::less<>>;
    enum class Telling { quiet, loud };

    // A sub-folder that had moved on before it could be watched.
    struct Missed {
        Telling telling;
        bool retry;
    };
    // What a folder went through that has come up under our eyes.
    struct Arrival {
        std::vector<std::string> found;
        Names told;
    };
    struct Node {
        int watch = -1;
        std::uint32_t generation = 0; // not the tree's: to be listed when it is given a place
        Node* parent = nullptr;       // null for the root, and for a folder without a place
        std::string name;
        std::map<std::string, Node*, std::less<>> folders;
        std::map<std::string, Missed, std::less<>> missed;
        std::optional<Telling> unlisted; // it had moved on before it could be listed
        std::unique_ptr<Arrival> arrival;
    };
    struct ToList {
        Node* node;
        Telling telling;
    };
    // A watch number, and how far the queue has to be read before it is dealt with.
    struct Pending {
        int watch;
        std::uint64_t boundary;
    };
    struct MovedTo {
        std::uint32_t cookie;
        std::size_t offset;
        bool taken;
    };

    InotifyTree(int file, std::string path) : file_(file), path_(std::move(path)) {}

    bool readQueue();
    void noteMoves(std::size_t from);
    bool waitForMissingHalf();
    const inotify_event& eventAt(std::size_t offset) const;
    MovedTo* findMovedTo(std::uint32_t cookie);

    void process(const inotify_event& event);
    void movedFrom(Node& node, std::string_view name, const inotify_event& event);
    void relocate(Node& from, std::string_view oldName, Node& to, std::string_view newName);
    void overflowed();
    void checkSuspects();
    void rebuild();
    void verify();
    bool isAsOnDisk() const;
    bool isAsOnDisk(const Node& node) const;
    void finishPending();

    void retryMissed();
    void retryMissed(int watch);
    void miss(Node& parent, std::string_view name, Missed missed);

    int watchNumber(int folder) const;
    int openFolder(const Node& node) const;
    int openIn(int folder, std::string_view name) const;
    void attach(Node& parent, std::string_view name, Telling telling);
    void place(int folder, Node& parent, std::string_view name, Telling telling, std::vector<ToList>& further);
    void list(Node& node, Telling telling, std::vector<ToList>& further);
    void listAll(std::vector<ToList> folders);
    void link(Node& node, Node& parent, std::string_view name);
    void unlink(Node& node);
    void unlink(Node& parent, std::string_view name);
    void forget(int watch);
    void drop(int watch);
    Node* find(int watch);
    bool isInTree(const Node& node) const;
    bool isWithin(const Node& node, const Node& ancestor) const;

    void tell(Node& node, std::string_view name, std::uint32_t action);
    void tellFirst(Node& node, std::string_view name);
    void tellFolder(Node& node);
    std::string relativePath(const Node& node, std::string_view name) const;
    std::uint64_t queueEnd() const;

    int file_;
    std::string path_;
    int root_ = -1;
    std::unordered_map<int, std::unique_ptr<Node>> nodes_;
    std::uint32_t generation_ = 1;
    // All bytes ever read from the queue.
    std::uint64_t total_ = 0;
    std::vector<Pending> arrivals_;
    std::vector<Pending> homeless_;
    std::vector<int> retry_;
    std::vector<int> suspects_;
    bool rebuild_ = false;
    bool unsure_ = false; // a folder wasn't where its events had put it

    std::vector<char> buffer_;
    std::size_t used_ = 0;
    std::vector<std::uint32_t> movedFrom_; // cookies whose second half isn't there yet
    std::vector<MovedTo> movedTo_;
    std::chrono::steady_clock::time_point halfDeadline_;
    std::vector<FolderChange>* changes_ = nullptr;
};

} // namespace tessera::platform
