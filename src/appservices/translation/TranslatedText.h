// TranslatedText: a text of the program that the user sees: the English text as a key, and the translation once
// somebody has asked for it.
//
//     constinit TranslatedText untitled{u"Untitled"};
//     title.assign16(translate(untitled));
//
// Such objects are static; the table remembers where the asked ones lie. The first answer stays for the rest of the
// run, a key that was asked for before the table was loaded included, unless the table is told another language.
#pragma once

#include <atomic>

namespace tessera {

struct TranslatedText {
    const char16_t* key;
    // Null until asked.
    std::atomic<const char16_t*> cached{nullptr};
};

static_assert(sizeof(TranslatedText) == 2 * sizeof(void*));

// Never null for a key that isn't. It stands until the table is told another language. Any thread, but not while the
// table is loaded or told another language.
const char16_t* translate(TranslatedText& text);

// For texts that are printed with: the translation if a print with it takes the arguments of the key, else the key. No
// file can make a program read arguments that aren't there.
const char16_t* translateFormat(TranslatedText& text);

} // namespace tessera
