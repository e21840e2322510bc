// Folder: a folder held open, its entries, and what can be done with them by name.
//
// Whatever happens to the folder's path meanwhile, names mean entries of this folder; no operation here goes through a
// link, so none can be led out of it. Path texts are 16-bit with backslashes, as in Files.h; names are single
// components. Errors are the system's numbers, 0 for none. Move-only; one thread at a time.
#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tessera::platform {

struct FolderEntry {
    std::u16string_view name;
    // A link is followed for these two, unless it leads nowhere or its name ends in ".lnk".
    bool isFolder = false;
    std::int64_t size = 0;
    // Last change of the content, in seconds since 1970 in UTC, rounded down.
    std::int64_t modified = 0;
    bool isLink = false;
    bool isHidden = false;
};

// Whether the name ends in ".lnk", in whatever case: links of that name are shown as links.
bool hasLinkExtension(std::u16string_view name);

class Folder {
public:
    Folder();
    Folder(Folder&& other) noexcept;
    Folder& operator=(Folder&& other) noexcept;
    ~Folder();

    // Links in the path are followed, as the user named it.
    static Folder open(std::u16string_view path, std::int32_t& error);

    bool isOpen() const { return state_ != nullptr; }
    // The next entry, or null at the end. The name is valid until the next call. Entries that vanish meanwhile and
    // names that have no path form are left out, and so are "." and "..".
    const FolderEntry* next();
    // Why the walk left something out that is there: the system's number, also for a name without a path form; 0 when
    // it gave everything.
    std::int32_t error() const;
    void rewind();

    // A sub-folder that is no link.
    Folder openFolder(std::u16string_view name, std::int32_t& error) const;
    // A new one.
    Folder makeFolder(std::u16string_view name, std::int32_t& error) const;
    // For reading, if it is a file and no link.
    File openFile(std::u16string_view name, std::int32_t& error) const;
    // A new one, for writing, with the rights of the other file; with those of any new one when that isn't open.
    File makeFile(std::u16string_view name, const File& like, std::int32_t& error) const;
    // The same under a hidden name that nobody has, for what gets its name when it is complete.
    File makeUnfinishedFile(const File& like, std::u16string& name, std::int32_t& error) const;
    // A new link that says what the link `name` of the other folder says.
    bool copyLink(std::u16string_view name, const Folder& from, std::int32_t& error) const;
    // A file or a link, the latter itself.
    bool deleteFile(std::u16string_view name, std::int32_t& error) const;
    // An empty one.
    bool deleteFolder(std::u16string_view name, std::int32_t& error) const;
    // The file takes the place of the one named `name`, with the rights that one had, at a stroke; or just that name
    // when nobody has it.
    bool replaceFile(std::u16string_view file, std::u16string_view name, std::int32_t& error) const;

private:
    struct State;
    explicit Folder(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace tessera::platform
