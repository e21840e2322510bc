#include "persistence/attributes/FAttributes.h"
#include "persistence/streams/FMemoryStream.h"

namespace tessera {

namespace {

constexpr char kDataKey[] = "Data";

} // namespace

bool FMemoryStream::storeAttributes(FAttributes& attributes) const {
    return attributes.setBinary(kDataKey, getData(), data_ != nullptr ? size_ : 0, BinaryHolding::copied);
}

bool FMemoryStream::restoreAttributes(FAttributes& attributes) {
    FBinaryView bytes;
    if (!attributes.getBinary(kDataKey, bytes)) {
        return false;
    }
    FMemoryStream copy;
    if (bytes.size > 0 && copy.write(bytes.data, bytes.size) != bytes.size) {
        return false;
    }
    copy.rewind();
    freeBlock();
    readOnly_ = false;
    takeBlock(copy);
    return true;
}

} // namespace tessera
