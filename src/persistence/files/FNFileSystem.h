// FNFileSystem: the native file system. The first one made becomes the process's, until it goes; one is made by
// FFileSystem::getInstance().
//
// What it writes beside a user's file stands under a temporary name in the same folder until it is complete, so a
// failure or a crash leaves the old file or the new one, never a part. Sub-folders are walked by open folder, entry by
// entry, so nobody can put a link in the way meanwhile. Names that have no path form (a backslash, or bytes that are no
// UTF-8) aren't seen; deleting a folder that holds one fails.
#pragma once

#include "persistence/files/FFileSystem.h"

namespace tessera {

class FNPath;

class FNFileSystem : public CmClass<FNFileSystem, FFileSystem> {
public:
    static FMetaClass metaClass;

    FNFileSystem();
    ~FNFileSystem() override;

    FStream* createFile(FPath& path, std::uint32_t mode, std::int32_t* error) override;
    FStream* openFile(FPath& path, std::uint32_t mode, std::int32_t* error) override;
    void closeStream(FStream* stream) override;
    bool deleteFile(const FPath& path) override;
    bool fileExists(const FPath& path) override;
    bool rename(FPath& path, const FStringRef& newName) override;
    bool move(FPath& path, const FPath& target) override;
    bool copyFile(const FPath& source, const FPath& target, IFileProgress* progress) override;
    bool createFolder(const FPath& path) override;
    bool getVolumeName(const FPath& path, FString& out) override;
    bool deleteFolderContent(const FPath& path, bool recursive) override;
    bool getFileTimes(const FPath& path, std::int64_t& created, std::int64_t& modified) override;
    std::int64_t getFileSize(const FPath& path) override;
    bool sanitizeName(FString& text, char16_t replacement, bool strip) override;
    FFileIterator* newIterator(const FPath& folder, bool resolveLinks) override;
    std::int64_t countFiles(const FPath& folder, bool folders, bool recursive, std::int64_t* size) override;
    bool copyFolder(const FPath& source, const FPath& target, IFileProgress* progress) override;
    bool deleteFolder(const FPath& path) override;
    bool folderExists(const FPath& path) override;
    bool openUrl(const FStringRef& url) override;
    bool isAbsolute(const FPath& path) override;
    bool isRootPath(const FStringRef& text) override;
    void notifyChange(FileChangeKind kind, const FPath& path, const FPath* other) override;

    bool sanitizePath(FString& text, char16_t replacement) override;
    bool formatSize(const FPath& path, FString& text, std::int32_t maxLevel) override;
    bool revealInShell(const FPath& path) override;
    bool openDocument(const FPath& path) override;
    bool resolveLink(FPath& path) override;
    bool createLink(FPath& path, const FPath& target) override;
    VolumeKind getVolumeKind(const FPath& path) override;
    bool getDiskNumber(const FPath& path, FString& out) override;
    std::int64_t getFreeSpace(const FPath& path) override;
    bool isSameFile(const FPath& a, const FPath& b) override;
    bool setVolumeMessages(bool wanted) override;
    void addVolumeListener(IBaseUnknown* listener) override;
    void removeVolumeListener(IBaseUnknown* listener) override;

    // What the system's volume messages end in: tells the listeners. The root is a folder.
    void tellVolumeChange(bool arrived, const FPath& root);

private:
    bool moveTo(FNPath& path, const FNPath& target);

    // The messenger's group of those who listen to volume messages; 0 as long as there was none.
    std::int32_t volumeGroup_ = 0;
};

} // namespace tessera
