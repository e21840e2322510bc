// CmString: a text that can live in containers, be saved, and be handed to other modules.
//
// The text is a member, reached through string(). Equality, order and hash go by the text, case-sensitively; equal
// texts of different width are equal and hash differently. Other modules reach it as IStringSource and IStringResult.
// Reading the text can convert it, see FString: one thread at a time.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"
#include "foundation/text/IStringResult.h"

namespace tessera {

class CmContainer;

class CmString : public CmClass<CmString, CmObject, IStringResult> {
public:
    static FMetaClass metaClass;

    CmString() = default;
    explicit CmString(const FStringRef& text) : text_(text) {}
    CmString(const CmString& other) = default;
    CmString& operator=(const CmString&) = delete;
    ~CmString() override = default;

    FString& string() { return text_; }
    const FString& string() const { return text_; }

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    std::uint32_t hash(std::uint32_t tableSize) const override;
    // The stream form of FString.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // Under "s".
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
    CmString* clone() const override;

    void setText8(const char* text) override;
    void setText16(const char16_t* text) override;
    const char* getText8() override;
    const char16_t* getText16() override;
    bool isWide() override;
    bool isEmpty() override;

    // Adds the pieces of the text between the separators to the list, as new objects that the list then owns; its
    // ownership is set to owner. Empty pieces are dropped, except for the one behind the last separator. The number of
    // items in the list; a null text adds none.
    static std::int32_t split(const char* text, char separator, CmContainer& list, FItemForm form,
                              FEmptyLastItem emptyLast);
    static std::int32_t split(const char16_t* text, char16_t separator, CmContainer& list, FItemForm form,
                              FEmptyLastItem emptyLast);

private:
    FString text_;
};

} // namespace tessera
