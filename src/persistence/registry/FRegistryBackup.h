// FRegistryBackup: remembers values of the user's registry and makes them what they were, a value that wasn't there
// included. It is saved as any object, so what one run of the program changed another can put back. No lock.
#pragma once

#include "foundation/containers/CmArray.h"
#include "persistence/registry/FRegistryEntry.h"

namespace tessera {

class FRegistryBackup : public CmClass<FRegistryBackup, CmObject> {
public:
    static FMetaClass metaClass;

    FRegistryBackup();
    FRegistryBackup(const FRegistryBackup& other);

    CmObject* clone() const override;
    // The same entries in the same order.
    bool isEqual(const CmObject* other) const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

    // A value to look after, without a text until backup() asks for it. False when it is among them already.
    bool add(const FStringRef& key, const FStringRef& valueName);
    void removeAll() { entries_.removeAll(); }
    std::int32_t getCount() const { return entries_.getCount(); }
    // Borrowed; null past the end.
    FRegistryEntry* at(std::int32_t index) const;
    FRegistryEntry* find(const FStringRef& key, const FStringRef& valueName) const;

    // Each entry takes the text that is there now.
    void backup();
    // Puts back each entry, in order; false when that failed for any, the others are put back all the same.
    bool restore() const;

private:
    CmArray entries_;
};

} // namespace tessera
