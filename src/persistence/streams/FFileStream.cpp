#include "persistence/streams/FFileStream.h"

#include "persistence/streams/IStreamWatcher.h"

#include <utility>

namespace tessera {

namespace {

constexpr platform::FileSeek kMoveMethods[] = {platform::FileSeek::fromStart, platform::FileSeek::fromHere,
                                               platform::FileSeek::fromEnd};

// Streams opened so find their size by going to the end.
constexpr std::uint32_t kSizeBySeeking = FileOpenMode::write | FileOpenMode::unbuffered;

} // namespace

FFileStream::FFileStream(platform::File file, const FNPath& path, std::uint32_t mode, std::uint32_t sectorSize)
    : path_(path), mode_(mode), sectorSize_(sectorSize), file_(std::move(file)) {}

FFileStream::~FFileStream() = default;

std::int32_t FFileStream::read(void* buffer, std::int32_t size) {
    if (!isOpen() || buffer == nullptr || size <= 0) {
        return 0;
    }
    if (!admits(size)) {
        return -1;
    }
    std::int32_t error = 0;
    const std::int64_t count = file_.read(buffer, size, error);
    keepError(error);
    return static_cast<std::int32_t>(count > 0 ? count : 0);
}

std::int32_t FFileStream::write(const void* buffer, std::int32_t size) {
    if (!isOpen() || buffer == nullptr || size <= 0) {
        return 0;
    }
    if (!admits(size)) {
        return -1;
    }
    std::int32_t error = 0;
    const std::int64_t count = file_.write(buffer, size, error);
    keepError(error);
    return static_cast<std::int32_t>(count > 0 ? count : 0);
}

std::int64_t FFileStream::seek(std::int64_t offset, SeekMode mode) {
    const auto index = static_cast<std::size_t>(mode);
    if (!isOpen() || index >= std::size(kMoveMethods)) {
        return -1;
    }
    std::int32_t error = 0;
    const std::int64_t position = file_.seek(offset, kMoveMethods[index], error);
    keepError(error);
    return position;
}

std::int64_t FFileStream::tell() {
    return seek(0, SeekMode::fromHere);
}

bool FFileStream::flush() {
    if (!tellsChanges()) {
        return true;
    }
    std::int32_t error = 0;
    const bool flushed = isOpen() && file_.flush(error);
    keepError(error);
    return flushed;
}

bool FFileStream::isEndOfFile() {
    return getSize() <= tell();
}

std::int64_t FFileStream::getSize() {
    if (!isOpen()) {
        return 0;
    }
    if ((mode_ & kSizeBySeeking) == kSizeBySeeking) {
        const std::int64_t position = tell();
        const std::int64_t end = seek(0, SeekMode::fromEnd);
        seek(position, SeekMode::fromStart);
        return end;
    }
    std::int32_t error = 0;
    const std::int64_t size = file_.size(error);
    keepError(error);
    return size;
}

bool FFileStream::truncate(std::int64_t length) {
    if (!isOpen()) {
        return false;
    }
    std::int32_t error = 0;
    const bool done = file_.truncate(length, error);
    keepError(error);
    return done;
}

void FFileStream::close() {
    std::int32_t error = 0;
    file_.close(error);
    keepError(error);
}

bool FFileStream::admits(std::int32_t size) {
    if (watcher_ == nullptr) {
        return true;
    }
    if (!watcher_->mayTransfer(size)) {
        return false;
    }
    watcher_->advance(size);
    return true;
}

void FFileStream::keepError(std::int32_t error) {
    if (lastError_ == 0) {
        lastError_ = error;
    }
}

} // namespace tessera
