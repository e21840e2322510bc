// ServiceId: what tells services apart: a reversed domain name and the kind of link that the service speaks.
#pragma once

#include <string>

namespace tessera {

struct ServiceId {
    friend bool operator==(const ServiceId&, const ServiceId&) = default;

    std::string name;
    std::string type;
};

// The one kind of link that there is, and the two services that meet over it.
inline constexpr const char* kLinkServiceType = "tesxcon_nanomsg";
inline constexpr const char* kOwnServiceName = "com.marlgrove.tesx";
inline constexpr const char* kPeerServiceName = "com.marlgrove.tessera";

inline ServiceId ownServiceId() {
    return {kOwnServiceName, kLinkServiceType};
}
inline ServiceId peerServiceId() {
    return {kPeerServiceName, kLinkServiceType};
}

} // namespace tessera
