// FRegistryEntry: a value of the user's registry as an object: where it stands, and the text that was there. A value
// that wasn't there has no text, which is not the empty one. Names go as platform/RegistryValues.h tells. No lock.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

namespace tessera {

class FRegistryEntry : public CmClass<FRegistryEntry, CmObject> {
public:
    static FMetaClass metaClass;

    FRegistryEntry() = default;
    FRegistryEntry(const FStringRef& key, const FStringRef& valueName) : key_(key), valueName_(valueName) {}
    FRegistryEntry(const FRegistryEntry& other) = default;
    FRegistryEntry& operator=(const FRegistryEntry& other) = default;

    CmObject* clone() const override;
    // The same value with the same text, or both without one.
    bool isEqual(const CmObject* other) const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

    const FString& getKey() const { return key_; }
    const FString& getValueName() const { return valueName_; }
    bool names(const FStringRef& key, const FStringRef& valueName) const;

    bool hasText() const { return hasText_; }
    // Empty where there is none.
    const FString& getText() const { return text_; }
    void setText(const FStringRef& text);
    void clearText();

    // Takes the text that the user's registry has now, or none.
    void take();
    // Makes the registry as the entry is: writes the text, or deletes the value. False when that can't be done.
    bool putBack() const;

private:
    FString key_;
    FString valueName_;
    FString text_;
    bool hasText_ = false;
};

} // namespace tessera
