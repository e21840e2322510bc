#include "persistence/attributes/FIntList.h"

namespace tessera {

std::int64_t FIntList::at(std::int32_t index) const {
    return index >= 0 && index < count() ? values_[static_cast<std::size_t>(index)] : 0;
}

bool FIntList::next(std::int64_t& out) {
    if (cursor_ >= count()) {
        return false;
    }
    out = at(cursor_++);
    return true;
}

} // namespace tessera
