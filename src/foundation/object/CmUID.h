// CmUID: an identifier as an object, for containers and persistence.
//
// Its stream form is 32 digits of the bytes as they lie in memory; its attribute form is FUID::toString, in which the
// words read as numbers. So the two differ in the first eight bytes. A third form is a short text of 26 characters.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FUID.h"

namespace tessera {

class CmUID : public CmClass<CmUID, CmObject>, public FUID {
public:
    static FMetaClass metaClass;
    static constexpr std::size_t kBase32Size = 27;

    CmUID() = default;
    explicit CmUID(const FUIDBytes& bytes) : FUID(bytes) {}
    // A null source gives the zero value.
    explicit CmUID(const CmUID* source) : FUID(source != nullptr ? source->bytes() : FUIDBytes{}) {}

    bool isEqual(const CmObject* other) const override;
    CmUID* clone() const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // Under "GUID". False, and unchanged, when the tree has none, or no 32 digits there.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

    // Two digits to a byte in memory order, upper case. At most 32 characters are read; what is no digit counts 0.
    void toMemoryDigits(char* buffer) const;
    void fromMemoryDigits(const char* text);

    // 26 characters of five bits each, from byte 0 upward, lowest bit first; 0 to 9, then A to V. A text that ends
    // early leaves the rest 0; what is no digit counts 0.
    void toBase32(char* buffer) const;
    void fromBase32(const char* text);
};

} // namespace tessera
