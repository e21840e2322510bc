#include "appservices/translation/TranslatedText.h"

#include "appservices/translation/FormatConversions.h"
#include "appservices/translation/TranslationTable.h"

namespace tessera {

const char16_t* translate(TranslatedText& text) {
    const char16_t* const cached = text.cached.load(std::memory_order_acquire);
    if (cached != nullptr) {
        return cached;
    }
    TranslationTable* const table = TranslationTable::getInstance();
    return table != nullptr ? table->translate(text) : text.key;
}

const char16_t* translateFormat(TranslatedText& text) {
    const char16_t* const translation = translate(text);
    return takeSameArguments(text.key, translation) ? translation : text.key;
}

} // namespace tessera
