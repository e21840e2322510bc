#include "persistence/objects/FObjectFiles.h"

#include "persistence/files/FFileSystem.h"
#include "persistence/files/PathText.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "platform/FileEntries.h"

#include <cstring>
#include <memory>
#include <utility>

namespace tessera {

namespace {

constexpr const char* kOldSuffix = "_old";
constexpr std::uint32_t kReading = FileOpenMode::read | FileOpenMode::shareRead;

enum class MissingFolder { left, made };

// Without a folder the path is empty: a bare name would mean whatever folder the process is in.
FNPath documentPath(const FStringRef& name, PathFolder folder, const FFileType& type,
                    MissingFolder missing = MissingFolder::left) {
    FNPath path(name, folder, PathKind::file, FStringRef(), missing == MissingFolder::made);
    if (path.getPath().isEmpty() || name.isEmpty()) {
        return FNPath();
    }
    path.setFileType(type);
    path.ensureExtension(false);
    return path;
}

FNPath userPath(const FStringRef& name, MissingFolder missing = MissingFolder::left) {
    return documentPath(name, PathFolder::userData, FObjectFiles::documentType(), missing);
}

FNPath backupPath(const FStringRef& name) {
    return documentPath(name, PathFolder::userData, FObjectFiles::backupType());
}

FNPath oldPath(const FNPath& path) {
    FNPath old(path);
    FString name;
    old.getBaseName(name, true);
    name.append(kOldSuffix);
    old.setName(name);
    old.ensureExtension(false);
    return old;
}

bool mayReplace(const FStringRef& name) {
    FString question = translateText("Do you want to replace ");
    question.append(name);
    question.append("?");
    return askUser(question, translateText("Replace"), translateText("Cancel"));
}

bool moveFile(FFileSystem& files, const FNPath& from, const FNPath& to) {
    FNPath moved(from);
    return files.move(moved, to);
}

// Collects what is written in small pieces, as lines are: each piece would be a call of the system.
class Collector final : public FStream {
public:
    explicit Collector(FStream& target) : target_(target) {}

    using FStream::read;
    using FStream::write;
    std::int32_t read(void* buffer, std::int32_t size) override { return sendAll() ? target_.read(buffer, size) : 0; }
    std::int32_t write(const void* buffer, std::int32_t size) override {
        if (size > kRoom - filled_ && !sendAll()) {
            return 0;
        }
        if (size > kRoom) {
            return target_.write(buffer, size);
        }
        std::memcpy(bytes_.get() + filled_, buffer, static_cast<std::size_t>(size));
        filled_ += size;
        return size;
    }
    std::int64_t seek(std::int64_t offset, SeekMode mode) override {
        return sendAll() ? target_.seek(offset, mode) : -1;
    }
    std::int64_t tell() override { return target_.tell() + filled_; }
    bool flush() override { return sendAll() && target_.flush(); }

private:
    static constexpr std::int32_t kRoom = 16 * 1024;

    bool sendAll() {
        const std::int32_t size = std::exchange(filled_, 0);
        return size == 0 || target_.write(bytes_.get(), size) == size;
    }

