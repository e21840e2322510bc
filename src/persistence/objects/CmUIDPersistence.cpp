#include "foundation/object/CmUID.h"
#include "foundation/text/FString.h"
#include "persistence/attributes/FAttributes.h"

namespace tessera {

namespace {

constexpr char kIdentifierKey[] = "GUID";

} // namespace

bool CmUID::read(FStream& stream) {
    FString digits;
    if (!digits.readString(stream)) {
        return false;
    }
    fromMemoryDigits(digits.text8());
    return true;
}

bool CmUID::write(FStream& stream) const {
    char digits[kTextSize];
    toMemoryDigits(digits);
    return FString(digits).writeString(stream);
}

bool CmUID::storeAttributes(FAttributes& attributes) const {
    char text[kTextSize];
    toString(text);
    return attributes.setString(kIdentifierKey, text);
}

bool CmUID::restoreAttributes(FAttributes& attributes) {
    FString text;
    return attributes.getString(kIdentifierKey, text) && fromString(text.text8());
}

} // namespace tessera
