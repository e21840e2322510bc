#include "persistence/files/FolderTree.h"

#include "persistence/files/FileCopy.h"

#include <string>
#include <vector>

namespace tessera {

namespace {

struct Entry {
    std::u16string name;
    bool isFolder;
};

// The whole list first: a folder that changes while it is read may leave entries out. A link is no folder here.
std::vector<Entry> listEntries(platform::Folder& folder) {
    std::vector<Entry> entries;
    while (const platform::FolderEntry* entry = folder.next()) {
        entries.push_back({std::u16string(entry->name), entry->isFolder && !entry->isLink});
    }
    return entries;
}

bool copyTree(platform::Folder& from, const platform::Folder& to, const std::u16string& name, IFileProgress* progress,
              std::int32_t& error) {
    platform::Folder source = from.openFolder(name, error);
    if (!source.isOpen()) {
        return false;
    }
    const platform::Folder target = to.makeFolder(name, error);
    return target.isOpen() && copyFolderContent(source, target, progress, error);
}

bool copyOneFile(const platform::Folder& from, const platform::Folder& to, const std::u16string& name,
                 IFileProgress* progress, std::int32_t& error) {
    platform::File source = from.openFile(name, error);
    if (!source.isOpen()) {
        return false;
    }
    platform::File target = to.makeFile(name, source, error);
    return target.isOpen() && copyBytes(source, target, name, progress, error) && target.close(error);
}

} // namespace

void countFolder(platform::Folder& folder, FolderDepth depth, FolderCount& count) {
    while (const platform::FolderEntry* entry = folder.next()) {
        if (!entry->isFolder || entry->isLink) {
            ++count.files;
            count.bytes += entry->size;
            continue;
        }
        ++count.folders;
        if (depth == FolderDepth::wholeTree) {
            std::int32_t ignored = 0;
            platform::Folder inner = folder.openFolder(entry->name, ignored);
            countFolder(inner, depth, count);
        }
    }
}

bool emptyFolder(platform::Folder& folder, FolderDepth depth, std::int32_t& error) {
    for (const Entry& entry : listEntries(folder)) {
        if (!entry.isFolder) {
            if (!folder.deleteFile(entry.name, error)) {
                return false;
            }
        } else if (depth == FolderDepth::wholeTree && !deleteTree(folder, entry.name, error)) {
            return false;
        }
    }
    // What the list lacks is still there.
    error = folder.error();
    return error == 0;
}

bool deleteTree(platform::Folder& parent, std::u16string_view name, std::int32_t& error) {
    {
        platform::Folder folder = parent.openFolder(name, error);
        if (!folder.isOpen() || !emptyFolder(folder, FolderDepth::wholeTree, error)) {
            return false;
        }
    }
    return parent.deleteFolder(name, error);
}

bool copyFolderContent(platform::Folder& from, const platform::Folder& to, IFileProgress* progress,
                       std::int32_t& error) {
    while (const platform::FolderEntry* entry = from.next()) {
        const std::u16string name(entry->name);
        const bool copied = entry->isLink     ? to.copyLink(name, from, error)
                            : entry->isFolder ? copyTree(from, to, name, progress, error)
                                              : copyOneFile(from, to, name, progress, error);
        if (!copied) {
            return false;
        }
    }
    // A copy that lacks something isn't one.
    error = from.error();
    return error == 0;
}

} // namespace tessera
