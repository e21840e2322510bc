#include "persistence/attributes/FBinaryView.h"

#include "foundation/containers/CmBuffer.h"
#include "persistence/attributes/FAttrBuffer.h"
#include "persistence/streams/FMemoryStream.h"

namespace tessera {

bool FBinaryView::of(const CmObject* object, FBinaryView& out) {
    if (const auto* buffer = cmCast<CmBuffer>(object)) {
        out = {buffer->getData(), buffer->getFill()};
    } else if (const auto* stream = cmCast<FMemoryStream>(object)) {
        out = {stream->getData(), stream->getSize()};
    } else if (const auto* foreign = cmCast<FAttrBuffer>(object)) {
        out = {foreign->getData(), foreign->getSize()};
    } else {
        return false;
    }
    return true;
}

} // namespace tessera
