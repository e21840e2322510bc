// FFileSystem: all work on files and folders, by path objects. The one that serves the program's files is FNFileSystem;
// a mounted archive is another. Each operation of this class answers with nothing or false.
//
// Paths are looked at, not kept; those that an operation changes come as a plain reference. A path of another form than
// the file system knows is answered with nothing. Streams and iterators that are handed out carry one reference for the
// caller. Sizes are bytes, times whole seconds since 1970 in UTC, errors the system's numbers with 0 for none. Links,
// other than those whose name ends in ".lnk", are followed, but never entered by an operation that goes into
// sub-folders. No lock: one thread at a time.
#pragma once

#include "foundation/object/CmClass.h"
#include "persistence/files/FileChangeKind.h"
#include "persistence/files/VolumeKind.h"

#include <cstdint>

namespace tessera {

class FFileIterator;
class FPath;
class FStream;
class FString;
class FStringRef;
struct IFileProgress;

class FFileSystem : public CmClass<FFileSystem, CmObject> {
public:
    static FMetaClass metaClass;

    // The file system of the process, made on first use. Null once the singletons have gone down.
    static FFileSystem* getInstance();

    // mode is a word of FileOpenMode. Null on failure, with the reason in error unless that is null.
    // Makes the file or empties the one that is there; with the bits for writing and for missing folders, these are
    // made too.
    virtual FStream* createFile(FPath& path, std::uint32_t mode, std::int32_t* error);
    // An existing file, which keeps its content. Null for a folder. The path takes the name's case from the system.
    virtual FStream* openFile(FPath& path, std::uint32_t mode, std::int32_t* error);
    // Closes the file, tells the change if the stream was open for writing, and releases the stream. Null is allowed.
    virtual void closeStream(FStream* stream);
    // Also a file that is marked as read-only; a link goes itself, not what it points at.
    virtual bool deleteFile(const FPath& path);
    virtual bool fileExists(const FPath& path);
    // newName is a name in the same folder or a whole path. What has that name already is never replaced. The path
    // object takes over the new name.
    virtual bool rename(FPath& path, const FStringRef& newName);
    // What lies in an archive moves within it alone.
    virtual bool move(FPath& path, const FPath& target);
    // The target appears, or is replaced, only when all of it has been written. progress may be null; false when it
    // cancelled. A file isn't copied onto itself. The source may lie in an archive.
    virtual bool copyFile(const FPath& source, const FPath& target, IFileProgress* progress);
    // With the folders above it. True when the folder is there afterwards.
    virtual bool createFolder(const FPath& path);
    // The label of the volume that holds the path, or the name of its kind.
    virtual bool getVolumeName(const FPath& path, FString& out);
    // The files; with recursive, the sub-folders too. False as soon as something can't be deleted, and for a folder in
    // an archive.
    virtual bool deleteFolderContent(const FPath& path, bool recursive);
    virtual bool getFileTimes(const FPath& path, std::int64_t& created, std::int64_t& modified);
    // -1 for what isn't there, 0 for a folder.
    virtual std::int64_t getFileSize(const FPath& path);
    // Makes a text fit for a file name: at most 260 characters, each that can't stand in a name replaced, by "_" for a
    // replacement of 0. strip drops control characters first. Whether anything changed.
    virtual bool sanitizeName(FString& text, char16_t replacement, bool strip);
    // Null where the file system can't walk the folder.
    virtual FFileIterator* newIterator(const FPath& folder, bool resolveLinks);
    // How many files there are, and with folders how many folders as well. Their sizes are added to size unless null.
    virtual std::int64_t countFiles(const FPath& folder, bool folders, bool recursive, std::int64_t* size);
    // The folder with all that it holds becomes target, which must not be there yet. Links are copied as links. What
    // was copied before a failure is removed again. False where one of the two lies in an archive.
    virtual bool copyFolder(const FPath& source, const FPath& target, IFileProgress* progress);
    // With all that it holds.
    virtual bool deleteFolder(const FPath& path);
    virtual bool folderExists(const FPath& path);
    // Shows the address with the program that the desktop has for it.
    virtual bool openUrl(const FStringRef& url);
    virtual bool isAbsolute(const FPath& path);
    virtual bool isRootPath(const FStringRef& text);
    // Tells everybody who joined FileChangeHub: a message "PathChanged" with "change" (the path), "kind" and, where
    // there is one, "other" (the old path).
    virtual void notifyChange(FileChangeKind kind, const FPath& path, const FPath* other);

    // Makes a text fit for a path: of the colons the first one stays. With a replacement of 0 each character has its
    // own stand-in. Whether anything changed.
    virtual bool sanitizePath(FString& text, char16_t replacement);
    // The file's size as text, such as "1.500 MB", in units up to maxLevel: 1 bytes, 2 KB, 3 MB, 4 GB. False for an
    // empty file or none.
    virtual bool formatSize(const FPath& path, FString& text, std::int32_t maxLevel);
    // Shows the folder of the file in the desktop's file manager, with the file selected where that is possible.
    virtual bool revealInShell(const FPath& path);
    // Opens the file with the program that the desktop has for its type.
    virtual bool openDocument(const FPath& path);
    // Sets the path to what the link points at, of a kind that is found out later and without a type. False for what is
    // no link.
    virtual bool resolveLink(FPath& path);
    // Makes a link to target. Its name gets ".lnk" and, if that is taken, a number; the path takes over the name.
    virtual bool createLink(FPath& path, const FPath& target);
    virtual VolumeKind getVolumeKind(const FPath& path);
    // The number of the disk that holds the path. False where the system doesn't number its disks.
    virtual bool getDiskNumber(const FPath& path, FString& out);
    // What this user may still write on the volume; -1 when it isn't known.
    virtual std::int64_t getFreeSpace(const FPath& path);
    // Whether both name one existing file or folder; the texts may differ.
    virtual bool isSameFile(const FPath& a, const FPath& b);
    // Starts and stops the messages "VolMount" and "VolUnmount", with the volume's root under "kRootPath". False where
    // the system doesn't tell. Listeners are message targets (see FMessenger), borrowed until they are removed.
    virtual bool setVolumeMessages(bool wanted);
    virtual void addVolumeListener(IBaseUnknown* listener);
    virtual void removeVolumeListener(IBaseUnknown* listener);
};

// The text for a size: what formatSize gives. The lowest unit prints thousands: 512 gives "0.512 Bytes".
bool formatByteCount(std::int64_t size, FString& text, std::int32_t maxLevel);

} // namespace tessera
