// What a record holds, as the value that crosses to other modules. Internal to this folder.
#pragma once

namespace tessera {

class CmObject;
class FAttributeValue;
class FVariant;

// The object as another module knows it: the live object behind a stand-in, the foreign one behind a wrapper. Without
// the owner bit; an empty value for null.
void objectToVariant(CmObject* object, FVariant& out);

// False, and an empty value, for a record that holds nothing or a bare pointer.
bool recordToVariant(const FAttributeValue& record, FVariant& out);

} // namespace tessera
