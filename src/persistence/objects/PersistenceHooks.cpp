#include "persistence/objects/PersistenceHooks.h"

namespace tessera {

constinit PersistenceHooks persistenceHooks;

FString translateText(const FStringRef& key) {
    return persistenceHooks.translate != nullptr ? persistenceHooks.translate(key) : FString(key);
}

bool askUser(const FStringRef& question, const FStringRef& yes, const FStringRef& no) {
    return persistenceHooks.ask != nullptr && persistenceHooks.ask(question, yes, no);
}

void reportError(std::int32_t code, const FStringRef& text) {
    if (persistenceHooks.report != nullptr) {
        persistenceHooks.report(code, text);
    }
}

} // namespace tessera
