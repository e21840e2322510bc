// LocalFiles: files and folders as the operations on URIs see them.
//
// Paths and names are UTF-8 with "/" as the separator, or whatever other bytes the system's names are made of. A
// failure is a number of the system, whatever category it comes in; on success the code is empty. Links are followed by
// the questions and by nothing else: what lists, copies or removes takes a link as an entry of its own. Every operation
// may be called from any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace tessera::platform {

using FileTime = std::chrono::system_clock::time_point;

enum class EntryType { missing, file, folder, other };

struct NamedEntry {
    std::string name;
    // A folder, and no link to one.
    bool isFolder = false;
};

std::string currentFolder(std::error_code& error);
void setCurrentFolder(const std::string& path, std::error_code& error);

// Behind the current folder unless it is absolute.
std::string absolutePath(const std::string& path, std::error_code& error);
// Absolute, without dots, by the names under which the folders keep what is there; where links are common, without
// them.
std::string canonicalName(const std::string& path, std::error_code& error);

// What isn't there is no failure.
EntryType entryType(const std::string& path, std::error_code& error);
// The same for the entry itself, which is `other` when it is a link.
EntryType ownEntryType(const std::string& path, std::error_code& error);
bool isOneEntry(const std::string& a, const std::string& b, std::error_code& error);
// Of a file.
std::uint64_t fileLength(const std::string& path, std::error_code& error);
// Of the last change, as exactly as the system tells it.
FileTime changeTime(const std::string& path, std::error_code& error);
void setChangeTime(const std::string& path, FileTime time, std::error_code& error);

// In no particular order.
std::vector<NamedEntry> entriesOf(const std::string& folder, std::error_code& error);

// True for a new folder, false for one that was there. The second makes those above it, too.
bool makeFolder(const std::string& path, std::error_code& error);
bool makeFolders(const std::string& path, std::error_code& error);
// One with the rights of the other, where a folder doesn't take them from the one above.
bool makeFolderLike(const std::string& path, const std::string& model, std::error_code& error);

// A file, or a link, which is copied itself; nothing may be at `to`. A system may not copy a link to another name.
void copyEntry(const std::string& from, const std::string& to, std::error_code& error);
// Replaces a file that has the name.
void renameEntry(const std::string& from, const std::string& to, std::error_code& error);
// A file, a link or an empty folder; false when nothing was there.
bool removeEntry(const std::string& path, std::error_code& error);
// With all that is in it; how many entries went.
std::uint64_t removeTree(const std::string& path, std::error_code& error);

} // namespace tessera::platform
