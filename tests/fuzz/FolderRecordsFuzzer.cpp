// What the system writes about a folder may be cut or damaged: no more changes come out than could stand in the buffer,
// each of a known action, with a name that is UTF-8 and no longer than its bytes.
#include "foundation/text/FUtf8.h"
#include "platform/FolderRecords.h"

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace {

using namespace tessera;

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool isUtf8(const std::string& text) {
    std::u16string units(FUtf8::widenedLength(text.data(), text.size()), u'\0');
    return FUtf8::widen(text.data(), text.size(), units.data(), units.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto changes = platform::parseFolderRecords(std::as_bytes(std::span(data, size)));
    check(changes.size() <= size / 16 + 1);
    for (const platform::FolderChange& change : changes) {
        check(change.action <= platform::FolderChange::kLastAction);
        // A unit of two bytes becomes three at the most.
        check(change.name.size() <= size / 2 * 3 && isUtf8(change.name));
        check(change.name.find('\\') == std::string::npos);
    }
    return 0;
}
