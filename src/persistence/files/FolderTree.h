// FolderTree: work on a folder with all that it holds. Each level is held open while it is worked on, and a link is
// taken as itself, so nothing outside the folder is ever reached. Errors are the system's numbers, 0 for none.
#pragma once

#include "platform/Folder.h"

#include <cstdint>
#include <string_view>

namespace tessera {

struct IFileProgress;

struct FolderCount {
    std::int64_t files = 0;
    std::int64_t folders = 0;
    std::int64_t bytes = 0;
};

enum class FolderDepth { thisFolder, wholeTree };

// What can't be entered counts as an empty folder.
void countFolder(platform::Folder& folder, FolderDepth depth, FolderCount& count);

// Stops at the first entry that can't be deleted. False also when something in it can't be asked, or has no path form.
bool emptyFolder(platform::Folder& folder, FolderDepth depth, std::int32_t& error);

// The folder of that name in `parent`, with all that it holds.
bool deleteTree(platform::Folder& parent, std::u16string_view name, std::int32_t& error);

// The content of one into the other. False at the first failure, when something in it has no path form, and when
// progress, which may be null, cancels; what was copied until then stays.
bool copyFolderContent(platform::Folder& from, const platform::Folder& to, IFileProgress* progress,
                       std::int32_t& error);

} // namespace tessera
