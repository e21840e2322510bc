// FileEntries: what a path names, and what can be done with the name: deleting, moving, links.
//
// Path texts are 16-bit with backslashes, of any length, as in Files.h. Errors are the system's numbers, 0 for none.
// Every operation may be called from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

struct FileStatus {
    bool isFolder = false;
    // The path itself is a link; the rest but for isHidden is about what it leads to, or about the link when it leads
    // nowhere.
    bool isLink = false;
    // The path itself is shown on demand only.
    bool isHidden = false;
    std::int64_t size = 0;
    // Seconds since 1970 in UTC, rounded down. Where the system doesn't keep the first, it is the second.
    std::int64_t created = 0;
    std::int64_t modified = 0;
};

std::optional<FileStatus> fileStatus(std::u16string_view path, std::int32_t& error);

// Whether both are there and are one file or folder.
bool isSameFile(std::u16string_view a, std::u16string_view b);

// The path with all links on the way resolved. Nothing when it isn't there.
std::optional<std::u16string> canonicalPath(std::u16string_view path);

// What the last component is called in its folder, where a path may spell it otherwise: in another case or, once, as a
// short name. Nothing when it isn't there, and where only one spelling leads to an entry.
std::optional<std::u16string> storedName(std::u16string_view path);

// A file, marked as read-only or not, or a link, which goes itself. Never a folder.
bool deleteFile(std::u16string_view path, std::int32_t& error);

// Gives the file, folder or link another name, and never replaces what has that name. Files also move to another
// volume: the copy appears under the name only when it is complete and on the disk, and then the original goes.
bool moveEntry(std::u16string_view from, std::u16string_view to, std::int32_t& error);

// Hands the folder's entries to the storage: what was made, renamed or deleted in it by now outlives a power cut. True
// also where the system, or the file system below it, has no such call.
bool flushFolder(std::u16string_view path, std::int32_t& error);

// A link at `path` to `target`, in the form in which this system shows links. Fails where the name is taken.
bool createLink(std::u16string_view path, std::u16string_view target, std::int32_t& error);

// What the link says, made absolute with the link's own folder. Nothing for what is no link.
std::optional<std::u16string> readLink(std::u16string_view path);

} // namespace tessera::platform
