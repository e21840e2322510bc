// Binary form: key and value name as strings, a 16-bit truth, and with it the text as a string. As a tree: "Key",
// "Value", and "Text" where there is one.
#include "persistence/attributes/FAttributes.h"
#include "persistence/registry/FRegistryEntry.h"
#include "persistence/streams/FStream.h"

namespace tessera {

bool FRegistryEntry::read(FStream& stream) {
    clearText();
    return key_.readString(stream) && valueName_.readString(stream) && stream.readBool(hasText_) &&
           (!hasText_ || text_.readString(stream));
}

bool FRegistryEntry::write(FStream& stream) const {
    return key_.writeString(stream) && valueName_.writeString(stream) && stream.writeBool(hasText_) &&
           (!hasText_ || text_.writeString(stream));
}

bool FRegistryEntry::storeAttributes(FAttributes& attributes) const {
    return attributes.setString("Key", key_) && attributes.setString("Value", valueName_) &&
           (!hasText_ || attributes.setString("Text", text_));
}

bool FRegistryEntry::restoreAttributes(FAttributes& attributes) {
    clearText();
    key_.clear();
    valueName_.clear();
    attributes.getString("Value", valueName_);
    hasText_ = attributes.getString("Text", text_);
    return attributes.getString("Key", key_);
}

} // namespace tessera
