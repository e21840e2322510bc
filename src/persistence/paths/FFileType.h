// FFileType: one kind of file, by the names that systems give it: four-character code, extensions, MIME types.
//
// The four type strings are kept in lower case, the display name as given. Two types are equal when their extensions,
// or else their second extensions, or else their MIME types are both there and the same; so two empty types are
// unequal, even one with itself, and the four-character code doesn't count.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"
#include "persistence/paths/HostTypeRecord.h"

#include <cstdint>

namespace tessera {

class FFileType : public CmClass<FFileType, CmObject> {
public:
    static FMetaClass metaClass;

    FFileType() = default;
    FFileType(const FStringRef& name, const FStringRef& dosType, std::uint32_t macType = 0,
              const FStringRef& unixType = FStringRef(), const FStringRef& mimeType = FStringRef(),
              const FStringRef& mimeTypeAlt = FStringRef());
    // macType as text: its first four characters.
    FFileType(const FStringRef& name, const FStringRef& dosType, const char* macType,
              const FStringRef& unixType = FStringRef(), const FStringRef& mimeType = FStringRef(),
              const FStringRef& mimeTypeAlt = FStringRef());
    explicit FFileType(const HostTypeRecord& record);
    FFileType(const FFileType& other);
    FFileType& operator=(const FFileType& other);
    ~FFileType() override;

    // "TEXT" gives 0x54455854, a null or empty text 0; missing characters are 0.
    static std::uint32_t macTypeFromText(const char* text);

    CmObject* clone() const override;
    bool isEqual(const CmObject* other) const override;
    bool isEqual(const HostTypeRecord& record) const;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    bool storeAttributes(FAttributes& attributes) const override;
    // What the tree lacks stays as it is.
    bool restoreAttributes(FAttributes& attributes) override;

    std::uint32_t getMacType() const { return macType_; }
    void setMacType(std::uint32_t type) { macType_ = type; }
    const FString& getDosType() const { return dosType_; }
    void setDosType(const FStringRef& type);
    const FString& getUnixType() const { return unixType_; }
    void setUnixType(const FStringRef& type);
    const FString& getMimeType() const { return mimeType_; }
    void setMimeType(const FStringRef& type);
    const FString& getMimeTypeAlt() const { return mimeTypeAlt_; }
    void setMimeTypeAlt(const FStringRef& type);
    const FString& getName() const { return name_; }
    void setName(const FStringRef& name) { name_ = name; }

    // Whether any of the type strings or the four-character code is there; the name doesn't count.
    bool isDefined() const;
    void clear();

    // Takes code, extension and name; the other three become empty.
    void fromRecord(const HostTypeRecord& record);
    // Texts are cut to what the record holds.
    void toRecord(HostTypeRecord& record) const;

private:
    std::uint32_t macType_ = 0;
    FString dosType_;
    FString unixType_;
    FString mimeType_;
    FString mimeTypeAlt_;
    FString name_;
};

} // namespace tessera
