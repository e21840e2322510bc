#include "persistence/attributes/FAttributes.h"
#include "persistence/objects/FBinaryTreeReader.h"
#include "persistence/objects/FBinaryTreeWriter.h"

namespace tessera {

bool FAttributes::read(FStream& stream) {
    removeAll();
    return FBinaryTreeReader(stream).readSingleTree(*this);
}

bool FAttributes::write(FStream& stream) const {
    return FBinaryTreeWriter(stream).writeTree(*this);
}

} // namespace tessera
