// HostCore: what all host objects share: the watch over the guest, the files that are being written, the scopes that
// the selection has given out, and where notes for the user go. One per program; objects hold it by shared pointer.
#pragma once

#include "host/audio/WriterTable.h"
#include "host/checks/GuestWatch.h"
#include "host/model/ScopeTable.h"

#include <functional>
#include <memory>
#include <string>

namespace tessera::host {

struct HostCore {
    std::shared_ptr<GuestWatch> watch = std::make_shared<GuestWatch>();
    WriterTable writers;
    ScopeTable scopes;
    // One line for the user, without a line end.
    std::function<void(const std::string&)> note = [](const std::string&) {};
};

} // namespace tessera::host
