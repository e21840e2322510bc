#include "persistence/attributes/FAttributes.h"
#include "persistence/streams/FStream.h"
#include "persistence/urls/FUrl.h"

namespace tessera {

namespace {

constexpr const char* kProtocol = "Protocol";
constexpr const char* kHost = "Host";
constexpr const char* kPort = "Port";
constexpr const char* kFile = "File";
constexpr const char* kUser = "User";
constexpr const char* kPassword = "Password";

bool storeUnlessEmpty(FAttributes& attributes, const char* key, const FString& text) {
    return text.isEmpty() || attributes.setString(key, text);
}

} // namespace

bool FUrl::read(FStream& stream) {
    std::int16_t port = 0;
    user_.clear();
    password_.clear();
    if (!protocol_.readString(stream) || !host_.readString(stream) || !stream.readInt16(port) ||
        !file_.readString(stream)) {
        return false;
    }
    port_ = static_cast<std::uint16_t>(port);
    // An older stream ends here.
    if (!user_.readString(stream) || !password_.readString(stream)) {
        user_.clear();
        password_.clear();
    }
    rebuild();
    return true;
}

bool FUrl::write(FStream& stream) const {
    return protocol_.writeString(stream) && host_.writeString(stream) &&
           stream.writeInt16(static_cast<std::int16_t>(port_)) && file_.writeString(stream) &&
           user_.writeString(stream) && password_.writeString(stream);
}

bool FUrl::storeAttributes(FAttributes& attributes) const {
    return attributes.setString(kProtocol, protocol_) && attributes.setString(kHost, host_) &&
           attributes.setInt(kPort, port_) && storeUnlessEmpty(attributes, kFile, file_) &&
           storeUnlessEmpty(attributes, kUser, user_) && storeUnlessEmpty(attributes, kPassword, password_);
}

bool FUrl::restoreAttributes(FAttributes& attributes) {
    FString* const texts[] = {&protocol_, &host_, &file_, &user_, &password_};
    const char* const keys[] = {kProtocol, kHost, kFile, kUser, kPassword};
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        texts[i]->clear();
        attributes.getString(keys[i], *texts[i]);
    }
    std::int64_t port = 0;
    attributes.getInt(kPort, port);
    port_ = static_cast<std::uint16_t>(port);
    rebuild();
    return true;
}

} // namespace tessera
