#include "persistence/objects/PersistenceHooks.h"

namespace tessera {

constinit PersistenceHooks persistenceHooks;

FString translateText(const FStringRef& key) {
    return persistenceHooks.translate != nullptr ? persistenceHooks.translate(key) : FString(key);
}

bool askUser(const FStringRef& question) {
    return persistenceHooks.ask != nullptr && persistenceHooks.ask(question);
}

void reportError(std::int32_t code, const FStringRef& text) {
    if (persistenceHooks.report != nullptr) {
        persistenceHooks.report(code, text);
    }
}

} // namespace tessera
