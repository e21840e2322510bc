// Binary form: key and value name as strings, a 16-bit truth, and with it the text as a string.
#include "persistence/registry/FRegistryEntry.h"
#include "persistence/streams/FStream.h"

namespace tessera {

bool FRegistryEntry::read(FStream& stream) {
    clearText();
    return key_.readString(stream) && valueName_.readString(stream) && stream.readBool(hasText_) &&
           (!hasText_ || text_.readString(stream));
}

bool FRegistryEntry::write(FStream& stream) const {
    return key_.writeString(stream) && valueName_.writeString(stream) && stream.writeBool(hasText_) &&
           (!hasText_ || text_.writeString(stream));
}

} // namespace tessera
