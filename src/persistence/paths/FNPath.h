// FNPath: a path of the native file system, the one form that names real files.
//
// Texts may come with "/" or backslashes and are kept with backslashes; the platform layer turns them into the system's
// own form at each call. Path texts of any length are kept; only getNativePath is bound to 260 units.
#pragma once

#include "foundation/object/CmClass.h"
#include "persistence/paths/FPath.h"
#include "persistence/paths/SpecialFolders.h"

#include <cstdint>

namespace tessera {

class FNPath : public CmClass<FNPath, FPath> {
public:
    static FMetaClass metaClass;

    explicit FNPath(PathKind kind = PathKind::file) : CmClass(kind) {}
    FNPath(const FStringRef& text, PathKind kind);
    // The name in a special folder, or in a sub-folder of it. With create, the folders that are missing are made; a
    // sub-folder is made in any case. A folder that the system won't give leaves the folder part empty.
    FNPath(const FStringRef& name, PathFolder folder, PathKind kind, const FStringRef& subFolder = FStringRef(),
           bool create = false);
    FNPath(const FStringRef& name, const FPath& parent, PathKind kind);
    explicit FNPath(IHostPath& path);
    FNPath(const FNPath& other);
    FNPath& operator=(const FNPath& other);
    ~FNPath() override;

    CmObject* clone() const override;

    bool makeUnique(IUniqueNamer& namer) override;
    void ensureExtension(bool replaceExisting) override;
    void updateFileType(bool mayReadContent) override;
    void set(const FStringRef& text, PathKind kind) override;
    bool isRootPath(const FStringRef& text) const override;
    bool sanitize(char16_t replacement) override;
    std::int32_t getCachedSize() const override;
    void setNativePath(const FStringRef& text) override;

    // The low 32 bits of the size as an iterator saw it; -1 for unknown, which getCachedSize gives as 0.
    void setCachedSize(std::int32_t size) { cachedSize_ = size; }

private:
    // Whether the file's first bytes told its type.
    bool detectType();

    std::int32_t cachedSize_ = -1;
};

} // namespace tessera
