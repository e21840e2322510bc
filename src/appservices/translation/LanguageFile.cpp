#include "appservices/translation/LanguageFile.h"

#include "persistence/streams/FStream.h"

namespace tessera {

LanguageCode readLanguageFile(FStream& stream) {
    char bytes[2] = {};
    return stream.readChar8(bytes[0]) && stream.readChar8(bytes[1]) ? LanguageCode({bytes, sizeof bytes})
                                                                    : LanguageCode();
}

} // namespace tessera
