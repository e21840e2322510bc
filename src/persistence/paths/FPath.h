// FPath: a path as an object: the folder and the last component apart, what it names, and the type of the file.
//
// The folder text ends in a separator whenever it isn't empty; the name has its extension and never a separator, and is
// empty for a root. The separator is the backslash on every system. Nothing here is tied to a file that exists: kind
// and type are what was last known. Comparing is without case. FNPath is the form that names real files. No lock.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"
#include "persistence/paths/FFileType.h"
#include "persistence/paths/FHostPathView.h"
#include "persistence/paths/PathKind.h"

#include <cstdint>

namespace tessera {

struct IUniqueNamer;

class FPath : public CmClass<FPath, CmObject> {
public:
    static FMetaClass metaClass;
    static constexpr std::uint16_t kHiddenFlag = 0x100;
    static constexpr std::int16_t kKindMark = 0x100;

    explicit FPath(PathKind kind = PathKind::file);
    FPath(const FPath& other);
    FPath& operator=(const FPath& other);
    ~FPath() override;

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    CmObject* clone() const override;
    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    std::uint32_t hash(std::uint32_t tableSize) const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    bool storeAttributes(FAttributes& attributes) const override;
    // What the tree lacks is empty or 0 afterwards, but for the file type, which stays.
    bool restoreAttributes(FAttributes& attributes) override;

    virtual void setName(const FStringRef& text);
    virtual const FString& getName() const;
    // The text behind the dot; false, and out as it was, where there is none.
    virtual bool getExtension(FString& out) const;
    // The name less dot and extension. Always true.
    virtual bool getBaseName(FString& out, bool useType) const;
    // Changes the name to one that isn't taken. False where the namer found none.
    virtual bool makeUnique(IUniqueNamer& namer);
    virtual void setFileType(const FFileType& type);
    // Gives the name the extension of the file type if it lacks it.
    virtual void ensureExtension(bool replaceExisting);
    // Works the file type out of the extension and, if allowed, of the file's first bytes.
    virtual void updateFileType(bool mayReadContent);
    virtual bool isFile() const;
    // A container is a folder, too.
    virtual bool isFolder() const;
    virtual bool isLink() const;
    virtual bool isContainer() const;
    virtual bool hasKindMark() const;
    virtual bool isVisible() const;
    virtual void descend(const FStringRef& name, PathKind kind);
    // To the folder that holds it. At a root it is true each time, so a loop tests parentIsRoot(). False where no
    // folder is known; the path is left without its trailing separators then.
    virtual bool ascend();
    // Whether folder and name together are a root.
    virtual bool parentIsRoot() const;
    virtual bool isAbsolute() const;
    virtual bool isParentOf(const FPath* other) const;
    virtual const FString& getPath() const;
    virtual void setPath(const FStringRef& text);
    // Empty where folder or name holds bytes that mean nothing: such a path names nothing.
    virtual void getFullPath(FString& out) const;
    virtual void set(const FStringRef& text, PathKind kind);
    virtual bool isRootPath(const FStringRef& text) const;
    // Replaces what can't stand in a name or path; 0 for the usual replacement. True when something changed.
    virtual bool sanitize(char16_t replacement);
    virtual std::int32_t getCachedSize() const;
    // Into a buffer of 260 units; empty when folder and name together have 260 or more, and where the
    // full path is empty.
    virtual void getNativePath(char16_t* buffer) const;
    virtual void setNativePath(const FStringRef& text);

    FString getFullPath() const;
    // Position of the extension in the name, behind its dot; -1 without one. With useType and a defined type only that
    // type's extensions count, and a dot at the end begins none.
    std::int32_t findExtension(bool useType) const;
    // The type, made usable: a folder gets a name for it, a file without one is asked.
    const FFileType& getFileType();
    // The type as it stands.
    const FFileType& fileType() const { return fileType_; }

    PathKind getKind() const;
    // Clears the mark.
    void setKind(PathKind kind);
    // A mark beside the kind, for whoever wants one; a kind that isn't known carries none.
    void setKindMark(bool mark);
    // Asks the system for a kind that isn't known. What isn't there stays unknown.
    void resolveKind() const;
    void setVisible(bool visible);
    std::uint16_t getFlags() const { return flags_; }
    void setFlags(std::uint16_t flags) { flags_ = flags; }

    // The absolute path that this relative one means under base. Null when this one is absolute, or its folder's bytes
    // mean nothing. One reference for the caller.
    FPath* resolveRelative(const FPath& base) const;
    // The same in place; false, and unchanged, where there is none.
    bool resolve(const FPath& base);
    // Makes this the way from the folder base to target, "..\" included. False when base is no folder or target isn't
    // absolute. A target with nothing in common with base is copied as it is.
    bool makeRelative(const FPath* base, const FPath& target);
    bool makeRelative(const FPath* base);

    // Order of path texts, separators first, so that what a folder holds follows it directly. Null comes first.
    static int comparePaths(const FPath* a, const FPath* b, bool caseSensitive);
    // Line feeds behind separators, so that no line is longer than maxLine unless a single component is; no line is
    // made shorter than minLine, and a rest shorter than minTail isn't broken any more.
    static void wrapForDisplay(FString& text, std::int32_t minLine, std::int32_t maxLine, std::int32_t minTail);

    // Keeps the full path as text under the key, in the user's settings, and takes it from there, with the flags and
    // the kind that this path has. saveDefaultPath does nothing without a key, loadDefaultPath is false where nothing
    // is kept. Both are defined with the settings, in appservices: only who calls them needs that layer.
    void saveDefaultPath(const char* key) const;
    bool loadDefaultPath(const char* key);

    // Whether storeAttributes stores file types, for all paths of the process. On at first.
    static bool savesFileTypes() { return savesFileTypes_; }
    static void setSavesFileTypes(bool save) { savesFileTypes_ = save; }

    IHostPath& hostView() { return hostView_; }

protected:
    void setExtensionAsType(const FStringRef& extension);

    FString name_;
    FFileType fileType_;
    std::uint16_t flags_ = 0;
    // What isn't known is found out when it is asked for.
    mutable std::int16_t kind_ = 0;
    FString path_;

private:
    static bool savesFileTypes_;

    FHostPathView hostView_;
};

} // namespace tessera
