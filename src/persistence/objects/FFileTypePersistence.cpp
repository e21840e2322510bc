// Binary form: 32-bit four-character code, then the strings extension, second extension and display name. As a tree,
// the same under "MacType", "DosType", "UnixType" and "Name", each only where there is something. The MIME types aren't
// stored.
#include "persistence/attributes/FAttributes.h"
#include "persistence/paths/FFileType.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

constexpr const char* kMacType = "MacType";
constexpr const char* kDosType = "DosType";
constexpr const char* kUnixType = "UnixType";
constexpr const char* kName = "Name";

bool storeText(FAttributes& attributes, const char* name, const FString& text) {
    return text.isEmpty() || attributes.setString(name, text);
}

} // namespace

bool FFileType::read(FStream& stream) {
    clear();
    const bool complete = stream.readUInt32(macType_) && dosType_.readString(stream) && unixType_.readString(stream) &&
                          name_.readString(stream);
    // Others may have written them otherwise.
    setDosType(dosType_);
    setUnixType(unixType_);
    return complete;
}

bool FFileType::write(FStream& stream) const {
    return stream.writeUInt32(macType_) && dosType_.writeString(stream) && unixType_.writeString(stream) &&
           name_.writeString(stream);
}

bool FFileType::storeAttributes(FAttributes& attributes) const {
    return (macType_ == 0 || attributes.setInt(kMacType, macType_)) && storeText(attributes, kDosType, dosType_) &&
           storeText(attributes, kUnixType, unixType_) && storeText(attributes, kName, name_);
}

bool FFileType::restoreAttributes(FAttributes& attributes) {
    std::int64_t macType = 0;
    if (attributes.getInt(kMacType, macType)) {
        macType_ = static_cast<std::uint32_t>(macType);
    }
    FString text;
    if (attributes.getString(kDosType, text)) {
        setDosType(text);
    }
    if (attributes.getString(kUnixType, text)) {
        setUnixType(text);
    }
    attributes.getString(kName, name_);
    return true;
}

} // namespace tessera
