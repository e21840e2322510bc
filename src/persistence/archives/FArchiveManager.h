// FArchiveManager: the archives that are mounted, and the way from a virtual path to the one that holds it.
//
// A "vfs" path mounts its archive on first use: the component of the category "VirtualFileSystem" whose file type is
// the archive's opens it. Mounts of other schemes are entered by whoever offers them. Keys are kept in upper case, so
// two archives whose names differ in case alone share a mount; the archive is opened by the key as it was given.
//
// Any thread asks for what is mounted; archives are mounted and dropped on the main thread, where components are made
// and given back. The table is guarded by a recursive lock, which is held while a component opens an archive. A
// component must therefore not wait for another thread that uses virtual paths; opening a further archive itself is
// fine. File systems that are given out are borrowed, and stand until they are removed.
#pragma once

#include "foundation/containers/CmHashTable.h"
#include "foundation/text/FString.h"
#include "foundation/threads/FLock.h"

#include <cstdint>

namespace tessera {

class ArchiveEntry;
class FFileIterator;
class FFileSystem;
class FPath;
struct IBaseUnknown;

class FArchiveManager : public CmClass<FArchiveManager, CmObject> {
public:
    static FMetaClass metaClass;

    enum Removal : std::int32_t { kUnlessMountedTwice = 0, kForced = 1 };

    // Made on first use. Null once the singletons have gone down.
    static FArchiveManager* getInstance();
    // Given to each component when it is initialised; borrowed, may be null.
    static void setHostContext(IBaseUnknown* context);

    FArchiveManager();
    ~FArchiveManager() override;

    // Null when it can't be had: no key, no component for the type, an archive that it can't open, or one that lies in
    // more than 15 others.
    FFileSystem* getFileSystem(const FPath& path);
    // False for null and empty arguments. What stands under the key already stays, counted once more.
    bool addArchive(FFileSystem* fileSystem, const FStringRef& scheme, const FStringRef& key);
    // True when the entry went. Of an archive that was added twice or more, one count goes instead, unless force is
    // exactly 1.
    bool removeArchive(const FStringRef& scheme, const FStringRef& key, std::int32_t force);
    // Closes and drops the mounts that were added once and have no live stream.
    void removeUnusedRemovables();
    // Over the folder that a virtual path names. One reference for the caller.
    FFileIterator* newIterator(const FPath& path);

    // False, and out as it was, when the path has none.
    static bool getScheme(const FPath& path, FString& out);
    static bool getArchiveKey(const FPath& path, FString& out);
    // What the path names inside its archive. See VirtualPath.h.
    static FString getInnerPath(const FPath& path);

    std::int32_t getMountCount(const FStringRef& key);

private:
    ArchiveEntry* find(const FStringRef& key) const;
    FFileSystem* mount(const FString& scheme, const FString& key);

    CmHashTable table_;
    FLock lock_{"FLock"};
};

} // namespace tessera
