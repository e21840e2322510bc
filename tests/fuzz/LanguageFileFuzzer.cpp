// The file "lang.cfg": two bytes of anything, and more.
#include "appservices/translation/LanguageFile.h"
#include "appservices/translation/LanguageTable.h"
#include "persistence/streams/FMemoryStream.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace tessera;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FMemoryStream stream(static_cast<const void*>(data), static_cast<std::int32_t>(size));
    const LanguageCode code = readLanguageFile(stream);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    require(code.isComplete() == (size >= 2 && bytes.substr(0, 2).find('\0') == std::string_view::npos));
    require(!code.isComplete() || code.view() == bytes.substr(0, 2));
    const std::int32_t index = LanguageTable::indexOfCode(code.text());
    require(index == LanguageTable::kEnglish || LanguageTable::codeOf(index) == code.view());
    return 0;
}
