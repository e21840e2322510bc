// complaintOf: a command whose exception becomes its complaint, so that none leaves the host.
#pragma once

#include "host/program/Complaint.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <exception>

namespace tessera::host {

template <class Command>
Complaint complaintOf(Command command) {
    try {
        return command();
    } catch (const std::exception& failure) {
        return message(hostTexts.brokenOff, failure.what());
    }
}

} // namespace tessera::host
