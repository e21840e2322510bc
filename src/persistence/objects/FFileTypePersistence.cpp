// Binary form: 32-bit four-character code, then the strings extension, second extension and display name. The MIME
// types aren't stored.
#include "persistence/paths/FFileType.h"
#include "persistence/streams/FStream.h"

namespace tessera {

bool FFileType::read(FStream& stream) {
    clear();
    return stream.readUInt32(macType_) && dosType_.readString(stream) && unixType_.readString(stream) &&
           name_.readString(stream);
}

bool FFileType::write(FStream& stream) const {
    return stream.writeUInt32(macType_) && dosType_.writeString(stream) && unixType_.writeString(stream) &&
           name_.writeString(stream);
}

} // namespace tessera
