// callGuest: one call into the guest. An exception that comes out of it is reported by the name of the operation and
// ends there.
#pragma once

#include "host/checks/GuestWatch.h"

#include <exception>
#include <string>

namespace tessera::host {

template <class Operation, class Result>
Result callGuest(GuestWatch& watch, const char* name, Operation operation, Result whenThrown) {
    try {
        return operation();
    } catch (const std::exception& failure) {
        watch.misuse(std::string("an exception came out of ") + name + ": " + failure.what());
    } catch (...) {
        watch.misuse(std::string("an exception came out of ") + name);
    }
    return whenThrown;
}

template <class Operation>
void callGuest(GuestWatch& watch, const char* name, Operation operation) {
    callGuest(
        watch, name,
        [&] {
            operation();
            return true;
        },
        false);
}

} // namespace tessera::host
