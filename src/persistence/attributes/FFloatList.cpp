#include "persistence/attributes/FFloatList.h"

namespace tessera {

double FFloatList::at(std::int32_t index) const {
    return index >= 0 && index < count() ? values_[static_cast<std::size_t>(index)] : 0;
}

bool FFloatList::next(double& out) {
    if (cursor_ >= count()) {
        return false;
    }
    out = at(cursor_++);
    return true;
}

} // namespace tessera
