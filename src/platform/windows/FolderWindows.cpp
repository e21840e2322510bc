#include "platform/Folder.h"

#include "platform/windows/ReparseTag.h"
#include "platform/windows/SystemPath.h"
#include "platform/windows/SystemTime.h"
#include "platform/windows/UnfinishedName.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>
#include <windows.h>

#include <winioctl.h>
#include <winternl.h>

// The compiler's headers lack it. The documented calls for the same ask for records that not every file system gives.
extern "C" NTSTATUS NTAPI NtQueryDirectoryFile(HANDLE folder, HANDLE event, PIO_APC_ROUTINE routine, PVOID context,
                                               PIO_STATUS_BLOCK io, PVOID block, ULONG size,
                                               FILE_INFORMATION_CLASS kind, BOOLEAN singleEntry,
                                               PUNICODE_STRING pattern, BOOLEAN fromStart);

// Entries are opened by name below the folder's handle, which only the system's inner calls can do. They take names as
// they stand, so that one ending in a dot, or called like a device, is that entry.
namespace tessera::platform {

struct Folder::State {
    explicit State(File opened) : handle(std::move(opened)) {}

    // A closed folder for a file that isn't open.
    static Folder adopt(File opened);

    File handle;
    // What the system gave of the walk, from the first step on, and the record that is next; null when the block is
    // used up.
    std::vector<std::byte> block;
    const std::byte* record = nullptr;
    bool atStart = true;
    FolderEntry entry;
    std::u16string name;
    std::int32_t error = 0;
    // The last unfinished file that is a copy of a hidden one.
    std::u16string staysHidden;
};

namespace {

constexpr std::u16string_view kLinkExtension = u".lnk";
constexpr ULONG kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kCopiedAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                    FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
constexpr std::size_t kBlock = 0x10000;
constexpr std::size_t kLongestReparseData = 16 * 1024;

// A name is a single component. ":" would lead to another stream of a file.
bool isEntryName(std::u16string_view name) {
    return !name.empty() && name != u"." && name != u".." && name.size() < 0x4000 &&
           name.find_first_of(std::u16string_view(u"\\/:\0", 4)) == name.npos;
}

// For a name that has no form of the system: nothing is called so.
bool noSuchName(std::int32_t& error) {
    error = ERROR_FILE_NOT_FOUND;
    return false;
}

bool done(NTSTATUS status, std::int32_t& error) {
    error = NT_SUCCESS(status) ? 0 : static_cast<std::int32_t>(::RtlNtStatusToDosError(status));
    return NT_SUCCESS(status);
}

struct OpenWish {
    ACCESS_MASK access;
    ULONG options;
    ULONG disposition = FILE_OPEN;
    ULONG share = kShareAll;
    ULONG attributes = FILE_ATTRIBUTE_NORMAL;
};

constexpr OpenWish kWalking{FILE_LIST_DIRECTORY | FILE_TRAVERSE | FILE_READ_ATTRIBUTES, FILE_DIRECTORY_FILE};

// An empty name is what the handle itself stands for.
File openBelow(const File& folder, std::u16string_view name, const OpenWish& wish, std::int32_t& error) {
    UNICODE_STRING text;
    text.Buffer = const_cast<PWSTR>(wide(name.data()));
    text.Length = static_cast<USHORT>(name.size() * sizeof(char16_t));
    text.MaximumLength = text.Length;
    OBJECT_ATTRIBUTES object;
    InitializeObjectAttributes(&object, &text, OBJ_CASE_INSENSITIVE, handleOf(folder), nullptr);
    IO_STATUS_BLOCK io;
    HANDLE handle = INVALID_HANDLE_VALUE;
    const NTSTATUS status =
        ::NtCreateFile(&handle, wish.access | SYNCHRONIZE, &object, &io, nullptr, wish.attributes, wish.share,
                       wish.disposition, wish.options | FILE_SYNCHRONOUS_IO_NONALERT, nullptr, 0);
    return done(status, error) ? fileOf(handle) : File();
}

// None for a file that isn't open.
DWORD attributesOf(const File& file) {
    BY_HANDLE_FILE_INFORMATION info;
    return file.isOpen() && ::GetFileInformationByHandle(handleOf(file), &info) ? info.dwFileAttributes : 0;
}

FILE_ATTRIBUTE_TAG_INFO tagOf(const File& file) {
    FILE_ATTRIBUTE_TAG_INFO info = {};
    if (!::GetFileInformationByHandleEx(handleOf(file), FileAttributeTagInfo, &info, sizeof info)) {
        info.FileAttributes = attributesOf(file);
    }
    return info;
}

bool isLink(const FILE_ATTRIBUTE_TAG_INFO& info) {
    return (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(info.ReparseTag);
}

// What is no link. The entry is opened itself first, and looked at; what the system keeps elsewhere, in the cloud for
// one, is then opened once more by its handle, so that nobody can have put a link in its place.
File openNoLink(const File& folder, std::u16string_view name, const OpenWish& wish, std::int32_t& error) {
    OpenWish itself = wish;
    itself.options |= FILE_OPEN_REPARSE_POINT;
    File file = openBelow(folder, name, itself, error);
    if (!file.isOpen()) {
        return file;
    }
    const FILE_ATTRIBUTE_TAG_INFO info = tagOf(file);
    if (isLink(info)) {
        error = ERROR_CANT_ACCESS_FILE;
        return File();
    }
    const bool keptElsewhere = (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return keptElsewhere ? openBelow(file, {}, wish, error) : std::move(file);
}

bool setAttributes(const File& file, DWORD attributes, std::int32_t& error) {
    FILE_BASIC_INFO info = {};
    info.FileAttributes = attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
    return succeeded(::SetFileInformationByHandle(handleOf(file), FileBasicInfo, &info, sizeof info), error);
}

bool markForDeletion(const File& file, std::int32_t& error) {
    FILE_DISPOSITION_INFO info = {};
    info.DeleteFile = TRUE;
    return succeeded(::SetFileInformationByHandle(handleOf(file), FileDispositionInfo, &info, sizeof info), error);
}

// The entry itself goes, be it a link, and be it marked as read-only.
bool deleteBelow(const File& folder, std::u16string_view name, ULONG kind, std::int32_t& error) {
    OpenWish wish{DELETE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES, kind | FILE_OPEN_REPARSE_POINT};
    File entry = openBelow(folder, name, wish, error);
    if (!entry.isOpen() && error == ERROR_ACCESS_DENIED) {
        wish.access = DELETE | FILE_READ_ATTRIBUTES;
        entry = openBelow(folder, name, wish, error);
    }
    if (!entry.isOpen()) {
        return false;
    }
    if (markForDeletion(entry, error)) {
        return true;
    }
    const DWORD attributes = attributesOf(entry);
    std::int32_t ignored = 0;
    if ((attributes & FILE_ATTRIBUTE_READONLY) == 0 ||
        !setAttributes(entry, attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}, ignored)) {
        return false;
    }
    if (markForDeletion(entry, error)) {
        return true;
    }
    setAttributes(entry, attributes, ignored);
    return false;
}

// The record for a new name, with the name in place of its last field.
constexpr std::size_t kRenameNameAt = offsetof(FILE_RENAME_INFO, FileName);
static_assert(kRenameNameAt == 20);
constexpr auto kFullDirectoryInformation = static_cast<FILE_INFORMATION_CLASS>(2);
constexpr auto kFileRenameInformation = static_cast<FILE_INFORMATION_CLASS>(10);

bool renameBelow(const File& file, const File& folder, std::u16string_view name, std::int32_t& error) {
    FILE_RENAME_INFO head = {};
    head.ReplaceIfExists = TRUE;
    head.RootDirectory = handleOf(folder);
    head.FileNameLength = static_cast<DWORD>(name.size() * sizeof(char16_t));
    std::vector<std::byte> record(std::max(sizeof head, kRenameNameAt + head.FileNameLength));
    std::memcpy(record.data(), &head, sizeof head);
    std::memcpy(record.data() + kRenameNameAt, name.data(), head.FileNameLength);
    IO_STATUS_BLOCK io;
    return done(::NtSetInformationFile(handleOf(file), &io, record.data(), static_cast<ULONG>(record.size()),
                                       kFileRenameInformation),
                error);
}

constexpr ULONG kFileItself = FILE_NON_DIRECTORY_FILE | FILE_OPEN_REPARSE_POINT;

// Who may do what with the one file, for the other. What can't be read or set stays as the folder gives it to new
// files.
void copyRights(const File& folder, std::u16string_view from, std::u16string_view to) {
    std::int32_t ignored = 0;
    const File source = openBelow(folder, from, {READ_CONTROL, kFileItself}, ignored);
    const File target = openBelow(folder, to, {WRITE_DAC, kFileItself}, ignored);
    if (!source.isOpen() || !target.isOpen()) {
        return;
    }
    DWORD size = 0;
    ::GetKernelObjectSecurity(handleOf(source), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> rights(size);
    if (size != 0 &&
        ::GetKernelObjectSecurity(handleOf(source), DACL_SECURITY_INFORMATION, rights.data(), size, &size)) {
        ::SetKernelObjectSecurity(handleOf(target), DACL_SECURITY_INFORMATION, rights.data());
    }
}

// Nothing, with a reason, when the file can't be asked.
std::optional<DWORD> attributesBelow(const File& folder, std::u16string_view name, std::int32_t& error) {
    const File file = openBelow(folder, name, {FILE_READ_ATTRIBUTES, kFileItself}, error);
    return file.isOpen() ? std::optional(attributesOf(file)) : std::nullopt;
}

bool setAttributesBelow(const File& folder, std::u16string_view name, DWORD attributes, std::int32_t& error) {
    const File file = openBelow(folder, name, {FILE_WRITE_ATTRIBUTES, kFileItself}, error);
    return file.isOpen() && setAttributes(file, attributes, error);
}

// The next block of the walk; false at its end, or with an error.
bool readBlock(const File& folder, std::vector<std::byte>& block, bool fromStart, std::int32_t& error) {
    block.resize(kBlock);
    IO_STATUS_BLOCK io;
    const NTSTATUS status =
        ::NtQueryDirectoryFile(handleOf(folder), nullptr, nullptr, nullptr, &io, block.data(),
                               static_cast<ULONG>(block.size()), kFullDirectoryInformation, FALSE, nullptr, fromStart);
    const bool more = done(status, error) && io.Information != 0;
    // The root of an empty volume holds nothing at all, not even ".".
    if (!more && (error == ERROR_NO_MORE_FILES || error == ERROR_FILE_NOT_FOUND)) {
        error = 0;
    }
    return more;
}

// A link's own folder mark and size are replaced by those of what it leads to.
void followLink(const File& folder, FolderEntry& entry) {
    std::int32_t ignored = 0;
    BY_HANDLE_FILE_INFORMATION target;
    const File file = openBelow(folder, entry.name, {FILE_READ_ATTRIBUTES, 0}, ignored);
    if (!file.isOpen() || !::GetFileInformationByHandle(handleOf(file), &target)) {
        return;
    }
    entry.isFolder = (target.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.size = entry.isFolder
                     ? 0
                     : static_cast<std::int64_t>((std::uint64_t{target.nFileSizeHigh} << 32) | target.nFileSizeLow);
    entry.modified = unixSeconds(target.ftLastWriteTime.dwHighDateTime, target.ftLastWriteTime.dwLowDateTime);
}

} // namespace

bool hasLinkExtension(std::u16string_view name) {
    if (name.size() < kLinkExtension.size()) {
        return false;
    }
    name.remove_prefix(name.size() - kLinkExtension.size());
    return std::equal(name.begin(), name.end(), kLinkExtension.begin(), [](char16_t c, char16_t expected) {
        return (c >= u'A' && c <= u'Z' ? c - u'A' + u'a' : c) == expected;
    });
}

Folder::Folder() = default;
Folder::Folder(std::unique_ptr<State> state) : state_(std::move(state)) {}
Folder::Folder(Folder&& other) noexcept = default;
Folder& Folder::operator=(Folder&& other) noexcept = default;
Folder::~Folder() = default;

Folder Folder::State::adopt(File opened) {
    return opened.isOpen() ? Folder(std::make_unique<State>(std::move(opened))) : Folder();
}

Folder Folder::open(std::u16string_view path, std::int32_t& error) {
    File folder = openShared(systemPath(path), FILE_LIST_DIRECTORY | FILE_TRAVERSE, FILE_FLAG_BACKUP_SEMANTICS, error);
    if (folder.isOpen() && (attributesOf(folder) & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        error = ERROR_DIRECTORY;
        return Folder();
    }
    return State::adopt(std::move(folder));
}

const FolderEntry* Folder::next() {
    if (!isOpen()) {
        return nullptr;
    }
    State& state = *state_;
    for (;;) {
        if (state.record == nullptr) {
            if (!readBlock(state.handle, state.block, std::exchange(state.atStart, false), state.error)) {
                return nullptr;
            }
            state.record = state.block.data();
        }
        const auto* record = reinterpret_cast<const FILE_FULL_DIR_INFORMATION*>(state.record);
        state.record = record->NextEntryOffset != 0 ? state.record + record->NextEntryOffset : nullptr;
        state.name = textOf({record->FileName, record->FileNameLength / sizeof(wchar_t)});
        if (state.name == u"." || state.name == u"..") {
            continue;
        }
        // Where an entry has a tag, it stands in the field for the size of attributes.
        FILE_ATTRIBUTE_TAG_INFO tag = {record->FileAttributes, record->EaSize};
        FolderEntry& entry = state.entry;
        entry.name = state.name;
        entry.isFolder = (record->FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        entry.size = entry.isFolder ? 0 : record->EndOfFile.QuadPart;
        entry.modified = unixSeconds(record->LastWriteTime.QuadPart);
        entry.isHidden = (record->FileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
        entry.isLink = isLink(tag);
        if (entry.isLink && !hasLinkExtension(entry.name)) {
            followLink(state.handle, entry);
        }
        return &entry;
    }
}

std::int32_t Folder::error() const {
    return isOpen() ? state_->error : 0;
}

void Folder::rewind() {
    if (isOpen()) {
        // Not every system reads the folder anew for a handle that has been through it.
        std::int32_t ignored = 0;
        if (File again = openBelow(state_->handle, {}, kWalking, ignored); again.isOpen()) {
            state_->handle = std::move(again);
        }
        state_->record = nullptr;
        state_->atStart = true;
        state_->error = 0;
    }
}

Folder Folder::openFolder(std::u16string_view name, std::int32_t& error) const {
    if (!isEntryName(name)) {
        noSuchName(error);
        return Folder();
    }
    return State::adopt(openNoLink(state_->handle, name, kWalking, error));
}

Folder Folder::makeFolder(std::u16string_view name, std::int32_t& error) const {
    if (!isEntryName(name)) {
        noSuchName(error);
        return Folder();
    }
    const OpenWish wish{FILE_LIST_DIRECTORY | FILE_TRAVERSE | FILE_READ_ATTRIBUTES, FILE_DIRECTORY_FILE, FILE_CREATE};
    return State::adopt(openBelow(state_->handle, name, wish, error));
}

File Folder::openFile(std::u16string_view name, std::int32_t& error) const {
    if (!isEntryName(name)) {
        noSuchName(error);
        return File();
    }
    return openNoLink(state_->handle, name, {FILE_GENERIC_READ, FILE_NON_DIRECTORY_FILE}, error);
}

File Folder::makeFile(std::u16string_view name, const File& like, std::int32_t& error) const {
    if (!isEntryName(name)) {
        noSuchName(error);
        return File();
    }
    // The folder says who may use its files; what the file itself is marked as comes from the other one.
    OpenWish wish{FILE_GENERIC_WRITE | FILE_READ_ATTRIBUTES, FILE_NON_DIRECTORY_FILE, FILE_CREATE};
    wish.attributes = (attributesOf(like) & kCopiedAttributes) | FILE_ATTRIBUTE_ARCHIVE;
    return openBelow(state_->handle, name, wish, error);
}

File Folder::makeUnfinishedFile(const File& like, std::u16string& name, std::int32_t& error) const {
    // What stands under such a name already was left by a process that had this one's number and was killed.
    OpenWish wish{FILE_GENERIC_WRITE | FILE_READ_ATTRIBUTES, FILE_NON_DIRECTORY_FILE, FILE_CREATE};
    const DWORD attributes = attributesOf(like) & kCopiedAttributes;
    wish.attributes = attributes | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN;
    File file;
    do {
        name = unfinishedName();
        file = openBelow(state_->handle, name, wish, error);
    } while (error == ERROR_ALREADY_EXISTS);
    if ((attributes & FILE_ATTRIBUTE_HIDDEN) != 0) {
        state_->staysHidden = name;
    }
    return file;
}

bool Folder::copyLink(std::u16string_view name, const Folder& from, std::int32_t& error) const {
    if (!isEntryName(name)) {
        return noSuchName(error);
    }
    const OpenWish reading{FILE_READ_ATTRIBUTES, FILE_OPEN_REPARSE_POINT};
    const File link = openBelow(from.state_->handle, name, reading, error);
    if (!link.isOpen()) {
        return false;
    }
    std::array<std::byte, kLongestReparseData> said;
    DWORD size = 0;
    if (!succeeded(::DeviceIoControl(handleOf(link), FSCTL_GET_REPARSE_POINT, nullptr, 0, said.data(),
                                     static_cast<DWORD>(said.size()), &size, nullptr),
                   error)) {
        return false;
    }
    const bool toFolder = (attributesOf(link) & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const ULONG kind = toFolder ? FILE_DIRECTORY_FILE : FILE_NON_DIRECTORY_FILE;
    const OpenWish making{DELETE | FILE_GENERIC_WRITE, kind | FILE_OPEN_REPARSE_POINT, FILE_CREATE};
    const File copy = openBelow(state_->handle, name, making, error);
    if (!copy.isOpen()) {
        return false;
    }
    DWORD none = 0;
    if (succeeded(
            ::DeviceIoControl(handleOf(copy), FSCTL_SET_REPARSE_POINT, said.data(), size, nullptr, 0, &none, nullptr),
            error)) {
        return true;
    }
    std::int32_t ignored = 0;
    markForDeletion(copy, ignored);
    return false;
}

bool Folder::deleteFile(std::u16string_view name, std::int32_t& error) const {
    if (!isEntryName(name)) {
        return noSuchName(error);
    }
    if (deleteBelow(state_->handle, name, FILE_NON_DIRECTORY_FILE, error)) {
        return true;
    }
    // A link to a folder is an entry like a folder.
    std::int32_t reason = 0;
    const OpenWish wish{FILE_READ_ATTRIBUTES, FILE_OPEN_REPARSE_POINT};
    const File entry = openBelow(state_->handle, name, wish, reason);
    return entry.isOpen() && isLink(tagOf(entry)) && deleteBelow(state_->handle, name, FILE_DIRECTORY_FILE, error);
}

bool Folder::deleteFolder(std::u16string_view name, std::int32_t& error) const {
    return isEntryName(name) ? deleteBelow(state_->handle, name, FILE_DIRECTORY_FILE, error) : noSuchName(error);
}

bool Folder::replaceFile(std::u16string_view file, std::u16string_view name, std::int32_t& error) const {
    // Any other call takes such an end off the name.
    while (!name.empty() && (name.back() == u'.' || name.back() == u' ')) {
        name.remove_suffix(1);
    }
    if (!isEntryName(file) || !isEntryName(name)) {
        return noSuchName(error);
    }
    const File& folder = state_->handle;
    const auto before = attributesBelow(folder, file, error);
    if (!before) {
        return false;
    }
    const auto present = attributesBelow(folder, name, error);
    if (!present && error != ERROR_FILE_NOT_FOUND) {
        return false;
    }
    if (present) {
        copyRights(folder, name, file);
    }
    const DWORD hidden = state_->staysHidden == file ? FILE_ATTRIBUTE_HIDDEN : 0;
    const DWORD after = present ? *present & kCopiedAttributes : (*before & ~DWORD{FILE_ATTRIBUTE_HIDDEN}) | hidden;
    // The system doesn't replace what is marked as read-only. Its successor bears the mark.
    const bool marked = present && (*present & FILE_ATTRIBUTE_READONLY) != 0;
    if (!setAttributesBelow(folder, file, after, error) ||
        (marked && !setAttributesBelow(folder, name, *present & ~DWORD{FILE_ATTRIBUTE_READONLY}, error))) {
        return false;
    }
    const File entry = openBelow(folder, file, {DELETE, kFileItself}, error);
    if (entry.isOpen() && renameBelow(entry, folder, name, error)) {
        return true;
    }
    std::int32_t ignored = 0;
    setAttributesBelow(folder, file, *before, ignored);
    if (marked) {
        setAttributesBelow(folder, name, *present, ignored);
    }
    return false;
}

} // namespace tessera::platform
