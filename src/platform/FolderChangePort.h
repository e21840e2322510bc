// FolderChangePort: the place where the changes below any number of folders come together for one thread that waits.
//
// A folder is opened under a key of the caller's choice, above 0. When wait() names a key, take() gives the changes
// that have come, and read() asks for the next ones; until then that folder stays silent where the system works so.
// Closing a folder ends what is under way for it: wait() then names its key once more, and take() answers `finished`.
// The same happens when the folder itself is deleted.
//
// open, close, take and read are called under one lock of the caller's. wait is for one thread at a time, without the
// lock; postStop may be called from any thread. Paths are the system's own form in UTF-8. Destroying the port closes
// all folders; nobody may wait then.
//
// Linux: one inotify instance per folder, sub-folders watched one by one, never through a link. The folders that exist
// at open() are watched when it returns. What stands in a sub-folder made later, by the time its watch is set, is told
// as added; what a folder brings along that is moved in isn't told, only the folder. A folder that can't be watched (no
// rights, or the user's limit on watches is reached) is passed over silently, the open one excepted. A change of rights
// or owner counts as modified, since the system tells it together with a new time. The two halves of a rename are
// brought together even when other changes come between them, for which up to 20 ms are waited when the second half is
// missing; a name moved out of the tree is removed, one moved in is added. When the system's queue has overflowed,
// changes are lost for good: one change kOther with an empty name tells it, at its place among the others, and the
// watches are set anew. The same happens when folders have taken each other's names so fast that one was taken for
// another.
#pragma once

#include "platform/FolderChange.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tessera::platform {

class FolderChangePort {
public:
    using Key = std::uint64_t;

    // What wait() has seen.
    enum class Event {
        stop,
        skip, // the wait failed, or what came belongs to nothing; wait again
        folder,
    };
    enum class Read {
        data,
        again,    // nothing to tell, or the read failed: read() again
        finished, // the folder is closed, by the caller or because it has gone
    };

    // Null when the system has no more of what it takes.
    static std::unique_ptr<FolderChangePort> create();
    FolderChangePort(const FolderChangePort&) = delete;
    FolderChangePort& operator=(const FolderChangePort&) = delete;
    ~FolderChangePort();

    // Starts the first read as well. False when the path names no folder that can be watched.
    bool open(Key key, const std::string& path);
    void close(Key key);

    Event wait(Key& key);
    // Replaces the content of `changes`, whose memory is used again.
    Read take(Key key, std::vector<FolderChange>& changes);
    void read(Key key);
    // One wait() gives Event::stop for it.
    void postStop();

private:
    struct State;
    explicit FolderChangePort(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace tessera::platform
