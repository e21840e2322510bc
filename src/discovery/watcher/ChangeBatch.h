// ChangeBatch: the changes of one delivery, in their order, and how it is made of what the system tells.
#pragma once

#include "discovery/watcher/ChangeKind.h"
#include "platform/FolderChange.h"

#include <chrono>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessera {

struct ChangeEvent {
    ChangeKind kind = ChangeKind::other;
    // The watched folder's path as it was given, "/", the name below it. UTF-8.
    std::string path;
    // For a rename, else empty.
    std::string newPath;

    friend bool operator==(const ChangeEvent&, const ChangeEvent&) = default;
};

struct ChangeBatch {
    std::vector<ChangeEvent> events;
    // When the batch was built.
    std::chrono::system_clock::time_point time;
};

// The old and the new name of a rename are one event when they follow each other directly. Half a pair, whichever it
// is, becomes added when its path exists and removed when it doesn't, which `exists` is asked.
ChangeBatch makeChangeBatch(std::string_view folder, std::span<const platform::FolderChange> changes,
                            const std::function<bool(const std::string& path)>& exists);

} // namespace tessera
