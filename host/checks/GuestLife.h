// GuestLife: where the one guest of this host stands, as far as the host's interfaces are concerned.
#pragma once

namespace tessera::host {

enum class GuestLife {
    none,       // nothing was loaded; the interfaces answer whoever calls
    running,    // from the call of initialize to the return of terminate
    terminated, // it may give references back and take its listeners out, and nothing else
};

} // namespace tessera::host
