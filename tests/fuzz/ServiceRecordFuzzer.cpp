// Any process of the user may leave a file in the registry's folder. It is read, or refused with one of two exceptions;
// what was read, written and read again is equal.
#include "discovery/registry/ServiceRecord.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

using namespace tessera;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ServiceRecord record;
    try {
        record.parse(std::string_view(reinterpret_cast<const char*>(data), size));
    } catch (const std::invalid_argument&) {
        return 0;
    } catch (const std::out_of_range&) {
        return 0;
    }
    ServiceRecord again;
    again.parse(record.format());
    if (!(again == record)) {
        std::abort();
    }
    return 0;
}
