#include "foundation/containers/CmArrayForm.h"
#include "persistence/streams/FStream.h"

#include <utility>

namespace tessera {

bool CmArrayForm::read(FStream& stream) {
    std::int32_t growth = 0;
    if (!stream.readInt32(growth)) {
        return false;
    }
    // While it fills, the array grows as it needs to: the stored growth may be 0, or far beyond what there is.
    const std::int32_t before = std::exchange(growth_, kDoubling);
    const bool complete = readElements(stream);
    growth_ = complete ? growth : before;
    return complete;
}

bool CmArrayForm::write(FStream& stream) const {
    return stream.writeInt32(growth_ < 0 ? kDefaultGrowth : growth_) && writeElements(stream);
}

} // namespace tessera
