#include "persistence/attributes/RecordVariant.h"

#include "foundation/messages/FAttributeValue.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/text/FVariant.h"
#include "persistence/attributes/FXmlObject.h"

namespace tessera {

using namespace AttributeBits;

void objectToVariant(CmObject* object, FVariant& out) {
    out.clear();
    CmObject* live = FXmlObject::resolve(object);
    if (live == nullptr) {
        return;
    }
    const auto* wrapper = cmCast<CmDelegatingUnknown>(live);
    out.setObject(wrapper != nullptr ? wrapper->getObject() : static_cast<IBaseUnknown*>(live), 0);
}

bool recordToVariant(const FAttributeValue& record, FVariant& out) {
    out.clear();
    if (record.hasType(kInteger)) {
        out.setInteger(record.getInt());
    } else if (record.hasType(kFloat)) {
        out.setFloat(record.getFloat());
    } else if (record.hasType(kText)) {
        record.getText().toVariant(out);
    } else if (record.hasType(kForeign)) {
        out.setObject(record.getForeign(), 0);
    } else if (record.hasType(kObject)) {
        objectToVariant(record.getObject(), out);
    }
    return out.type() != FVariant::kEmpty;
}

} // namespace tessera
