#include "foundation/containers/CmHashTable.h"
#include "persistence/streams/FStream.h"

namespace tessera {

bool CmHashTable::read(FStream& stream) {
    std::int32_t size = 0;
    return stream.readInt32(size) && rehash(size < 1 ? kDefaultSize : size) && readElements(stream);
}

bool CmHashTable::write(FStream& stream) const {
    return stream.writeInt32(size_) && writeElements(stream);
}

} // namespace tessera
