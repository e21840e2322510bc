#include "foundation/messages/FIntIDAttribute.h"
#include "persistence/streams/FStream.h"

namespace tessera {

bool FIntIDAttribute::read(FStream& stream) {
    return stream.readUInt32(id_) && FAttributeValue::read(stream);
}

bool FIntIDAttribute::write(FStream& stream) const {
    return stream.writeUInt32(id_) && FAttributeValue::write(stream);
}

} // namespace tessera
