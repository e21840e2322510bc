// Translation files of any form on the way into a table: look-ups, the pseudo form and the check of formats.
#include "appservices/translation/FormatConversions.h"
#include "appservices/translation/PseudoText.h"
#include "appservices/translation/TranslationTable.h"
#include "foundation/text/FString.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace tessera;
using FallBack = TranslationTable::FallBack;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

constexpr const char16_t* kKeys[] = {u"Open", u"a", u"%d files", u"Copy{{Noun}}", u"", u"k"};

// Prints with what a program would print with: a file must not make it read what isn't there.
void printWith(const char16_t* key, const char16_t* translation) {
    const char16_t* const format = takeSameArguments(key, translation) ? translation : key;
    FString text;
    require(text.printf(format, 1));
}

void load(TranslationTable& table, const std::uint8_t* data, std::size_t size) {
    // A stray byte behind the file would be seen.
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    table.loadFromMemory(bytes.data(), bytes.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TranslationTable table;
    table.setLanguage("de");
    table.setAcceptAllLanguages(size % 2 != 0);
    load(table, data, size);
    const std::size_t count = table.getStringCount();
    require(count <= size);
    for (const char16_t* key : kKeys) {
        const char16_t* const text = table.lookup(key, FallBack::null);
        require(table.lookup(key, FallBack::key) == (text != nullptr ? text : key));
        if (text != nullptr) {
            require(conversionsMatch(key, text));
            require(takeSameArguments(text, text));
            require(takeSameArguments(text, pseudoText(text).c_str()) ||
                    std::u16string_view(text).find(u"{{") != std::u16string_view::npos);
        }
    }
    if (const char16_t* const text = table.lookup(u"%d files", FallBack::null); text != nullptr) {
        printWith(u"%d files", text);
    }
    // Read once more, the plain keys meet themselves; those with a context stand in a list.
    load(table, data, size);
    require(table.getStringCount() >= count && table.getStringCount() <= 2 * count);
    return 0;
}
