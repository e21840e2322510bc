#include "foundation/text/FVariant.h"
#include "foundation/values/UPlugTarget.h"
#include "persistence/attributes/IAttributes.h"

namespace tessera {

bool UPlugTarget::isPlugTarget(IAttributes& attributes) {
    FVariant value;
    return attributes.get("IsPlugTarget", value) == kResultOk;
}

} // namespace tessera
