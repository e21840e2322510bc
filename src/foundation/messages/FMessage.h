// FMessage: a name and typed values under keys, sent or posted to a target through FMessenger.
//
// Values are kept sorted by key, so finding one is logarithmic. The typed operations take a key as a view: a key given
// as KeyHolding::constant must be a static text and is never copied. In the typed form a missing key gives 0 or null.
// Reference counted; not synchronised: whoever posts a message leaves it alone until it has been delivered.
#pragma once

#include "foundation/messages/FStringIDAttribute.h"
#include "foundation/messages/IMessageAccess.h"
#include "foundation/messages/IMessageObjects.h"
#include "foundation/object/FRefPtr.h"

namespace tessera {

class CmOrderedArray;

class FMessage : public CmClass<FMessage, CmObject, IMessageAccess, IMessageObjects> {
public:
    static FMetaClass metaClass;

    explicit FMessage(const FStringRef& name = FStringRef());
    // Pointers, foreign objects and whatever is marked AttributeBits::kLocal or kHidden stay behind.
    FMessage(const FMessage& other);
    FMessage& operator=(const FMessage&) = delete;
    ~FMessage() override;

    bool isMessage(const char* name) override;
    const char* getName() override;
    void setName(const char* name) override;
    FResult setInt(const char* key, std::int64_t value) override;
    FResult getInt(const char* key, std::int64_t* out) override;
    FResult setFloat(const char* key, double value) override;
    FResult getFloat(const char* key, double* out) override;
    FResult setString(const char* key, const char* text) override;
    FResult getString(const char* key, const char** out) override;
    FResult setPointer(const char* key, void* pointer) override;
    FResult getPointer(const char* key, void** out) override;
    FResult getString16(const char* key, const char16_t** out) override;
    FResult remove(const char* key) override;
    bool has(const char* key) override;
    FResult setObject(const char* key, IBaseUnknown* object, bool own) override;
    FResult getObject(const char* key, IBaseUnknown** out) override;

    // The typed form.
    const FStringRef& getNameText() const { return name_; }
    std::int64_t getInt(const FStringRef& key) const;
    double getFloat(const FStringRef& key) const;
    const char* getString(const FStringRef& key) const;
    const char16_t* getString16(const FStringRef& key) const;
    // Borrowed; null as well for an object of another module.
    CmObject* getObject(const FStringRef& key) const;
    void* getPointer(const FStringRef& key) const;
    // The value under the key, made if it is new; it belongs to the message. Null when there is no memory for it.
    FStringIDAttribute* obtain(const FStringRef& key, KeyHolding holding = KeyHolding::copied, std::uint16_t flags = 0);
    FStringIDAttribute* find(const FStringRef& key) const;
    std::int32_t getAttributeCount() const;

    FMessage* clone() const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;

private:
    std::int32_t lowerBound(const FStringRef& key) const;
    FStringIDAttribute* attributeAt(std::int32_t index) const;
    bool addAttribute(FStringIDAttribute* attribute);

    FString name_;
    // Made with the first value.
    FRefPtr<CmOrderedArray> attributes_;
};

} // namespace tessera
