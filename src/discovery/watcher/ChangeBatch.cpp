#include "discovery/watcher/ChangeBatch.h"

#include <cstddef>

namespace tessera {

namespace {

using platform::FolderChange;

std::string joinPath(std::string_view folder, std::string_view name) {
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path = folder;
    if (!name.empty()) {
        if (!path.ends_with('/')) {
            path += '/';
        }
        path += name;
    }
    return path;
}

ChangeKind kindOf(std::uint32_t action) {
    switch (action) {
    case FolderChange::kAdded:
        return ChangeKind::added;
    case FolderChange::kRemoved:
        return ChangeKind::removed;
    case FolderChange::kModified:
        return ChangeKind::modified;
    case FolderChange::kRenamedFrom:
    case FolderChange::kRenamedTo:
        return ChangeKind::renamed;
    default:
        return ChangeKind::other;
    }
}

} // namespace

ChangeBatch makeChangeBatch(std::string_view folder, std::span<const FolderChange> changes,
                            const std::function<bool(const std::string& path)>& exists) {
    ChangeBatch batch;
    batch.time = std::chrono::system_clock::now();
    batch.events.reserve(changes.size());
    for (std::size_t i = 0; i < changes.size(); ++i) {
        ChangeEvent event{kindOf(changes[i].action), joinPath(folder, changes[i].name), {}};
        if (event.kind == ChangeKind::renamed) {
            if (changes[i].action == FolderChange::kRenamedFrom && i + 1 < changes.size() &&
                changes[i + 1].action == FolderChange::kRenamedTo) {
                ++i;
                event.newPath = joinPath(folder, changes[i].name);
            } else {
                event.kind = exists(event.path) ? ChangeKind::added : ChangeKind::removed;
            }
        }
        batch.events.push_back(std::move(event));
    }
    return batch;
}

} // namespace tessera