    FStream& target_;
    std::unique_ptr<char[]> bytes_{new char[kRoom]};
    std::int32_t filled_ = 0;
};

// The file's content and the folder's entries are on the storage when this is true.
bool writeNewFile(FFileSystem& files, FNPath& path, const FObjectFiles::Content& content) {
    std::int32_t error = 0;
    FStream* stream = files.createFile(path, FileOpenMode::write, &error);
    if (stream == nullptr) {
        return false;
    }
    Collector collector(*stream);
    const bool written = content(collector) && collector.flush();
    files.closeStream(stream);
    return written && platform::flushFolder(PathParts(path).folder(), error);
}

// What was copied to the path is on the storage, with the folder's entries, when this is true.
bool flushCopy(FFileSystem& files, FNPath path) {
    std::int32_t error = 0;
    FStream* stream = files.openFile(path, FileOpenMode::write, &error);
    if (stream == nullptr) {
        // A copy is read-only where its source is.
        stream = files.openFile(path, FileOpenMode::read | FileOpenMode::shareWrite, &error);
    }
    if (stream == nullptr) {
        return false;
    }
    const bool flushed = stream->flush();
    files.closeStream(stream);
    return flushed && platform::flushFolder(PathParts(path).folder(), error);
}

bool readFile(FFileSystem& files, FNPath path, const FObjectFiles::Content& content, bool& found) {
    std::int32_t error = 0;
    FStream* stream = path.getName().isEmpty() ? nullptr : files.openFile(path, kReading, &error);
    found = stream != nullptr;
    if (!found) {
        return false;
    }
    const bool read = content(*stream);
    files.closeStream(stream);
    return read;
}

} // namespace

const FFileType& FObjectFiles::documentType() {
    static const FFileType type("Marlgrove XML File", "xml", "TEXT");
    return type;
}

const FFileType& FObjectFiles::backupType() {
    static const FFileType type("Marlgrove XML File (Backup)", "xml.backup");
    return type;
}

bool FObjectFiles::write(const FStringRef& name, Replacing replacing, const Content& content) {
    FFileSystem* files = FFileSystem::getInstance();
    FNPath path = userPath(name, MissingFolder::made);
    if (files == nullptr || path.getName().isEmpty()) {
        return false;
    }
    const bool exists = files->fileExists(path);
    if (exists && replacing == Replacing::afterAsking && !mayReplace(name)) {
        return false;
    }
    const FNPath old = oldPath(path);
    if (exists) {
        files->deleteFile(old);
        if (!moveFile(*files, path, old)) {
            return false;
        }
    }
    if (writeNewFile(*files, path, content)) {
        files->deleteFile(old);
        return true;
    }
    files->deleteFile(path);
    // Also one that a crash has left; without any this does nothing.
    moveFile(*files, old, path);
    return false;
}

bool FObjectFiles::read(const FStringRef& name, const Content& content) {
    FFileSystem* files = FFileSystem::getInstance();
    if (files == nullptr) {
        return false;
    }
    bool found = false;
    const bool done = readFile(*files, userPath(name), content, found);
    return found ? done : readFile(*files, documentPath(name, PathFolder::module, documentType()), content, found);
}

bool FObjectFiles::saveDocument(const FStringRef& name, const char* rootTag, const FObjectDocument& document,
                                Replacing replacing) {
    return write(name, replacing, [&](FStream& stream) { return document.saveDocument(stream, rootTag); });
}

bool FObjectFiles::loadDocument(const FStringRef& name, const char* rootTag, FObjectDocument& document,
                                const FStringRef& onlyRoot, FXmlEntityColumn column) {
    return read(name, [&](FStream& stream) { return document.loadDocument(stream, rootTag, onlyRoot, column); });
}

bool FObjectFiles::saveObject(const FStringRef& name, const char* rootTag, const CmObject& object,
                              Replacing replacing) {
    return write(name, replacing,
                 [&](FStream& stream) { return FObjectDocument::saveObject(stream, rootTag, object); });
}

bool FObjectFiles::loadObject(const FStringRef& name, const char* rootTag, CmObject& object) {
    return read(name, [&](FStream& stream) { return FObjectDocument::loadObject(stream, rootTag, object); });
}

bool FObjectFiles::backupDocument(const FStringRef& name) {
    FFileSystem* files = FFileSystem::getInstance();
    const FNPath path = userPath(name);
    return files != nullptr && !path.getName().isEmpty() && files->copyFile(path, backupPath(name), nullptr);
}

bool FObjectFiles::restoreDocument(const FStringRef& name) {
    FFileSystem* files = FFileSystem::getInstance();
    const FNPath backup = backupPath(name);
    if (files == nullptr || backup.getName().isEmpty() || !files->fileExists(backup)) {
        return false;
    }
    const FNPath path = userPath(name);
    files->deleteFile(path);
    return files->copyFile(backup, path, nullptr) && flushCopy(*files, path) && files->deleteFile(backup);
}

bool FObjectFiles::deleteDocument(const FStringRef& name) {
    FFileSystem* files = FFileSystem::getInstance();
    const FNPath path = userPath(name);
    return files != nullptr && !path.getName().isEmpty() && files->deleteFile(path);
}

bool FObjectFiles::documentExists(const FStringRef& name) {
    FFileSystem* files = FFileSystem::getInstance();
    const FNPath path = userPath(name);
    return files != nullptr && !path.getName().isEmpty() && files->fileExists(path);
}

} // namespace tessera
