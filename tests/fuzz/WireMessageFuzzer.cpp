// Any bytes may arrive on the link. Reading them gives a list; what is written from that list and read again is the
// same list, and a number is read or refused, nothing else.
#include "link/WireMessage.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

using namespace tessera;

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void readAsNumber(const FieldList& fields, std::size_t index) {
    try {
        fieldNumber(fields, index);
    } catch (const std::invalid_argument&) {
    } catch (const std::out_of_range&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const FieldList fields = readMessage(text);

    // The writer puts the version in front, the reader gives it as field 0.
    FieldList again = readMessage(writeMessage(fields));
    check(hasCurrentVersion(again));
    again.erase(again.begin());
    check(again == fields);

    for (std::size_t i = 0; i <= fields.size(); ++i) {
        readAsNumber(fields, i);
    }
    return 0;
}
