// ArchiveEntry: one row in the archive manager's table: a mounted file system under its scheme and key.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/files/FFileSystem.h"

#include <cstdint>

namespace tessera {

class ArchiveEntry : public CmClass<ArchiveEntry, CmObject> {
public:
    static FMetaClass metaClass;

    // The key is kept in upper case; the file system may be null in an entry that is only looked for.
    ArchiveEntry(const FStringRef& scheme, const FStringRef& key, FFileSystem* fileSystem);
    ~ArchiveEntry() override;

    const FString& getScheme() const { return scheme_; }
    const FString& getKey() const { return key_; }
    FFileSystem* getFileSystem() const { return fileSystem_.get(); }
    std::int32_t getMountCount() const { return mountCount_; }
    void setMountCount(std::int32_t count) { mountCount_ = count; }
    // For a look-up under the key as it is spelled.
    void setKeyAsGiven(const FStringRef& key) { key_ = key; }

    // By key alone.
    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    std::uint32_t hash(std::uint32_t tableSize) const override;

private:
    FString scheme_;
    FString key_;
    FRefPtr<FFileSystem> fileSystem_;
    std::int32_t mountCount_ = 1;
};

} // namespace tessera
