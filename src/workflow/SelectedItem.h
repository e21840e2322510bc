// SelectedItem: an object of the project that the user has selected, and the host's word about how it is selected,
// which the object's operations want back.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IProjectObject.h"

#include <cstdint>

namespace tessera {

struct SelectedItem {
    FRefPtr<IProjectObject> object;
    std::uint64_t scope = 0;
};

} // namespace tessera
