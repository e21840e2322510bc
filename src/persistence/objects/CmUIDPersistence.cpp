#include "foundation/object/CmUID.h"
#include "foundation/text/FString.h"

namespace tessera {

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

} // namespace tessera
