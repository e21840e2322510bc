// FFileStream: a stream over an open file. The file system opens it and, with the stream's own close(), ends it; a
// stream that goes while its file is open closes it without telling anybody.
//
// The first platform error (errno, GetLastError) is kept in lastError and never overwritten. A watcher that refuses a
// read or write makes the result -1.
#pragma once

#include "foundation/object/CmClass.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "platform/Files.h"

#include <cstdint>

namespace tessera {

class FFileStream : public CmClass<FFileStream, FStream> {
public:
    static FMetaClass metaClass;

    // A stream without a file: reads and writes nothing.
    FFileStream() = default;
    // Takes over the file. mode is a word of FileOpenMode; sectorSize is 0 unless the file is unbuffered.
    FFileStream(platform::File file, const FNPath& path, std::uint32_t mode, std::uint32_t sectorSize = 0);
    ~FFileStream() override;

    using FStream::read;
    using FStream::write;
    std::int32_t read(void* buffer, std::int32_t size) override;
    std::int32_t write(const void* buffer, std::int32_t size) override;
    std::int64_t seek(std::int64_t offset, SeekMode mode) override;
    std::int64_t tell() override;
    // Hands what was written to the storage; nothing to do, and true, for a stream that doesn't write.
    bool flush() override;
    void setWatcher(IStreamWatcher* watcher) override { watcher_ = watcher; }

    // True when the position is at or behind the end.
    bool isEndOfFile();
    std::int64_t getSize();
    // Cuts or extends the file to the length; the position stays. False on failure.
    bool truncate(std::int64_t length);
    bool isOpen() const { return file_.isOpen(); }
    void close();

    const FNPath& getPath() const { return path_; }
    std::uint32_t getMode() const { return mode_; }
    std::int32_t getLastError() const { return lastError_; }
    std::uint32_t getSectorSize() const { return sectorSize_; }
    // Whether closing has to be told to the file system.
    bool tellsChanges() const { return (mode_ & FileOpenMode::changes) != 0; }

private:
    bool admits(std::int32_t size);
    void keepError(std::int32_t error);

    FNPath path_;
    std::uint32_t mode_ = 0;
    std::int32_t lastError_ = 0;
    std::uint32_t sectorSize_ = 0;
    platform::File file_;
    IStreamWatcher* watcher_ = nullptr;
};

} // namespace tessera
