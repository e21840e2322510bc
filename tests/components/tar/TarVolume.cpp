#include "TarVolume.h"

#include "platform/NativePath.h"
#include "support/VirtualEntryList.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cstring>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace tessera::tar {

namespace {

constexpr std::int16_t kFileKind = 0;
constexpr std::int16_t kFolderKind = 1;
constexpr char16_t kSeparator = u'\\';

// A walk through the archive from its start.
class TarReader {
public:
    explicit TarReader(IHostStream& stream) : stream_(stream), archive_(archive_read_new()) {
        stream_.seek(0, 0, nullptr);
        archive_read_support_format_tar(archive_.get());
        archive_read_set_seek_callback(archive_.get(), &TarReader::seek);
        opened_ = archive_read_open(archive_.get(), this, nullptr, &TarReader::read, nullptr) == ARCHIVE_OK;
    }
    TarReader(const TarReader&) = delete;
    TarReader& operator=(const TarReader&) = delete;

    bool isOpen() const { return opened_; }
    // Null at the end, and where the archive is broken.
    archive_entry* next() {
        archive_entry* entry = nullptr;
        const int result = archive_read_next_header(archive_.get(), &entry);
        failed_ = result != ARCHIVE_OK && result != ARCHIVE_WARN && result != ARCHIVE_EOF;
        return result == ARCHIVE_OK || result == ARCHIVE_WARN ? entry : nullptr;
    }
    bool failed() const { return failed_; }
    // What really comes, whatever the header promised.
    std::optional<std::string> data(std::int64_t most) {
        std::string bytes;
        char block[32 * 1024];
        la_ssize_t count = 0;
        while ((count = archive_read_data(archive_.get(), block, sizeof block)) > 0) {
            bytes.append(block, static_cast<std::size_t>(count));
            if (static_cast<std::int64_t>(bytes.size()) > most) {
                return std::nullopt;
            }
        }
        return count == 0 ? std::optional(std::move(bytes)) : std::nullopt;
    }

private:
    struct Free {
        void operator()(archive* reader) const { archive_read_free(reader); }
    };

    static la_ssize_t read(archive*, void* self, const void** block) {
        auto* reader = static_cast<TarReader*>(self);
        std::int32_t count = 0;
        reader->stream_.read(reader->buffer_, sizeof reader->buffer_, &count);
        *block = reader->buffer_;
        return std::max(count, 0);
    }
    static la_int64_t seek(archive*, void* self, la_int64_t offset, int whence) {
        std::int64_t position = 0;
        const FResult result = static_cast<TarReader*>(self)->stream_.seek(offset, whence, &position);
        return result == kResultOk ? position : ARCHIVE_FATAL;
    }

    IHostStream& stream_;
    std::unique_ptr<archive, Free> archive_;
    bool opened_ = false;
    bool failed_ = false;
    char buffer_[32 * 1024];
};

// The path within the archive; nothing for the root, and for a name that has no place in it.
std::optional<std::u16string> pathOf(const char* name) {
    const auto wide = name == nullptr ? std::nullopt : platform::fromNativePath(name);
    if (!wide) {
        return std::nullopt;
    }
    std::u16string path;
    for (std::size_t start = 0; start < wide->size();) {
        const std::size_t end = std::min(wide->find(kSeparator, start), wide->size());
        const std::u16string_view part = std::u16string_view(*wide).substr(start, end - start);
        start = end + 1;
        if (part == u"..") {
            return std::nullopt;
        }
        if (!part.empty() && part != u".") {
            path.append(path.empty() ? u"" : u"\\").append(part);
        }
    }
    return path.empty() ? std::nullopt : std::optional(std::move(path));
}

class MemoryStream final : public test::Counted<IHostStream> {
public:
    explicit MemoryStream(std::string bytes) : bytes_(std::move(bytes)) {}

    FResult read(void* buffer, std::int32_t size, std::int32_t* count) override {
        if (size < 1) {
            return kResultFalse;
        }
        const std::size_t left = bytes_.size() - std::min(position_, bytes_.size());
        const std::size_t taken = std::min(left, static_cast<std::size_t>(size));
        std::memcpy(buffer, bytes_.data() + (bytes_.size() - left), taken);
        position_ += taken;
        if (count != nullptr) {
            *count = static_cast<std::int32_t>(taken);
        }
        return kResultOk;
    }
    FResult write(const void*, std::int32_t, std::int32_t*) override { return kResultFalse; }
    FResult seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) override {
        if (mode < 0 || mode > 2) {
            return kResultFalse;
        }
        const auto end = static_cast<std::int64_t>(bytes_.size());
        const std::int64_t base = mode == 0 ? 0 : mode == 1 ? static_cast<std::int64_t>(position_) : end;
        std::int64_t target = 0;
        if (__builtin_add_overflow(base, offset, &target) || target < 0) {
            return kResultFalse;
        }
        position_ = static_cast<std::size_t>(target);
        if (position != nullptr) {
            *position = target;
        }
        return kResultOk;
    }
    FResult tell(std::int64_t* position) override {
        if (position == nullptr) {
            return kInvalidArgument;
        }
        *position = static_cast<std::int64_t>(position_);
        return kResultOk;
    }

private:
    std::string bytes_;
    std::size_t position_ = 0;
};

} // namespace

