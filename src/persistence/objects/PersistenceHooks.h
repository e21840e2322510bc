// PersistenceHooks: what persistence asks of layers above it: a translated text, an answer of the user, a place for
// error reports. All are null until somebody sets them, during start-up on the main thread.
#pragma once

#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

struct PersistenceHooks {
    // The text for a key in the user's language.
    FString (*translate)(const FStringRef& key) = nullptr;
    // A question to the user and the texts of its two buttons, all in the user's language. True for the first button.
    // An empty second text leaves nothing to choose: a notice, whose answer nobody looks at.
    bool (*ask)(const FStringRef& question, const FStringRef& yes, const FStringRef& no) = nullptr;
    void (*report)(std::int32_t code, const FStringRef& text) = nullptr;
};

extern PersistenceHooks persistenceHooks;

// Through the hooks; without one the key itself, no, and nothing.
FString translateText(const FStringRef& key);
bool askUser(const FStringRef& question, const FStringRef& yes, const FStringRef& no);
void reportError(std::int32_t code, const FStringRef& text);

} // namespace tessera
