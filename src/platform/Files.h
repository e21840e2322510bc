// Files: open files, and what a path names, by the system's own means.
//
// Paths come in the framework's form: 16-bit text with backslashes, of any length; a single leading backslash is the
// root of the file tree where there are no drives. Errors are the system's numbers (errno, GetLastError), 0 for none.
// File owns its handle, is move-only, and is used by one thread at a time. Interrupted calls are repeated.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessera::platform {

// Counts from the start, the present position, the end.
enum class FileSeek { fromStart, fromHere, fromEnd };

// What to do with what is there, or isn't.
enum class FileDisposition {
    openExisting,
    // Made if it is missing, emptied if it isn't.
    createAlways,
    // Made; what is there already is a failure.
    createNew,
};

struct FileOpenFlags {
    bool read = false;
    bool write = false;
    // Ignored where the system has no share modes.
    bool shareRead = false;
    bool shareWrite = false;
    bool unbuffered = false;
    bool deleteOnClose = false;
};

class File {
public:
    File() = default;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    // An open file or one that isn't, with the reason in error. Folders aren't opened.
    static File open(std::u16string_view path, const FileOpenFlags& flags, FileDisposition disposition,
                     std::int32_t& error);

    // For the services of this folder: takes over a handle of the system that was opened by other means.
    static File adopt(std::int64_t handle);
    std::int64_t nativeHandle() const { return handle_; }

    bool isOpen() const { return handle_ != kClosed; }
    // False with a reason when the system reports a failure; the file is closed either way.
    bool close(std::int32_t& error);

    // The count, 0 at the end, -1 on failure. read may give less than is there only at the end of the file.
    std::int64_t read(void* buffer, std::int64_t size, std::int32_t& error);
    // The count, less than size only together with an error; -1 when nothing could be written.
    std::int64_t write(const void* buffer, std::int64_t size, std::int32_t& error);
    // The new position, -1 on failure.
    std::int64_t seek(std::int64_t offset, FileSeek mode, std::int32_t& error);
    // -1 on failure.
    std::int64_t size(std::int32_t& error);
    // Cuts or extends with zeros; the position stays.
    bool truncate(std::int64_t length, std::int32_t& error);
    // Hands what was written to the storage.
    bool flush(std::int32_t& error);

private:
    static constexpr std::int64_t kClosed = -1;
    // A descriptor or a handle; both fit and both have -1 as the invalid one.
    std::int64_t handle_ = kClosed;
};

enum class FileKind { missing, file, folder };

// What the path names, links followed; missing also when it can't be asked.
FileKind fileKindOf(std::u16string_view path);

// The smallest block of unbuffered access to the file's volume in bytes, 0 when it isn't known.
std::uint32_t sectorSizeOf(std::u16string_view path);

// Makes the folder and the folders above it that are missing. True when the folder is there afterwards.
bool createFolders(std::u16string_view path, std::int32_t& error);

} // namespace tessera::platform