TarVolume* TarVolume::open(IHostStream* stream) {
    auto volume = FRefPtr<TarVolume>::adopt(new TarVolume(stream));
    return stream != nullptr && volume->readContents() ? volume.detach() : nullptr;
}

bool TarVolume::readContents() {
    TarReader reader(*stream_);
    std::int64_t ordinal = 0;
    for (archive_entry* entry = reader.isOpen() ? reader.next() : nullptr; entry != nullptr; entry = reader.next()) {
        const bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
        const auto path = pathOf(archive_entry_pathname(entry));
        if (path &&
            (isFolder || (archive_entry_filetype(entry) == AE_IFREG && archive_entry_hardlink(entry) == nullptr))) {
            enter(*path, {isFolder, isFolder ? 0 : archive_entry_size(entry), archive_entry_mtime(entry), ordinal});
        }
        ++ordinal;
    }
    return reader.isOpen() && !reader.failed();
}

void TarVolume::enter(const std::u16string& path, const Entry& entry) {
    entries_[path] = entry;
    // Archives needn't spell the folders out.
    for (std::size_t end = path.rfind(kSeparator); end != path.npos && end != 0;
         end = path.rfind(kSeparator, end - 1)) {
        Entry& folder = entries_.try_emplace(path.substr(0, end), Entry{true, 0, entry.modified, -1}).first->second;
        folder.isFolder = true;
    }
}

const TarVolume::Entry* TarVolume::find(const char16_t* path) const {
    static const Entry root{true, 0, 0, -1};
    if (*path == 0) {
        return &root;
    }
    const auto found = entries_.find(path);
    return found == entries_.end() ? nullptr : &found->second;
}

FResult TarVolume::openFile(const char16_t* path, std::uint32_t, IHostStream** out) {
    const Entry* entry = find(path);
    if (entry == nullptr || entry->isFolder) {
        return kResultFailure;
    }
    TarReader reader(*stream_);
    for (std::int64_t i = 0; i <= entry->ordinal; ++i) {
        if (!reader.isOpen() || reader.next() == nullptr) {
            return kResultFailure;
        }
    }
    std::optional<std::string> bytes = reader.data(kLargestFile);
    if (!bytes) {
        return kResultFailure;
    }
    *out = new MemoryStream(*std::move(bytes));
    return kResultOk;
}

FResult TarVolume::exists(const char16_t* path, std::int16_t* kind, std::int64_t* modified) {
    const Entry* entry = find(path);
    if (entry == nullptr) {
        return kResultFalse;
    }
    if (kind != nullptr) {
        *kind = entry->isFolder ? kFolderKind : kFileKind;
    }
    if (modified != nullptr) {
        *modified = entry->modified;
    }
    return kResultOk;
}

FResult TarVolume::getSize(const char16_t* path, std::int64_t* size) {
    const Entry* entry = find(path);
    if (entry == nullptr) {
        return kResultFailure;
    }
    *size = entry->size;
    return kResultOk;
}

IVirtualIterator* TarVolume::iterate(bool recursive, const char16_t* path) {
    const Entry* folder = find(path);
    if (folder == nullptr || !folder->isFolder) {
        return nullptr;
    }
    const std::u16string prefix = *path == 0 ? std::u16string() : std::u16string(path) + kSeparator;
    std::vector<VirtualEntry> entries;
    for (auto at = entries_.lower_bound(prefix); at != entries_.end() && at->first.starts_with(prefix); ++at) {
        const std::u16string_view name = std::u16string_view(at->first).substr(prefix.size());
        if (!recursive && name.find(kSeparator) != name.npos) {
            continue;
        }
        VirtualEntry entry{};
        name.copy(entry.name, std::size(entry.name) - 1);
        entry.kind = at->second.isFolder ? kFolderKind : kFileKind;
        entry.size = at->second.size;
        entries.push_back(entry);
    }
    return new test::VirtualEntryList(std::move(entries));
}

FResult TarVolume::createFile(const char16_t*, std::uint32_t, IHostStream**) {
    return kResultNotProvided;
}

FResult TarVolume::deleteFile(const char16_t*) {
    return kResultNotProvided;
}

FResult TarVolume::createFolder(const char16_t*) {
    return kResultNotProvided;
}

FResult TarVolume::deleteFolder(const char16_t*) {
    return kResultNotProvided;
}

FResult TarVolume::rename(const char16_t*, const char16_t*) {
    return kResultNotProvided;
}

} // namespace tessera::tar
