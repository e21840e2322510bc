#include "appservices/translation/TranslationHook.h"

#include "appservices/translation/TranslationTable.h"
#include "persistence/objects/PersistenceHooks.h"

namespace tessera {
namespace {

FString translateKey(const FStringRef& key) {
    TranslationTable* const table = TranslationTable::getInstance();
    return table != nullptr ? table->translateKey(key) : FString(key);
}

} // namespace

void installTranslation() {
    persistenceHooks.translate = translateKey;
}

} // namespace tessera
